// The scan loops over Sse2 lane operations, for the ten element types.

#include "arrayops/ScanKernels.h"
#include "arrayops/simd/Sse2Ops.h"
#include "arrayops/simd/IsaScans.h"
#include "quillmap/QuillmapTypes.h"

QM_DEFINE_ISA_SCANS(Sse2Scans, sse2::Ops)
