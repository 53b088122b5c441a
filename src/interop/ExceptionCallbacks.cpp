#include "interop/ExceptionCallbacks.h"

namespace qm::interop {
namespace {

struct ExceptionRow {
    int code;
    QmExceptionCallback callback;
};

struct ArgumentRow {
    int code;
    QmExceptionArgumentCallback callback;
};

// Constant-initialised: the module has no start-up work.
constinit ExceptionRow exceptionTable[11] = {
    {0, nullptr}, {1, nullptr}, {2, nullptr}, {3, nullptr}, {4, nullptr}, {5, nullptr},
    {6, nullptr}, {7, nullptr}, {8, nullptr}, {9, nullptr}, {10, nullptr},
};

constinit ArgumentRow argumentTable[3] = {{0, nullptr}, {1, nullptr}, {2, nullptr}};

void Call(const ExceptionRow& row, const char* message) {
    if (row.callback != nullptr) row.callback(message);
}

void Call(const ArgumentRow& row, const char* message, const char* paramName) {
    if (row.callback != nullptr) row.callback(message, paramName);
}

}  // namespace

void RegisterExceptionCallbacks(const QmExceptionCallback (&callbacks)[11]) {
    for (int row = 0; row < 11; ++row) exceptionTable[row].callback = callbacks[row];
}

void RegisterArgumentCallbacks(const QmExceptionArgumentCallback (&callbacks)[3]) {
    for (int row = 0; row < 3; ++row) argumentTable[row].callback = callbacks[row];
}

void ReportApplicationException(const char* message) {
    Call(exceptionTable[static_cast<int>(ExceptionCode::Application)], message);
}

void ReportNullReference(const char* message) {
    Call(exceptionTable[static_cast<int>(ExceptionCode::NullReference)], message);
}

void ReportArgumentException(const char* message) {
    Call(argumentTable[static_cast<int>(ArgumentCode::Argument)], message, "");
}

void ReportArgumentNull(const char* message) {
    Call(argumentTable[static_cast<int>(ArgumentCode::ArgumentNull)], message, nullptr);
}

void ReportArgumentOutOfRange(const char* paramName) {
    Call(argumentTable[static_cast<int>(ArgumentCode::ArgumentOutOfRange)], nullptr, paramName);
}

}  // namespace qm::interop
