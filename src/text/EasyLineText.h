#pragma once
// The two byte strings of a line record: TEasyLineText for Text,
// TEasyStyleCodes for Styles, and the flag values of a record.
//
// Memory shapes this file: a 50 MB file of a million lines must load into
// well under 4 times its size. A loaded line's Text points straight into the
// file's read buffer (which the store keeps alive; no copy), and Styles is
// one pointer that stays null until the line is parsed.

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace zorfa::text {

constexpr int MaxInt = 2147483647;
constexpr std::uint16_t kNoStyle = 65535;  // style code "none"

// Line flags (TEasyStringRec::Flags). The bit values are fixed (2 is unused).
enum TEasyLineFlag : std::uint8_t {
    lfParsed = 1,      // Styles, BeginState and EndState are valid
    lfFoldChild = 4,   // belongs to a fold region
    lfExpanded = 8,    // head of an open region
    lfCollapsed = 16,  // head of a closed region
};

// The bytes of one line, without its break. Either borrowed (points into a
// block the store owns, e.g. the file's read buffer) or owned (its own heap
// bytes). Copying makes an owned copy; assigning always makes it owned.
class TEasyLineText {
public:
    TEasyLineText() noexcept = default;
    ~TEasyLineText() {
        if (Owned()) Release();
    }
    TEasyLineText(const TEasyLineText& other) { Assign(other.View()); }
    TEasyLineText& operator=(const TEasyLineText& other) {
        if (this != &other) Assign(other.View());
        return *this;
    }
    TEasyLineText(TEasyLineText&& other) noexcept { Swap(other); }
    TEasyLineText& operator=(TEasyLineText&& other) noexcept {
        Swap(other);
        return *this;
    }

    std::string_view View() const noexcept { return {data_, Size32()}; }
    operator std::string_view() const noexcept { return View(); }
    std::string Str() const { return std::string(View()); }
    const char* Data() const noexcept { return data_; }
    int Size() const noexcept { return static_cast<int>(Size32()); }
    bool Empty() const noexcept { return Size32() == 0; }
    bool Owned() const noexcept { return (sizeAndOwned_ & kOwnedBit) != 0; }

    // Makes an owned copy of `text` (which may point into this text).
    void Assign(std::string_view text);
    // Points at bytes that outlive the record (the store's blocks). An empty
    // borrowed text keeps its place in the block too: the save joins
    // neighbouring loaded lines by their addresses.
    void Borrow(const char* data, std::uint32_t size) noexcept {
        if (Owned()) Release();
        data_ = data ? data : "";
        sizeAndOwned_ = size & ~kOwnedBit;
    }
    void Clear() noexcept;
    void Swap(TEasyLineText& other) noexcept;

private:
    // The top bit of the size tells an owned text from a borrowed one, so a
    // text is 12 bytes and the record can use the 4 after it.
    static constexpr std::uint32_t kOwnedBit = 0x80000000u;
    std::uint32_t Size32() const noexcept { return sizeAndOwned_ & ~kOwnedBit; }
    void Release() noexcept;
    const char* data_ = "";
    std::uint32_t sizeAndOwned_ = 0;
};

// One 16-bit style code per character ("Styles" of the line record). Empty holds no
// allocation: a single pointer, null until the line is parsed; the count is
// stored in front of the codes.
class TEasyStyleCodes {
public:
    TEasyStyleCodes() noexcept = default;
    ~TEasyStyleCodes() {
        if (block_) Clear();
    }
    TEasyStyleCodes(const TEasyStyleCodes& other) { Assign(other.Span()); }
    TEasyStyleCodes& operator=(const TEasyStyleCodes& other) {
        if (this != &other) Assign(other.Span());
        return *this;
    }
    TEasyStyleCodes(TEasyStyleCodes&& other) noexcept { Swap(other); }
    TEasyStyleCodes& operator=(TEasyStyleCodes&& other) noexcept {
        Swap(other);
        return *this;
    }

    int Size() const noexcept { return block_ ? static_cast<int>(*block_) : 0; }
    bool Empty() const noexcept { return Size() == 0; }
    std::uint16_t* Data() noexcept { return block_ ? reinterpret_cast<std::uint16_t*>(block_ + 1) : nullptr; }
    const std::uint16_t* Data() const noexcept {
        return block_ ? reinterpret_cast<const std::uint16_t*>(block_ + 1) : nullptr;
    }
    std::span<const std::uint16_t> Span() const noexcept { return {Data(), static_cast<size_t>(Size())}; }
    std::span<std::uint16_t> Span() noexcept { return {Data(), static_cast<size_t>(Size())}; }
    // Code at 0-based `i`; kNoStyle beyond the stored codes.
    std::uint16_t At(int i) const noexcept { return i >= 0 && i < Size() ? Data()[i] : kNoStyle; }
    std::uint16_t& operator[](int i) noexcept { return Data()[i]; }

    void Assign(std::span<const std::uint16_t> codes);
    // New size; codes kept where they were, new ones set to `fill`.
    void Resize(int size, std::uint16_t fill = kNoStyle);
    // Sets `count` codes from 0-based `start`, clipped to Size().
    void Fill(int start, std::uint16_t code, int count) noexcept;
    void Clear() noexcept;
    void Swap(TEasyStyleCodes& other) noexcept {
        std::uint32_t* t = block_;
        block_ = other.block_;
        other.block_ = t;
    }

private:
    std::uint32_t* block_ = nullptr;  // [count][codes...]
};

}  // namespace zorfa::text
