#include "interop/ArgumentChecks.h"

#include <cstdarg>
#include <cstdio>

#include "interop/ExceptionCallbacks.h"

namespace qm::interop {

bool IsNullPointer(const void* pointer, const char* name) {
    if (pointer != nullptr) return false;
    char message[128];
    std::snprintf(message, sizeof message, "%s is null", name);
    ReportNullReference(message);
    return true;
}

bool Refuses(bool refused, const char* format, ...) {
    if (!refused) return false;
    char message[256];
    va_list values;
    va_start(values, format);
    std::vsnprintf(message, sizeof message, format, values);
    va_end(values);
    ReportApplicationException(message);
    return true;
}

bool IsBadHalfOpenRange(std::int32_t start, std::int32_t end) {
    if (start == end) return false;
    return Refuses(start < 0, "start %d is below 0", start) ||
           Refuses(end < start, "end %d is below start %d", end, start);
}

}  // namespace qm::interop
