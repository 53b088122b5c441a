#include "DemoOptions.h"

#include <charconv>
#include <string_view>

namespace demo {

namespace {

// The generated series needs room for its spikes, flat stretch and hole, and
// its indices must stay in int32 (the index type of the interface).
constexpr std::int64_t kMinPoints = 10'000;
constexpr std::int64_t kMaxPoints = 500'000'000;

bool ParsePoints(std::string_view text, std::int32_t& points, std::string& error) {
    std::int64_t value = 0;
    auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (ec != std::errc{} || end != text.data() + text.size() || value < kMinPoints || value > kMaxPoints) {
        error = "--points wants a whole number from " + std::to_string(kMinPoints) + " to " +
                std::to_string(kMaxPoints) + ", got '" + std::string(text) + "'";
        return false;
    }
    points = static_cast<std::int32_t>(value);
    return true;
}

}  // namespace

std::optional<DemoOptions> ParseDemoOptions(int argc, char** argv, std::string& error) {
    DemoOptions options;
    for (int i = 1; i < argc; ++i) {
        std::string_view arg = argv[i];
        auto value = [&](std::string_view name) -> std::optional<std::string_view> {
            if (i + 1 >= argc) {
                error = std::string(name) + " needs a value";
                return std::nullopt;
            }
            return std::string_view(argv[++i]);
        };
        if (arg == "-h" || arg == "--help") {
            options.showHelp = true;
        } else if (arg == "--out") {
            auto v = value(arg);
            if (!v) return std::nullopt;
            options.svgPath = std::string(*v);
        } else if (arg.starts_with("--out=")) {
            options.svgPath = std::string(arg.substr(6));
        } else if (arg == "--points") {
            auto v = value(arg);
            if (!v || !ParsePoints(*v, options.points, error)) return std::nullopt;
        } else if (arg.starts_with("--points=")) {
            if (!ParsePoints(arg.substr(9), options.points, error)) return std::nullopt;
        } else if (arg.starts_with("-") && arg.size() > 1) {
            error = "unknown option '" + std::string(arg) + "'";
            return std::nullopt;
        } else if (options.csvPath) {
            error = "only one CSV file can be given";
            return std::nullopt;
        } else {
            options.csvPath = std::string(arg);
        }
    }
    if (options.svgPath.empty()) {
        error = "--out needs a non-empty path";
        return std::nullopt;
    }
    return options;
}

const char* DemoUsage() {
    return "usage: quillmap_demo [data.csv] [--out PATH] [--points N]\n"
           "\n"
           "Without a CSV file: generates a series of N points (default 10000000) with\n"
           "spikes, a flat stretch, NaN dropouts and a hole in X, resamples it NaN-aware\n"
           "(HasNaN) for a 1920-pixel viewport in every mode for a plain, a ring-buffer\n"
           "and an unevenly spaced layout, and prints points in/out and the time of\n"
           "each run.\n"
           "With a CSV file (two columns X,Y separated by ',', ';' or tab; a header line\n"
           "is allowed; X numeric or ISO-8601 timestamps such as 2024-01-02T03:04:05.123Z;\n"
           "an empty or NaN Y is a gap): resamples that data as unevenly spaced X.\n"
           "Either way writes an SVG picture (default quillmap-demo.svg) with every\n"
           "resampled line over the min/max band of the raw data.\n";
}

}  // namespace demo
