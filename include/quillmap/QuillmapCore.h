/*
 * QuillmapCore: the flat C interface of the native charting core.
 *
 * This header is the ABI contract for the managed layer and for tests. Every
 * exported function is declared here; the per-type families are generated
 * from the word lists in QuillmapTypes.h, so their names read as
 * CSharp_<Family><XWord><YWord>_<Operation>.
 *
 * Failures never unwind into the caller. A failing call invokes one of the
 * callbacks registered below and then returns its empty result (null, 0 or
 * nothing). The callbacks must return normally.
 */
#ifndef QUILLMAP_CORE_H
#define QUILLMAP_CORE_H

#include <stdint.h>

#include "QuillmapTypes.h"

/* The library's own sources define QM_BUILDING_CORE; code that links the
 * objects statically (the internal tests) defines QM_STATIC. Everyone else
 * is a consumer of the shared library. */
#if defined(_WIN32) || defined(__CYGWIN__)
#if defined(QM_BUILDING_CORE)
#define QM_API __declspec(dllexport)
#elif defined(QM_STATIC)
#define QM_API
#else
#define QM_API __declspec(dllimport)
#endif
#elif defined(__GNUC__) || defined(__clang__)
#define QM_API __attribute__((visibility("default")))
#else
#define QM_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* ---------------------------------------------------------------------------
 * Opaque handles. Each is made by a CSharp_new_ export (or by an IntVector
 * operation that returns a new vector) and ended by the matching
 * CSharp_delete_ export.
 */
typedef struct QmIntVector QmIntVector;
typedef struct QmResamplingArgs QmResamplingArgs;

#define QM_DECLARE_ELEMENT_HANDLES_(ctx, W, T, N)                             \
    typedef struct QmArrayOperations##W QmArrayOperations##W;                 \
    typedef struct QmMinMaxPointSearchResult##W QmMinMaxPointSearchResult##W;
QM_Y_TYPES(QM_DECLARE_ELEMENT_HANDLES_, _)

#define QM_DECLARE_RESAMPLER_HANDLE_(XW, XT, YW, YT) \
    typedef struct QmExtremeResampler##XW##YW QmExtremeResampler##XW##YW;
QM_FOR_EACH_PAIR(QM_DECLARE_RESAMPLER_HANDLE_)

/* ---------------------------------------------------------------------------
 * Failure callbacks (3 exports). Register once, before any other call.
 *
 * Exception callbacks, by code: 0 ApplicationException (every caught
 * std::exception: the message is what()), 1 Arithmetic, 2 DivideByZero,
 * 3 IndexOutOfRange, 4 InvalidCast, 5 InvalidOperation, 6 IO,
 * 7 NullReference, 8 OutOfMemory, 9 Overflow, 10 System. Only code 0 is ever
 * called.
 * Argument callbacks, by code: 0 ArgumentException (message, parameter ""),
 * 1 ArgumentNullException (message, parameter null), 2
 * ArgumentOutOfRangeException (message null, parameter name).
 */
typedef void (*QmExceptionCallback)(const char* message);
typedef void (*QmExceptionArgumentCallback)(const char* message, const char* paramName);
typedef char* (*QmStringCallback)(const char* text);

QM_API void SWIGRegisterExceptionCallbacks_QuillmapCore(
    QmExceptionCallback applicationCallback, QmExceptionCallback arithmeticCallback,
    QmExceptionCallback divideByZeroCallback, QmExceptionCallback indexOutOfRangeCallback,
    QmExceptionCallback invalidCastCallback, QmExceptionCallback invalidOperationCallback,
    QmExceptionCallback ioCallback, QmExceptionCallback nullReferenceCallback,
    QmExceptionCallback outOfMemoryCallback, QmExceptionCallback overflowCallback,
    QmExceptionCallback systemCallback);
QM_API void SWIGRegisterExceptionArgumentCallbacks_QuillmapCore(
    QmExceptionArgumentCallback argumentCallback, QmExceptionArgumentCallback argumentNullCallback,
    QmExceptionArgumentCallback argumentOutOfRangeCallback);
/* Accepted and ignored: no export returns a string. */
QM_API void SWIGRegisterStringCallback_QuillmapCore(QmStringCallback callback);

/* ---------------------------------------------------------------------------
 * IntVector (26 exports): the growable vector of int32 indices that carries
 * resampling results. Growth is by half (capacities 1, 2, 3, 4, 6, 9, ...),
 * at most 0x3FFFFFFF elements. Range failures report through
 * ArgumentOutOfRange (parameter "index", "count" or "capacity") or Argument
 * ("invalid range"); a null vector argument through ArgumentNull. Booleans
 * are returned as 0 or 1.
 */
QM_API QmIntVector* CSharp_new_IntVector__SWIG_0(void);
QM_API QmIntVector* CSharp_new_IntVector__SWIG_1(const QmIntVector* other);
QM_API QmIntVector* CSharp_new_IntVector__SWIG_2(int32_t capacity);
QM_API void CSharp_delete_IntVector(QmIntVector* self);
QM_API void CSharp_IntVector_Clear(QmIntVector* self);
QM_API void CSharp_IntVector_Add(QmIntVector* self, int32_t value);
QM_API int32_t CSharp_IntVector_size(const QmIntVector* self);
QM_API int32_t CSharp_IntVector_capacity(const QmIntVector* self);
QM_API void CSharp_IntVector_reserve(QmIntVector* self, uint32_t n);
QM_API int32_t CSharp_IntVector_getitemcopy(QmIntVector* self, int32_t index);
QM_API int32_t CSharp_IntVector_getitem(QmIntVector* self, int32_t index);
QM_API void CSharp_IntVector_setitem(QmIntVector* self, int32_t index, int32_t value);
QM_API void CSharp_IntVector_AddRange(QmIntVector* self, const QmIntVector* values);
QM_API QmIntVector* CSharp_IntVector_GetRange(QmIntVector* self, int32_t index, int32_t count);
QM_API void CSharp_IntVector_Insert(QmIntVector* self, int32_t index, int32_t value);
QM_API void CSharp_IntVector_InsertRange(QmIntVector* self, int32_t index, const QmIntVector* values);
QM_API void CSharp_IntVector_RemoveAt(QmIntVector* self, int32_t index);
QM_API void CSharp_IntVector_RemoveRange(QmIntVector* self, int32_t index, int32_t count);
QM_API QmIntVector* CSharp_IntVector_Repeat(int32_t value, int32_t count);
QM_API void CSharp_IntVector_Reverse__SWIG_0(QmIntVector* self);
QM_API void CSharp_IntVector_Reverse__SWIG_1(QmIntVector* self, int32_t index, int32_t count);
QM_API void CSharp_IntVector_SetRange(QmIntVector* self, int32_t index, const QmIntVector* values);
QM_API int32_t CSharp_IntVector_Contains(QmIntVector* self, int32_t value);
QM_API int32_t CSharp_IntVector_IndexOf(QmIntVector* self, int32_t value);
QM_API int32_t CSharp_IntVector_LastIndexOf(QmIntVector* self, int32_t value);
QM_API int32_t CSharp_IntVector_Remove(QmIntVector* self, int32_t value);

/* ---------------------------------------------------------------------------
 * ArrayOperations<T> (10 per element type): seeded scans over [start, end)
 * and exact lookups. The caller's variables are the seeds and receive the
 * result; ties keep the earliest position and NaN never wins. Lookups return
 * an absolute position or -1. Failures report through ApplicationException;
 * a null result record through ArgumentNull.
 *
 * MinMaxPointSearchResult<T> (10 per element type): the record
 * {MinIndex, MaxIndex, Min, Max}, made zeroed. Setters ignore a null self.
 */
#define QM_DECLARE_ARRAY_EXPORTS_(ctx, W, T, N)                                                     \
    QM_API QmArrayOperations##W* CSharp_new_ArrayOperations##W(void);                               \
    QM_API void CSharp_delete_ArrayOperations##W(QmArrayOperations##W* self);                       \
    QM_API void CSharp_ArrayOperations##W##_Min__SWIG_0(QmArrayOperations##W* self, const T* data,  \
                                                        int32_t start, int32_t end, T* min);        \
    QM_API void CSharp_ArrayOperations##W##_Min__SWIG_1(QmArrayOperations##W* self, const T* data,  \
                                                        int32_t start, int32_t end, T* min,         \
                                                        int32_t* minIndex);                         \
    QM_API void CSharp_ArrayOperations##W##_Max__SWIG_0(QmArrayOperations##W* self, const T* data,  \
                                                        int32_t start, int32_t end, T* max);        \
    QM_API void CSharp_ArrayOperations##W##_Max__SWIG_1(QmArrayOperations##W* self, const T* data,  \
                                                        int32_t start, int32_t end, T* max,         \
                                                        int32_t* maxIndex);                         \
    QM_API void CSharp_ArrayOperations##W##_MinMax__SWIG_0(QmArrayOperations##W* self,              \
                                                           const T* data, int32_t start,            \
                                                           int32_t end, T* min, T* max);            \
    QM_API void CSharp_ArrayOperations##W##_MinMax__SWIG_1(QmArrayOperations##W* self,              \
                                                           const T* data, int32_t start,            \
                                                           int32_t end,                             \
                                                           QmMinMaxPointSearchResult##W* result);   \
    QM_API int32_t CSharp_ArrayOperations##W##_FindIndexExactInUnsortedData(                        \
        QmArrayOperations##W* self, const T* data, int32_t start, int32_t end, T value);            \
    QM_API int32_t CSharp_ArrayOperations##W##_FindIndexExactInSortedData(                          \
        QmArrayOperations##W* self, const T* data, int32_t start, int32_t end, T value);            \
    QM_API QmMinMaxPointSearchResult##W* CSharp_new_MinMaxPointSearchResult##W(void);               \
    QM_API void CSharp_delete_MinMaxPointSearchResult##W(QmMinMaxPointSearchResult##W* self);       \
    QM_API void CSharp_MinMaxPointSearchResult##W##_MinIndex_set(QmMinMaxPointSearchResult##W* self, \
                                                                 int32_t value);                    \
    QM_API int32_t CSharp_MinMaxPointSearchResult##W##_MinIndex_get(                                \
        const QmMinMaxPointSearchResult##W* self);                                                  \
    QM_API void CSharp_MinMaxPointSearchResult##W##_MaxIndex_set(QmMinMaxPointSearchResult##W* self, \
                                                                 int32_t value);                    \
    QM_API int32_t CSharp_MinMaxPointSearchResult##W##_MaxIndex_get(                                \
        const QmMinMaxPointSearchResult##W* self);                                                  \
    QM_API void CSharp_MinMaxPointSearchResult##W##_Min_set(QmMinMaxPointSearchResult##W* self,     \
                                                            T value);                               \
    QM_API T CSharp_MinMaxPointSearchResult##W##_Min_get(const QmMinMaxPointSearchResult##W* self); \
    QM_API void CSharp_MinMaxPointSearchResult##W##_Max_set(QmMinMaxPointSearchResult##W* self,     \
                                                            T value);                               \
    QM_API T CSharp_MinMaxPointSearchResult##W##_Max_get(const QmMinMaxPointSearchResult##W* self);
QM_Y_TYPES(QM_DECLARE_ARRAY_EXPORTS_, _)

/* ---------------------------------------------------------------------------
 * ResamplingArgs (26 exports): the record that describes one run. Made
 * zero-filled; a setter ignores a null self, a getter reads self unchecked.
 * QM_RESAMPLING_ARGS_FIELDS(M) calls M(Field, boundary type) in record order.
 * HasNaN crosses as an int32 (stored as value != 0, read back as 0 or 1).
 */
#define QM_RESAMPLING_ARGS_FIELDS(M)   \
    M(Resampling, int32_t)             \
    M(Data, int32_t)                   \
    M(StartIndex, int32_t)             \
    M(EndIndex, int32_t)               \
    M(ViewportWidth, int32_t)          \
    M(ResamplingPrecision, uint32_t)   \
    M(MinXInclusive, double)           \
    M(MaxXInclusive, double)           \
    M(InputSize, int32_t)              \
    M(InputBaseIndex, int32_t)         \
    M(HasNaN, int32_t)                 \
    M(ZeroLineY, double)

QM_API QmResamplingArgs* CSharp_new_ResamplingArgs(void);
QM_API void CSharp_delete_ResamplingArgs(QmResamplingArgs* self);
#define QM_DECLARE_ARGS_ACCESSORS_(Field, BoundaryType)                                     \
    QM_API void CSharp_ResamplingArgs_##Field##_set(QmResamplingArgs* self, BoundaryType value); \
    QM_API BoundaryType CSharp_ResamplingArgs_##Field##_get(const QmResamplingArgs* self);
QM_RESAMPLING_ARGS_FIELDS(QM_DECLARE_ARGS_ACCESSORS_)

/* Resampling modes (the column of a run): None 0, MinMax 1, Min 2, Max 3,
 * Mid 4, MinOrMax 5. Data kinds (the row): Linear 0, Category 1,
 * UnevenlySpaced 2, NotResampled 3. */
QM_API int32_t CSharp_NORMALIZED_BASE_INDEX_get(void);
QM_API int32_t CSharp_RESAMPLING_MODE_COUNT_get(void);
QM_API int32_t CSharp_RESAMPLING_DATA_COUNT_get(void);

/* ---------------------------------------------------------------------------
 * Helpers (3 exports). A null vector or args reports through ArgumentNull
 * and returns 0 (GetActualResampling: mode None).
 */
QM_API void CSharp_ExtremeResamplingHelpersWrapper_CopyVectorTo(const QmIntVector* source,
                                                                int32_t* destination);
QM_API int32_t CSharp_ExtremeResamplingHelpersWrapper_MergeIndices(const QmIntVector* indices,
                                                                   int32_t firstCount,
                                                                   int32_t secondCount,
                                                                   int32_t* output);
QM_API int32_t CSharp_ExtremeResamplingHelpersWrapper_GetActualResampling(const QmResamplingArgs* args);

/* ---------------------------------------------------------------------------
 * ExtremeResampler<X,Y> (5 per type pair, 600 in all). A run is
 * GetActualResampling, then UpdateIndices (returns the room the output needs),
 * then Execute with the same mode and args. UpdateIndices and Execute report
 * a null indices or args through ArgumentNull (indices first) and any other
 * failure through ApplicationException. CopyValuesByIndices gathers values
 * for logical indices and checks nothing.
 */
#define QM_DECLARE_RESAMPLER_EXPORTS_(XW, XT, YW, YT)                                                \
    QM_API QmExtremeResampler##XW##YW* CSharp_new_ExtremeResampler##XW##YW(void);                    \
    QM_API void CSharp_delete_ExtremeResampler##XW##YW(QmExtremeResampler##XW##YW* self);            \
    QM_API int32_t CSharp_ExtremeResampler##XW##YW##_UpdateIndices(                                  \
        QmExtremeResampler##XW##YW* self, QmIntVector* indices, const XT* x, const YT* y,            \
        int32_t mode, const QmResamplingArgs* args);                                                 \
    QM_API void CSharp_ExtremeResampler##XW##YW##_Execute(                                           \
        QmExtremeResampler##XW##YW* self, const XT* x, const YT* y, double* outX, double* outY,     \
        QmIntVector* indices, int32_t mode, const QmResamplingArgs* args);                           \
    QM_API void CSharp_ExtremeResampler##XW##YW##_CopyValuesByIndices(                               \
        const XT* x, const YT* y, const YT* y1, const int32_t* indices, double* outX, double* outY, \
        double* outY1, int32_t count, int32_t size, int32_t baseIndex, int32_t useIndexAsX);
QM_FOR_EACH_PAIR(QM_DECLARE_RESAMPLER_EXPORTS_)

#ifdef __cplusplus
}
#endif

#endif /* QUILLMAP_CORE_H */
