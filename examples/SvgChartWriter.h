#pragma once
// Draws the demo's picture: per panel the raw min/max band of every pixel
// column in light grey, and each mode's resampled line over it, so that a
// glance shows whether any extreme of the raw data was lost.

#include <string>
#include <vector>

#include "ColumnEnvelope.h"
#include "ResamplingRun.h"

namespace demo {

struct ChartLine {
    std::int32_t mode = kMinMax;  // picks the colour and the legend text
    const RunResult* run = nullptr;
};

struct ChartPanel {
    std::string title;
    ColumnEnvelope envelope;
    std::vector<ChartLine> lines;
    std::string leftXLabel, rightXLabel;  // the X values at the two ends of the axis
};

bool WriteSvgChart(const std::string& path, const std::string& heading, const std::vector<ChartPanel>& panels,
                   std::string& error);

}  // namespace demo
