#include "BenchFailures.h"

#include "quillmap/QuillmapCore.h"

namespace bench {

namespace {

std::optional<std::string>& Noted() {
    static std::optional<std::string> noted;
    return noted;
}

void Note(const char* kind, const char* message) noexcept {
    try {
        if (!Noted()) Noted() = std::string(kind) + ": " + (message ? message : "(null)");
    } catch (...) {
        // Nothing may unwind into the library; a lost note is the lesser harm.
    }
}

void OnException(const char* message) noexcept { Note("exception", message); }
void OnArgument(const char* message, const char* parameter) noexcept {
    Note("argument", message ? message : parameter);
}
char* OnString(const char*) noexcept { return nullptr; }

}  // namespace

void RegisterFailureCallbacks() {
    SWIGRegisterExceptionCallbacks_QuillmapCore(OnException, OnException, OnException, OnException, OnException,
                                                OnException, OnException, OnException, OnException, OnException,
                                                OnException);
    SWIGRegisterExceptionArgumentCallbacks_QuillmapCore(OnArgument, OnArgument, OnArgument);
    SWIGRegisterStringCallback_QuillmapCore(OnString);
}

std::optional<std::string> TakeFailure() {
    std::optional<std::string> noted;
    noted.swap(Noted());
    return noted;
}

}  // namespace bench
