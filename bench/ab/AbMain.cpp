// quillmap_ab: this tree's library against a variant of it (another commit,
// built by tools/ab-compare.sh) on one whole-run case, in one process. The
// whole-run benchmarks drift between speed phases of the machine by more
// than most changes are worth; here the two libraries and the summing loop
// take turns, round by round, and the median of the per-round differences
// resolves a few hundredths of the summing loop's time.
//
//   quillmap_ab <Double|Single|Int32|Int16|Byte> <Linear|Category|Uneven|Ring|InCache>
//               <MinMax|Min|Max|Mid|MinOrMax> [NaN] [rounds]
//
// InCache is the in-cache run of quillmap_resampling_bench (32 Ki evenly
// spaced points on 1000 pixels, buckets of 32), timed over 400 runs a turn.
// With NaN (Double and Single) the series has NaN gaps (as in
// quillmap_nan_resampling_bench) and the run takes the NaN-aware path.

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <type_traits>
#include <vector>

#include "AbCase.h"
#include "SeriesArrays.h"
#include "SumBaseline.h"

namespace {

volatile double gSink;

// The best of three, in ms: a single run catches a burst of noise too often.
template <class F>
double BestOfThree(F&& run) {
    double best = 1e300;
    for (int k = 0; k < 3; ++k) {
        const auto start = std::chrono::steady_clock::now();
        run();
        best = std::min(best, std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count());
    }
    return best;
}

double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

// The series and the summing loop of one Y type.
template <class T>
void Prepare(bench::AbCase& c, bool nan, double (*&sum)(const void*, std::int32_t)) {
    if constexpr (std::is_floating_point_v<T>)
        c.y = nan ? bench::WalkWithGaps<T>(c.points) : bench::Walk<T>(c.points);
    else
        c.y = bench::Walk<T>(c.points);
    sum = [](const void* y, std::int32_t n) {
        return static_cast<double>(bench::SumAll(static_cast<const T*>(y), static_cast<std::size_t>(n)));
    };
}

int Index(const char* word, std::initializer_list<const char*> words) {
    int k = 0;
    for (const char* w : words) {
        if (std::strcmp(word, w) == 0) return k;
        ++k;
    }
    return -1;
}

}  // namespace

int main(int argc, char** argv) {
    const int type = argc > 3 ? Index(argv[1], {"Double", "Single", "Int32", "Int16", "Byte"}) : -1;
    const int layout = argc > 3 ? Index(argv[2], {"Linear", "Category", "Uneven", "Ring", "InCache"}) : -1;
    const int mode = argc > 3 ? Index(argv[3], {"MinMax", "Min", "Max", "Mid", "MinOrMax"}) : -1;
    const bool nan = argc > 4 && std::strcmp(argv[4], "NaN") == 0;
    const int rounds = argc > 4 + nan ? std::atoi(argv[4 + nan]) : 11;
    if (type < 0 || layout < 0 || mode < 0 || rounds < 1 || (nan && type > 1)) {
        std::fprintf(stderr,
                     "usage: %s <Double|Single|Int32|Int16|Byte> <Linear|Category|Uneven|Ring|InCache>\n"
                     "  <MinMax|Min|Max|Mid|MinOrMax> [NaN] [rounds]\n(NaN with Double and Single only)\n",
                     argv[0]);
        return 2;
    }
    const bool inCache = layout == 4;
    const std::int32_t n = inCache ? bench::kInCachePoints : bench::SeriesPoints();
    const int repeat = inCache ? 400 : 1;
    bench::AbCase c{};
    c.type = static_cast<bench::AbY>(type);
    c.data = layout <= 2 ? layout : 0;  // the first three are the data kinds, in their order
    c.ring = layout == 3;
    c.hasNaN = nan;
    c.mode = mode + 1;
    c.x = c.ring ? bench::RingX() : layout == 2 ? bench::UnevenX() : bench::EvenX(n);
    c.points = n;
    c.width = inCache ? bench::kInCacheWidth : bench::kViewportWidth;
    c.baseIndex = bench::RingBaseIndex();
    double (*sumOf)(const void*, std::int32_t) = nullptr;
    switch (c.type) {
        case bench::AbY::Single:
            Prepare<float>(c, nan, sumOf);
            break;
        case bench::AbY::Int32:
            Prepare<std::int32_t>(c, nan, sumOf);
            break;
        case bench::AbY::Int16:
            Prepare<std::int16_t>(c, nan, sumOf);
            break;
        case bench::AbY::Byte:
            Prepare<std::uint8_t>(c, nan, sumOf);
            break;
        default:
            Prepare<double>(c, nan, sumOf);
    }
    // One turn: `repeat` runs of one of the three.
    const auto turn = [&](auto once) {
        return [&, once] {
            for (int k = 0; k < repeat; ++k) gSink = static_cast<double>(once());
        };
    };
    const auto sum = turn([&] { return sumOf(c.y, n); });
    const auto runA = turn([&] { return QmAbRunA(c); });
    const auto runB = turn([&] { return QmAbRunB(c); });
    const bool same = QmAbRunA(c) == QmAbRunB(c);
    std::printf("%s/%s/%s%s, %d points: A is this tree, B the variant; time / summing loop's\n", argv[1], argv[2],
                argv[3], nan ? "/NaN" : "", n);
    constexpr int kBytes[] = {8, 4, 4, 2, 1};
    std::vector<double> a, b, difference, sums;
    for (int round = 0; round < rounds; ++round) {
        // The order alternates, so that neither always runs right after the sum.
        const double base = BestOfThree(sum);
        double first = (round % 2 ? BestOfThree(runB) : BestOfThree(runA)) / base;
        double second = (round % 2 ? BestOfThree(runA) : BestOfThree(runB)) / base;
        if (round % 2) std::swap(first, second);
        sums.push_back(base);
        a.push_back(first);
        b.push_back(second);
        difference.push_back(second - first);
        std::printf("  round %2d: sum %6.2f ms (%5.1f GB/s)  A %.3f  B %.3f  B - A %+.3f\n", round + 1, base,
                    static_cast<double>(n) * repeat * kBytes[type] / base / 1e6, first, second, second - first);
    }
    std::printf("median: A %.3f  B %.3f  B - A %+.3f%s\n", Median(a), Median(b), Median(difference),
                same ? "" : "  (THE ANSWERS DIFFER)");
    // Points per ns from the median ratios and the median summing time.
    const double pointsPerMs = static_cast<double>(n) * repeat / Median(sums);
    std::printf("points/ns: A %.2f  B %.2f  sum %.2f\n", pointsPerMs / Median(a) / 1e6, pointsPerMs / Median(b) / 1e6,
                pointsPerMs / 1e6);
    return same ? 0 : 1;
}
