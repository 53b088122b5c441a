// The scan loops over Generic lane operations, for the ten element types.

#include "arrayops/simd/GenericOps.h"
#include "arrayops/simd/IsaScans.h"

QM_DEFINE_ISA_SCANS(kGenericScans, generic::Ops)
