#include "text/EasyLineSplit.h"

namespace zorfa::text {

const char* ScanText(const char* data, const char* end, std::size_t& lines) noexcept {
    std::size_t breaks = 0;
    const char* p = data;
#if defined(__SSE2__)
    // Every LF is a break; a CR is one unless an LF follows it. The second,
    // one-byte-later load sees the LF after a CR in the step's last byte.
    // Counts gather per byte lane (each match subtracts -1) and are summed
    // every 255 steps, before a lane can overflow. A step holding a NUL is
    // left to the byte loop, which stops there.
    const __m128i cr = _mm_set1_epi8('\r');
    const __m128i lf = _mm_set1_epi8('\n');
    const __m128i zero = _mm_setzero_si128();
    bool nul = false;
    while (!nul && end - p >= 17) {
        __m128i lanes = zero;
        for (int step = 0; step < 255 && end - p >= 17; ++step, p += 16) {
            const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
            if (_mm_movemask_epi8(_mm_cmpeq_epi8(v, zero))) {
                nul = true;
                break;
            }
            const __m128i next = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + 1));
            const __m128i isLf = _mm_cmpeq_epi8(v, lf);
            const __m128i loneCr = _mm_andnot_si128(_mm_cmpeq_epi8(next, lf), _mm_cmpeq_epi8(v, cr));
            lanes = _mm_sub_epi8(lanes, _mm_or_si128(isLf, loneCr));
        }
        const __m128i sums = _mm_sad_epu8(lanes, zero);
        breaks += static_cast<std::size_t>(_mm_cvtsi128_si32(sums)) +
                  static_cast<std::size_t>(_mm_cvtsi128_si32(_mm_srli_si128(sums, 8)));
    }
#endif
    for (; p < end && *p; ++p) {
        if (*p == '\n')
            ++breaks;
        else if (*p == '\r' && !(p + 1 < end && p[1] == '\n'))
            ++breaks;
    }
    end = p;  // the first NUL, or the end
    lines = end == data ? 0 : breaks + (end[-1] == '\r' || end[-1] == '\n' ? 0 : 1);
    return end;
}

}  // namespace zorfa::text
