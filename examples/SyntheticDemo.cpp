#include "SyntheticDemo.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>

#include "ColumnEnvelope.h"
#include "ModeSweep.h"
#include "RingLayout.h"
#include "ScanShowcase.h"
#include "SeriesGenerator.h"
#include "SvgChartWriter.h"

namespace demo {

namespace {

constexpr std::int32_t kViewportWidth = 1920;
constexpr std::int32_t kStretchPoints = 1000;  // the visible stretch of mode None

double Seconds(std::chrono::steady_clock::time_point since) {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - since).count();
}

std::vector<std::int32_t> Within(const std::vector<std::int32_t>& spikes, std::int32_t first, std::int32_t last) {
    std::vector<std::int32_t> inside;
    for (std::int32_t at : spikes)
        if (at >= first && at <= last) inside.push_back(at);
    return inside;
}

Layout WholeSeries(std::string name, std::int32_t data, const std::vector<double>& x, const GeneratedSeries& s) {
    Layout layout{std::move(name), {}, &x, &s.y, s.upSpikes, s.downSpikes, &s.dropouts};
    layout.request.data = data;
    layout.request.hasNaN = true;  // the dropouts: NaN-aware strategies
    layout.request.startIndex = 0;
    layout.request.endIndex = static_cast<std::int32_t>(x.size()) - 1;
    layout.request.viewportWidth = kViewportWidth;
    layout.request.minX = x.front();
    layout.request.maxX = x.back();
    return layout;
}

// A zoomed viewport of the uneven layout around the hole: the visible range
// is given in X, and StartIndex/EndIndex are the points inside it.
Layout ZoomOnHole(const GeneratedSeries& s) {
    const std::vector<double>& x = s.unevenX;
    const double range = x.back() - x.front();
    const double minX = x[static_cast<std::size_t>(s.holeAfter)] - 0.03 * range;
    const double maxX = x[static_cast<std::size_t>(s.holeAfter) + 1] + 0.03 * range;
    const auto first = static_cast<std::int32_t>(std::lower_bound(x.begin(), x.end(), minX) - x.begin());
    const auto last = static_cast<std::int32_t>(std::upper_bound(x.begin(), x.end(), maxX) - x.begin()) - 1;
    Layout layout{"Uneven zoom", {}, &x, &s.y, Within(s.upSpikes, first, last), Within(s.downSpikes, first, last),
                  &s.dropouts};
    layout.request.data = kUnevenlySpaced;
    layout.request.hasNaN = true;
    layout.request.startIndex = first;
    layout.request.endIndex = last;
    layout.request.viewportWidth = kViewportWidth;
    layout.request.minX = minX;
    layout.request.maxX = maxX;
    return layout;
}

ChartPanel Panel(std::string title, const Layout& layout, const std::vector<RunResult>& runs) {
    ChartPanel panel;
    panel.title = std::move(title);
    panel.envelope = BuildEnvelope(*layout.x, *layout.y, layout.request.minX, layout.request.maxX,
                                   layout.request.viewportWidth);
    for (std::size_t m = 0; m < runs.size(); ++m) panel.lines.push_back({kBucketModes[m], &runs[m]});
    char text[64];
    std::snprintf(text, sizeof text, "X = %.2f", layout.request.minX);
    panel.leftXLabel = text;
    std::snprintf(text, sizeof text, "X = %.2f", layout.request.maxX);
    panel.rightXLabel = text;
    return panel;
}

std::string DescribeDropouts(const std::vector<GapRun>& dropouts) {
    std::string text;
    for (const GapRun& gap : dropouts)
        text += (text.empty() ? "" : ", ") + Grouped(gap.end - gap.begin) + " at " + Grouped(gap.begin);
    return std::to_string(dropouts.size()) + " NaN dropouts (" + text + ")";
}

std::string Describe(const Layout& layout, const std::string& how) {
    return layout.name + ": " + how + ", " +
           Grouped(layout.request.endIndex - layout.request.startIndex + 1) + " points to " +
           std::to_string(layout.request.viewportWidth) + " px";
}

}  // namespace

int RunSyntheticDemo(const DemoOptions& options) {
    const auto started = std::chrono::steady_clock::now();
    const GeneratedSeries s = GenerateSeries(options.points);
    const auto n = static_cast<std::int32_t>(s.y.size());
    // Stored as a full ring whose oldest point is not at slot 0.
    const RingBuffer ring = StoreAsRing(s.evenX, s.y, n / 3 + 7);
    std::printf("Generated %s points in %.2f s: %zu spikes up, %zu down, flat stretch %s..%s, hole in X after %s,\n"
                "%s. Every run sets HasNaN: the NaN-aware strategies keep each gap as a NaN point.\n\n",
                Grouped(n).c_str(), Seconds(started), s.upSpikes.size(), s.downSpikes.size(),
                Grouped(s.flatBegin).c_str(), Grouped(s.flatEnd - 1).c_str(), Grouped(s.holeAfter).c_str(),
                DescribeDropouts(s.dropouts).c_str());

    Resampler<double> resampler;  // engine, args and index vector, reused by every run
    const Layout linear = WholeSeries("Linear", kLinear, s.evenX, s);
    Layout ringLayout = WholeSeries("Ring buffer", kLinear, s.evenX, s);
    ringLayout.request.inputSize = n;
    ringLayout.request.inputBaseIndex = ring.baseIndex;
    const Layout uneven = WholeSeries("UnevenlySpaced", kUnevenlySpaced, s.unevenX, s);
    const Layout zoom = ZoomOnHole(s);
    const std::int32_t stretchStart = std::clamp(s.upSpikes[1] - kStretchPoints / 2, 0, n - kStretchPoints);

    PrintRunHeader();
    const auto linearRuns = SweepModes(resampler, s.evenX.data(), s.y.data(), linear);
    RunVisibleStretch(resampler, s.evenX.data(), s.y.data(), linear, stretchStart, kStretchPoints);
    const auto ringRuns = SweepModes(resampler, ring.x.data(), ring.y.data(), ringLayout, &linearRuns);
    RunVisibleStretch(resampler, ring.x.data(), ring.y.data(), ringLayout, stretchStart, kStretchPoints);
    const auto unevenRuns = SweepModes(resampler, s.unevenX.data(), s.y.data(), uneven);
    RunVisibleStretch(resampler, s.unevenX.data(), s.y.data(), uneven, stretchStart, kStretchPoints);
    const auto zoomRuns = SweepModes(resampler, s.unevenX.data(), s.y.data(), zoom);
    std::printf("\n");

    ShowScan(s.y);
    ShowReportedFailure();

    const std::vector<ChartPanel> panels = {
        Panel(Describe(linear, "evenly spaced X (Data=0)"), linear, linearRuns),
        Panel(Describe(ringLayout, "ring buffer, InputBaseIndex " + std::to_string(ring.baseIndex)), ringLayout,
              ringRuns),
        Panel(Describe(uneven, "X with a hole (Data=2)"), uneven, unevenRuns),
        Panel(Describe(zoom, "the hole up close"), zoom, zoomRuns),
    };
    std::string error;
    if (!WriteSvgChart(options.svgPath, "QuillmapCore demo: NaN-aware resampled lines over the raw min/max band",
                       panels, error)) {
        std::fprintf(stderr, "quillmap_demo: %s\n", error.c_str());
        return 1;
    }
    std::printf("Picture: %s\n", std::filesystem::absolute(options.svgPath).string().c_str());
    std::printf("Total time: %.2f s\n", Seconds(started));
    return 0;
}

}  // namespace demo
