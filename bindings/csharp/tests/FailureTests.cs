using System;
using System.Collections.Generic;
using System.Linq;
using Quillmap.Interop;

namespace Quillmap.Tests
{
    /// <summary>
    /// Every kind of failure arrives as its .NET exception, with its message
    /// and parameter name, and leaves nothing pending for the next call: the
    /// library's reports through the generated layer (a wrong callback row, a
    /// lost or swapped text; every wrapper checks alike), and the checks by
    /// which the facade refuses what would make the library read outside the
    /// arrays or walk for ever.
    /// </summary>
    internal static class FailureTests
    {
        private static readonly IntVector Three = new IntVector(new[] { 1, 2, 3 });
        private static readonly double[] Rising = Enumerable.Range(0, 1001).Select(i => (double)i).ToArray(), Flat = new double[1001];

        /// <summary>Kind, message (null: not compared), parameter name, call.</summary>
        private sealed class Cases : List<Tuple<Type, string, string, Action>>
        {
            public void Add(Type kind, string message, string parameter, Action call) { Add(Tuple.Create(kind, message, parameter, call)); }
        }

        private static Action Run(Func<ResamplingOptions, ResamplingOptions> change, double[] x = null)
        {
            return () => {
                using (var resampler = Resampler.Create<double, double>())
                    resampler.Resample(x ?? Rising, Rising, change(ResamplingOptions.For(0, 1000, 0, 1000, 100))).Dispose();
            };
        }

        private static readonly Cases All = new Cases {
            { typeof(ArgumentOutOfRangeException), null, "index", () => { int unused = Three[3]; } },
            { typeof(ArgumentOutOfRangeException), null, "count", () => IntVector.Repeat(7, -1) },
            { typeof(ArgumentException), "invalid range", "", () => Three.GetRange(4, 0) },
            { typeof(ArgumentNullException), "std::vector< int > & type is null", null,
              () => new ExtremeResamplerDoubleDouble().UpdateIndices(null, new double[3], new double[3], ResamplingMode.Min, null) },
            { typeof(ArgumentNullException), "MinMaxPointSearchResult< unsigned short > & type is null", null,
              () => new ArrayOperationsUInt16().MinMax(new ushort[2], 0, 2, null) },
            { typeof(NullReferenceException), "x is null", null, () => new ExtremeResamplerDoubleDouble().Execute(
                  null, new double[3], new double[3], new double[3], new IntVector(), ResamplingMode.Max, new ResamplingArgs { EndIndex = 2 }) },
            // MinX = MaxX: no cells, which Min, at one point per cell, refuses to reserve.
            { typeof(ApplicationException), "vector<T> too long", null, () => new ExtremeResamplerDoubleSingle().UpdateIndices(
                  new IntVector(), new double[3], new float[3], ResamplingMode.Min, new ResamplingArgs { EndIndex = 2, ViewportWidth = 100 }) },
            { typeof(ArgumentOutOfRangeException), null, "options.ViewportWidth", Run(o => { o.ViewportWidth = 0; return o; }) },
            { typeof(ArgumentException), null, "options.MaxX", Run(o => { o.MaxX = double.NaN; return o; }) },
            { typeof(ArgumentOutOfRangeException), null, "options.Mode", Run(o => { o.Mode = (ResamplingMode)6; return o; }) },
            { typeof(ArgumentOutOfRangeException), null, "options.Data", Run(o => { o.Data = (ResamplingData)(-1); return o; }) },
            { typeof(ArgumentOutOfRangeException), null, "options.EndIndex", Run(o => { o.EndIndex = 1001; return o; }) },
            { typeof(ArgumentOutOfRangeException), null, "options.StartIndex", Run(o => { o.StartIndex = -1; return o; }) },
            { typeof(ArgumentOutOfRangeException), null, "options.RingSize", Run(o => { o.SetRing(1002, 1); return o; }) },
            { typeof(ArgumentOutOfRangeException), null, "options.RingBaseIndex", Run(o => { o.SetRing(1001, 1001); return o; }) },
            { typeof(ArgumentOutOfRangeException), null, "options.EndIndex", Run(o => { o.SetRing(500, 1); return o; }) },
            { typeof(ArgumentOutOfRangeException), null, "options.MinX", Run(o => { o.MinX = 0.5; return o; }) },
            { typeof(ArgumentOutOfRangeException), null, "options.MaxX", Run(o => { o.MaxX = 999.5; return o; }) },
            { typeof(ArgumentException), null, "x", Run(o => o, Flat) },
            { typeof(NotSupportedException), null, null, () => Resampler.Create<double, DateTime>() },
        };

        [Test]
        private static void EachFailureArrivesAsItsException()
        {
            foreach (var c in All) {
                Exception e = null;
                try {
                    c.Item4();
                } catch (Exception caught) {
                    e = caught;
                }
                string what = c.Item1.Name + " " + (c.Item2 ?? c.Item3);
                Check.Equal(c.Item1, e == null ? null : e.GetType(), what + ", kind");
                if (c.Item2 != null) Check.Equal(c.Item2, e.Message, what + ", message");
                if (e is ArgumentException) Check.Equal(c.Item3, ((ArgumentException)e).ParamName, what + ", parameter");
                Check.True(e.InnerException == null, what + ": an earlier report was still pending");
            }
        }
    }
}
