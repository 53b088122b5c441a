#pragma once
// The run-local record through which the bucket strategies append output
// points: X and Y to the caller's arrays, the index into the index vector.
//
// Opening it makes the room that UpdateIndices reserved for this run
// addressable: `room` points, the count it returned for the same
// arguments, which the caller's X and Y arrays were sized to (a vector
// keeps the larger capacity of an earlier frame, which is not room for this
// one). Closing it (on every way out, unwinding included) cuts the vector
// to what was there before plus what the run produced.

#include <cstddef>
#include <cstdint>

#include "interop/IntVector.h"
#include "model/ResamplingArgs.h"

namespace qm {

class BucketOutput {
public:
    BucketOutput(double* outX, double* outY, IntVector& indices, const ResamplingArgs& args, std::int32_t room)
        : X(outX), Y(outY), Indices(&indices), IndexOffset(static_cast<std::uint32_t>(indices.size())), Args(&args) {
        indices.Resize(static_cast<std::uint32_t>(indices.capacity()));  // within capacity: no reallocation
        Index = indices.data() + IndexOffset;
        const auto spare = static_cast<std::int32_t>(indices.size() - IndexOffset);
        Limit = room < 0 ? 0 : room < spare ? room : spare;
    }

    BucketOutput(const BucketOutput&) = delete;
    BucketOutput& operator=(const BucketOutput&) = delete;

    ~BucketOutput() { Indices->Resize(IndexOffset + static_cast<std::uint32_t>(Produced())); }

    // A point beyond the room is dropped and ends the walk (see Full): a
    // run within the caller's contract never gets there, one outside it must
    // not write past what the caller was told to provide.
    void Append(double x, double y, std::int32_t index) {
        if (Count >= Limit) {
            Overflowed = true;
            return;
        }
        X[Count] = x;
        Y[Count] = y;
        Index[Count] = index;
        ++Count;
    }

    // The first `count` (1 or 2) of two points, with room for two: the
    // second is stored first and, when it is not kept, overwritten by the
    // first, so nothing lands beyond the points kept and a bucket's points
    // go in without a branch on how many it has.
    void AppendUpToTwo(const double (&x)[2], const double (&y)[2], const std::int32_t (&index)[2],
                       std::int32_t count) {
        const std::ptrdiff_t second = Count + count - 1;
        X[second] = x[1];
        Y[second] = y[1];
        Index[second] = index[1];
        X[Count] = x[0];
        Y[Count] = y[0];
        Index[Count] = index[0];
        Count += count;
    }

    // How many more points this run may write.
    std::int32_t Room() const { return static_cast<std::int32_t>(Limit - Count); }

    bool Full() const { return Overflowed; }

    const ResamplingArgs& RunArgs() const { return *Args; }
    std::int32_t Produced() const { return static_cast<std::int32_t>(Count); }

private:
    double* X;
    double* Y;
    std::int32_t* Index;
    // Points go in by one count rather than three cursors, and the count is
    // of a type no output element has, so the compiler knows a point's
    // stores leave it alone: small buckets emitted 5 % faster so.
    std::ptrdiff_t Count = 0;
    std::ptrdiff_t Limit = 0;  // the room, fixed for the run
    IntVector* Indices;
    std::uint32_t IndexOffset;
    const ResamplingArgs* Args;
    bool Overflowed = false;
};

}  // namespace qm
