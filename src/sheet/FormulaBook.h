#pragma once
// A minimal book for formulas: sheets of cell storage that share one style
// cache and one formula cache, wired the way a book wires them (the cache is
// every storage's formula compiler, a structural change of one sheet reaches
// the formulas of the others and the defined names). Batch commands, tests
// and benchmarks use it; the spreadsheet document's own book takes the same
// wiring.

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "sheet/DataStorage.h"
#include "sheet/FormulasCache.h"
#include "sheet/StyleCache.h"

namespace zorfa::sheet {

class FormulaBook final : public FormulaSheets {
public:
    explicit FormulaBook(std::int32_t sheetCount = 1, const LocaleSettings& locale = {});
    ~FormulaBook() override;

    TcxSSDataStorage& sheet(std::int32_t index) { return *sheets_.at(static_cast<size_t>(index)); }
    TcxSSFormulasCache& formulas() noexcept { return formulas_; }
    TcxSSDataStorage& addSheet(std::string caption);

    // Typed text into a cell, as the user enters it.
    void enter(std::int32_t sheet, std::int32_t column, std::int32_t row, std::string_view text);
    // The value text of a cell: a formula's value (calculated on demand),
    // otherwise the cell's text.
    std::string valueText(std::int32_t sheet, std::int32_t column, std::int32_t row);

    // FormulaSheets
    std::int32_t sheetCount() const override { return static_cast<std::int32_t>(sheets_.size()); }
    std::string sheetCaption(std::int32_t sheet) const override;
    const CellReader* sheetCells(std::int32_t sheet) const override;

private:
    TcxSSStyleCache styles_;
    TcxSSFormulasCache formulas_;  // outlives the sheets, whose cells own formulas
    std::vector<std::unique_ptr<TcxSSDataStorage>> sheets_;
};

}  // namespace zorfa::sheet
