using System;
using Quillmap.Interop;

namespace Quillmap.Tests
{
    /// <summary>
    /// Every kind of report the library makes arrives as the matching .NET
    /// exception, with the library's message and parameter name, and leaves
    /// nothing pending for the next call.
    /// </summary>
    internal static class FailureReportTests
    {
        private static readonly IntVector Three = new IntVector(new[] { 1, 2, 3 });

        private struct Case
        {
            public string Name;
            public Type Kind;
            public string Message; // null: not compared
            public string ParamName;
            public Action Call;
        }

        private static ResamplingArgs DegenerateRange()
        {
            // MinX = MaxX: the bucket count truncates to int.MinValue, which
            // Min's factor of 1 keeps, and the reservation refuses it.
            return new ResamplingArgs { Data = ResamplingData.Linear, StartIndex = 0, EndIndex = 2, ViewportWidth = 100 };
        }

        private static readonly Case[] Cases = {
            new Case { Name = "getitem at size", Kind = typeof(ArgumentOutOfRangeException), ParamName = "index",
                       Call = () => { int unused = Three[3]; } },
            new Case { Name = "Insert past size", Kind = typeof(ArgumentOutOfRangeException), ParamName = "index",
                       Call = () => new IntVector(Three).Insert(4, 0) },
            new Case { Name = "GetRange index checked first", Kind = typeof(ArgumentOutOfRangeException),
                       ParamName = "index", Call = () => Three.GetRange(-1, -1) },
            new Case { Name = "GetRange past size", Kind = typeof(ArgumentException), Message = "invalid range",
                       ParamName = "", Call = () => Three.GetRange(4, 0) },
            new Case { Name = "RemoveRange too long", Kind = typeof(ArgumentException), Message = "invalid range",
                       ParamName = "", Call = () => new IntVector(Three).RemoveRange(1, 3) },
            new Case { Name = "SetRange too long", Kind = typeof(ArgumentOutOfRangeException), ParamName = "index",
                       Call = () => new IntVector(Three).SetRange(2, Three) },
            new Case { Name = "Repeat negative", Kind = typeof(ArgumentOutOfRangeException), ParamName = "count",
                       Call = () => IntVector.Repeat(7, -1) },
            new Case { Name = "negative capacity", Kind = typeof(ArgumentOutOfRangeException), ParamName = "capacity",
                       Call = () => new IntVector(-1) },
            new Case { Name = "AddRange null", Kind = typeof(ArgumentNullException),
                       Message = "std::vector< int > const & type is null", ParamName = null,
                       Call = () => new IntVector().AddRange(null) },
            new Case { Name = "UpdateIndices null vector", Kind = typeof(ArgumentNullException),
                       Message = "std::vector< int > & type is null", ParamName = null,
                       Call = () => new ExtremeResamplerDoubleDouble().UpdateIndices(null, new double[3], new double[3],
                                                                                    ResamplingMode.Min, null) },
            new Case { Name = "Execute null args", Kind = typeof(ArgumentNullException),
                       Message = "ResamplingArgs & type is null", ParamName = null,
                       Call = () => new ExtremeResamplerInt32Int16().Execute(new int[3], new short[3], new double[3],
                                                                            new double[3], new IntVector(),
                                                                            ResamplingMode.Max, null) },
            new Case { Name = "GetActualResampling null", Kind = typeof(ArgumentNullException),
                       Message = "ResamplingArgs & type is null", ParamName = null,
                       Call = () => ExtremeResamplingHelpersWrapper.GetActualResampling(null) },
            new Case { Name = "MergeIndices null", Kind = typeof(ArgumentNullException),
                       Message = "std::vector< int > & type is null", ParamName = null,
                       Call = () => ExtremeResamplingHelpersWrapper.MergeIndices(null, 0, 0, new int[1]) },
            new Case { Name = "MinMax null record", Kind = typeof(ArgumentNullException),
                       Message = "MinMaxPointSearchResult< unsigned short > & type is null", ParamName = null,
                       Call = () => new ArrayOperationsUInt16().MinMax(new ushort[2], 0, 2, null) },
            new Case { Name = "length failure in a run", Kind = typeof(ApplicationException),
                       Message = "vector<T> too long", ParamName = null,
                       Call = () => new ExtremeResamplerDoubleSingle().UpdateIndices(
                           new IntVector(), new double[3], new float[3], ResamplingMode.Min, DegenerateRange()) },
        };

        [Test]
        private static void EachReportArrivesAsItsException()
        {
            foreach (Case c in Cases) {
                Exception e = null;
                try {
                    c.Call();
                } catch (Exception caught) {
                    e = caught;
                }
                Check.True(e != null, c.Name + ": nothing was thrown");
                Check.Equal(c.Kind, e.GetType(), c.Name + ", kind");
                if (c.Message != null) Check.Equal(c.Message, e.Message, c.Name + ", message");
                var argument = e as ArgumentException;
                if (argument != null) Check.Equal(c.ParamName, argument.ParamName, c.Name + ", parameter");
                Check.True(e.InnerException == null, c.Name + ": an earlier report was still pending");
            }
        }

        [Test]
        private static void FailedRangeCheckLeavesVectorAlone()
        {
            var v = new IntVector(Three);
            Check.Throws<ArgumentOutOfRangeException>(() => v.SetRange(1, new IntVector(new[] { 9, 9, 9 })), "SetRange");
            Check.Sequence(new[] { 1, 2, 3 }, v, "after a refused SetRange");
        }
    }
}
