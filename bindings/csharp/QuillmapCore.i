/*
 * The library as the managed caller sees it. `swig -csharp` turns this into
 * the P/Invoke layer (namespace Quillmap.Interop); only the C# output is
 * used, the entry points are the library's own exports. Every per-type class
 * is generated from the word lists of QuillmapTypes.h.
 *
 * Data arrays cross pinned (`fixed`), never copied: an X array of DateTime
 * crosses as its 64-bit words. Scan results cross as `ref` variables.
 */
%module QuillmapCore

%include "std_vector.i"
%import "quillmap/QuillmapTypes.h"

/* Every wrapper checks the pending exception that the library's failure
 * callbacks left, so that a report arrives as the matching .NET exception. */
%exception %{ $action %}

/* Proxies may pin arrays in their bodies. */
%typemap(csclassmodifiers) SWIGTYPE "public unsafe partial class"

/* The fixed-width names of the word lists, as the C# widths they are. */
%apply long long { int64_t };
%apply unsigned long long { uint64_t };
%apply int { int32_t };
%apply unsigned int { uint32_t };
%apply short { int16_t };
%apply unsigned short { uint16_t };
%apply unsigned char { uint8_t };
%apply signed char { int8_t };

/* An array argument: the managed array is pinned for the call and its first
 * element's address crosses. The word of an element type is the name of its
 * .NET type. */
%define QM_PINNED_ARRAY_(ctx, Word, CType)
%typemap(imtype) CType const *, CType *PINNED "global::System.IntPtr"
%typemap(cstype) CType const *, CType *PINNED "global::System.Word[]"
%typemap(csin, pre="    fixed (global::System.Word* swig_ptrTo_$csinput = $csinput) {", terminator="    }")
  CType const *, CType *PINNED "(global::System.IntPtr)swig_ptrTo_$csinput"
%enddef
QM_X_TYPES(QM_PINNED_ARRAY_, _)

/* A scan's seed and result: one variable passed by reference. */
%define QM_REF_VARIABLE_(ctx, Word, CType, CppName)
%typemap(imtype) CType *REF "ref global::System.Word"
%typemap(cstype) CType *REF "ref global::System.Word"
%typemap(csin) CType *REF "ref $csinput"
%apply CType *REF { CType *min, CType *max };
%enddef
QM_Y_TYPES(QM_REF_VARIABLE_, _)
%apply int32_t *REF { int32_t *minIndex, int32_t *maxIndex };
%apply double *PINNED { double *outX, double *outY, double *outY1 };
%apply int32_t *PINNED { int32_t *destination, int32_t *output };

%template(IntVector) std::vector<int>;

enum class ResamplingMode { None = 0, MinMax = 1, Min = 2, Max = 3, Mid = 4, MinOrMax = 5 };
enum class ResamplingData { Linear = 0, Category = 1, UnevenlySpaced = 2, NotResampled = 3 };

const int NORMALIZED_BASE_INDEX = 0;
const int RESAMPLING_MODE_COUNT = 6;
const int RESAMPLING_DATA_COUNT = 4;

/* HasNaN crosses as a 32-bit integer, which is the width of a marshalled
 * bool. */
struct ResamplingArgs {
    ResamplingMode Resampling;
    ResamplingData Data;
    int StartIndex;
    int EndIndex;
    int ViewportWidth;
    unsigned int ResamplingPrecision;
    double MinXInclusive;
    double MaxXInclusive;
    int InputSize;
    int InputBaseIndex;
    bool HasNaN;
    double ZeroLineY;
};

%nodefaultctor ExtremeResamplingHelpersWrapper;
%nodefaultdtor ExtremeResamplingHelpersWrapper;
class ExtremeResamplingHelpersWrapper {
public:
    static void CopyVectorTo(std::vector<int> const &source, int32_t *destination);
    static int MergeIndices(std::vector<int> const &indices, int firstCount, int secondCount, int32_t *output);
    static ResamplingMode GetActualResampling(ResamplingArgs const &args);
};

template <class T> struct MinMaxPointSearchResult {
    int MinIndex;
    int MaxIndex;
    T Min;
    T Max;
};

/* Scans over [start, end); the caller's variables are the seeds. */
template <class T> class ArrayOperations {
public:
    ArrayOperations();
    ~ArrayOperations();
    void Min(T const *data, int start, int end, T *min);
    void Min(T const *data, int start, int end, T *min, int32_t *minIndex);
    void Max(T const *data, int start, int end, T *max);
    void Max(T const *data, int start, int end, T *max, int32_t *maxIndex);
    void MinMax(T const *data, int start, int end, T *min, T *max);
    void MinMax(T const *data, int start, int end, MinMaxPointSearchResult<T> &result);
    int FindIndexExactInUnsortedData(T const *data, int start, int end, T value);
    int FindIndexExactInSortedData(T const *data, int start, int end, T value);
};

%define QM_ELEMENT_CLASSES_(ctx, Word, CType, CppName)
%template(MinMaxPointSearchResult ## Word) MinMaxPointSearchResult<CType>;
%template(ArrayOperations ## Word) ArrayOperations<CType>;
%enddef
QM_Y_TYPES(QM_ELEMENT_CLASSES_, _)

template <class TX, class TY> class ExtremeResampler {
public:
    ExtremeResampler();
    ~ExtremeResampler();
    int UpdateIndices(std::vector<int> &indices, TX const *x, TY const *y, ResamplingMode mode,
                      ResamplingArgs const &args);
    void Execute(TX const *x, TY const *y, double *outX, double *outY, std::vector<int> &indices,
                 ResamplingMode mode, ResamplingArgs const &args);
    static void CopyValuesByIndices(TX const *x, TY const *y, TY const *y1, int32_t const *indices,
                                    double *outX, double *outY, double *outY1, int count, int size,
                                    int baseIndex, bool useIndexAsX);
};

/* Each engine class also serves the generic facade through
 * IResamplerEngine<TX, TY>. */
%define QM_RESAMPLER_CLASS_(XWord, XType, YWord, YType)
%typemap(csinterfaces) ExtremeResampler<XType, YType>
  "global::System.IDisposable, IResamplerEngine<global::System.XWord, global::System.YWord>"
%template(ExtremeResampler ## XWord ## YWord) ExtremeResampler<XType, YType>;
%enddef
QM_FOR_EACH_PAIR(QM_RESAMPLER_CLASS_)
