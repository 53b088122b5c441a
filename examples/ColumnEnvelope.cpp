#include "ColumnEnvelope.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace demo {

ColumnEnvelope BuildEnvelope(const std::vector<double>& x, const std::vector<double>& y, double minX, double maxX,
                             std::int32_t width) {
    ColumnEnvelope e;
    e.minX = minX;
    e.maxX = maxX;
    e.width = width;
    e.low.assign(static_cast<std::size_t>(width), std::numeric_limits<double>::infinity());
    e.high.assign(static_cast<std::size_t>(width), -std::numeric_limits<double>::infinity());
    e.gap.assign(static_cast<std::size_t>(width), false);
    const double perColumn = width / (maxX - minX);
    for (std::size_t i = 0; i < x.size(); ++i) {
        if (!(x[i] >= minX && x[i] <= maxX)) continue;
        const auto column = std::min(static_cast<std::int32_t>((x[i] - minX) * perColumn), width - 1);
        if (std::isnan(y[i])) {
            e.gap[column] = true;
            continue;
        }
        e.low[column] = std::min(e.low[column], y[i]);
        e.high[column] = std::max(e.high[column], y[i]);
    }
    e.yLow = std::numeric_limits<double>::infinity();
    e.yHigh = -std::numeric_limits<double>::infinity();
    for (std::int32_t c = 0; c < width; ++c) {
        if (e.low[c] > e.high[c]) continue;
        e.yLow = std::min(e.yLow, e.low[c]);
        e.yHigh = std::max(e.yHigh, e.high[c]);
    }
    if (!(e.yLow <= e.yHigh)) {  // no point visible at all
        e.yLow = 0.0;
        e.yHigh = 1.0;
    }
    if (e.yLow == e.yHigh) {  // a flat series still gets a band of some height
        e.yLow -= 0.5;
        e.yHigh += 0.5;
    }
    return e;
}

}  // namespace demo
