// The scan loops over Sse2 lane operations, for the ten element types.

#include "arrayops/simd/Sse2Ops.h"
#include "arrayops/simd/IsaScans.h"

QM_DEFINE_ISA_SCANS(kSse2Scans, sse2::Ops)
