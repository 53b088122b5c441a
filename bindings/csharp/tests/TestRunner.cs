using System;
using System.Collections.Generic;
using System.Linq;
using System.Reflection;

namespace Quillmap.Tests
{
    [AttributeUsage(AttributeTargets.Method)]
    internal sealed class TestAttribute : Attribute { }

    internal sealed class CheckFailed : Exception
    {
        public CheckFailed(string message) : base(message) { }
    }

    /// <summary>The few assertions the tests need.</summary>
    internal static class Check
    {
        public static void Equal<T>(T expected, T actual, string what = "")
        {
            if (!EqualityComparer<T>.Default.Equals(expected, actual))
                throw new CheckFailed(string.Format("{0}: expected {1}, got {2}", what, expected, actual));
        }

        public static void True(bool condition, string what)
        {
            if (!condition) throw new CheckFailed(what);
        }

        public static void Sequence<T>(IEnumerable<T> expected, IEnumerable<T> actual, string what = "")
        {
            T[] e = expected.ToArray(), a = actual.ToArray();
            int n = Math.Min(e.Length, a.Length);
            for (int i = 0; i < n; i++)
                if (!EqualityComparer<T>.Default.Equals(e[i], a[i]))
                    throw new CheckFailed(string.Format("{0}: element {1} expected {2}, got {3}", what, i, e[i], a[i]));
            if (e.Length != a.Length)
                throw new CheckFailed(string.Format("{0}: expected {1} elements, got {2}", what, e.Length, a.Length));
        }

        /// <summary>Runs the action and returns the exception it raised,
        /// which must be of type E exactly.</summary>
        public static E Throws<E>(Action action, string what) where E : Exception
        {
            try {
                action();
            } catch (Exception e) {
                if (e.GetType() != typeof(E))
                    throw new CheckFailed(string.Format("{0}: expected {1}, got {2}: {3}", what, typeof(E).Name,
                                                        e.GetType().Name, e.Message));
                return (E)e;
            }
            throw new CheckFailed(what + ": expected " + typeof(E).Name + ", nothing was thrown");
        }
    }

    /// <summary>Runs every [Test] method of this assembly and prints one
    /// line per failure and a closing count.</summary>
    internal static class TestRunner
    {
        private static int Main(string[] args)
        {
            var tests = from type in Assembly.GetExecutingAssembly().GetTypes()
                        from method in type.GetMethods(BindingFlags.Static | BindingFlags.Public | BindingFlags.NonPublic)
                        where method.GetCustomAttributes(typeof(TestAttribute), false).Length > 0
                        orderby type.Name, method.Name
                        select method;
            int passed = 0, failed = 0;
            foreach (MethodInfo test in tests) {
                string name = test.DeclaringType.Name + "." + test.Name;
                if (args.Length > 0 && !name.Contains(args[0])) continue;
                try {
                    test.Invoke(null, null);
                    passed++;
                } catch (TargetInvocationException e) {
                    failed++;
                    Console.WriteLine("FAILED {0}: {1}", name, e.InnerException is CheckFailed
                                                                   ? e.InnerException.Message
                                                                   : e.InnerException.ToString());
                }
            }
            Console.WriteLine("{0} passed, {1} failed", passed, failed);
            return failed == 0 && passed > 0 ? 0 : 1;
        }
    }
}
