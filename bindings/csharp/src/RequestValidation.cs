using System;
using Quillmap.Interop;

namespace Quillmap
{
    /// <summary>
    /// The checks the library leaves to its caller. A run with arguments that
    /// fail them would read or write outside the arrays or never end, so the
    /// facade refuses them before it calls in.
    /// </summary>
    internal static class RequestValidation<TX, TY>
        where TX : struct
        where TY : struct
    {
        private static readonly int ModeCount = QuillmapCore.RESAMPLING_MODE_COUNT;
        private static readonly int DataCount = QuillmapCore.RESAMPLING_DATA_COUNT;

        /// <summary>Checks what can be checked before the mode is known.</summary>
        public static void CheckRequest(TX[] x, TY[] y, ref ResamplingOptions o)
        {
            if (y == null) throw new ArgumentNullException("y");
            if ((uint)o.Data >= (uint)DataCount)
                throw new ArgumentOutOfRangeException("options.Data", o.Data, "Not a ResamplingData value.");
            if (x == null && o.Data != ResamplingData.Category) throw new ArgumentNullException("x");
            if ((uint)o.Mode >= (uint)ModeCount)
                throw new ArgumentOutOfRangeException("options.Mode", o.Mode, "Not a ResamplingMode value.");
            if (o.ViewportWidth <= 0)
                throw new ArgumentOutOfRangeException("options.ViewportWidth", o.ViewportWidth, "The width must be above 0.");
            if (!(o.MinX < o.MaxX) || double.IsInfinity(o.MinX) || double.IsInfinity(o.MaxX))
                throw new ArgumentException("MinX must be below MaxX, both finite.", "options.MaxX");
            if (o.StartIndex < 0)
                throw new ArgumentOutOfRangeException("options.StartIndex", o.StartIndex, "The index must not be negative.");
            if (o.EndIndex < o.StartIndex - 1)
                throw new ArgumentOutOfRangeException("options.EndIndex", o.EndIndex,
                                                      "EndIndex is inclusive and must not lie below StartIndex - 1.");
            int stored = x == null ? y.Length : Math.Min(x.Length, y.Length);
            if (o.IsRing) {
                if (o.RingSize <= 0 || o.RingSize > stored)
                    throw new ArgumentOutOfRangeException("options.RingSize", o.RingSize,
                                                          "The ring must have slots and fit in the arrays.");
                if (o.RingBaseIndex < 0 || o.RingBaseIndex >= o.RingSize)
                    throw new ArgumentOutOfRangeException("options.RingBaseIndex", o.RingBaseIndex,
                                                          "The base index must be a slot of the ring.");
                if (o.EndIndex - o.StartIndex >= o.RingSize || o.EndIndex > int.MaxValue - o.RingBaseIndex)
                    throw new ArgumentOutOfRangeException("options.EndIndex", o.EndIndex,
                                                          "The visible stretch must fit in the ring.");
            } else if (o.EndIndex >= stored) {
                throw new ArgumentOutOfRangeException("options.EndIndex", o.EndIndex,
                                                      "EndIndex is inclusive and must lie inside the arrays.");
            }
        }

        /// <summary>Checks what a bucket run needs: X rising from the first
        /// visible point to the last and both inside [MinX, MaxX], so that the
        /// walk ends and the room the library asks for is enough.</summary>
        public static void CheckBucketRun(TX[] x, ref ResamplingOptions o)
        {
            double first, last;
            if (o.Data == ResamplingData.Category) {
                first = o.StartIndex;
                last = o.EndIndex;
            } else {
                Func<TX, double> toDouble = ElementConversion<TX>.ToDouble;
                first = toDouble(x[Slot(o.StartIndex, ref o)]);
                last = toDouble(x[Slot(o.EndIndex, ref o)]);
                if (!(first < last)) throw new ArgumentException("X must rise from StartIndex to EndIndex.", "x");
            }
            if (!(first >= o.MinX))
                throw new ArgumentOutOfRangeException("options.MinX", o.MinX, "The first visible point lies below MinX.");
            if (!(last <= o.MaxX))
                throw new ArgumentOutOfRangeException("options.MaxX", o.MaxX, "The last visible point lies above MaxX.");
        }

        public static int Slot(int index, ref ResamplingOptions o)
        {
            return o.IsRing ? (index + o.RingBaseIndex) % o.RingSize : index;
        }
    }
}
