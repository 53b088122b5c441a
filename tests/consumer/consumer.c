/* Links against an installed library through its C header alone; exits 0
 * when a scan answers as expected. */
#include <quillmap/QuillmapCore.h>

int main(void) {
    const double data[] = {3.0, -2.0, 7.5, 1.0};
    double max = -1e300;
    int32_t at = -1;
    QmArrayOperationsDouble* ops = CSharp_new_ArrayOperationsDouble();
    CSharp_ArrayOperationsDouble_Max__SWIG_1(ops, data, 0, 4, &max, &at);
    CSharp_delete_ArrayOperationsDouble(ops);
    return max == 7.5 && at == 2 ? 0 : 1;
}
