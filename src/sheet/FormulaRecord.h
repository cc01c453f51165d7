#pragma once
// One formula of a cell: its own cell, its postfix tokens, and the value of
// its last calculation. The cell owns it (through the CellFormula seam); the
// book's formula cache keeps a list of every live record, in the order they
// were made, for recalculation.

#include <cstdint>
#include <memory>
#include <string>

#include "sheet/CellFormulaLink.h"

namespace zorfa::sheet {

class TcxSSFormulasCache;

class FormulaRecord final : public CellFormula {
public:
    FormulaRecord(TcxSSFormulasCache& cache, std::int32_t sheet, CellPoint cell, std::string tokens,
                  std::string sourceText);
    FormulaRecord(const FormulaRecord& other);
    FormulaRecord& operator=(const FormulaRecord&) = delete;
    ~FormulaRecord() override;

    // CellFormula
    std::unique_ptr<CellFormula> clone() const override;
    CellPoint cell() const override { return cell_; }
    std::int32_t sheet() const override { return sheet_; }
    void setCell(std::int32_t sheet, CellPoint cell) override;
    ReferenceUpdate updateReferences(const StructureChange& change, CellPoint newCell) override;
    std::string text() const override;
    const CellValue* cachedResult() const override { return calculated_ ? &result_ : nullptr; }

    const std::string& tokens() const noexcept { return tokens_; }
    void setTokens(std::string tokens) { tokens_ = std::move(tokens); }
    // The typed text, shown when the record has no tokens or is text only.
    const std::string& sourceText() const noexcept { return sourceText_; }
    TcxSSFormulasCache& cache() const noexcept { return *cache_; }

    // Calculation state.
    bool calculated() const noexcept { return calculated_; }
    const CellValue& result() const noexcept { return result_; }
    CellValue& resultSlot() noexcept {
        calculated_ = true;
        return result_;
    }
    void clearResult() noexcept { calculated_ = false; }
    bool textOnly = false;           // the cell text is shown and nothing is calculated
    std::uint32_t depth = 0;         // re-entry counter of calculation
    std::uint32_t visited = 0;       // calculated mark of the current pass
    std::uint8_t compileError = 0;   // the compiler's error code when there are no tokens

private:
    friend class TcxSSFormulasCache;

    ReferenceUpdate keepReferences(CellPoint newCell);

    TcxSSFormulasCache* cache_;
    std::int32_t sheet_;
    CellPoint cell_;
    std::string tokens_;
    std::string sourceText_;
    CellValue result_;
    bool calculated_ = false;
    size_t listIndex_ = 0;  // place in the cache's list
};

}  // namespace zorfa::sheet
