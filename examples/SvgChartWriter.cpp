#include "SvgChartWriter.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <sstream>

#include "RunReport.h"

namespace demo {

namespace {

constexpr double kLeft = 70.0;          // room for the Y labels
constexpr double kRight = 30.0;
constexpr double kHeadingHeight = 50.0;
constexpr double kTitleHeight = 30.0;   // above the first lane of a panel
constexpr double kLaneHeight = 120.0;   // one lane per mode: band plus that mode's line
constexpr double kLaneGap = 8.0;
constexpr double kFooterHeight = 60.0;  // below the last lane: X labels and legend

struct ModeStyle {
    const char* colour;
    double width;
};

// Thin lines, so the grey band shows wherever a line does not reach it.
ModeStyle StyleOf(std::int32_t mode) {
    switch (mode) {
        case kMinMax: return {"#1f77b4", 0.8};
        case kMinOrMax: return {"#ff7f0e", 0.8};
        case kMid: return {"#2ca02c", 0.8};
        case kMin: return {"#9467bd", 0.8};
        case kMax: return {"#d62728", 0.8};
        default: return {"#444444", 0.8};
    }
}

std::string Escape(const std::string& text) {
    std::string out;
    for (char c : text) {
        switch (c) {
            case '&': out += "&amp;"; break;
            case '<': out += "&lt;"; break;
            case '>': out += "&gt;"; break;
            case '"': out += "&quot;"; break;
            default: out += c;
        }
    }
    return out;
}

std::string Number(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%.1f", value);
    return text;
}

std::string Label(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%.3g", value);
    return text;
}

double PanelHeight(const ChartPanel& panel) {
    const auto lanes = static_cast<double>(panel.lines.size());
    return kTitleHeight + lanes * kLaneHeight + (lanes - 1) * kLaneGap + kFooterHeight;
}

// Paints a panel as a stack of lanes, one per mode: each lane has the same
// band under a single line, so no line hides another and the band shows
// through wherever that mode did not keep an extreme.
class PanelPainter {
public:
    PanelPainter(const ChartPanel& panel, double top) : p_(panel), top_(top), width_(panel.envelope.width) {
        const double pad = 0.05 * (p_.envelope.yHigh - p_.envelope.yLow);
        yLow_ = p_.envelope.yLow - pad;
        yHigh_ = p_.envelope.yHigh + pad;
    }

    void Paint(std::ostream& out) const {
        out << "<g>\n<text x=\"" << kLeft << "\" y=\"" << Number(top_ + kTitleHeight - 10) << "\" class=\"title\">"
            << Escape(p_.title) << "</text>\n";
        double laneTop = top_ + kTitleHeight;
        for (const ChartLine& line : p_.lines) {
            PaintLane(out, line, laneTop);
            laneTop += kLaneHeight + kLaneGap;
        }
        const double footerTop = laneTop - kLaneGap;
        PaintXLabels(out, footerTop);
        PaintLegend(out, footerTop);
        out << "</g>\n";
    }

private:
    double Px(double x) const { return kLeft + (x - p_.envelope.minX) / (p_.envelope.maxX - p_.envelope.minX) * width_; }
    double Py(double y, double laneTop) const { return laneTop + (yHigh_ - y) / (yHigh_ - yLow_) * kLaneHeight; }

    void PaintLane(std::ostream& out, const ChartLine& line, double laneTop) const {
        out << "<rect x=\"" << kLeft << "\" y=\"" << Number(laneTop) << "\" width=\"" << width_ << "\" height=\""
            << kLaneHeight << "\" class=\"frame\"/>\n";
        PaintGapColumns(out, laneTop);
        PaintYAxis(out, laneTop);
        PaintBand(out, laneTop);
        PaintLine(out, line, laneTop);
        out << "<text x=\"" << kLeft + 8 << "\" y=\"" << Number(laneTop + 16) << "\" class=\"lane\" fill=\""
            << StyleOf(line.mode).colour << "\">" << Escape(LaneLabel(line)) << "</text>\n";
    }

    // The mode asked for, and the one that ran if it differs, with the reason.
    static std::string LaneLabel(const ChartLine& line) {
        const RunResult& run = *line.run;
        std::string label = ModeName(line.mode);
        if (run.failure) return label + ": FAILED: " + run.failure->message;
        if (run.ran.mode != line.mode) label += std::string(" ran as ") + ModeName(run.ran.mode);
        label += ": " + Grouped(static_cast<long long>(run.indices.size())) + " points";
        if (!run.ran.why.empty()) label += " (" + run.ran.why + ")";
        return label;
    }

    // Columns that a NaN gap of the source touches, full height in pale red:
    // the line must break in each of them.
    void PaintGapColumns(std::ostream& out, double laneTop) const {
        out << "<path class=\"gapcol\" d=\"";
        for (std::int32_t c = 0; c < p_.envelope.width; ++c)
            if (p_.envelope.gap[c])
                out << 'M' << Number(kLeft + c + 0.5) << ' ' << Number(laneTop) << 'v' << kLaneHeight;
        out << "\"/>\n";
    }

    void PaintYAxis(std::ostream& out, double laneTop) const {
        for (double y : {p_.envelope.yLow, 0.0, p_.envelope.yHigh}) {
            if (y < yLow_ || y > yHigh_) continue;
            const std::string py = Number(Py(y, laneTop));
            out << "<line x1=\"" << kLeft << "\" x2=\"" << kLeft + width_ << "\" y1=\"" << py << "\" y2=\"" << py
                << "\" class=\"grid\"/><text x=\"" << kLeft - 6 << "\" y=\"" << Number(Py(y, laneTop) + 4)
                << "\" class=\"ylabel\">" << Label(y) << "</text>\n";
        }
    }

    // One vertical stroke per column from its lowest to its highest point.
    void PaintBand(std::ostream& out, double laneTop) const {
        out << "<path class=\"band\" d=\"";
        for (std::int32_t c = 0; c < p_.envelope.width; ++c) {
            if (p_.envelope.low[c] > p_.envelope.high[c]) continue;
            const double top = Py(p_.envelope.high[c], laneTop) - 0.5;
            const double bottom = Py(p_.envelope.low[c], laneTop) + 0.5;  // a flat column still shows
            out << 'M' << Number(kLeft + c + 0.5) << ' ' << Number(top) << 'V' << Number(bottom);
        }
        out << "\"/>\n";
    }

    void PaintLine(std::ostream& out, const ChartLine& line, double laneTop) const {
        const ModeStyle style = StyleOf(line.mode);
        out << "<path fill=\"none\" stroke=\"" << style.colour << "\" stroke-width=\"" << style.width
            << "\" stroke-linejoin=\"round\" d=\"";
        // A NaN point ends the stroke and the next number starts a new one,
        // so a gap is never drawn as a line across it.
        bool open = false;
        for (std::size_t k = 0; k < line.run->indices.size(); ++k) {
            if (line.run->indices[k] < 0) continue;  // a point the library could not place; reported on the console
            if (std::isnan(line.run->y[k])) {
                open = false;
                continue;
            }
            out << (open ? 'L' : 'M') << Number(Px(line.run->x[k])) << ' ' << Number(Py(line.run->y[k], laneTop));
            open = true;
        }
        out << "\"/>\n";
    }

    void PaintXLabels(std::ostream& out, double footerTop) const {
        const double y = footerTop + 16;
        out << "<text x=\"" << kLeft << "\" y=\"" << y << "\" class=\"xlabel\">" << Escape(p_.leftXLabel)
            << "</text><text x=\"" << kLeft + width_ << "\" y=\"" << y << "\" class=\"xlabel end\">"
            << Escape(p_.rightXLabel) << "</text>\n";
    }

    void PaintLegend(std::ostream& out, double footerTop) const {
        const double y = footerTop + 40;
        out << "<rect x=\"" << kLeft << "\" y=\"" << y - 10 << "\" width=\"24\" height=\"12\" class=\"bandkey\"/>"
            << "<text x=\"" << kLeft + 30 << "\" y=\"" << y
            << "\">grey: the raw data's min/max in each pixel column; pale red: columns with a NaN gap, where "
               "the line must break; line: the resampled points of the mode (grey left showing above MinMax or "
               "Max, or below MinMax or Min, would be a lost extreme)</text>\n";
    }

    const ChartPanel& p_;
    double top_;
    double width_;
    double yLow_ = 0.0, yHigh_ = 1.0;
};

}  // namespace

bool WriteSvgChart(const std::string& path, const std::string& heading, const std::vector<ChartPanel>& panels,
                   std::string& error) {
    double plotWidth = 0.0;
    for (const ChartPanel& panel : panels) plotWidth = std::max(plotWidth, static_cast<double>(panel.envelope.width));
    const double width = kLeft + plotWidth + kRight;
    double height = kHeadingHeight + 10;
    for (const ChartPanel& panel : panels) height += PanelHeight(panel);

    std::ostringstream out;
    out << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
        << "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" << width << "\" height=\"" << height
        << "\" viewBox=\"0 0 " << width << ' ' << height << "\" font-family=\"sans-serif\" font-size=\"13\">\n"
        << "<style>.title{font-size:15px;font-weight:bold}.frame{fill:#fff;stroke:#999}"
           ".grid{stroke:#ddd}.ylabel{text-anchor:end;fill:#555}.xlabel{fill:#555}.end{text-anchor:end}"
           ".band{stroke:#c4c4c4;stroke-width:1;fill:none}.bandkey{fill:#c4c4c4}"
           ".gapcol{stroke:#f6c6c6;stroke-width:1;fill:none}.lane{font-weight:bold}</style>\n"
        << "<rect width=\"100%\" height=\"100%\" fill=\"#fafafa\"/>\n"
        << "<text x=\"" << kLeft << "\" y=\"30\" font-size=\"18\">" << Escape(heading) << "</text>\n";
    double top = kHeadingHeight;
    for (const ChartPanel& panel : panels) {
        PanelPainter(panel, top).Paint(out);
        top += PanelHeight(panel);
    }
    out << "</svg>\n";

    std::ofstream file(path, std::ios::binary);
    file << out.str();
    if (!file.flush()) {
        error = "cannot write '" + path + "'";
        return false;
    }
    return true;
}

}  // namespace demo
