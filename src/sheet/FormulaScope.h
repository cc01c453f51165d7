#pragma once
// What compiling, printing and evaluating a formula read of the book around
// it: the locale's separators, the reference style, the defined names, the
// sheets (captions and cells) and the function table.

#include <cstdint>
#include <string>
#include <vector>

#include "sheet/CellFormulaLink.h"
#include "sheet/FunctionTable.h"
#include "sheet/LocaleSettings.h"
#include "sheet/SheetUtils.h"

namespace zorfa::sheet {

// A defined name: a rectangle (inclusive) on one sheet.
struct FormulaName {
    std::string name;
    std::int32_t sheet = 0;
    CellRect rect;
};

// The sheets of a book as formulas see them.
class FormulaSheets {
public:
    virtual ~FormulaSheets() = default;
    virtual std::int32_t sheetCount() const = 0;
    virtual std::string sheetCaption(std::int32_t sheet) const = 0;
    // The cells of a sheet, or nullptr for an index that is no sheet.
    virtual const CellReader* sheetCells(std::int32_t sheet) const = 0;
};

// The list and decimal separators after delimiter setup: when the locale
// gives the same character for both, a ";" decimal separator becomes "." and
// otherwise the list separator becomes ";".
struct FormulaSeparators {
    char list = ',';
    char decimal = '.';
    static FormulaSeparators from(const LocaleSettings& locale) noexcept;
};

struct FormulaScope {
    const LocaleSettings* locale = nullptr;
    const FunctionTable* functions = nullptr;
    const std::vector<FormulaName>* names = nullptr;
    const FormulaSheets* sheets = nullptr;  // may be null: no sheet captions
    bool r1c1 = false;

    FormulaSeparators separators() const noexcept { return FormulaSeparators::from(*locale); }
    // The caption as formulas write it: quoted with "'" when it holds a blank.
    std::string sheetText(std::int32_t sheet) const;
};

}  // namespace zorfa::sheet
