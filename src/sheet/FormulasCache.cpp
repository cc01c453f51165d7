#include "sheet/FormulasCache.h"

#include <algorithm>

#include "sheet/FormulaText.h"
#include "sheet/SheetErrors.h"

namespace zorfa::sheet {

TcxSSFormulasCache::TcxSSFormulasCache(const FormulaSheets* sheets, LocaleSettings locale)
    : sheets_(sheets), locale_(std::move(locale)), evaluator_(*this) {}

TcxSSFormulasCache::~TcxSSFormulasCache() {
    // Records still owned by cells outlive the engine: they forget it.
    for (FormulaRecord* record : formulas_)
        if (record) record->cache_ = nullptr;
}

FormulaScope TcxSSFormulasCache::scope() const noexcept {
    FormulaScope s;
    s.locale = &locale_;
    s.functions = &functions_;
    s.names = &names_;
    s.sheets = sheets_;
    s.r1c1 = r1c1_;
    return s;
}

void TcxSSFormulasCache::message(const std::string& text) {
    if (silent_) {
        parseFailed = true;
        return;
    }
    if (messageHandler_) messageHandler_(text);
}

void TcxSSFormulasCache::deleteName(size_t index) {
    if (index < names_.size()) names_.erase(names_.begin() + static_cast<std::ptrdiff_t>(index));
}

void TcxSSFormulasCache::registerRecord(FormulaRecord& record) {
    record.listIndex_ = formulas_.size();
    formulas_.push_back(&record);
}

void TcxSSFormulasCache::unregisterRecord(FormulaRecord& record) noexcept {
    formulas_[record.listIndex_] = nullptr;
    ++holes_;
    // Close the holes now and then, keeping the order of making.
    if (holes_ > 64 && holes_ * 2 > formulas_.size()) {
        size_t to = 0;
        for (FormulaRecord* r : formulas_) {
            if (!r) continue;
            r->listIndex_ = to;
            formulas_[to++] = r;
        }
        formulas_.resize(to);
        holes_ = 0;
    }
}

CompileResult TcxSSFormulasCache::compileText(std::string_view text, std::int32_t sheet, CellPoint cell) const {
    const FormulaScope s = scope();
    FormulaParser parser(s, sheet, cell.column, cell.row);
    return parser.compile(text);
}

std::string TcxSSFormulasCache::tokensText(std::string_view tokens, CellPoint cell) const {
    return formulaText(tokens, scope(), cell.column, cell.row);
}

std::unique_ptr<CellFormula> TcxSSFormulasCache::compile(std::string_view text, std::int32_t sheet, CellPoint cell) {
    CompileResult result = compileText(text, sheet, cell);
    for (const std::string& m : result.messages) message(m);
    parseFailed = false;
    if (result.ok())
        return std::make_unique<FormulaRecord>(*this, sheet, cell, std::move(result.tokens), std::string(text));
    // Typed by a user, an unknown word or function keeps the formula, which
    // then shows "#NAME!"; every other failure leaves the cell as text.
    if (!silent_ && result.errorCode == 6) {
        auto record = std::make_unique<FormulaRecord>(*this, sheet, cell, std::string(), std::string(text));
        record->compileError = 6;
        return record;
    }
    return nullptr;
}

void TcxSSFormulasCache::endUpdate() {
    if (--lockCount_ == 0) recalc();
}

void TcxSSFormulasCache::setAutoRecalc(bool on) {
    if (on) {
        lockCount_ = 0;
        recalc();
    } else if (lockCount_ <= 0) {
        lockCount_ = 1;
    }
}

void TcxSSFormulasCache::calcFormula(FormulaRecord& record, bool force) {
    if ((!force && !forcing_ && lockCount_ > 0) || record.textOnly) return;
    if (record.visited > 0) {
        cycleInPass = true;
        return;
    }
    ++record.depth;
    if (record.depth > 1) {
        cycleFound = true;
        message(kCycleMessage);
    } else {
        ++record.visited;
        if (record.tokens().empty()) {
            CompileResult again = compileText(record.sourceText(), record.sheet(), record.cell());
            if (again.ok())
                record.setTokens(std::move(again.tokens));
            else if (again.errorCode)
                record.compileError = again.errorCode;
        }
        if (!record.tokens().empty()) {
            evaluator_.evaluate(record);
        } else {
            CellValue& result = record.resultSlot();
            result.kind = CellValueKind::Error;
            result.text.clear();
            result.number = record.compileError ? record.compileError : 6;
        }
        --record.visited;
    }
    --record.depth;
}

template <typename Visit>
void TcxSSFormulasCache::forEachRecord(bool backward, Visit&& visit) {
    const size_t n = formulas_.size();
    for (size_t k = 0; k < n; ++k) {
        FormulaRecord* record = formulas_[backward ? n - 1 - k : k];
        if (record) visit(*record);
    }
}

void TcxSSFormulasCache::recalc(bool force) {
    if ((!force && lockCount_ > 0) || formulaCount() == 0) return;
    const bool wasForcing = forcing_;
    forcing_ = force;
    const bool hadCycle = cycleInPass;
    cycleInPass = false;
    cycleFound = false;
    auto pass = [&](FormulaRecord& record) {
        if (record.visited < 1) {
            calcFormula(record);
            ++record.visited;
        }
    };
    auto clearVisited = [](FormulaRecord& record) { record.visited = 0; };
    forEachRecord(false, pass);
    forEachRecord(false, clearVisited);
    forEachRecord(true, pass);
    if (cycleInPass && !hadCycle) message(kCycleMessage);
    cycleFound = false;
    forEachRecord(false, clearVisited);
    forcing_ = wasForcing;
}

std::string TcxSSFormulasCache::resultText(const CellValue& value, const LocaleSettings& locale) {
    switch (value.kind) {
    case CellValueKind::Error: return std::string(errorText(value.errorCode()));
    case CellValueKind::Text: return value.text;
    case CellValueKind::Boolean: return value.boolean() ? "TRUE" : "FALSE";
    case CellValueKind::Number: return locale.floatText(value.number);
    case CellValueKind::Empty: break;
    }
    return "#VALUE!";
}

std::string TcxSSFormulasCache::valueText(CellFormula& formula, bool showFormulas) {
    if (showFormulas) return formula.text();
    auto* record = dynamic_cast<FormulaRecord*>(&formula);
    if (record && record->textOnly) return record->sourceText();
    if (record && !record->calculated()) calcFormula(*record);
    const CellValue* value = formula.cachedResult();
    if (!value) return "0";
    return resultText(*value, locale_);
}

void TcxSSFormulasCache::exchangeSheets(std::int32_t a, std::int32_t b) {
    forEachRecord(false, [&](FormulaRecord& r) {
        if (r.sheet_ == a)
            r.sheet_ = b;
        else if (r.sheet_ == b)
            r.sheet_ = a;
    });
}

void TcxSSFormulasCache::sheetDeleted(std::int32_t sheet) {
    forEachRecord(false, [&](FormulaRecord& r) {
        if (r.sheet_ >= sheet && --r.sheet_ < 0) throw ESpreadSheetError("Invalid sheet index");
    });
}

void TcxSSFormulasCache::updateNames(const StructureChange& change) {
    if (change.mode != ShiftMode::Rows && change.mode != ShiftMode::Columns) return;
    const bool columns = change.isColumnChange();
    const std::int32_t edge = columns ? change.rect.left : change.rect.top;
    for (FormulaName& name : names_) {
        if (name.sheet != change.sheet) continue;
        std::int32_t& start = columns ? name.rect.left : name.rect.top;
        std::int32_t& far = columns ? name.rect.right : name.rect.bottom;
        if (start < edge && far >= edge) {
            far += change.isInsert() ? change.count : -std::min(change.count, far - edge + 1);
        } else if (start >= edge) {
            const std::int32_t amount = change.sign() * change.count;
            start = std::max(0, start + amount);
            far = std::max(0, far + amount);
        }
    }
}

}  // namespace zorfa::sheet
