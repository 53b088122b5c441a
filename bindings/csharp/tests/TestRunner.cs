using System;
using System.Collections.Generic;
using System.Linq;
using System.Reflection;

namespace Quillmap.Tests
{
    [AttributeUsage(AttributeTargets.Method)]
    internal sealed class TestAttribute : Attribute { }

    internal sealed class CheckFailed : Exception { public CheckFailed(string message) : base(message) { } }

    /// <summary>The few assertions the tests need.</summary>
    internal static class Check
    {
        public static void True(bool condition, string what) { if (!condition) throw new CheckFailed(what); }

        public static void Equal<T>(T expected, T actual, string what)
        {
            True(EqualityComparer<T>.Default.Equals(expected, actual), string.Format("{0}: expected {1}, got {2}", what, expected, actual));
        }

        public static void Sequence<T>(IEnumerable<T> expected, IEnumerable<T> actual, string what)
        {
            Equal(string.Join(" ", expected), string.Join(" ", actual), what);
        }
    }

    /// <summary>Runs every [Test] method of this assembly (or those whose name
    /// holds the first argument) and prints each failure and a count.</summary>
    internal static class TestRunner
    {
        private static int Main(string[] args)
        {
            var tests = from type in Assembly.GetExecutingAssembly().GetTypes()
                        from method in type.GetMethods(BindingFlags.Static | BindingFlags.NonPublic)
                        where method.GetCustomAttributes(typeof(TestAttribute), false).Length > 0
                        select method;
            int passed = 0, failed = 0;
            foreach (MethodInfo test in tests.Where(t => args.Length == 0 || t.Name.Contains(args[0]))) {
                try {
                    test.Invoke(null, null);
                    passed++;
                } catch (TargetInvocationException e) {
                    failed++;
                    Console.WriteLine("FAILED {0}.{1}: {2}", test.DeclaringType.Name, test.Name, e.InnerException is CheckFailed
                                      ? e.InnerException.Message : e.InnerException.ToString());
                }
            }
            Console.WriteLine("{0} passed, {1} failed", passed, failed);
            return failed == 0 && passed > 0 ? 0 : 1;
        }
    }
}
