/*
 * The element types of QuillmapCore and the two word lists from which every
 * per-type export and every template instance is generated. This is the only
 * place where the lists are written out.
 */
#ifndef QUILLMAP_TYPES_H
#define QUILLMAP_TYPES_H

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* A .NET DateTime as it lies in the caller's array: the low 62 bits are the
 * tick count, the top two bits are the kind flags. */
typedef struct QmDateTime {
    uint64_t Word;
} QmDateTime;

/* A .NET TimeSpan: a signed 64-bit tick count. */
typedef struct QmTimeSpan {
    int64_t Ticks;
} QmTimeSpan;

#ifdef __cplusplus
}
#endif

/*
 * QM_Y_TYPES(M, ctx) calls M(ctx, Word, CType, "C++ spelling") for the ten
 * element types a value (Y) array may have, in export order. The C++
 * spelling is the one used in the null-reference messages.
 */
#define QM_Y_TYPES(M, ctx)                                   \
    M(ctx, Double, double, "double")                         \
    M(ctx, Single, float, "float")                           \
    M(ctx, Int64, int64_t, "long long")                      \
    M(ctx, UInt64, uint64_t, "unsigned long long")           \
    M(ctx, Int32, int32_t, "int")                            \
    M(ctx, UInt32, uint32_t, "unsigned int")                 \
    M(ctx, Int16, int16_t, "short")                          \
    M(ctx, UInt16, uint16_t, "unsigned short")               \
    M(ctx, Byte, uint8_t, "unsigned char")                   \
    M(ctx, SByte, int8_t, "signed char")

/*
 * QM_X_TYPES(M, ctx) calls M(ctx, Word, CType) for the twelve element types
 * an axis (X) array may have, in export order. It is written out apart from
 * QM_Y_TYPES so that the two lists can be nested in QM_FOR_EACH_PAIR.
 */
#define QM_X_TYPES(M, ctx)      \
    M(ctx, Double, double)      \
    M(ctx, Single, float)       \
    M(ctx, Int64, int64_t)      \
    M(ctx, UInt64, uint64_t)    \
    M(ctx, Int32, int32_t)      \
    M(ctx, UInt32, uint32_t)    \
    M(ctx, Int16, int16_t)      \
    M(ctx, UInt16, uint16_t)    \
    M(ctx, Byte, uint8_t)       \
    M(ctx, SByte, int8_t)       \
    M(ctx, DateTime, QmDateTime) \
    M(ctx, TimeSpan, QmTimeSpan)

/* QM_FOR_EACH_PAIR(M) calls M(XWord, XType, YWord, YType) for all 120 pairs,
 * X word outermost. */
#define QM_FOR_EACH_PAIR(M) QM_X_TYPES(QM_PAIR_ROW_, M)
#define QM_PAIR_ROW_(M, XWord, XType) QM_Y_TYPES(QM_PAIR_CELL_, (M, XWord, XType))
#define QM_PAIR_CELL_(row, YWord, YType, YName) QM_PAIR_CALL_(QM_PAIR_UNPACK_ row, YWord, YType)
#define QM_PAIR_UNPACK_(M, XWord, XType) M, XWord, XType
#define QM_PAIR_CALL_(...) QM_PAIR_APPLY_(__VA_ARGS__)
#define QM_PAIR_APPLY_(M, XWord, XType, YWord, YType) M(XWord, XType, YWord, YType)

#endif /* QUILLMAP_TYPES_H */
