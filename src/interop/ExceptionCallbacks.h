#pragma once
// The two callback tables through which failures reach the managed caller.
// They are plain static data: registration stores, reporting reads.

#include "quillmap/QuillmapCore.h"

namespace qm::interop {

enum class ExceptionCode : int { Application = 0, NullReference = 7, Count = 11 };
enum class ArgumentCode : int { Argument = 0, ArgumentNull = 1, ArgumentOutOfRange = 2, Count = 3 };

void RegisterExceptionCallbacks(const QmExceptionCallback (&callbacks)[11]);
void RegisterArgumentCallbacks(const QmExceptionArgumentCallback (&callbacks)[3]);

// Each report calls the registered callback of its row. Before registration
// there is nobody to tell: the report is dropped and the call still returns
// its empty result, rather than jumping through a null pointer.
void ReportApplicationException(const char* message);
void ReportNullReference(const char* message);
void ReportArgumentException(const char* message);
void ReportArgumentNull(const char* message);
void ReportArgumentOutOfRange(const char* paramName);

}  // namespace qm::interop
