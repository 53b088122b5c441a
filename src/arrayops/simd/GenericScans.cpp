// The scan loops over Generic lane operations, for the ten element types.

#include "arrayops/ScanKernels.h"
#include "arrayops/simd/GenericOps.h"
#include "arrayops/simd/IsaScans.h"
#include "quillmap/QuillmapTypes.h"

QM_DEFINE_ISA_SCANS(GenericScans, generic::Ops)
