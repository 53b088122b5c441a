using System;
using System.Collections.Generic;
using System.Linq;
using System.Threading;

namespace Quillmap.Tests
{
    /// <summary>
    /// Runs through the facade with answers worked out by hand. The series is
    /// X = 0..1000 with Y = X, shown with MinX 0, MaxX 1000 in 100 pixels:
    /// the grid step is 8 and the buckets are [0,9), [9,17), ..., [993,1001).
    /// </summary>
    internal static class ResamplerTests
    {
        private const int Last = 1000;

        private static IEnumerable<int> Steps(int from, int to, int by)
        {
            for (int i = from; i <= to; i += by) yield return i;
        }

        private static IEnumerable<int> MinMaxIndices()
        {
            yield return 0;
            yield return 8;
            for (int start = 9; start <= 993; start += 8) {
                yield return start;
                yield return Math.Min(start + 7, Last);
            }
        }

        /// <summary>Expected indices per mode; ZeroLineY is 500.</summary>
        private static readonly Dictionary<ResamplingMode, int[]> Expected = new Dictionary<ResamplingMode, int[]> {
            { ResamplingMode.Min, new[] { 0 }.Concat(Steps(9, 993, 8)).ToArray() },
            { ResamplingMode.Max, Steps(8, 1000, 8).ToArray() },
            { ResamplingMode.MinMax, MinMaxIndices().ToArray() },
            // Values 9..16 have the midpoint 12.5; of 12 and 13 the first wins.
            { ResamplingMode.Mid, new[] { 4 }.Concat(Steps(12, 996, 8)).ToArray() },
            // Below the line the lowest point, above it the highest, and both
            // of the bucket [497,505) that crosses it.
            { ResamplingMode.MinOrMax, new[] { 0 }.Concat(Steps(9, 489, 8)).Concat(new[] { 497, 504 })
                                                  .Concat(Steps(512, 1000, 8)).ToArray() },
        };

        private static ResamplingOptions Options(ResamplingMode mode, ResamplingData data = ResamplingData.Linear)
        {
            var o = ResamplingOptions.For(0, Last, 0, Last, 100, mode);
            o.Data = data;
            o.ZeroLineY = 500;
            return o;
        }

        private static T[] Series<T>(Func<int, T> make, int count = Last + 1)
        {
            return Enumerable.Range(0, count).Select(make).ToArray();
        }

        /// <summary>Runs one frame; X and Y of the series equal the index.
        /// The mode that runs is the one asked for unless modeRun says
        /// otherwise.</summary>
        private static void ExpectRun<TX, TY>(string what, TX[] x, TY[] y, ResamplingOptions o, int[] indices,
                                              ResamplingMode? modeRun = null)
            where TX : struct
            where TY : struct
        {
            using (var resampler = Resampler.Create<TX, TY>())
            using (var frame = resampler.Resample(x, y, o)) {
                Check.Equal(modeRun ?? o.Mode, frame.Mode, what + ", mode run");
                Check.Sequence(indices, frame.Indices, what + ", indices");
                Check.Sequence(indices.Select(i => (double)i), frame.Y, what + ", Y");
                Check.Sequence(indices.Select(i => (double)i), frame.X, what + ", X");
            }
        }

        [Test]
        private static void EveryModeOnSeveralPairs()
        {
            foreach (var mode in Expected.Keys) {
                int[] want = Expected[mode];
                string m = mode.ToString();
                ExpectRun(m + " double/double", Series(i => (double)i), Series(i => (double)i), Options(mode), want);
                ExpectRun(m + " int/short", Series(i => i), Series(i => (short)i), Options(mode), want);
                ExpectRun(m + " ulong/float", Series(i => (ulong)i), Series(i => (float)i), Options(mode), want);
                // DateTime X crosses as its words: a UTC kind sets a flag bit
                // that the library masks, and nothing is converted to OLE dates.
                ExpectRun(m + " DateTime/long", Series(i => new DateTime(i, DateTimeKind.Utc)), Series(i => (long)i),
                          Options(mode), want);
                ExpectRun(m + " TimeSpan/uint", Series(i => new TimeSpan(i)), Series(i => (uint)i), Options(mode), want);
                // Category X is the index whatever x holds, even no array.
                ExpectRun<double, double>(m + " category", null, Series(i => (double)i),
                                          Options(mode, ResamplingData.Category), want);
            }
        }

        [Test]
        private static void RingSeriesCountsLogicalIndices()
        {
            // The same series stored in a ring of 1001 slots from slot 300 on.
            const int size = Last + 1, baseIndex = 300;
            var x = new double[size];
            var y = new int[size];
            for (int i = 0; i < size; i++) {
                x[(i + baseIndex) % size] = i;
                y[(i + baseIndex) % size] = i;
            }
            foreach (var mode in new[] { ResamplingMode.MinMax, ResamplingMode.Max }) {
                var o = Options(mode);
                o.SetRing(size, baseIndex);
                ExpectRun("ring " + mode, x, y, o, Expected[mode]);
            }
            // Few points are copied as they stand, across the wrap.
            var few = ResamplingOptions.For(699, 702, 699, 702, 100);
            few.SetRing(size, baseIndex);
            ExpectRun("ring pass-through", x, y, few, new[] { 699, 700, 701, 702 }, ResamplingMode.None);
            var one = ResamplingOptions.For(5, 5, 0, 10, 100);
            one.SetRing(size, baseIndex);
            ExpectRun("ring single point", x, y, one, new[] { 5 }, ResamplingMode.None);
        }

        [Test]
        private static void UnevenlySpacedStartsWithFirstPoint()
        {
            // On evenly spaced X the unevenly spaced walk finds the same
            // buckets, and it emits the first point of the run ahead of them.
            var x = Series(i => (float)i);
            var y = Series(i => (double)i);
            ExpectRun("uneven max", x, y, Options(ResamplingMode.Max, ResamplingData.UnevenlySpaced),
                      new[] { 0 }.Concat(Expected[ResamplingMode.Max]).ToArray());
            ExpectRun("uneven min", x, y, Options(ResamplingMode.Min, ResamplingData.UnevenlySpaced),
                      new[] { 0 }.Concat(Expected[ResamplingMode.Min]).ToArray());
        }

        [Test]
        private static void FewPointsAreCopiedAsTheyStand()
        {
            var o = ResamplingOptions.For(10, 14, 0, 1000, 100);
            ExpectRun("pass-through", Series(i => (double)i), Series(i => (double)i), o, new[] { 10, 11, 12, 13, 14 },
                      ResamplingMode.None);
            using (var resampler = Resampler.Create<double, double>())
            using (var frame = resampler.Resample(new double[3], new double[3], ResamplingOptions.For(2, 1, 0, 1, 10)))
                Check.Equal(0, frame.Count, "empty stretch");
        }

        [Test]
        private static void FramesReuseTheirBuffers()
        {
            var x = Series(i => (double)i);
            var y = Series(i => (double)i);
            using (var resampler = Resampler.Create<double, double>())
            using (var frame = new ResampledSeries()) {
                resampler.Resample(x, y, Options(ResamplingMode.MinMax), frame);
                double[] buffer = frame.X.Array;
                resampler.Resample(x, y, Options(ResamplingMode.MinMax), frame);
                Check.Equal(Expected[ResamplingMode.MinMax].Length, frame.Count, "second frame's count");
                Check.True(ReferenceEquals(buffer, frame.X.Array), "the second frame allocated new arrays");
            }
        }

        [Test]
        private static void ThreadsShareOneEngine()
        {
            var x = Series(i => (double)i);
            var y = Series(i => (float)i);
            using (var resampler = Resampler.Create<double, float>()) {
                var failures = new List<string>();
                var threads = Enumerable.Range(0, 4).Select(t => new Thread(() => {
                    var mode = Expected.Keys.ElementAt(t);
                    using (var frame = new ResampledSeries()) {
                        for (int round = 0; round < 200; round++) {
                            resampler.Resample(x, y, Options(mode), frame);
                            if (!frame.Indices.SequenceEqual(Expected[mode]))
                                lock (failures) failures.Add(mode + " in round " + round);
                        }
                    }
                })).ToList();
                threads.ForEach(t => t.Start());
                threads.ForEach(t => t.Join());
                Check.Equal(0, failures.Count, "runs that differed: " + string.Join(", ", failures.Take(3)));
            }
        }

        private static long ResidentBytes()
        {
            string[] fields = System.IO.File.ReadAllText("/proc/self/statm").Split(' ');
            return long.Parse(fields[1]) * Environment.SystemPageSize;
        }

        [Test]
        private static void CreateDeleteLoopStaysFlat()
        {
            // An engine of float Y owns 64 strategy objects; 20000 of them
            // leaked would hold tens of megabytes.
            Action churn = () => {
                for (int i = 0; i < 10000; i++) {
                    using (var resampler = Resampler.Create<TimeSpan, float>())
                    using (var frame = new ResampledSeries()) { }
                }
                GC.Collect();
                GC.WaitForPendingFinalizers();
            };
            churn();
            long before = ResidentBytes();
            churn();
            churn();
            long grown = ResidentBytes() - before;
            Check.True(grown < 8L << 20, "resident memory grew by " + (grown >> 10) + " KiB");
        }
    }
}
