using System;

namespace Quillmap.Tests
{
    /// <summary>
    /// Arguments that would make the library read outside the arrays or walk
    /// for ever are refused before the call, naming the parameter.
    /// </summary>
    internal static class ValidationTests
    {
        private struct Case
        {
            public string Name;
            public Type Kind;
            public string ParamName;
            public Func<ResamplingOptions, ResamplingOptions> Change;
            public double[] X;
        }

        private static readonly double[] Rising = new double[1001];
        private static readonly double[] Flat = new double[1001];

        static ValidationTests()
        {
            for (int i = 0; i < Rising.Length; i++) Rising[i] = i;
        }

        private static readonly Case[] Cases = {
            new Case { Name = "width 0", Kind = typeof(ArgumentOutOfRangeException), ParamName = "options.ViewportWidth",
                       Change = o => { o.ViewportWidth = 0; return o; } },
            new Case { Name = "empty X range", Kind = typeof(ArgumentException), ParamName = "options.MaxX",
                       Change = o => { o.MaxX = o.MinX; return o; } },
            new Case { Name = "NaN X range", Kind = typeof(ArgumentException), ParamName = "options.MaxX",
                       Change = o => { o.MaxX = double.NaN; return o; } },
            new Case { Name = "mode out of range", Kind = typeof(ArgumentOutOfRangeException), ParamName = "options.Mode",
                       Change = o => { o.Mode = (ResamplingMode)6; return o; } },
            new Case { Name = "data kind out of range", Kind = typeof(ArgumentOutOfRangeException),
                       ParamName = "options.Data", Change = o => { o.Data = (ResamplingData)(-1); return o; } },
            new Case { Name = "EndIndex is inclusive", Kind = typeof(ArgumentOutOfRangeException),
                       ParamName = "options.EndIndex", Change = o => { o.EndIndex = 1001; return o; } },
            new Case { Name = "negative start", Kind = typeof(ArgumentOutOfRangeException),
                       ParamName = "options.StartIndex", Change = o => { o.StartIndex = -1; return o; } },
            new Case { Name = "ring larger than the arrays", Kind = typeof(ArgumentOutOfRangeException),
                       ParamName = "options.RingSize", Change = o => { o.SetRing(1002, 1); return o; } },
            new Case { Name = "ring base outside the ring", Kind = typeof(ArgumentOutOfRangeException),
                       ParamName = "options.RingBaseIndex", Change = o => { o.SetRing(1001, 1001); return o; } },
            new Case { Name = "stretch longer than the ring", Kind = typeof(ArgumentOutOfRangeException),
                       ParamName = "options.EndIndex", Change = o => { o.SetRing(500, 1); return o; } },
            new Case { Name = "first point below MinX", Kind = typeof(ArgumentOutOfRangeException),
                       ParamName = "options.MinX", Change = o => { o.MinX = 0.5; return o; } },
            new Case { Name = "last point above MaxX", Kind = typeof(ArgumentOutOfRangeException),
                       ParamName = "options.MaxX", Change = o => { o.MaxX = 999.5; return o; } },
            new Case { Name = "X not rising", Kind = typeof(ArgumentException), ParamName = "x",
                       Change = o => o, X = Flat },
            new Case { Name = "no X for linear data", Kind = typeof(ArgumentNullException), ParamName = "x",
                       Change = o => o, X = new double[0] },
        };

        [Test]
        private static void RefusedBeforeTheCall()
        {
            using (var resampler = Resampler.Create<double, double>()) {
                foreach (Case c in Cases) {
                    var options = c.Change(ResamplingOptions.For(0, 1000, 0, 1000, 100));
                    double[] x = c.X == null ? Rising : c.X.Length == 0 ? null : c.X;
                    Exception e = null;
                    try {
                        resampler.Resample(x, Rising, options).Dispose();
                    } catch (Exception caught) {
                        e = caught;
                    }
                    Check.True(e != null, c.Name + ": nothing was thrown");
                    Check.Equal(c.Kind, e.GetType(), c.Name + ", kind");
                    Check.Equal(c.ParamName, ((ArgumentException)e).ParamName, c.Name + ", parameter");
                }
            }
        }

        [Test]
        private static void PairsWithoutEngineAreRefused()
        {
            Check.Throws<NotSupportedException>(() => Resampler.Create<decimal, double>(), "decimal X");
            Check.Throws<NotSupportedException>(() => Resampler.Create<double, DateTime>(), "DateTime Y");
        }
    }
}
