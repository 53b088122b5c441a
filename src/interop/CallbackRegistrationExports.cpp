// The three registration exports of the failure callbacks.

#include "interop/ExceptionCallbacks.h"

extern "C" {

QM_API void SWIGRegisterExceptionCallbacks_QuillmapCore(
    QmExceptionCallback applicationCallback, QmExceptionCallback arithmeticCallback,
    QmExceptionCallback divideByZeroCallback, QmExceptionCallback indexOutOfRangeCallback,
    QmExceptionCallback invalidCastCallback, QmExceptionCallback invalidOperationCallback,
    QmExceptionCallback ioCallback, QmExceptionCallback nullReferenceCallback,
    QmExceptionCallback outOfMemoryCallback, QmExceptionCallback overflowCallback,
    QmExceptionCallback systemCallback) {
    const QmExceptionCallback callbacks[11] = {
        applicationCallback, arithmeticCallback,       divideByZeroCallback, indexOutOfRangeCallback,
        invalidCastCallback, invalidOperationCallback, ioCallback,           nullReferenceCallback,
        outOfMemoryCallback, overflowCallback,         systemCallback,
    };
    qm::interop::RegisterExceptionCallbacks(callbacks);
}

QM_API void SWIGRegisterExceptionArgumentCallbacks_QuillmapCore(
    QmExceptionArgumentCallback argumentCallback, QmExceptionArgumentCallback argumentNullCallback,
    QmExceptionArgumentCallback argumentOutOfRangeCallback) {
    const QmExceptionArgumentCallback callbacks[3] = {argumentCallback, argumentNullCallback,
                                                      argumentOutOfRangeCallback};
    qm::interop::RegisterArgumentCallbacks(callbacks);
}

QM_API void SWIGRegisterStringCallback_QuillmapCore(QmStringCallback) {}

}  // extern "C"
