#pragma once
// The byte scans of loading (Part 2.1): where the next line break is, and how
// many lines a block splits into. A break is CR, LF or CR LF; LF CR is two.
// Both scan 16 bytes at a step where SSE2 is there (every x86-64), since a
// 50 MB file must load in a few times the time of copying it.

#include <cstddef>

namespace zorfa::text {

// The first CR or LF in [p, end), or end.
const char* FindLineBreak(const char* p, const char* end) noexcept;

// The number of lines [data, end) splits into: one per break, plus one for
// text after the last break. An empty block has none.
std::size_t CountLines(const char* data, const char* end) noexcept;

}  // namespace zorfa::text
