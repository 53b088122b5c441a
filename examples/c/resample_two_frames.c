/* Two frames of a 100000-point series in a 500-pixel viewport, through the C interface. */
#include <stdio.h>
#include <stdlib.h>
#include <quillmap/QuillmapCore.h>

static void OnFailure(const char* message) { fprintf(stderr, "failure: %s\n", message); }
static void OnArgumentFailure(const char* message, const char* parameter) {
    fprintf(stderr, "bad argument %s: %s\n", parameter ? parameter : "", message ? message : "");
}

int main(void) {
    enum { N = 100000 };
    static double x[N], y[N];
    for (int i = 0; i < N; i++) { x[i] = i * 0.5; y[i] = (i * 7919) % 1000; }
    /* First of all: every later call may report a failure through these. */
    SWIGRegisterExceptionCallbacks_QuillmapCore(OnFailure, OnFailure, OnFailure, OnFailure, OnFailure, OnFailure,
                                                OnFailure, OnFailure, OnFailure, OnFailure, OnFailure);
    SWIGRegisterExceptionArgumentCallbacks_QuillmapCore(OnArgumentFailure, OnArgumentFailure, OnArgumentFailure);
    QmExtremeResamplerDoubleDouble* engine = CSharp_new_ExtremeResamplerDoubleDouble();
    QmResamplingArgs* args = CSharp_new_ResamplingArgs(); /* all zero: Linear data, mode None, no ring */
    QmIntVector* indices = CSharp_new_IntVector__SWIG_0();
    double* outX = NULL; double* outY = NULL;
    int ok = 1;
    for (int frame = 0; frame < 2; frame++) {
        int first = frame * 40000, last = first + 59999; /* both inclusive: 60000 points */
        CSharp_ResamplingArgs_Resampling_set(args, 1); /* MinMax */
        CSharp_ResamplingArgs_StartIndex_set(args, first);
        CSharp_ResamplingArgs_EndIndex_set(args, last);
        CSharp_ResamplingArgs_ViewportWidth_set(args, 500);
        CSharp_ResamplingArgs_MinXInclusive_set(args, x[first]);
        CSharp_ResamplingArgs_MaxXInclusive_set(args, x[last]);
        int mode = CSharp_ExtremeResamplingHelpersWrapper_GetActualResampling(args);
        CSharp_IntVector_Clear(indices); /* a run appends to what the vector holds */
        int room = CSharp_ExtremeResamplerDoubleDouble_UpdateIndices(engine, indices, x, y, mode, args);
        outX = realloc(outX, room * sizeof(double)); outY = realloc(outY, room * sizeof(double));
        CSharp_ExtremeResamplerDoubleDouble_Execute(engine, x, y, outX, outY, indices, mode, args);
        int count = CSharp_IntVector_size(indices); /* the points made, at most room */
        printf("frame %d: mode %d, %d points in, %d out, first X %g\n", frame, mode, last - first + 1, count, outX[0]);
        ok = ok && mode == 1 && count > 0 && count <= room;
    }
    free(outX); free(outY);
    CSharp_delete_IntVector(indices);
    CSharp_delete_ResamplingArgs(args);
    CSharp_delete_ExtremeResamplerDoubleDouble(engine);
    return ok ? 0 : 1;
}
