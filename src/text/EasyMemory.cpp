#include "text/EasyMemory.h"

#include <cstdint>
#include <cstdlib>
#include <new>

#if defined(__linux__)
#include <sys/mman.h>
#endif

namespace zorfa::text {

void AdviseLargeBlock(void* p, std::size_t size) noexcept {
#if defined(__linux__) && defined(MADV_HUGEPAGE)
    constexpr std::uintptr_t kHugePage = std::uintptr_t{2} << 20;
    if (!p || size < 2 * kHugePage) return;
    const auto start = (reinterpret_cast<std::uintptr_t>(p) + kHugePage - 1) & ~(kHugePage - 1);
    const auto end = (reinterpret_cast<std::uintptr_t>(p) + size) & ~(kHugePage - 1);
    if (end > start) ::madvise(reinterpret_cast<void*>(start), end - start, MADV_HUGEPAGE);
#else
    (void)p;
    (void)size;
#endif
}

void* ResizeBlock(void* p, std::size_t bytes) {
    if (bytes == 0) {
        std::free(p);
        return nullptr;
    }
    void* resized = std::realloc(p, bytes);
    if (!resized) throw std::bad_alloc();
    AdviseLargeBlock(resized, bytes);
    return resized;
}

}  // namespace zorfa::text
