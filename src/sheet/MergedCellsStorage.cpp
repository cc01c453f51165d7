#include "sheet/MergedCellsStorage.h"

#include <algorithm>

namespace zorfa::sheet {

namespace {

CellRect toInclusive(const CellRect& r) { return {r.left, r.top, r.right - 1, r.bottom - 1}; }
CellRect toExclusive(const CellRect& r) { return {r.left, r.top, r.right + 1, r.bottom + 1}; }

}  // namespace

CellRect TcxSSMergedCellsStorage::item(std::int32_t index) const {
    return toInclusive(ranges_.at(static_cast<std::size_t>(index)));
}

void TcxSSMergedCellsStorage::add(const CellRect& inclusive) {
    ranges_.push_back(toExclusive(TcxSSUtils::normalized(inclusive)));
}

void TcxSSMergedCellsStorage::removeAt(std::int32_t index) {
    // Undo and the book pass indexes they kept; one that is gone is ignored.
    if (index < 0 || index >= count()) return;
    ranges_.erase(ranges_.begin() + index);
}

std::optional<CellRect> TcxSSMergedCellsStorage::rangeAt(std::int32_t column, std::int32_t row) const noexcept {
    for (const auto& r : ranges_) {
        if (column >= r.left && column < r.right && row >= r.top && row < r.bottom) return toInclusive(r);
    }
    return std::nullopt;
}

CellRect TcxSSMergedCellsStorage::cellRange(std::int32_t column, std::int32_t row) const noexcept {
    return rangeAt(column, row).value_or(CellRect{column, row, column, row});
}

bool TcxSSMergedCellsStorage::intersectsAny(const CellRect& rect) const noexcept {
    return std::any_of(ranges_.begin(), ranges_.end(),
                       [&](const CellRect& r) { return TcxSSUtils::intersects(rect, toInclusive(r)); });
}

CellRect TcxSSMergedCellsStorage::grow(const CellRect& rect) const noexcept {
    CellRect result = TcxSSUtils::normalized(rect);
    for (std::size_t i = 0; i < ranges_.size(); ++i) {
        CellRect range = toInclusive(ranges_[i]);
        if (TcxSSUtils::intersects(result, range) && !TcxSSUtils::contains(result, range)) {
            result = TcxSSUtils::unite(result, range);
            i = static_cast<std::size_t>(-1);  // start again from the first range
        }
    }
    return result;
}

void TcxSSMergedCellsStorage::removeInside(const CellRect& rect) {
    std::erase_if(ranges_, [&](const CellRect& r) { return TcxSSUtils::contains(rect, toInclusive(r)); });
}

void TcxSSMergedCellsStorage::removeIntersecting(const CellRect& rect) {
    std::erase_if(ranges_, [&](const CellRect& r) { return TcxSSUtils::intersects(rect, toInclusive(r)); });
}

std::vector<CellRect> TcxSSMergedCellsStorage::list() const {
    std::vector<CellRect> out;
    out.reserve(ranges_.size());
    for (const auto& r : ranges_) out.push_back(toInclusive(r));
    return out;
}

void TcxSSMergedCellsStorage::setList(const std::vector<CellRect>& inclusive) {
    ranges_.clear();
    for (const auto& r : inclusive) add(r);
}

std::vector<CellRect> TcxSSMergedCellsStorage::shift(bool columns, std::int32_t edge, std::int32_t amount) {
    std::vector<CellRect> grown;
    for (auto it = ranges_.begin(); it != ranges_.end();) {
        std::int32_t& first = columns ? it->left : it->top;
        std::int32_t& last = columns ? it->right : it->bottom;  // exclusive
        if (amount > 0) {
            if (first >= edge) {
                first += amount;
                last += amount;
            } else if (last > edge) {
                last += amount;
                grown.push_back(toInclusive(*it));
            }
        } else {
            std::int32_t removedEnd = edge - amount;  // exclusive
            auto map = [&](std::int32_t p) {  // a boundary position after the deletion
                if (p <= edge) return p;
                if (p >= removedEnd) return p + amount;
                return edge;
            };
            first = std::max(0, map(first));
            last = std::max(0, map(last));
        }
        if (last <= first) it = ranges_.erase(it);
        else ++it;
    }
    return grown;
}

}  // namespace zorfa::sheet
