// libFuzzer target: decodes its input into a sequence of export calls with
// arbitrary arguments over buffers it owns. Whatever a value does to the
// library, the call has to come back: no fault, no hang, no exception, no
// write outside the arrays it was given. The harness only keeps its own
// promises as a caller: pointers it passes point to arrays of the sizes it
// knows, the indices it keeps in a vector point into them, it never asks for
// more memory than a test machine has, and it calls Execute with output
// arrays sized by the UpdateIndices before it.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>
#include <vector>

#include "quillmap/QuillmapCore.h"
#include "resampling/buckets/Grid.h"

namespace {

// Reads typed values from the input; past its end every value is 0.
class Input {
public:
    Input(const std::uint8_t* data, std::size_t size) : data_(data), size_(size) {}
    bool More() const { return at_ < size_; }
    template <class T>
    T Take() {
        T value{};
        const std::size_t n = std::min(sizeof(T), size_ - at_);
        std::memcpy(&value, data_ + at_, n);
        at_ += n;
        return value;
    }
    std::int32_t Int() { return Take<std::int32_t>(); }
    // Small values most of the time, any bit pattern sometimes.
    std::int32_t Count(std::int32_t bound) {
        const std::uint8_t tag = Take<std::uint8_t>();
        if (tag < 224) return static_cast<std::int32_t>(tag % (bound + 1));
        return Int();
    }

private:
    const std::uint8_t* data_;
    std::size_t size_;
    std::size_t at_ = 0;
};

void Ignore(const char*) {}
void IgnoreArgument(const char*, const char*) {}

constexpr std::int32_t kPoints = 24;          // elements of every series array
constexpr std::int32_t kMaxReserve = 1 << 16;  // the largest vector the harness asks for

// A request for a vector capacity or a point count below the library's limit
// is folded under the harness's own; requests beyond the limit stay as they
// are, since the library refuses those by itself.
std::int32_t Affordable(std::int32_t n) {
    return n >= 0 && n <= 0x3FFFFFFF ? n % kMaxReserve : n;
}

template <class T>
T Element(Input& in) {
    if constexpr (std::is_same_v<T, QmDateTime>)
        return T{in.Take<std::uint64_t>()};
    else if constexpr (std::is_same_v<T, QmTimeSpan>)
        return T{in.Take<std::int64_t>()};
    else
        return in.Take<T>();
}

// [start, end) over an array of n elements: bad shapes stay as they are (the
// library refuses them); a rising range is folded inside the array.
void FoldRange(std::int32_t& start, std::int32_t& end, std::int32_t n) {
    if (start < 0 || end <= start) return;
    start %= n + 1;
    end = start + static_cast<std::int32_t>((static_cast<std::int64_t>(end) - start) % (n - start + 1));
}

struct State {
    QmIntVector* vectors[3] = {};
    QmResamplingArgs* args = nullptr;
    QmIntVector* Vector(Input& in) {
        const std::uint8_t k = in.Take<std::uint8_t>() % 4;
        return k == 3 ? nullptr : vectors[k];
    }
};

// Arguments of a run: every field arbitrary, except that a visible range
// that the library accepts lies inside the arrays (plain) or is not longer
// than a few turns of the ring, whose size fits the arrays.
void FillArgs(Input& in, QmResamplingArgs* args) {
    CSharp_ResamplingArgs_Resampling_set(args, in.Count(6));
    CSharp_ResamplingArgs_Data_set(args, in.Count(4));
    std::int32_t start = in.Count(kPoints);
    std::int32_t end = in.Count(kPoints);
    std::int32_t base = in.Count(kPoints);
    std::int32_t size = in.Count(kPoints);
    if (base != 0 && size > 0 && base < size) size = (size - 1) % kPoints + 1;
    const bool ring = base != 0 && size > 0 && base < size;
    if (start >= 0 && start <= end) {
        const std::int64_t span = static_cast<std::int64_t>(end) - start;
        if (!ring) {
            start %= kPoints;
            end = start + static_cast<std::int32_t>(span % (kPoints - start));
        } else {
            end = start + static_cast<std::int32_t>(span % (4 * kPoints));
            if (static_cast<std::int64_t>(end) + 1 + base > INT32_MAX) start = end = 0;
        }
    }
    CSharp_ResamplingArgs_StartIndex_set(args, start);
    CSharp_ResamplingArgs_EndIndex_set(args, end);
    CSharp_ResamplingArgs_InputBaseIndex_set(args, base);
    CSharp_ResamplingArgs_InputSize_set(args, size);
    CSharp_ResamplingArgs_ViewportWidth_set(args, in.Count(64));
    CSharp_ResamplingArgs_ResamplingPrecision_set(args, static_cast<std::uint32_t>(in.Count(8)));
    CSharp_ResamplingArgs_MinXInclusive_set(args, in.Take<std::uint8_t>() < 128 ? in.Count(kPoints) : in.Take<double>());
    CSharp_ResamplingArgs_MaxXInclusive_set(args, in.Take<std::uint8_t>() < 128 ? in.Count(kPoints) : in.Take<double>());
    CSharp_ResamplingArgs_HasNaN_set(args, in.Take<std::uint8_t>() & 1);
    CSharp_ResamplingArgs_ZeroLineY_set(args, in.Take<double>());
}

template <class Engine, class TX, class TY, auto New, auto Delete, auto Update, auto Execute, auto Copy>
struct Pair {
    static void Run(Input& in, State& state) {
        std::vector<TX> x(kPoints);
        std::vector<TY> y(kPoints), y1(kPoints);
        for (auto& v : x) v = Element<TX>(in);
        for (auto& v : y) v = Element<TY>(in);
        const std::uint8_t flags = in.Take<std::uint8_t>();
        const TX* xp = flags & 1 ? nullptr : x.data();
        const TY* yp = flags & 2 ? nullptr : y.data();
        Engine* engine = flags & 4 ? nullptr : New();
        QmIntVector* indices = state.Vector(in);
        const std::int32_t mode = in.Count(6);
        QmResamplingArgs* args = flags & 8 ? nullptr : state.args;
        if (args != nullptr) {
            FillArgs(in, args);
            // A grid of more cells than the harness can afford is a valid
            // request for gigabytes; skip it rather than fail for memory.
            const auto& raw = *reinterpret_cast<const qm::ResamplingArgs*>(args);
            const std::int32_t cells = qm::GridBucketCount(raw, qm::GridStep(raw));
            // So is a far negative count (width and range both reversed),
            // which the wrapping multiply by the points per cell turns into
            // a large positive one.
            if (cells > kMaxReserve / 4 || (cells < -(1 << 28) && cells != INT32_MIN)) args = nullptr;
        }
        if (indices != nullptr) KeepInsideTheArrays(indices);
        const std::int32_t reserved = Update(engine, indices, xp, yp, mode, args);
        if (reserved >= 0 && reserved <= kMaxReserve) {
            std::vector<double> outX(static_cast<std::size_t>(reserved)), outY(outX.size());
            double* ox = flags & 16 || outX.empty() ? nullptr : outX.data();
            double* oy = flags & 32 || outY.empty() ? nullptr : outY.data();
            Execute(engine, xp, yp, ox, oy, indices, mode, args);
        }
        CopyBack(in, x, y, y1);
        Delete(engine);
    }

    // A NaN-aware Execute gathers by every index in the vector, those held
    // before the run included, and a plain array's length is the caller's
    // to know: like CopyValuesByIndices it trusts them. So the indices a
    // caller keeps point into its own arrays (negative ones gather NaN).
    static void KeepInsideTheArrays(QmIntVector* indices) {
        for (std::int32_t i = 0; i < CSharp_IntVector_size(indices); ++i) {
            const std::int32_t index = CSharp_IntVector_getitem(indices, i);
            if (index >= kPoints) CSharp_IntVector_setitem(indices, i, index % kPoints);
        }
    }

    // CopyValuesByIndices over indices that map inside the arrays, unless
    // the call is one the library refuses anyway.
    static void CopyBack(Input& in, const std::vector<TX>& x, const std::vector<TY>& y, const std::vector<TY>& y1) {
        const std::int32_t count = in.Count(16);
        std::int32_t size = in.Count(kPoints);
        const std::int32_t base = in.Count(kPoints);
        const bool ring = base != 0;
        if (ring && size > kPoints) size = kPoints;
        const bool accepted = !ring || (size > 0 && base >= 0 && base < size);
        std::vector<std::int32_t> indices(static_cast<std::size_t>(std::clamp(count, 0, 16)));
        for (auto& i : indices) {
            i = in.Int();
            if (accepted) i = ring ? (i & 0x7FFFFFFF) % (INT32_MAX - base) : (i & 0x7FFFFFFF) % kPoints;
        }
        std::vector<double> outX(indices.size()), outY(indices.size()), outY1(indices.size());
        const std::uint8_t flags = in.Take<std::uint8_t>();
        Copy(flags & 1 ? nullptr : x.data(), y.data(), y1.data(), flags & 2 ? nullptr : indices.data(),
             outX.data(), outY.data(), flags & 4 ? nullptr : outY1.data(), std::min(count, 16), size, base,
             flags & 8);
    }
};

#define QM_FUZZ_PAIR_(XW, XT, YW, YT)                                                                         \
    Pair<QmExtremeResampler##XW##YW, XT, YT, CSharp_new_ExtremeResampler##XW##YW,                             \
         CSharp_delete_ExtremeResampler##XW##YW, CSharp_ExtremeResampler##XW##YW##_UpdateIndices,             \
         CSharp_ExtremeResampler##XW##YW##_Execute, CSharp_ExtremeResampler##XW##YW##_CopyValuesByIndices>::Run

using RunPair = void (*)(Input&, State&);
const RunPair kPairs[] = {
    QM_FUZZ_PAIR_(Double, double, Double, double),        QM_FUZZ_PAIR_(Single, float, Single, float),
    QM_FUZZ_PAIR_(Int32, int32_t, Int16, int16_t),        QM_FUZZ_PAIR_(DateTime, QmDateTime, Byte, uint8_t),
    QM_FUZZ_PAIR_(UInt64, uint64_t, UInt32, uint32_t),    QM_FUZZ_PAIR_(TimeSpan, QmTimeSpan, Double, double),
    QM_FUZZ_PAIR_(SByte, int8_t, Int64, int64_t),         QM_FUZZ_PAIR_(UInt16, uint16_t, SByte, int8_t),
};

template <class T, class Ops, class Record, auto New, auto Delete, auto Min0, auto Min1, auto Max0, auto Max1,
          auto MinMax0, auto MinMax1, auto Unsorted, auto Sorted, auto NewRecord, auto DeleteRecord>
void Scan(Input& in) {
    std::vector<T> data(static_cast<std::size_t>(kPoints));
    for (auto& v : data) v = in.Take<T>();
    const std::uint8_t flags = in.Take<std::uint8_t>();
    Ops* self = flags & 1 ? nullptr : New();
    const T* p = flags & 2 ? nullptr : data.data();
    std::int32_t start = in.Count(kPoints);
    std::int32_t end = in.Count(kPoints);
    T value = in.Take<T>();
    T other = in.Take<T>();
    std::int32_t index = in.Int();
    std::int32_t* indexOut = flags & 4 ? nullptr : &index;
    switch (in.Take<std::uint8_t>() % 8) {
    case 0: FoldRange(start, end, kPoints); Min0(self, p, start, end, flags & 8 ? nullptr : &value); break;
    case 1: FoldRange(start, end, kPoints); Min1(self, p, start, end, &value, indexOut); break;
    case 2: FoldRange(start, end, kPoints); Max0(self, p, start, end, flags & 8 ? nullptr : &value); break;
    case 3: FoldRange(start, end, kPoints); Max1(self, p, start, end, &value, indexOut); break;
    case 4: FoldRange(start, end, kPoints); MinMax0(self, p, start, end, &value, flags & 8 ? nullptr : &other); break;
    case 5: {
        FoldRange(start, end, kPoints);
        Record* record = flags & 8 ? nullptr : NewRecord();
        MinMax1(self, p, start, end, record);
        DeleteRecord(record);
        break;
    }
    case 6: FoldRange(start, end, kPoints); Unsorted(self, p, start, end, value); break;
    default:
        // The binary search reads position end (or start, for an empty
        // range): both must lie inside the array.
        if (start >= 0) start %= kPoints;
        if (start >= 0 && end >= start)
            end = start + static_cast<std::int32_t>((static_cast<std::int64_t>(end) - start) % (kPoints - start));
        std::sort(data.begin(), data.end(), [](T a, T b) { return a < b; });
        Sorted(self, p, start, end, value);
    }
    Delete(self);
}

#define QM_FUZZ_SCAN_(W, T)                                                                                   \
    Scan<T, QmArrayOperations##W, QmMinMaxPointSearchResult##W, CSharp_new_ArrayOperations##W,                \
         CSharp_delete_ArrayOperations##W, CSharp_ArrayOperations##W##_Min__SWIG_0,                           \
         CSharp_ArrayOperations##W##_Min__SWIG_1, CSharp_ArrayOperations##W##_Max__SWIG_0,                    \
         CSharp_ArrayOperations##W##_Max__SWIG_1, CSharp_ArrayOperations##W##_MinMax__SWIG_0,                 \
         CSharp_ArrayOperations##W##_MinMax__SWIG_1, CSharp_ArrayOperations##W##_FindIndexExactInUnsortedData, \
         CSharp_ArrayOperations##W##_FindIndexExactInSortedData, CSharp_new_MinMaxPointSearchResult##W,       \
         CSharp_delete_MinMaxPointSearchResult##W>

using RunScan = void (*)(Input&);
const RunScan kScans[] = {QM_FUZZ_SCAN_(Double, double), QM_FUZZ_SCAN_(Single, float),
                          QM_FUZZ_SCAN_(Int64, int64_t), QM_FUZZ_SCAN_(UInt32, uint32_t),
                          QM_FUZZ_SCAN_(Int16, int16_t), QM_FUZZ_SCAN_(Byte, uint8_t)};

// The list operations of the index vector, each with arbitrary arguments.
void VectorCall(Input& in, State& state) {
    QmIntVector* self = state.Vector(in);
    QmIntVector* values = state.Vector(in);
    const std::int32_t index = in.Count(40);
    const std::int32_t count = in.Count(40);
    const std::int32_t value = in.Int();
    // Self-insertion doubles a vector; keep the growth affordable.
    const bool small = self == nullptr || CSharp_IntVector_size(self) < kMaxReserve / 2;
    switch (in.Take<std::uint8_t>() % 22) {
    case 0: CSharp_IntVector_Clear(self); break;
    case 1: if (small) CSharp_IntVector_Add(self, value); break;
    case 2: CSharp_IntVector_reserve(self, static_cast<std::uint32_t>(Affordable(value))); break;
    case 3: CSharp_IntVector_getitem(self, index); break;
    case 4: CSharp_IntVector_setitem(self, index, value); break;
    case 5: if (small) CSharp_IntVector_AddRange(self, values); break;
    case 6: CSharp_delete_IntVector(CSharp_IntVector_GetRange(self, index, count)); break;
    case 7: if (small) CSharp_IntVector_Insert(self, index, value); break;
    case 8: if (small) CSharp_IntVector_InsertRange(self, index, values); break;
    case 9: CSharp_IntVector_RemoveAt(self, index); break;
    case 10: CSharp_IntVector_RemoveRange(self, index, count); break;
    case 11: CSharp_delete_IntVector(CSharp_IntVector_Repeat(value, Affordable(count))); break;
    case 12: CSharp_IntVector_Reverse__SWIG_0(self); break;
    case 13: CSharp_IntVector_Reverse__SWIG_1(self, index, count); break;
    case 14: CSharp_IntVector_SetRange(self, index, values); break;
    case 15: CSharp_IntVector_Contains(self, value), CSharp_IntVector_LastIndexOf(self, value); break;
    case 16: CSharp_IntVector_Remove(self, value), CSharp_IntVector_capacity(self); break;
    case 17: CSharp_delete_IntVector(CSharp_new_IntVector__SWIG_1(values)); break;
    case 18: CSharp_delete_IntVector(CSharp_new_IntVector__SWIG_2(Affordable(value))); break;
    case 19: {
        std::vector<std::int32_t> out(self ? static_cast<std::size_t>(CSharp_IntVector_size(self)) : 0);
        CSharp_ExtremeResamplingHelpersWrapper_CopyVectorTo(self, out.empty() ? nullptr : out.data());
        break;
    }
    case 20: {
        const std::int64_t room = std::int64_t{std::max(index, 0)} + std::max(count, 0);
        std::vector<std::int32_t> out(static_cast<std::size_t>(std::min<std::int64_t>(room, 1 << 20)));
        CSharp_ExtremeResamplingHelpersWrapper_MergeIndices(self, index, count,
                                                            static_cast<std::int64_t>(out.size()) < room || out.empty() ? nullptr : out.data());
        break;
    }
    default:
        CSharp_ResamplingArgs_StartIndex_get(value & 1 ? nullptr : state.args);
        CSharp_ExtremeResamplingHelpersWrapper_GetActualResampling(value & 2 ? nullptr : state.args);
        CSharp_MinMaxPointSearchResultInt32_Max_get(nullptr);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const bool registered = [] {
        SWIGRegisterExceptionCallbacks_QuillmapCore(Ignore, Ignore, Ignore, Ignore, Ignore, Ignore, Ignore, Ignore,
                                                    Ignore, Ignore, Ignore);
        SWIGRegisterExceptionArgumentCallbacks_QuillmapCore(IgnoreArgument, IgnoreArgument, IgnoreArgument);
        return true;
    }();
    (void)registered;
    Input in(data, size);
    State state;
    for (auto& v : state.vectors) v = CSharp_new_IntVector__SWIG_0();
    state.args = CSharp_new_ResamplingArgs();
    for (int call = 0; call < 32 && in.More(); ++call) {
        const std::uint8_t op = in.Take<std::uint8_t>();
        if (op < 64)
            kPairs[op % std::size(kPairs)](in, state);
        else if (op < 128)
            kScans[op % std::size(kScans)](in);
        else
            VectorCall(in, state);
    }
    for (auto* v : state.vectors) CSharp_delete_IntVector(v);
    CSharp_delete_ResamplingArgs(state.args);
    return 0;
}
