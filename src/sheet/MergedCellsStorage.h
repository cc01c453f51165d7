#pragma once
// TcxSSMergedCellsStorage: the merged ranges of one sheet, in the order they
// were made. Inside, a range keeps its right and bottom exclusive (one past
// the last cell); every rectangle that goes in or comes out is inclusive.

#include <cstdint>
#include <optional>
#include <vector>

#include "sheet/SheetUtils.h"

namespace zorfa::sheet {

class TcxSSMergedCellsStorage {
public:
    std::int32_t count() const noexcept { return static_cast<std::int32_t>(ranges_.size()); }
    CellRect item(std::int32_t index) const;  // inclusive
    void add(const CellRect& inclusive);
    void removeAt(std::int32_t index);  // an index past the list is ignored
    void clear() noexcept { ranges_.clear(); }

    // The first range, in list order, that holds the cell.
    std::optional<CellRect> rangeAt(std::int32_t column, std::int32_t row) const noexcept;
    // The cell's range, or the cell itself.
    CellRect cellRange(std::int32_t column, std::int32_t row) const noexcept;
    bool intersectsAny(const CellRect& rect) const noexcept;
    // The rectangle grown until no range lies partly inside it.
    CellRect grow(const CellRect& rect) const noexcept;
    // Removes every range that lies wholly inside / meets the rectangle.
    void removeInside(const CellRect& rect);
    void removeIntersecting(const CellRect& rect);

    // All ranges, inclusive, for undo; and back.
    std::vector<CellRect> list() const;
    void setList(const std::vector<CellRect>& inclusive);

    // Rows or columns [edge, edge + amount) inserted (amount > 0) or
    // [edge, edge - amount) deleted (amount < 0). Ranges past the edge move,
    // ranges across it grow or shrink, ranges that lose all cells go. The
    // ranges that grew are returned (inclusive), as their new cells need the
    // merged flag.
    std::vector<CellRect> shift(bool columns, std::int32_t edge, std::int32_t amount);

private:
    std::vector<CellRect> ranges_;  // right and bottom exclusive
};

}  // namespace zorfa::sheet
