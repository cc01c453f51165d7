#include "sheet/SheetUtils.h"

#include <algorithm>

namespace zorfa::sheet {

std::string TcxSSUtils::columnText(std::int32_t column, bool r1c1) {
    if (column < 0) return {};
    if (r1c1) return std::to_string(static_cast<std::int64_t>(column) + 1);
    // Letters from the last one backwards: index div 26 - 1 goes first.
    char letters[8];
    int at = sizeof letters;
    std::int64_t index = column;
    for (;;) {
        letters[--at] = static_cast<char>('A' + index % 26);
        if (index < 26) break;
        index = index / 26 - 1;
    }
    return std::string(letters + at, sizeof letters - at);
}

std::string TcxSSUtils::rowText(std::int32_t row) {
    if (row < 0) return {};
    return std::to_string(static_cast<std::int64_t>(row) + 1);
}

std::string TcxSSUtils::cellName(std::int32_t column, std::int32_t row, bool columnAbsolute, bool rowAbsolute) {
    std::string name;
    if (columnAbsolute) name += '$';
    name += columnText(column);
    if (rowAbsolute) name += '$';
    name += rowText(row);
    return name;
}

std::string TcxSSUtils::cellName(const CellName& name) {
    return cellName(name.column, name.row, name.columnAbsolute, name.rowAbsolute);
}

std::string TcxSSUtils::selectionName(const CellRect& rect, bool r1c1) {
    std::string name = columnText(rect.left, r1c1) + rowText(rect.top);
    if (!isSingleCell(rect)) name += " x " + columnText(rect.right, r1c1) + rowText(rect.bottom);
    return name;
}

std::string TcxSSUtils::rangeName(const CellRect& rect) {
    std::string name = cellName(rect.left, rect.top);
    if (!isSingleCell(rect)) name += ':' + cellName(rect.right, rect.bottom);
    return name;
}

std::optional<std::int32_t> TcxSSUtils::columnIndex(std::string_view letters) {
    if (letters.empty()) return std::nullopt;
    std::int64_t value = 0;  // bijective base 26: "A" is 1
    for (char c : letters) {
        char upper = (c >= 'a' && c <= 'z') ? static_cast<char>(c - 'a' + 'A') : c;
        if (upper < 'A' || upper > 'Z') return std::nullopt;
        value = value * 26 + (upper - 'A' + 1);
        if (value - 1 > kSheetEnd) return std::nullopt;
    }
    return static_cast<std::int32_t>(value - 1);
}

std::optional<CellName> TcxSSUtils::parseCellName(std::string_view text) {
    CellName name;
    std::size_t at = 0;
    if (at < text.size() && text[at] == '$') {
        name.columnAbsolute = true;
        ++at;
    }
    std::size_t lettersStart = at;
    while (at < text.size() && ((text[at] >= 'A' && text[at] <= 'Z') || (text[at] >= 'a' && text[at] <= 'z'))) ++at;
    auto column = columnIndex(text.substr(lettersStart, at - lettersStart));
    if (!column) return std::nullopt;
    name.column = *column;
    if (at < text.size() && text[at] == '$') {
        name.rowAbsolute = true;
        ++at;
    }
    if (at == text.size()) return std::nullopt;
    std::int64_t row = 0;
    for (; at < text.size(); ++at) {
        if (text[at] < '0' || text[at] > '9') return std::nullopt;
        row = row * 10 + (text[at] - '0');
        if (row - 1 > kSheetEnd) return std::nullopt;
    }
    if (row == 0) return std::nullopt;
    name.row = static_cast<std::int32_t>(row - 1);
    return name;
}

CellRect TcxSSUtils::normalized(const CellRect& rect) noexcept {
    return {std::min(rect.left, rect.right), std::min(rect.top, rect.bottom), std::max(rect.left, rect.right),
            std::max(rect.top, rect.bottom)};
}

bool TcxSSUtils::isValid(const CellRect& rect) noexcept {
    return rect.left <= rect.right && rect.top <= rect.bottom;
}

bool TcxSSUtils::isSingleCell(const CellRect& rect) noexcept {
    return rect.left == rect.right && rect.top == rect.bottom;
}

std::int64_t TcxSSUtils::width(const CellRect& rect) noexcept {
    return static_cast<std::int64_t>(rect.right) - rect.left + 1;
}

std::int64_t TcxSSUtils::height(const CellRect& rect) noexcept {
    return static_cast<std::int64_t>(rect.bottom) - rect.top + 1;
}

bool TcxSSUtils::contains(const CellRect& rect, std::int32_t column, std::int32_t row) noexcept {
    return column >= rect.left && column <= rect.right && row >= rect.top && row <= rect.bottom;
}

bool TcxSSUtils::contains(const CellRect& rect, const CellPoint& cell) noexcept {
    return contains(rect, cell.column, cell.row);
}

bool TcxSSUtils::contains(const CellRect& outer, const CellRect& inner) noexcept {
    return inner.left >= outer.left && inner.right <= outer.right && inner.top >= outer.top &&
           inner.bottom <= outer.bottom;
}

bool TcxSSUtils::intersects(const CellRect& a, const CellRect& b) noexcept {
    return a.left <= b.right && b.left <= a.right && a.top <= b.bottom && b.top <= a.bottom;
}

std::optional<CellRect> TcxSSUtils::intersection(const CellRect& a, const CellRect& b) noexcept {
    if (!intersects(a, b)) return std::nullopt;
    return CellRect{std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
                    std::min(a.bottom, b.bottom)};
}

CellRect TcxSSUtils::unite(const CellRect& a, const CellRect& b) noexcept {
    return {std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right),
            std::max(a.bottom, b.bottom)};
}

}  // namespace zorfa::sheet
