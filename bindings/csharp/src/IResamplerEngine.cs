using System;

namespace Quillmap.Interop
{
    /// <summary>
    /// What every generated ExtremeResampler&lt;X&gt;&lt;Y&gt; class offers, so that
    /// code generic in the element types can drive any of the 120 engines.
    /// </summary>
    public interface IResamplerEngine<TX, TY> : IDisposable
        where TX : struct
        where TY : struct
    {
        int UpdateIndices(IntVector indices, TX[] x, TY[] y, ResamplingMode mode, ResamplingArgs args);
        void Execute(TX[] x, TY[] y, double[] outX, double[] outY, IntVector indices, ResamplingMode mode,
                     ResamplingArgs args);
    }
}
