#include "ModeInEffect.h"

#include "RunReport.h"

namespace demo {

namespace {

bool PlainNaNAware(const RunRequest& request) { return request.hasNaN && request.inputBaseIndex == 0; }

std::int32_t DoubleLinearNaNTable(std::int32_t mode) {
    switch (mode) {
        case kMin: return kMinOrMax;
        case kMid: return kMin;
        case kMinOrMax: return kMid;
        default: return mode;
    }
}

}  // namespace

ModeInEffect ResolveModeInEffect(const RunRequest& request, std::int32_t actualMode) {
    ModeInEffect effect{actualMode, false, {}};
    if (actualMode == kNone) {
        if (request.mode != kNone)
            effect.why = "GetActualResampling answered None: " +
                         Grouped(static_cast<long long>(request.endIndex) - request.startIndex + 1) +
                         " visible points are too few to resample for " + std::to_string(request.viewportWidth) +
                         " px";
        return effect;
    }
    if (PlainNaNAware(request) && request.data == kLinear) {
        effect.mode = DoubleLinearNaNTable(actualMode);
        if (effect.mode != actualMode)
            effect.why = std::string("the Double NaN-aware Linear table runs ") + ModeName(effect.mode) + " for " +
                         ModeName(actualMode);
    }
    if (PlainNaNAware(request) && effect.mode == kMinOrMax) {
        effect.keepsNearestToZero = true;
        effect.why += std::string(effect.why.empty() ? "" : "; ") +
                      "NaN-aware MinOrMax on plain arrays keeps the point nearest the zero line";
    }
    return effect;
}

}  // namespace demo
