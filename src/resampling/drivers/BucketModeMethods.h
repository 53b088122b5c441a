#pragma once
// The names of the bucket strategies without NaN handling.

#include "resampling/ModeMethods.h"
#include "resampling/drivers/BucketMethods.h"

namespace qm {

QM_NAME_MODE_METHODS_(Linear, ResamplingMethod, LinearResamplingMethodBase)
QM_NAME_MODE_METHODS_(Category, ResamplingMethod, CategoryResamplingMethodBase)
QM_NAME_MODE_METHODS_(UnevenlySpaced, ResamplingMethod, UnevenlySpacedResamplingMethod)
QM_NAME_MODE_METHODS_(Linear, FifoResamplingMethod, FifoLinearResamplingMethodBase)
QM_NAME_MODE_METHODS_(Category, FifoResamplingMethod, FifoCategoryResamplingMethodBase)
QM_NAME_MODE_METHODS_(UnevenlySpaced, FifoResamplingMethod, UnevenlySpacedFifoResamplingMethod)

}  // namespace qm
