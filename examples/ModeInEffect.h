#pragma once
// Which reducer really runs, and why it is not always the mode asked for.
// The engine picks its strategy by the mode GetActualResampling answers, and
// two tables of the NaN-aware family behave in their own way: with Y Double
// on plain arrays (InputBaseIndex 0), the Linear row runs Min for Mid, Mid
// for MinOrMax and MinOrMax for Min; and a NaN-aware MinOrMax on plain arrays
// keeps the point of a one-sided run nearest the zero line, not the farthest.
// A caller that draws these lanes must know both, so the demo says so.

#include <cstdint>
#include <string>

#include "RunRequest.h"

namespace demo {

struct ModeInEffect {
    std::int32_t mode = kNone;      // the reducer that ran
    bool keepsNearestToZero = false;  // MinOrMax that keeps the point nearest ZeroLineY
    std::string why;                // empty when it ran as asked
};

// For a run of `request` (Y Double) that GetActualResampling answered with
// `actualMode`.
ModeInEffect ResolveModeInEffect(const RunRequest& request, std::int32_t actualMode);

}  // namespace demo
