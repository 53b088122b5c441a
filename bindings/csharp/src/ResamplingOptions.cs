using System;

namespace Quillmap
{
    /// <summary>
    /// One frame of a chart: which stretch of the series is visible, the X
    /// range and width in pixels of the viewport, and how to reduce it.
    /// </summary>
    public struct ResamplingOptions
    {
        /// <summary>The mode asked for. The mode that runs is the one the
        /// library answers for these options: None when too few points are
        /// visible for resampling to pay off.</summary>
        public ResamplingMode Mode;

        /// <summary>How X is laid out: evenly spaced, category (X is the
        /// index), unevenly spaced, or never resampled.</summary>
        public ResamplingData Data;

        /// <summary>Logical index of the first visible point.</summary>
        public int StartIndex;

        /// <summary>Logical index of the last visible point, inclusive.</summary>
        public int EndIndex;

        /// <summary>Viewport width in pixels, above 0.</summary>
        public int ViewportWidth;

        /// <summary>Lower end of the visible X range, in X's own units as a
        /// double: ticks for DateTime and TimeSpan, the index for category
        /// data.</summary>
        public double MinX;

        /// <summary>Upper end of the visible X range, above MinX.</summary>
        public double MaxX;

        /// <summary>Number of halvings of the bucket width below one pixel.</summary>
        public uint Precision;

        /// <summary>The Y level MinOrMax compares each bucket with.</summary>
        public double ZeroLineY;

        /// <summary>Y may hold NaN gaps that must stay gaps. Used where Y is
        /// float or double; integer Y never holds NaN.</summary>
        public bool HasNaN;

        /// <summary>Ring buffers only: the slot of logical index 0. 0 means a
        /// plain series, or a ring that is in order.</summary>
        public int RingBaseIndex;

        /// <summary>Ring buffers only: the number of slots of the ring.</summary>
        public int RingSize;

        /// <summary>Options for the points StartIndex..EndIndex (inclusive),
        /// with X from minX to maxX, in a viewport of the given width.</summary>
        public static ResamplingOptions For(int startIndex, int endIndex, double minX, double maxX,
                                            int viewportWidth, ResamplingMode mode = ResamplingMode.MinMax)
        {
            return new ResamplingOptions {
                Mode = mode, StartIndex = startIndex, EndIndex = endIndex, MinX = minX, MaxX = maxX,
                ViewportWidth = viewportWidth
            };
        }

        /// <summary>Sets the X range from two DateTime values, as ticks.</summary>
        public void SetXRange(DateTime min, DateTime max)
        {
            MinX = min.Ticks;
            MaxX = max.Ticks;
        }

        /// <summary>Sets the X range from two TimeSpan values, as ticks.</summary>
        public void SetXRange(TimeSpan min, TimeSpan max)
        {
            MinX = min.Ticks;
            MaxX = max.Ticks;
        }

        /// <summary>Describes the arrays as a ring of the given size whose
        /// logical index 0 lies in slot baseIndex.</summary>
        public void SetRing(int size, int baseIndex)
        {
            RingSize = size;
            RingBaseIndex = baseIndex;
        }

        internal bool IsRing { get { return RingBaseIndex != 0; } }
    }
}
