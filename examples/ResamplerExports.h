#pragma once
// Picks the export family of an X element type, so one run routine serves
// plain double X and .NET DateTime X (the Y type is double throughout).

#include "quillmap/QuillmapCore.h"

namespace demo {

template <class XT>
struct ResamplerExports;

#define DEMO_RESAMPLER_EXPORTS_(XW, XT)                                                      \
    template <>                                                                              \
    struct ResamplerExports<XT> {                                                            \
        using Engine = QmExtremeResampler##XW##Double;                                       \
        static constexpr const char* kName = "ExtremeResampler" #XW "Double";                \
        static Engine* Create() { return CSharp_new_ExtremeResampler##XW##Double(); }        \
        static void Destroy(Engine* e) { CSharp_delete_ExtremeResampler##XW##Double(e); }    \
        static int32_t UpdateIndices(Engine* e, QmIntVector* v, const XT* x, const double* y, \
                                     int32_t mode, const QmResamplingArgs* a) {              \
            return CSharp_ExtremeResampler##XW##Double_UpdateIndices(e, v, x, y, mode, a);   \
        }                                                                                    \
        static void Execute(Engine* e, const XT* x, const double* y, double* outX, double* outY, \
                            QmIntVector* v, int32_t mode, const QmResamplingArgs* a) {       \
            CSharp_ExtremeResampler##XW##Double_Execute(e, x, y, outX, outY, v, mode, a);    \
        }                                                                                    \
    };

DEMO_RESAMPLER_EXPORTS_(Double, double)
DEMO_RESAMPLER_EXPORTS_(DateTime, QmDateTime)

#undef DEMO_RESAMPLER_EXPORTS_

}  // namespace demo
