#pragma once
// The byte scans of loading (Part 2.1): how many lines a block splits into,
// and the split itself. A break is CR, LF or CR LF; LF CR is two breaks; a
// break at the very end adds no empty line; an empty block has no lines.
// Both look at 64 bytes at a step (SSE2 on every x86-64, plain bytes
// elsewhere), since a 50 MB file must load in a few times the time of
// copying it: a mask of the break bytes of each 64-byte step, then one
// count-trailing-zeros per break.

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace zorfa::text {

// Bit i is set when p[i] is CR or LF, for the 64 bytes at p.
std::uint64_t LineBreakMask64(const char* p) noexcept;

// The number of lines [data, end) splits into.
std::size_t CountLines(const char* data, const char* end) noexcept;

// Calls line(start, size) for each line of [data, end), in order.
template <class LineFn>
void SplitLines(const char* data, const char* end, LineFn&& line) {
    const char* start = data;
    auto onBreak = [&](const char* q) {
        if (q < start) return;  // the LF of a CR LF already taken
        line(start, static_cast<std::size_t>(q - start));
        start = q + ((*q == '\r' && q + 1 < end && q[1] == '\n') ? 2 : 1);
    };
    const char* block = data;
    for (; end - block >= 64; block += 64) {
        for (std::uint64_t mask = LineBreakMask64(block); mask; mask &= mask - 1)
            onBreak(block + __builtin_ctzll(mask));
    }
    for (const char* q = block; q < end; ++q)
        if (*q == '\r' || *q == '\n') onBreak(q);
    if (start < end) line(start, static_cast<std::size_t>(end - start));
}

}  // namespace zorfa::text
