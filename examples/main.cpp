// quillmap_demo: resamples a generated 10-million-point series, or the user's
// own CSV data, through the flat C interface of libQuillmapCore, and draws
// the result over the raw data's envelope as an SVG picture.

#include <cstdio>
#include <exception>

#include "CsvDemo.h"
#include "DemoOptions.h"
#include "FailureLog.h"
#include "SyntheticDemo.h"

int main(int argc, char** argv) {
    std::string error;
    const auto options = demo::ParseDemoOptions(argc, argv, error);
    if (!options) {
        std::fprintf(stderr, "quillmap_demo: %s\n\n%s", error.c_str(), demo::DemoUsage());
        return 2;
    }
    if (options->showHelp) {
        std::fputs(demo::DemoUsage(), stdout);
        return 0;
    }
    // As the managed caller does: callbacks first, before any other call.
    demo::RegisterFailureCallbacks();
    try {
        return options->csvPath ? demo::RunCsvDemo(*options) : demo::RunSyntheticDemo(*options);
    } catch (const std::exception& e) {
        std::fprintf(stderr, "quillmap_demo: %s\n", e.what());
        return 1;
    }
}
