// The main of both benchmark programs: callbacks first (as the managed
// caller registers them before any other call), then the cases of the
// program, then Google Benchmark with the ratio table added to its console
// output.

#include <cstring>
#include <string_view>

#include <unistd.h>

#include "BenchFailures.h"
#include "RatioReporter.h"

namespace bench {
void RegisterCases();  // defined by each program
}

namespace {

// The stock console reporter takes its options from flags that only
// Google Benchmark's own main reads; mirror the two that matter here.
benchmark::ConsoleReporter::OutputOptions ConsoleOptions(int argc, char** argv) {
    bool color = isatty(STDOUT_FILENO) != 0;
    for (int i = 1; i < argc; ++i) {
        const std::string_view arg = argv[i];
        if (!arg.starts_with("--benchmark_color=")) continue;
        const std::string_view value = arg.substr(18);
        color = value == "true" || value == "yes" || value == "1" || value == "on" ||
                (value == "auto" && isatty(STDOUT_FILENO) != 0);
    }
    // Tabular keeps the counters (points_out) in a column of their own.
    return color ? benchmark::ConsoleReporter::OO_ColorTabular : benchmark::ConsoleReporter::OO_Tabular;
}

}  // namespace

int main(int argc, char** argv) {
    bench::RegisterFailureCallbacks();
    bench::RegisterCases();
    // Another output format asked for on the command line gets the stock
    // reporter; the ratio table is console text.
    bool console = true;
    for (int i = 1; i < argc; ++i)
        if (std::strncmp(argv[i], "--benchmark_format=", 19) == 0 && std::strcmp(argv[i] + 19, "console") != 0)
            console = false;
    const auto options = ConsoleOptions(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    if (console) {
        bench::RatioReporter reporter(options);
        benchmark::RunSpecifiedBenchmarks(&reporter);
    } else {
        benchmark::RunSpecifiedBenchmarks();
    }
    benchmark::Shutdown();
    return 0;
}
