#pragma once
// Large blocks of the line store (the read buffer, the record chunk of a
// loaded file, the line array, the save buffer) are touched once from end to
// end right after they are allocated. Faulting them in 4 KB pages costs more
// than everything else a load does, so on Linux they ask for transparent
// huge pages. A hint only: where the kernel says no, nothing changes.

#include <cstddef>

namespace zorfa::text {

// Advises huge pages for the whole 2 MB pages inside [p, p + size), when the
// block is large enough to have some. Call before the first touch.
void AdviseLargeBlock(void* p, std::size_t size) noexcept;

// realloc for the engine's growable arrays: 0 bytes frees and yields null,
// failure throws std::bad_alloc, and a large block is advised huge pages.
void* ResizeBlock(void* p, std::size_t bytes);

}  // namespace zorfa::text
