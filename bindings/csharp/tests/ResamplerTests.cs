using System;
using System.IO;
using System.Linq;
using System.Threading;
using Quillmap.Interop;

namespace Quillmap.Tests
{
    /// <summary>
    /// Runs through the facade with answers worked out by hand: one per data
    /// kind (DateTime X among them) and a ring, a NaN gap that must stay a gap,
    /// threads sharing one engine; and the index vector and a scan as the
    /// generated layer passes them. The series is X = Y = 0..1000 in 100
    /// pixels: the step is 8, the buckets [0,9), [9,17), ..., [993,1001).
    /// </summary>
    internal static class ResamplerTests
    {
        private const int Last = 1000;
        private static readonly int[] Max = Every(8, 8);
        private static readonly int[] MinMax = new[] { 0, 8 }.Concat(Every(9, 8).SelectMany(s => new[] { s, Math.Min(s + 7, Last) })).ToArray();

        private static int[] Every(int from, int step) { return Enumerable.Range(0, (Last - from) / step + 1).Select(k => from + k * step).ToArray(); }

        private static T[] Series<T>(Func<int, T> make) { return Enumerable.Range(0, Last + 1).Select(make).ToArray(); }

        private static ResamplingOptions Options(ResamplingMode mode, ResamplingData data = ResamplingData.Linear)
        {
            var o = ResamplingOptions.For(0, Last, 0, Last, 100, mode);
            o.Data = data;
            return o;
        }

        /// <summary>One frame, whose X is its index and Y the index too unless
        /// yOf says otherwise.</summary>
        private static void ExpectRun<TX, TY>(string what, TX[] x, TY[] y, ResamplingOptions o, int[] indices,
                                              ResamplingMode? modeRun = null, Func<int, double> yOf = null)
            where TX : struct where TY : struct
        {
            using (var resampler = Resampler.Create<TX, TY>())
            using (var frame = resampler.Resample(x, y, o)) {
                Check.Equal(modeRun ?? o.Mode, frame.Mode, what + ", mode run");
                Check.Sequence(indices, frame.Indices, what + ", indices");
                Check.Sequence(indices.Select(i => (double)i), frame.X, what + ", X");
                Check.Sequence(indices.Select(yOf ?? (i => i)), frame.Y, what + ", Y");
            }
        }

        [Test]
        private static void OneRunPerDataKind()
        {
            // A UTC DateTime sets a kind bit in its word, which the library masks: X is the ticks.
            ExpectRun("linear", Series(i => new DateTime(i, DateTimeKind.Utc)), Series(i => (long)i), Options(ResamplingMode.MinMax), MinMax);
            ExpectRun<double, double>("category", null, Series(i => (double)i), Options(ResamplingMode.Max, ResamplingData.Category), Max);
            // The unevenly spaced walk emits the run's first point ahead of its buckets.
            ExpectRun("uneven", Series(i => (float)i), Series(i => (short)i), Options(ResamplingMode.Max, ResamplingData.UnevenlySpaced),
                      new[] { 0 }.Concat(Max).ToArray());
            ExpectRun("few points", Series(i => (ulong)i), Series(i => (byte)i), ResamplingOptions.For(10, 14, 0, 1000, 100),
                      new[] { 10, 11, 12, 13, 14 }, ResamplingMode.None);
            // The same series in a ring of 1001 slots from slot 300 on (slot s holds point s - 300): indices stay logical.
            var ring = Options(ResamplingMode.MinMax);
            ring.SetRing(Last + 1, 300);
            ExpectRun("ring", Series(s => (double)((s + 701) % 1001)), Series(s => (s + 701) % 1001), ring, MinMax);
        }

        [Test]
        private static void NaNGapStaysAGap()
        {
            // Y is NaN from 400 to 449: [393,401) keeps 393, 399 and the gap's
            // first point; each bucket inside the gap its first point; [449,457)
            // its first point, the NaN, then 450 and 456.
            var o = Options(ResamplingMode.MinMax);
            o.HasNaN = true;
            var expected = MinMax.Where(i => i < 393 || i > 456).Concat(new[] { 393, 399, 400, 401, 409, 417, 425, 433, 441, 449, 450, 456 });
            ExpectRun("gap", Series(i => (double)i), Series(i => i >= 400 && i < 450 ? double.NaN : i), o, expected.OrderBy(i => i).ToArray(),
                      null, i => i >= 400 && i < 450 ? double.NaN : i);
        }

        [Test]
        private static void ThreadsShareOneEngineAndFramesReuseTheirBuffers()
        {
            var x = Series(i => (double)i);
            var y = Series(i => (float)i);
            int failures = 0;
            using (var resampler = Resampler.Create<double, float>()) {
                var threads = Enumerable.Range(0, 4).Select(t => new Thread(() => {
                    using (var frame = new ResampledSeries()) {
                        resampler.Resample(x, y, Options(t % 2 == 0 ? ResamplingMode.MinMax : ResamplingMode.Max), frame);
                        double[] buffer = frame.X.Array;
                        for (int round = 0; round < 100; round++) {
                            resampler.Resample(x, y, Options(t % 2 == 0 ? ResamplingMode.MinMax : ResamplingMode.Max), frame);
                            if (!frame.Indices.SequenceEqual(t % 2 == 0 ? MinMax : Max) || frame.X.Array != buffer)
                                Interlocked.Increment(ref failures);
                        }
                    }
                })).ToList();
                threads.ForEach(t => t.Start());
                threads.ForEach(t => t.Join());
            }
            Check.Equal(0, failures, "frames that differed or took new buffers");
        }

        [Test]
        private static void VectorAndScanCrossAsTheyAre()
        {
            var v = new IntVector();
            var capacities = Enumerable.Range(0, 28).Select(i => { v.Add(i); return v.Capacity; }).Distinct();
            Check.Sequence(new[] { 1, 2, 3, 4, 6, 9, 13, 19, 28 }, capacities, "capacities by Add");
            v[2] = -7;
            Check.Sequence(new[] { 1, -7, 3 }, v.GetRange(1, 3), "GetRange after the indexer");
            ulong max = 0;
            int at = -1;
            using (var ops = new ArrayOperationsUInt64()) ops.Max(new ulong[] { 3, ulong.MaxValue, 0 }, 0, 3, ref max, ref at);
            Check.Equal(Tuple.Create(ulong.MaxValue, 1), Tuple.Create(max, at), "UInt64 Max and its position");
        }

        [Test]
        private static void DisposedEnginesAndFramesGiveBackTheirMemory()
        {
            // An engine of float Y owns 64 strategy objects: 20000 of them leaked would hold tens of megabytes.
            Action churn = () => { for (int i = 0; i < 10000; i++) using (Resampler.Create<TimeSpan, float>()) using (new ResampledSeries()) { } };
            Func<long> resident = () => long.Parse(File.ReadAllText("/proc/self/statm").Split(' ')[1]) * Environment.SystemPageSize;
            churn();
            long before = resident();
            churn();
            churn();
            Check.True(resident() - before < 8L << 20, "resident memory grew by " + ((resident() - before) >> 10) + " KiB");
        }
    }
}
