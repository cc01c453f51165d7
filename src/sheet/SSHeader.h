#pragma once
// TcxSSHeader: the sizes and flags of the columns (kind 0) or rows (kind 1) of
// a sheet. Only items that were ever set are stored; a position past the
// array reads as the default item, and a hidden item reads as size 0.

#include <cstdint>
#include <vector>

namespace zorfa::sheet {

constexpr std::uint8_t kHeaderHidden = 1;       // bit 0
constexpr std::uint8_t kHeaderSizeLocked = 2;   // bit 1
constexpr std::uint8_t kHeaderDefaultSize = 4;  // bit 2
constexpr std::uint8_t kHeaderAutoFit = 8;      // bit 3: size set by automatic row fit

constexpr std::uint16_t kDefaultColumnWidth = 85;
constexpr std::uint16_t kDefaultRowHeight = 20;

struct HeaderItem {
    std::uint8_t flags = kHeaderDefaultSize;
    std::int32_t savedSize = 0;  // the size at the last font scale
    std::uint16_t size = 0;

    friend bool operator==(const HeaderItem&, const HeaderItem&) = default;
};

class TcxSSHeader {
public:
    enum Kind : std::uint8_t { Columns = 0, Rows = 1 };

    explicit TcxSSHeader(Kind kind);

    Kind kind() const noexcept { return kind_; }
    std::int32_t count() const noexcept { return static_cast<std::int32_t>(items_.size()); }

    HeaderItem item(std::int32_t index) const noexcept;
    // Setting past the end fills the gap with default items.
    void setItem(std::int32_t index, const HeaderItem& item);

    // The size as shown: 0 when hidden.
    std::uint16_t size(std::int32_t index) const noexcept;
    // Sets the size and clears the default flag.
    void setSize(std::int32_t index, std::uint16_t size);
    bool isHidden(std::int32_t index) const noexcept { return item(index).flags & kHeaderHidden; }
    // Showing an item whose size is 0 gives it the default size.
    void setVisible(std::int32_t index, bool visible);
    std::uint8_t flags(std::int32_t index) const noexcept { return item(index).flags; }
    void setFlags(std::int32_t index, std::uint8_t flags);

    const HeaderItem& defaultItem() const noexcept { return default_; }
    std::uint16_t defaultSize() const noexcept { return default_.size; }
    // Rewrites every item whose flag says default.
    void setDefaultSize(std::uint16_t size);

    // Inserts `count` default items at `index` (only where items are stored).
    void insert(std::int32_t index, std::int32_t count);
    // Removes the items [index, index + count) that are stored.
    void remove(std::int32_t index, std::int32_t count);
    void clear() { items_.clear(); }

    // The summed shown sizes of [from, to).
    std::int64_t span(std::int32_t from, std::int32_t to) const noexcept;

private:
    Kind kind_;
    HeaderItem default_;
    std::vector<HeaderItem> items_;
};

}  // namespace zorfa::sheet
