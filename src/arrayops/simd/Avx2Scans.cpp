// The scan loops over Avx2 lane operations, for the ten element types.

#include "arrayops/ScanKernels.h"
#include "arrayops/simd/Avx2Ops.h"
#include "arrayops/simd/IsaScans.h"
#include "quillmap/QuillmapTypes.h"

QM_DEFINE_ISA_SCANS(Avx2Scans, avx2::Ops)
