using System;
using Quillmap.Interop;

namespace Quillmap
{
    /// <summary>
    /// The points of one resampled frame, and the buffers they live in. Pass
    /// the same instance to every frame of a chart: the index vector and the
    /// arrays are kept and only grow, so a steady chart allocates nothing per
    /// frame. One instance serves one frame at a time.
    /// </summary>
    public sealed class ResampledSeries : IDisposable
    {
        private double[] _x = new double[0];
        private double[] _y = new double[0];
        private int[] _indices = new int[0];
        private IntVector _vector = new IntVector();
        private ResamplingArgs _args = new ResamplingArgs();

        /// <summary>Number of points of the frame.</summary>
        public int Count { get; private set; }

        /// <summary>The mode that ran: the one asked for, or None when the
        /// visible points were too few to be worth reducing.</summary>
        public ResamplingMode Mode { get; private set; }

        /// <summary>X of each point, as double (ticks for DateTime and
        /// TimeSpan, the index for category data).</summary>
        public ArraySegment<double> X { get { return new ArraySegment<double>(_x, 0, Count); } }

        /// <summary>Y of each point, as double.</summary>
        public ArraySegment<double> Y { get { return new ArraySegment<double>(_y, 0, Count); } }

        /// <summary>Logical index of each point in the source series.</summary>
        public ArraySegment<int> Indices { get { return new ArraySegment<int>(_indices, 0, Count); } }

        internal IntVector Vector { get { return Live(_vector); } }
        internal ResamplingArgs Args { get { return Live(_args); } }
        internal double[] XBuffer { get { return _x; } }
        internal double[] YBuffer { get { return _y; } }

        /// <summary>Makes the output arrays hold at least count points.</summary>
        internal void EnsureRoom(int count)
        {
            if (_x.Length < count) {
                _x = new double[count];
                _y = new double[count];
            }
        }

        internal void Clear(ResamplingMode mode)
        {
            Mode = mode;
            Count = 0;
        }

        /// <summary>Takes the frame's indices from the vector the run filled.</summary>
        internal void TakeIndicesFromVector()
        {
            int count = _vector.Count;
            if (_indices.Length < count) _indices = new int[count];
            ExtremeResamplingHelpersWrapper.CopyVectorTo(_vector, _indices);
            Count = count;
        }

        internal void SetSinglePoint(double x, double y, int index)
        {
            EnsureRoom(1);
            if (_indices.Length < 1) _indices = new int[1];
            _x[0] = x;
            _y[0] = y;
            _indices[0] = index;
            Count = 1;
        }

        private T Live<T>(T handle) where T : class
        {
            if (handle == null) throw new ObjectDisposedException(GetType().Name);
            return handle;
        }

        public void Dispose()
        {
            if (_vector != null) _vector.Dispose();
            if (_args != null) _args.Dispose();
            _vector = null;
            _args = null;
        }
    }
}
