#include "sheet/FormulaBook.h"

namespace zorfa::sheet {

FormulaBook::FormulaBook(std::int32_t sheetCount, const LocaleSettings& locale) : formulas_(this, locale) {
    for (std::int32_t i = 0; i < sheetCount; ++i) addSheet("Sheet" + std::to_string(i + 1));
}

FormulaBook::~FormulaBook() { sheets_.clear(); }

TcxSSDataStorage& FormulaBook::addSheet(std::string caption) {
    auto storage = std::make_unique<TcxSSDataStorage>(styles_, sheetCount());
    storage->setCaption(std::move(caption));
    storage->setLocale(formulas_.locale());
    storage->setFormulaCompiler(&formulas_);
    storage->setStructureHook([this](const StructureChange& change) {
        for (auto& other : sheets_) other->updateForeignReferences(change);
        formulas_.updateNames(change);
    });
    sheets_.push_back(std::move(storage));
    return *sheets_.back();
}

void FormulaBook::enter(std::int32_t sheet, std::int32_t column, std::int32_t row, std::string_view text) {
    this->sheet(sheet).setText(column, row, text);
}

std::string FormulaBook::valueText(std::int32_t sheet, std::int32_t column, std::int32_t row) {
    const CellRecord& record = this->sheet(sheet).cell(column, row);
    if (record.kind == CellKind::Formula && record.formula) return formulas_.valueText(*record.formula);
    return record.text;
}

std::string FormulaBook::sheetCaption(std::int32_t sheet) const {
    return sheet >= 0 && sheet < sheetCount() ? sheets_[static_cast<size_t>(sheet)]->caption() : std::string();
}

const CellReader* FormulaBook::sheetCells(std::int32_t sheet) const {
    return sheet >= 0 && sheet < sheetCount() ? sheets_[static_cast<size_t>(sheet)].get() : nullptr;
}

}  // namespace zorfa::sheet
