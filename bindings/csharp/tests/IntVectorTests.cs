using System;
using System.Collections.Generic;
using System.Linq;
using Quillmap.Interop;

namespace Quillmap.Tests
{
    /// <summary>IntVector through SWIG's own C# class.</summary>
    internal static class IntVectorTests
    {
        [Test]
        private static void GrowsByHalf()
        {
            var v = new IntVector();
            var capacities = new List<int>();
            for (int i = 0; i < 28; i++) {
                v.Add(i);
                if (capacities.Count == 0 || capacities[capacities.Count - 1] != v.Capacity) capacities.Add(v.Capacity);
            }
            Check.Sequence(new[] { 1, 2, 3, 4, 6, 9, 13, 19, 28 }, capacities, "capacities taken by 28 Adds");
            v.Clear();
            Check.Equal(28, v.Capacity, "capacity after Clear");
        }

        [Test]
        private static void IndexerAndEnumeration()
        {
            var v = IntVector.Repeat(5, 4);
            v[2] = -7;
            Check.Equal(-7, v[2], "indexer");
            Check.Sequence(new[] { 5, 5, -7, 5 }, v, "enumeration");
            Check.Sequence(new[] { 5, -7 }, v.GetRange(1, 2), "GetRange");
            var copy = new int[4];
            ExtremeResamplingHelpersWrapper.CopyVectorTo(v, copy);
            Check.Sequence(v, copy, "CopyVectorTo");
        }

        /// <summary>
        /// The vector's list operations against List&lt;int&gt; on random
        /// steps: a wrong width of a bool result, a swapped argument or an
        /// off-by-one in a range operation shows up as a difference.
        /// </summary>
        [Test]
        private static void BehavesLikeAList()
        {
            var random = new Random(9);
            var v = new IntVector();
            var list = new List<int>();
            for (int step = 0; step < 3000; step++) {
                int value = random.Next(-20, 20);
                int index = list.Count == 0 ? 0 : random.Next(list.Count);
                int count = list.Count == 0 ? 0 : random.Next(list.Count - index + 1);
                switch (random.Next(10)) {
                case 0: v.Add(value); list.Add(value); break;
                case 1: v.Insert(index, value); list.Insert(index, value); break;
                case 2: if (list.Count > 0) { v.RemoveAt(index); list.RemoveAt(index); } break;
                case 3: v.RemoveRange(index, count); list.RemoveRange(index, count); break;
                case 4: v.Reverse(index, count); list.Reverse(index, count); break;
                case 5: Check.Equal(list.Remove(value), v.Remove(value), "Remove " + value); break;
                case 6: Check.Equal(list.Contains(value), v.Contains(value), "Contains " + value); break;
                case 7:
                    Check.Equal(list.IndexOf(value), v.IndexOf(value), "IndexOf");
                    Check.Equal(list.LastIndexOf(value), v.LastIndexOf(value), "LastIndexOf");
                    break;
                case 8: {
                    var values = Enumerable.Range(value, count).ToArray();
                    v.SetRange(index, new IntVector(values));
                    for (int i = 0; i < values.Length; i++) list[index + i] = values[i];
                    break;
                }
                default: {
                    var values = new[] { value, value + 1 };
                    v.InsertRange(index, new IntVector(values));
                    list.InsertRange(index, values);
                    break;
                }
                }
                if (list.Count > 200) { v.Clear(); list.Clear(); }
            }
            Check.Sequence(list, v, "contents after the random steps");
        }
    }
}
