#pragma once
// The names of the NaN-aware strategies.

#include "resampling/ModeMethods.h"
#include "resampling/nan/NaNAwareMethods.h"

namespace qm {

QM_NAME_MODE_METHODS_(Linear, ResamplingMethodWithNaN, ResamplingMethodBaseWithNaN)
QM_NAME_MODE_METHODS_(Category, ResamplingMethodWithNaN, CategoryResamplingMethodBaseWithNaN)
QM_NAME_MODE_METHODS_(UnevenlySpaced, ResamplingMethodWithNaN, UnevenlySpacedResamplingMethodWithNaN)
QM_NAME_MODE_METHODS_(Linear, FifoResamplingMethodWithNaN, FifoResamplingMethodBaseWithNaN)
QM_NAME_MODE_METHODS_(Category, FifoResamplingMethodWithNaN, FifoCategoryResamplingMethodBaseWithNaN)
QM_NAME_MODE_METHODS_(UnevenlySpaced, FifoResamplingMethodWithNaN, UnevenlySpacedFifoResamplingMethodWithNaN)

}  // namespace qm
