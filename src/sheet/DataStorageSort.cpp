// Sorting the rows of a rectangle by its columns, left to right.

#include <algorithm>

#include "sheet/DataStorage.h"
#include "sheet/DataStorageScopes.h"
#include "sheet/SheetErrors.h"

namespace zorfa::sheet {

int TcxSSDataStorage::compareCells(const CellRecord& a, const CellRecord& b) const {
    const std::string ta = valueText(a);
    const std::string tb = valueText(b);
    if (ta == tb) return 0;
    if (ta.empty()) return -1;
    if (tb.empty()) return 1;
    auto order = [](auto x, auto y) { return x == y ? 0 : (x < y ? -1 : 1); };
    double na = 0, nb = 0;
    if (locale_.parseNumber(ta, na) && locale_.parseNumber(tb, nb)) return order(na, nb);
    bool ba = false, bb = false;
    if (parseBooleanText(ta, ba) && parseBooleanText(tb, bb)) return order(ba, bb);
    const int text = LocaleSettings::compareText(ta, tb);
    return text == 0 ? 0 : (text < 0 ? -1 : 1);
}

int TcxSSDataStorage::compareRows(std::int32_t keyColumn, std::int32_t a, std::int32_t b, bool descending) const {
    const int order = compareCells(cell(keyColumn, a), cell(keyColumn, b));
    return descending ? -order : order;
}

void TcxSSDataStorage::swapRows(const CellRect& rect, std::int32_t a, std::int32_t b) {
    if (a == b) return;
    for (std::int32_t c = rect.left; c <= rect.right; ++c) {
        auto& cells = columns_[static_cast<std::size_t>(c)].cells;
        std::swap(cells[static_cast<std::size_t>(a)], cells[static_cast<std::size_t>(b)]);
    }
}

// The classic two-pointer quicksort with the pivot at the middle; the pivot's
// row is followed when it is swapped.
void TcxSSDataStorage::quickSortRows(const CellRect& rect, std::int32_t keyColumn, std::int32_t first,
                                     std::int32_t last, bool descending) {
    while (first < last) {
        std::int32_t i = first, j = last;
        std::int32_t pivot = first + (last - first) / 2;
        do {
            while (compareRows(keyColumn, i, pivot, descending) < 0) ++i;
            while (compareRows(keyColumn, j, pivot, descending) > 0) --j;
            if (i <= j) {
                swapRows(rect, i, j);
                if (pivot == i) pivot = j;
                else if (pivot == j) pivot = i;
                ++i;
                --j;
            }
        } while (i <= j);
        if (first < j) quickSortRows(rect, keyColumn, first, j, descending);
        first = i;
    }
}

void TcxSSDataStorage::sortCells(CellRect rect, std::span<const bool> descending, bool defaultDescending) {
    rect = TcxSSUtils::normalized(rect);
    rect.left = std::max(rect.left, 0);
    rect.top = std::max(rect.top, 0);
    rect.right = std::min(rect.right, columnCount_ - 1);
    rect.bottom = std::min(rect.bottom, rowCount_ - 1);
    if (!TcxSSUtils::isValid(rect) || rect.top == rect.bottom) return;
    if (merged_.intersectsAny(rect)) throw ESpreadSheetError("Some modify cells is merged");
    auto directionOf = [&](std::int32_t key) {
        return static_cast<std::size_t>(key) < descending.size() ? descending[static_cast<std::size_t>(key)]
                                                                  : defaultDescending;
    };
    listener_->markModified();
    {
        ActionScope action(*this, StorageAction{StorageAction::Kind::SortCells, rect, ShiftMode::Horizontal, nullptr, {}});
        LockScope lock(*this);
        quickSortRows(rect, rect.left, rect.top, rect.bottom, directionOf(0));
        // Each further key orders the runs of rows that the key just before it
        // leaves equal. Only that one key decides a run, so a later key can
        // regroup rows across the groups of an earlier one: that is the sheet's
        // long-standing order, and saved books were sorted by it.
        for (std::int32_t key = 1; key <= rect.right - rect.left; ++key) {
            auto samePrefix = [&](std::int32_t a, std::int32_t b) {
                return compareCells(cell(rect.left + key - 1, a), cell(rect.left + key - 1, b)) == 0;
            };
            for (std::int32_t runStart = rect.top; runStart < rect.bottom;) {
                std::int32_t runEnd = runStart;
                while (runEnd < rect.bottom && samePrefix(runStart, runEnd + 1)) ++runEnd;
                if (runEnd > runStart)
                    quickSortRows(rect, rect.left + key, runStart, runEnd, directionOf(key));
                runStart = runEnd + 1;
            }
        }
        // Moved formulas learn their new cell; relative references follow them.
        for (std::int32_t c = rect.left; c <= rect.right; ++c) {
            Column& column = columns_[static_cast<std::size_t>(c)];
            for (std::int32_t r = rect.top; r <= rect.bottom; ++r) {
                CellRecord* record = column.cells[static_cast<std::size_t>(r)].get();
                if (!record) continue;
                column.rowsUsed = std::max(column.rowsUsed, r + 1);
                if (record->formula && record->formula->cell() != CellPoint{c, r}) {
                    record->formula->setCell(sheetIndex_, {c, r});
                    record->text = record->formula->text();
                }
            }
            recomputeRowsUsed(column);
        }
    }
    listener_->layoutChanged();
}

}  // namespace zorfa::sheet
