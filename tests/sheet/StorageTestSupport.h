#pragma once
// Fakes for storage tests: a formula that references one cell, a compiler
// that makes it from "=B3" or "=$B$3" style text, and a listener and history
// that write down what they hear.

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "sheet/CellFormulaLink.h"
#include "sheet/DataStorage.h"
#include "sheet/SheetUtils.h"

namespace zorfa::sheet::testing {

// "=<cell>" on one cell of a sheet; absolute parts do not follow insertions.
class FakeFormula : public CellFormula {
public:
    FakeFormula(std::int32_t sheet, CellPoint own, std::int32_t refSheet, CellName ref, int* alive = nullptr)
        : sheet_(sheet), own_(own), refSheet_(refSheet), ref_(ref), alive_(alive) {
        if (alive_) ++*alive_;
    }
    ~FakeFormula() override {
        if (alive_) --*alive_;
    }

    std::unique_ptr<CellFormula> clone() const override {
        auto copy = std::make_unique<FakeFormula>(sheet_, own_, refSheet_, ref_, alive_);
        copy->result_ = result_;
        return copy;
    }
    CellPoint cell() const override { return own_; }
    std::int32_t sheet() const override { return sheet_; }
    void setCell(std::int32_t sheet, CellPoint cell) override {
        sheet_ = sheet;
        own_ = cell;
    }

    ReferenceUpdate updateReferences(const StructureChange& change, CellPoint newCell) override {
        ++updates;
        lastChange = change;
        own_ = newCell;
        if (refSheet_ != change.sheet || change.mode == ShiftMode::Horizontal || change.mode == ShiftMode::Vertical)
            return ReferenceUpdate::Unchanged;
        const bool columns = change.isColumnChange();
        std::int32_t& position = columns ? ref_.column : ref_.row;
        const bool absolute = columns ? ref_.columnAbsolute : ref_.rowAbsolute;
        const std::int32_t edge = columns ? change.rect.left : change.rect.top;
        if (absolute || position < edge) return ReferenceUpdate::Unchanged;
        if (change.isInsert()) {
            position += change.count;
            return ReferenceUpdate::Changed;
        }
        if (position < edge + change.count) return ReferenceUpdate::Broken;
        position -= change.count;
        return ReferenceUpdate::Changed;
    }

    std::string text() const override { return "=" + TcxSSUtils::cellName(ref_); }
    const CellValue* cachedResult() const override { return result_ ? &*result_ : nullptr; }

    void setResult(CellValue value) { result_ = std::move(value); }
    const CellName& reference() const { return ref_; }

    int updates = 0;
    StructureChange lastChange;

private:
    std::int32_t sheet_;
    CellPoint own_;
    std::int32_t refSheet_;
    CellName ref_;
    int* alive_;
    std::optional<CellValue> result_;
};

class FakeCompiler : public FormulaCompiler {
public:
    std::unique_ptr<CellFormula> compile(std::string_view text, std::int32_t sheet, CellPoint cell) override {
        ++calls;
        std::size_t start = text.find_first_not_of(" =");
        if (start == std::string_view::npos) return nullptr;
        std::size_t end = text.find_last_not_of(' ');
        auto name = TcxSSUtils::parseCellName(text.substr(start, end + 1 - start));
        if (!name) return nullptr;
        return std::make_unique<FakeFormula>(sheet, cell, sheet, *name, alive);
    }
    int calls = 0;
    int* alive = nullptr;
};

class RecordingListener : public TcxSSListener {
public:
    int modified = 0;
    std::vector<std::pair<int, std::int32_t>> counts;
    std::vector<CellPoint> changedCells;
    std::vector<CellRect> cleared;
    int layouts = 0;
    bool allowClear = true;

protected:
    void doMarkModified() override { ++modified; }
    void doCountChanged(int kind, std::int32_t count) override { counts.emplace_back(kind, count); }
    void doCellChanged(std::int32_t column, std::int32_t row) override { changedCells.push_back({column, row}); }
    bool doCanClearCells(const CellRect&) override { return allowClear; }
    void doCellsCleared(const CellRect& rect) override { cleared.push_back(rect); }
    void doLayoutChanged() override { ++layouts; }
};

class RecordingHistory : public StorageHistory {
public:
    struct Entry {
        CellPoint cell;
        std::string text;
    };
    bool recording = true;
    std::vector<StorageAction::Kind> actions;
    std::vector<std::vector<CellRect>> mergedLists;
    std::vector<Entry> cells;
    int depth = 0;

    bool isRecording() const override { return recording; }
    void beginAction(TcxSSDataStorage&, const StorageAction& action) override {
        actions.push_back(action.kind);
        if (action.mergedBefore) mergedLists.push_back(*action.mergedBefore);
        ++depth;
    }
    void cellChanging(TcxSSDataStorage&, std::int32_t column, std::int32_t row, const CellRecord& before) override {
        cells.push_back({{column, row}, before.text});
    }
    void endAction(TcxSSDataStorage&) override { --depth; }
};

// A storage wired to a recording listener and history and the fake compiler.
class StorageFixture : public ::testing::Test {
protected:
    explicit StorageFixture(std::int32_t sheetIndex = 0) : storage(styles, sheetIndex) {
        storage.setListener(&listener);
        storage.setHistory(&history);
        compiler.alive = &alive;
        storage.setFormulaCompiler(&compiler);
    }

    std::string text(std::int32_t column, std::int32_t row) const { return storage.cell(column, row).text; }
    FakeFormula* formulaAt(std::int32_t column, std::int32_t row) {
        return static_cast<FakeFormula*>(storage.cell(column, row).formula.get());
    }

    TcxSSStyleCache styles;
    TcxSSDataStorage storage;
    RecordingListener listener;
    RecordingHistory history;
    FakeCompiler compiler;
    int alive = 0;  // formulas made by the compiler and not yet deleted
};

}  // namespace zorfa::sheet::testing
