#pragma once
// The demo's command line: an optional CSV file, --out PATH, --points N.

#include <cstdint>
#include <optional>
#include <string>

namespace demo {

struct DemoOptions {
    std::optional<std::string> csvPath;       // resample this file instead of a generated series
    std::string svgPath = "quillmap-demo.svg";
    std::int32_t points = 10'000'000;         // size of the generated series
    bool showHelp = false;
};

// Parses argv; on a malformed command line returns nothing and fills `error`.
std::optional<DemoOptions> ParseDemoOptions(int argc, char** argv, std::string& error);

const char* DemoUsage();

}  // namespace demo
