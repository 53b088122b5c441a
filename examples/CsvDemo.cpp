#include "CsvDemo.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>

#include "ColumnEnvelope.h"
#include "CsvSeriesReader.h"
#include "IsoTimestamp.h"
#include "ModeSweep.h"
#include "ScanShowcase.h"
#include "SvgChartWriter.h"

namespace demo {

namespace {

constexpr std::int32_t kViewportWidth = 1920;
constexpr std::int32_t kStretchPoints = 1000;

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
    const std::string skipped = series.skippedRows == 0 ? std::string()
                                : ", skipped " + Grouped(static_cast<long long>(series.skippedRows)) +
                                      " rows without a usable X or a finite Y";
    std::printf("Read %s rows of %s,%s from %s; X as %s%s%s\n\n", Grouped(n).c_str(), series.xName.c_str(),
                series.yName.c_str(), options.csvPath->c_str(),
                series.timestampX ? "ISO-8601 timestamps (.NET ticks, DateTime engine)" : "numbers (Double engine)",
                skipped.c_str(), series.reordered ? ", rows sorted by X" : "");
    if (!(series.x.back() > series.x.front())) {
        std::fprintf(stderr, "quillmap_demo: every row has the same X; there is no X range to resample over\n");
        return 1;
    }

    Layout layout{"CSV, uneven", {}, &series.x, &series.y, {}, {}};
    layout.request.data = kUnevenlySpaced;
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
