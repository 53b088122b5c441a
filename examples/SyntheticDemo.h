#pragma once
// The default run: a generated series resampled in every mode for a plain,
// a ring-buffer and an unevenly spaced layout.

#include "DemoOptions.h"

namespace demo {

int RunSyntheticDemo(const DemoOptions& options);

}  // namespace demo
