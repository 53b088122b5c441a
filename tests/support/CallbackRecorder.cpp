#include "support/CallbackRecorder.h"

#include "quillmap/QuillmapCore.h"

namespace qmtest {
namespace {

std::vector<Report>& Store() {
    static std::vector<Report> reports;
    return reports;
}

std::optional<std::string> Text(const char* s) { return s ? std::optional<std::string>(s) : std::nullopt; }

template <int Code>
void OnException(const char* message) {
    Store().push_back({Report::Kind::Exception, Code, Text(message), std::nullopt});
}

template <Report::Kind K>
void OnArgument(const char* message, const char* paramName) {
    Store().push_back({K, -1, Text(message), Text(paramName)});
}

}  // namespace

void StartRecording() {
    SWIGRegisterExceptionCallbacks_QuillmapCore(OnException<0>, OnException<1>, OnException<2>, OnException<3>,
                                                OnException<4>, OnException<5>, OnException<6>, OnException<7>,
                                                OnException<8>, OnException<9>, OnException<10>);
    SWIGRegisterExceptionArgumentCallbacks_QuillmapCore(OnArgument<Report::Kind::Argument>,
                                                        OnArgument<Report::Kind::ArgumentNull>,
                                                        OnArgument<Report::Kind::ArgumentOutOfRange>);
    Store().clear();
}

const std::vector<Report>& Reports() { return Store(); }

}  // namespace qmtest
