using System;
using Quillmap.Interop;

namespace Quillmap.Tests
{
    /// <summary>Scans on a few element types, against a plain loop.</summary>
    internal static class ScanTests
    {
        /// <summary>A strict scan from a seed: the first of equal values wins
        /// and a NaN never does.</summary>
        private static void Reference(double[] data, int start, int end, out int minIndex, out int maxIndex)
        {
            double min = double.MaxValue, max = -double.MaxValue;
            minIndex = maxIndex = -1;
            for (int i = start; i < end; i++) {
                if (data[i] < min) { min = data[i]; minIndex = i; }
                if (data[i] > max) { max = data[i]; maxIndex = i; }
            }
        }

        [Test]
        private static void DoubleScansMatchPlainLoop()
        {
            var random = new Random(3);
            using (var ops = new ArrayOperationsDouble())
            using (var record = new MinMaxPointSearchResultDouble()) {
                for (int round = 0; round < 200; round++) {
                    var data = new double[random.Next(1, 300)];
                    for (int i = 0; i < data.Length; i++)
                        data[i] = random.Next(8) == 0 ? double.NaN : random.Next(-50, 50);
                    int start = random.Next(data.Length), end = random.Next(start, data.Length + 1);
                    int expectedMin, expectedMax;
                    Reference(data, start, end, out expectedMin, out expectedMax);

                    double min = double.MaxValue, max = -double.MaxValue;
                    int minIndex = -1, maxIndex = -1;
                    ops.Min(data, start, end, ref min, ref minIndex);
                    ops.Max(data, start, end, ref max, ref maxIndex);
                    Check.Equal(expectedMin, minIndex, "Min position");
                    Check.Equal(expectedMax, maxIndex, "Max position");

                    record.MinIndex = record.MaxIndex = -1;
                    record.Min = double.MaxValue;
                    record.Max = -double.MaxValue;
                    ops.MinMax(data, start, end, record);
                    Check.Equal(expectedMin, record.MinIndex, "MinMax min position");
                    Check.Equal(expectedMax, record.MaxIndex, "MinMax max position");
                    Check.Equal(min, record.Min, "MinMax min");
                }
            }
        }

        [Test]
        private static void WideAndNarrowTypesKeepTheirValues()
        {
            // 64-bit values that one double cannot tell apart, compared in
            // their own type.
            var big = new long[] { 9007199254740993, 9007199254740992, 9007199254740994 };
            long min = long.MaxValue, max = long.MinValue;
            using (var ops = new ArrayOperationsInt64()) ops.MinMax(big, 0, 3, ref min, ref max);
            Check.Equal(9007199254740992L, min, "Int64 min");
            Check.Equal(9007199254740994L, max, "Int64 max");

            var unsigned = new ulong[] { 3, ulong.MaxValue, 0 };
            int maxIndex = -1;
            ulong umax = 0;
            using (var ops = new ArrayOperationsUInt64()) ops.Max(unsigned, 0, 3, ref umax, ref maxIndex);
            Check.Equal(ulong.MaxValue, umax, "UInt64 max");
            Check.Equal(1, maxIndex, "UInt64 max position");

            var bytes = new byte[] { 7, 200, 3, 200 };
            using (var ops = new ArrayOperationsByte()) {
                Check.Equal(1, ops.FindIndexExactInUnsortedData(bytes, 0, 4, 200), "first 200");
                Check.Equal(-1, ops.FindIndexExactInUnsortedData(bytes, 0, 4, 9), "absent value");
            }
        }

        [Test]
        private static void ZeroedRecordSeedsTheScan()
        {
            // A fresh record seeds Min with 0, which 5 and 6 do not beat.
            using (var ops = new ArrayOperationsSByte())
            using (var record = new MinMaxPointSearchResultSByte()) {
                ops.MinMax(new sbyte[] { 5, 6 }, 0, 2, record);
                Check.Equal(0, (int)record.Min, "Min");
                Check.Equal(0, record.MinIndex, "MinIndex");
                Check.Equal(6, (int)record.Max, "Max");
                Check.Equal(1, record.MaxIndex, "MaxIndex");
            }
        }
    }
}
