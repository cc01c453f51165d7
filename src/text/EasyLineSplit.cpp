#include "text/EasyLineSplit.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace zorfa::text {

const char* FindLineBreak(const char* p, const char* end) noexcept {
#if defined(__SSE2__)
    const __m128i cr = _mm_set1_epi8('\r');
    const __m128i lf = _mm_set1_epi8('\n');
    while (end - p >= 16) {
        const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
        const int mask = _mm_movemask_epi8(_mm_or_si128(_mm_cmpeq_epi8(v, cr), _mm_cmpeq_epi8(v, lf)));
        if (mask) return p + __builtin_ctz(static_cast<unsigned>(mask));
        p += 16;
    }
#endif
    while (p < end && *p != '\r' && *p != '\n') ++p;
    return p;
}

std::size_t CountLines(const char* data, const char* end) noexcept {
    if (data >= end) return 0;
    std::size_t breaks = 0;
    const char* p = data;
#if defined(__SSE2__)
    // Every LF is a break; a CR is one unless an LF follows it. The second,
    // one-byte-later load sees the LF after a CR in the block's last byte.
    const __m128i cr = _mm_set1_epi8('\r');
    const __m128i lf = _mm_set1_epi8('\n');
    while (end - p >= 17) {
        const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
        const __m128i next = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + 1));
        const unsigned lfMask = static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi8(v, lf)));
        const unsigned crMask = static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi8(v, cr)));
        const unsigned lfNext = static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi8(next, lf)));
        breaks += static_cast<std::size_t>(__builtin_popcount(lfMask) + __builtin_popcount(crMask & ~lfNext));
        p += 16;
    }
#endif
    for (; p < end; ++p) {
        if (*p == '\n')
            ++breaks;
        else if (*p == '\r' && !(p + 1 < end && p[1] == '\n'))
            ++breaks;
    }
    const char last = end[-1];
    return breaks + (last == '\r' || last == '\n' ? 0 : 1);
}

}  // namespace zorfa::text
