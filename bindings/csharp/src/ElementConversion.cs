using System;

namespace Quillmap
{
    /// <summary>
    /// An element converted to double the way the library reads it: DateTime
    /// and TimeSpan as their ticks, numbers as themselves. Built once per type
    /// as a typed delegate, so a conversion neither boxes nor allocates.
    /// </summary>
    internal static class ElementConversion<T> where T : struct
    {
        public static readonly Func<T, double> ToDouble = Make();

        private static Func<T, double> Make()
        {
            object f;
            Type t = typeof(T);
            if (t == typeof(double)) f = (Func<double, double>)(v => v);
            else if (t == typeof(float)) f = (Func<float, double>)(v => v);
            else if (t == typeof(long)) f = (Func<long, double>)(v => v);
            else if (t == typeof(ulong)) f = (Func<ulong, double>)(v => v);
            else if (t == typeof(int)) f = (Func<int, double>)(v => v);
            else if (t == typeof(uint)) f = (Func<uint, double>)(v => v);
            else if (t == typeof(short)) f = (Func<short, double>)(v => v);
            else if (t == typeof(ushort)) f = (Func<ushort, double>)(v => v);
            else if (t == typeof(byte)) f = (Func<byte, double>)(v => v);
            else if (t == typeof(sbyte)) f = (Func<sbyte, double>)(v => v);
            else if (t == typeof(DateTime)) f = (Func<DateTime, double>)(v => v.Ticks);
            else if (t == typeof(TimeSpan)) f = (Func<TimeSpan, double>)(v => v.Ticks);
            else return null;
            return (Func<T, double>)f;
        }
    }
}
