// A program that uses the package as a .NET project would: the facade only.
using System;
using Quillmap;

static class Program
{
    static int Main()
    {
        var x = new double[10001];
        var y = new float[10001];
        for (int i = 0; i < x.Length; i++) {
            x[i] = i;
            y[i] = i % 100 == 0 ? 1000 : 0;
        }
        using (var resampler = Resampler.Create<double, float>())
        using (var frame = resampler.Resample(x, y, ResamplingOptions.For(0, 10000, 0, 10000, 100))) {
            Console.WriteLine("{0} points in, {1} out, mode {2}", x.Length, frame.Count, frame.Mode);
            return frame.Mode == ResamplingMode.MinMax && frame.Count > 0 && frame.Count < 300 ? 0 : 1;
        }
    }
}
