// The scan loops over Avx512 lane operations, for the ten element types.

#include "arrayops/ScanKernels.h"
#include "arrayops/simd/Avx512Ops.h"
#include "arrayops/simd/IsaScans.h"
#include "quillmap/QuillmapTypes.h"

QM_DEFINE_ISA_SCANS(Avx512Scans, avx512::Ops)
