using System;
using Quillmap.Interop;

namespace Quillmap
{
    /// <summary>Makes resamplers for a pair of element types.</summary>
    public static class Resampler
    {
        /// <summary>
        /// A resampler for X of type TX (double, float, long, ulong, int, uint,
        /// short, ushort, byte, sbyte, DateTime or TimeSpan) and Y of type TY
        /// (the ten numeric types).
        /// </summary>
        /// <exception cref="NotSupportedException">The pair is not one the
        /// library has an engine for.</exception>
        public static Resampler<TX, TY> Create<TX, TY>()
            where TX : struct
            where TY : struct
        {
            return new Resampler<TX, TY>(EngineFactory<TX, TY>.Create());
        }

        /// <summary>Finds the generated engine class of the pair: its name is
        /// ExtremeResampler followed by the .NET names of the two types.</summary>
        private static class EngineFactory<TX, TY>
            where TX : struct
            where TY : struct
        {
            private static readonly Type EngineType = typeof(IResamplerEngine<,>).Assembly.GetType(
                "Quillmap.Interop.ExtremeResampler" + typeof(TX).Name + typeof(TY).Name);

            public static IResamplerEngine<TX, TY> Create()
            {
                var engine = EngineType == null ? null : Activator.CreateInstance(EngineType) as IResamplerEngine<TX, TY>;
                if (engine == null)
                    throw new NotSupportedException(string.Format("There is no resampler for X of {0} and Y of {1}.",
                                                                  typeof(TX).Name, typeof(TY).Name));
                return engine;
            }
        }
    }

    /// <summary>
    /// Reduces a series of X of type TX and Y of type TY to the points worth
    /// drawing in a viewport. Make one per series type pair and keep it; it
    /// holds no series, and several threads may use it at once as long as each
    /// passes its own <see cref="ResampledSeries"/>.
    /// </summary>
    public sealed class Resampler<TX, TY> : IDisposable
        where TX : struct
        where TY : struct
    {
        private IResamplerEngine<TX, TY> _engine;

        internal Resampler(IResamplerEngine<TX, TY> engine)
        {
            _engine = engine;
        }

        /// <summary>Resamples one frame into new buffers.</summary>
        public ResampledSeries Resample(TX[] x, TY[] y, ResamplingOptions options)
        {
            var series = new ResampledSeries();
            try {
                Resample(x, y, options, series);
                return series;
            } catch {
                series.Dispose();
                throw;
            }
        }

        /// <summary>
        /// Resamples one frame into <paramref name="into"/>, reusing its
        /// buffers. x may be null for category data, whose X is the index.
        /// </summary>
        /// <exception cref="ArgumentException">The options do not describe the
        /// arrays (the parameter name tells which field).</exception>
        /// <exception cref="ApplicationException">The library failed, with
        /// its own message.</exception>
        public void Resample(TX[] x, TY[] y, ResamplingOptions options, ResampledSeries into)
        {
            if (into == null) throw new ArgumentNullException("into");
            IResamplerEngine<TX, TY> engine = Engine;
            RequestValidation<TX, TY>.CheckRequest(x, y, ref options);

            ResamplingArgs args = into.Args;
            args.Resampling = options.Mode;
            args.Data = options.Data;
            args.StartIndex = options.StartIndex;
            args.EndIndex = options.EndIndex;
            args.ViewportWidth = options.ViewportWidth;
            args.ResamplingPrecision = options.Precision;
            args.MinXInclusive = options.MinX;
            args.MaxXInclusive = options.MaxX;
            args.InputSize = options.RingSize;
            args.InputBaseIndex = options.RingBaseIndex;
            args.HasNaN = options.HasNaN;
            args.ZeroLineY = options.ZeroLineY;

            ResamplingMode mode = ExtremeResamplingHelpersWrapper.GetActualResampling(args);
            into.Clear(mode);
            if (options.EndIndex < options.StartIndex) return;
            if (mode != ResamplingMode.None) {
                RequestValidation<TX, TY>.CheckBucketRun(x, ref options);
            } else if (options.IsRing && options.StartIndex == options.EndIndex) {
                // The ring pass-through copies a whole turn of the ring for a
                // single point; one point needs no library call.
                int slot = RequestValidation<TX, TY>.Slot(options.StartIndex, ref options);
                double px = options.Data == ResamplingData.Category ? options.StartIndex
                                                                     : ElementConversion<TX>.ToDouble(x[slot]);
                into.SetSinglePoint(px, ElementConversion<TY>.ToDouble(y[slot]), options.StartIndex);
                return;
            }

            IntVector indices = into.Vector;
            indices.Clear();
            int room = engine.UpdateIndices(indices, x, y, mode, args);
            into.EnsureRoom(room);
            engine.Execute(x, y, into.XBuffer, into.YBuffer, indices, mode, args);
            into.TakeIndicesFromVector();
        }

        private IResamplerEngine<TX, TY> Engine
        {
            get {
                if (_engine == null) throw new ObjectDisposedException(GetType().Name);
                return _engine;
            }
        }

        public void Dispose()
        {
            if (_engine != null) _engine.Dispose();
            _engine = null;
        }
    }
}
