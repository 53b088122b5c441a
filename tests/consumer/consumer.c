/* Uses the installed library through its C header only: a scan and a
 * resampling decision. Exits 0 when both answer as expected. */
#include <stdio.h>

#include <quillmap/QuillmapCore.h>

static void OnException(const char* message) { fprintf(stderr, "failure: %s\n", message); }
static void OnArgument(const char* message, const char* paramName) {
    fprintf(stderr, "argument failure: %s %s\n", message ? message : "", paramName ? paramName : "");
}

int main(void) {
    SWIGRegisterExceptionCallbacks_QuillmapCore(OnException, OnException, OnException, OnException, OnException,
                                                OnException, OnException, OnException, OnException, OnException,
                                                OnException);
    SWIGRegisterExceptionArgumentCallbacks_QuillmapCore(OnArgument, OnArgument, OnArgument);

    const double data[] = {3.0, -2.0, 7.5, 1.0};
    double max = -1e300;
    int32_t maxIndex = -1;
    QmArrayOperationsDouble* ops = CSharp_new_ArrayOperationsDouble();
    CSharp_ArrayOperationsDouble_Max__SWIG_1(ops, data, 0, 4, &max, &maxIndex);
    CSharp_delete_ArrayOperationsDouble(ops);

    QmResamplingArgs* args = CSharp_new_ResamplingArgs();
    const int32_t mode = CSharp_ExtremeResamplingHelpersWrapper_GetActualResampling(args);
    CSharp_delete_ResamplingArgs(args);

    printf("max %g at %d, mode %d\n", max, maxIndex, mode);
    return (max == 7.5 && maxIndex == 2 && mode == 0) ? 0 : 1;
}
