#pragma once
// The byte scans of loading: where the text ends and how many
// lines it splits into, and the split itself. A break is CR, LF or CR LF; LF CR is two breaks; a
// break at the very end adds no empty line; an empty block has no lines.
// Both look at 64 bytes at a step (SSE2 on every x86-64, plain bytes
// elsewhere), since a 50 MB file must load in a few times the time of
// copying it: a mask of the break bytes of each 64-byte step, then one
// count-trailing-zeros per break.

#include <cstddef>
#include <cstdint>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace zorfa::text {

// Bit i is set when p[i] is CR or LF, for the 64 bytes at p. Inline: it runs
// once for every 64 bytes of a file.
inline std::uint64_t LineBreakMask64(const char* p) noexcept {
#if defined(__SSE2__)
    const __m128i cr = _mm_set1_epi8('\r');
    const __m128i lf = _mm_set1_epi8('\n');
    std::uint64_t mask = 0;
    for (int i = 0; i < 4; ++i) {
        const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + 16 * i));
        const unsigned bits =
            static_cast<unsigned>(_mm_movemask_epi8(_mm_or_si128(_mm_cmpeq_epi8(v, cr), _mm_cmpeq_epi8(v, lf))));
        mask |= static_cast<std::uint64_t>(bits) << (16 * i);
    }
    return mask;
#else
    std::uint64_t mask = 0;
    for (int i = 0; i < 64; ++i)
        if (p[i] == '\r' || p[i] == '\n') mask |= std::uint64_t{1} << i;
    return mask;
#endif
}

// The text of [data, end) ends at the first NUL: returns where it ends, and
// sets `lines` to the number of lines the text splits into (an empty text
// has none). One pass, 16 bytes at a step.
const char* ScanText(const char* data, const char* end, std::size_t& lines) noexcept;

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
