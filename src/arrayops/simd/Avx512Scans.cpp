// The scan loops over Avx512 lane operations, for the ten element types.

#include "arrayops/simd/Avx512Ops.h"
#include "arrayops/simd/IsaScans.h"

QM_DEFINE_ISA_SCANS(kAvx512Scans, avx512::Ops)
