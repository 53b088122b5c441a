#include "CsvDemo.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <limits>
#include <utility>

#include "ColumnEnvelope.h"
#include "CsvSeriesReader.h"
#include "GapRuns.h"
#include "IsoTimestamp.h"
#include "ModeSweep.h"
#include "ScanShowcase.h"
#include "SvgChartWriter.h"

namespace demo {

namespace {

constexpr std::int32_t kViewportWidth = 1920;
constexpr std::int32_t kStretchPoints = 1000;

std::pair<double, double> YRange(const std::vector<double>& y) {
    double low = std::numeric_limits<double>::infinity(), high = -low;
    for (double v : y) {
        if (std::isnan(v)) continue;
        low = std::min(low, v);
        high = std::max(high, v);
    }
    return {low, high};
}

std::string AxisLabel(const CsvSeries& series, double x) {
    if (series.timestampX) return FormatTicks(static_cast<std::int64_t>(x));
    char text[32];
    std::snprintf(text, sizeof text, "%.6g", x);
    return text;
}

// Timestamps go to the DateTime engines as the 64-bit words a .NET array
// holds; numbers go to the Double engines.
template <class XT>
std::vector<RunResult> ResampleAll(const XT* x, const CsvSeries& series, const Layout& layout) {
    Resampler<XT> resampler;
    PrintRunHeader();
    std::vector<RunResult> runs = SweepModes(resampler, x, series.y.data(), layout);
    const auto n = static_cast<std::int32_t>(series.y.size());
    const std::int32_t count = std::min(kStretchPoints, n);
    RunVisibleStretch(resampler, x, series.y.data(), layout, (n - count) / 2, count);
    return runs;
}

std::string Skipped(const CsvSeries& series) {
    constexpr std::size_t kListed = 10;
    std::string text;
    for (std::size_t k = 0; k < series.skipped.size() && k < kListed; ++k)
        text += "  line " + std::to_string(series.skipped[k].line) + ": " + series.skipped[k].why + "\n";
    if (series.skipped.size() > kListed)
        text += "  ... and " + Grouped(static_cast<long long>(series.skipped.size() - kListed)) + " more\n";
    return text;
}

void PrintWhatWasRead(const CsvSeries& series, const std::string& path) {
    const char* separator = series.separator == '\t' ? "tab" : series.separator == ';' ? "';'" : "','";
    std::printf("Read %s rows of %s,%s from %s (%s-separated%s); X as %s%s\n",
                Grouped(static_cast<long long>(series.y.size())).c_str(), series.xName.c_str(),
                series.yName.c_str(), path.c_str(), separator,
                series.byteOrderMark ? ", UTF-8 byte-order mark dropped" : "",
                series.timestampX ? "ISO-8601 timestamps (.NET ticks, DateTime engine)" : "numbers (Double engine)",
                series.reordered ? ", rows sorted by X" : "");
    const auto [low, high] = YRange(series.y);
    if (low > high) std::printf("Y holds no number at all; ");
    else std::printf("Y from %.6g to %.6g; ", low, high);
    std::printf("%s rows with an empty or NaN Y kept as gaps%s\n",
                Grouped(static_cast<long long>(series.gapRows)).c_str(),
                series.gapRows > 0 ? " (HasNaN set: the NaN-aware strategies run)" : "");
    for (const std::string& warning : series.warnings) std::printf("warning: %s\n", warning.c_str());
    if (!series.skipped.empty())
        std::printf("Skipped %s rows:\n%s", Grouped(static_cast<long long>(series.skipped.size())).c_str(),
                    Skipped(series).c_str());
    std::printf("\n");
}

}  // namespace

int RunCsvDemo(const DemoOptions& options) {
    const auto started = std::chrono::steady_clock::now();
    std::string error;
    const std::optional<CsvSeries> read = ReadCsvSeries(*options.csvPath, error);
    if (!read) {
        std::fprintf(stderr, "quillmap_demo: %s\n", error.c_str());
        return 1;
    }
    const CsvSeries& series = *read;
    const auto n = static_cast<std::int32_t>(series.y.size());
    PrintWhatWasRead(series, *options.csvPath);
    if (!(series.x.back() > series.x.front())) {
        std::fprintf(stderr, "quillmap_demo: every row has the same X; there is no X range to resample over\n");
        return 1;
    }

    const std::vector<GapRun> gaps = FindGapRuns(series.y);
    Layout layout{"CSV, uneven", {}, &series.x, &series.y, {}, {}, &gaps};
    layout.request.data = kUnevenlySpaced;
    layout.request.hasNaN = !gaps.empty();
    layout.request.startIndex = 0;
    layout.request.endIndex = n - 1;
    layout.request.viewportWidth = kViewportWidth;
    layout.request.minX = series.x.front();
    layout.request.maxX = series.x.back();
    const std::vector<RunResult> runs = series.timestampX ? ResampleAll(series.dates.data(), series, layout)
                                                          : ResampleAll(series.x.data(), series, layout);
    std::printf("\n");
    ShowScan(series.y);
    ShowReportedFailure();

    ChartPanel panel;
    panel.title = std::string(options.csvPath->c_str()) + ": " + series.yName + " over " + series.xName + ", " +
                  Grouped(n) + " points to " + std::to_string(kViewportWidth) + " px (UnevenlySpaced)";
    panel.envelope = BuildEnvelope(series.x, series.y, layout.request.minX, layout.request.maxX, kViewportWidth);
    for (std::size_t m = 0; m < runs.size(); ++m) panel.lines.push_back({kBucketModes[m], &runs[m]});
    panel.leftXLabel = AxisLabel(series, layout.request.minX);
    panel.rightXLabel = AxisLabel(series, layout.request.maxX);
    if (!WriteSvgChart(options.svgPath, "QuillmapCore demo: resampled lines over the raw min/max band", {panel},
                       error)) {
        std::fprintf(stderr, "quillmap_demo: %s\n", error.c_str());
        return 1;
    }
    std::printf("Picture: %s\n", std::filesystem::absolute(options.svgPath).string().c_str());
    std::printf("Total time: %.2f s\n",
                std::chrono::duration<double>(std::chrono::steady_clock::now() - started).count());
    return 0;
}

}  // namespace demo
