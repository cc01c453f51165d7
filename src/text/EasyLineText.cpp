#include "text/EasyLineText.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <new>
#include <utility>

namespace zorfa::text {

// ---- TEasyLineText ----------------------------------------------------------

void TEasyLineText::Assign(std::string_view text) {
    if (text.empty()) {
        Clear();
        return;
    }
    // Copy first: `text` may point into the bytes about to be released.
    char* bytes = static_cast<char*>(std::malloc(text.size()));
    if (!bytes) throw std::bad_alloc();
    std::memcpy(bytes, text.data(), text.size());
    Release();
    data_ = bytes;
    sizeAndOwned_ = static_cast<std::uint32_t>(text.size()) | kOwnedBit;
}

void TEasyLineText::Clear() noexcept {
    Release();
    data_ = "";
    sizeAndOwned_ = 0;
}

void TEasyLineText::Swap(TEasyLineText& other) noexcept {
    std::swap(data_, other.data_);
    std::swap(sizeAndOwned_, other.sizeAndOwned_);
}

void TEasyLineText::Release() noexcept {
    if (Owned()) std::free(const_cast<char*>(data_));
    sizeAndOwned_ &= ~kOwnedBit;
}

// ---- TEasyStyleCodes ----------------------------------------------------------

namespace {
std::uint32_t* AllocateCodes(int size) {
    void* p = std::malloc(sizeof(std::uint32_t) + static_cast<std::size_t>(size) * sizeof(std::uint16_t));
    if (!p) throw std::bad_alloc();
    auto* block = static_cast<std::uint32_t*>(p);
    *block = static_cast<std::uint32_t>(size);
    return block;
}
}  // namespace

void TEasyStyleCodes::Assign(std::span<const std::uint16_t> codes) {
    if (codes.empty()) {
        Clear();
        return;
    }
    std::uint32_t* block = AllocateCodes(static_cast<int>(codes.size()));
    std::memcpy(block + 1, codes.data(), codes.size() * sizeof(std::uint16_t));
    Clear();
    block_ = block;
}

void TEasyStyleCodes::Resize(int size, std::uint16_t fill) {
    if (size <= 0) {
        Clear();
        return;
    }
    if (size == Size()) return;
    std::uint32_t* block = AllocateCodes(size);
    auto* codes = reinterpret_cast<std::uint16_t*>(block + 1);
    const int kept = std::min(size, Size());
    if (kept) std::memcpy(codes, Data(), static_cast<std::size_t>(kept) * sizeof(std::uint16_t));
    std::fill(codes + kept, codes + size, fill);
    Clear();
    block_ = block;
}

void TEasyStyleCodes::Fill(int start, std::uint16_t code, int count) noexcept {
    const int size = Size();
    if (start < 0) {
        count += start;
        start = 0;
    }
    if (count <= 0 || start >= size) return;
    count = std::min(count, size - start);
    std::fill(Data() + start, Data() + start + count, code);
}

void TEasyStyleCodes::Clear() noexcept {
    std::free(block_);
    block_ = nullptr;
}

}  // namespace zorfa::text
