// The scan loops over Avx2 lane operations, for the ten element types.

#include "arrayops/simd/Avx2Ops.h"
#include "arrayops/simd/IsaScans.h"

QM_DEFINE_ISA_SCANS(kAvx2Scans, avx2::Ops)
