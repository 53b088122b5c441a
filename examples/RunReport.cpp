#include "RunReport.h"

#include <cstdio>

namespace demo {

std::string Grouped(long long value) {
    std::string digits = std::to_string(value < 0 ? -value : value);
    std::string out;
    for (std::size_t k = 0; k < digits.size(); ++k) {
        if (k > 0 && (digits.size() - k) % 3 == 0) out += ',';
        out += digits[k];
    }
    return value < 0 ? "-" + out : out;
}

void PrintRunHeader() {
    std::printf("%-16s %-9s %-9s %12s %11s %10s  %s\n", "layout", "mode", "ran as", "points in", "points out",
                "time (ms)", "checks");
}

void PrintRunLine(const std::string& layout, std::int32_t requestedMode, const RunResult& run, const RunCheck& check,
                  const std::string& note) {
    if (run.failure) {
        std::printf("%-16s %-9s FAILED: %s: %s\n", layout.c_str(), ModeName(requestedMode), run.failure->kind.c_str(),
                    run.failure->message.c_str());
        return;
    }
    std::string checks = check.realPoints ? "real points" : "NOT the source points";
    if (!check.ascending) checks += ", indices out of order";
    if (check.spikesExpected > 0)
        checks += ", spikes kept " + std::to_string(check.spikesKept) + "/" + std::to_string(check.spikesExpected);
    if (check.gapsExpected > 0)
        checks += ", gaps kept " + std::to_string(check.gapsKept) + "/" + std::to_string(check.gapsExpected);
    checks += check.bridges == 0 ? ", no gap bridged" : ", " + std::to_string(check.bridges) + " GAPS BRIDGED";
    if (run.overran) checks += ", WROTE PAST THE ROOM (" + std::to_string(run.room) + ")";
    if (!note.empty()) checks += ", " + note;
    if (!run.ran.why.empty()) checks += "; " + run.ran.why;
    std::printf("%-16s %-9s %-9s %12s %11s %10.2f  %s\n", layout.c_str(), ModeName(requestedMode),
                ModeName(run.ran.mode), Grouped(run.pointsIn).c_str(),
                Grouped(static_cast<long long>(run.indices.size())).c_str(), run.milliseconds, checks.c_str());
}

}  // namespace demo
