#include "sheet/Evaluator.h"

#include <cmath>

#include "sheet/FormulaRecord.h"
#include "sheet/FormulasCache.h"

namespace zorfa::sheet {

namespace {

// How deep calculation on demand may nest before a formula that is not yet
// calculated reads as empty; far below what the thread's stack holds.
constexpr int kMaxNesting = 3000;

}  // namespace

std::string_view errorText(std::uint8_t code) noexcept {
    switch (code) {
    case 1: return "#NULL!";
    case 2: return "#DIV/0!";
    case 3: return "#VALUE!";
    case 4: return "#REF!";
    case 5: return "#NUM!";
    case 6: return "#NAME!";
    case 42: return "#N/A!";
    default: return "";
    }
}

FormulaEvaluator::FormulaEvaluator(TcxSSFormulasCache& cache) : cache_(cache) { stack_.resize(64); }

const LocaleSettings& FormulaEvaluator::locale() const noexcept { return cache_.locale(); }
const FormulaClock& FormulaEvaluator::clock() const noexcept { return cache_.clock(); }
FormulaRandom& FormulaEvaluator::random() noexcept { return cache_.random(); }

const CellReader* FormulaEvaluator::sheetReader(std::int32_t sheet) const {
    const FormulaSheets* sheets = cache_.sheets();
    return sheets ? sheets->sheetCells(sheet) : nullptr;
}

bool FormulaEvaluator::textToNumber(std::string_view text, double& value) const {
    return cache_.locale().parseNumber(text, value);
}

void FormulaEvaluator::appendNumberText(double value, std::string& out) const {
    cache_.locale().appendFloatText(value, out);
}

StackValue& FormulaEvaluator::pushSlot() {
    if (top_ == stack_.size()) stack_.resize(stack_.size() * 2);
    ++pushes_;
    return stack_[top_++];
}

void FormulaEvaluator::pushNumber(double value) {
    StackValue& slot = pushSlot();
    slot.kind = StackKind::Number;
    slot.number = value;
}

void FormulaEvaluator::pushBoolean(bool value) {
    StackValue& slot = pushSlot();
    slot.kind = StackKind::Boolean;
    slot.number = value ? 1 : 0;
}

void FormulaEvaluator::pushString(std::string_view text) {
    StackValue& slot = pushSlot();
    slot.kind = StackKind::String;
    slot.text.assign(text);
}

void FormulaEvaluator::pushString(std::string&& text) {
    StackValue& slot = pushSlot();
    slot.kind = StackKind::String;
    slot.text = std::move(text);
}

namespace {
// Everything of a stack value but its text, whose buffer each slot keeps and
// reuses so that pushing a number allocates nothing.
void copyScalars(StackValue& to, const StackValue& from) {
    to.kind = from.kind;
    to.area = from.area;
    to.name = from.name;
    to.sheet = from.sheet;
    to.number = from.number;
    to.rect = from.rect;
}
}  // namespace

void FormulaEvaluator::drop(size_t count) noexcept { top_ -= std::min(count, available()); }

void FormulaEvaluator::duplicate(int count) {
    const size_t n = std::min(static_cast<size_t>(std::max(count, 0)), available());
    const size_t from = top_ - n;
    for (size_t i = 0; i < n; ++i) {
        StackValue& slot = pushSlot();  // may move the stack: index, not reference
        const StackValue& source = stack_[from + i];
        copyScalars(slot, source);
        if (source.kind == StackKind::String) slot.text = source.text;
    }
}

bool FormulaEvaluator::popValue(StackValue& value) {
    if (available() == 0) {
        setError(3);
        return false;
    }
    StackValue& slot = stack_[--top_];
    copyScalars(value, slot);
    if (slot.kind == StackKind::String) value.text.swap(slot.text);
    return true;
}

bool FormulaEvaluator::resolveName(std::uint16_t index, std::int32_t& sheet, CellRect& rect) {
    const auto& names = cache_.names();
    if (index >= names.size()) {
        setError(4);
        return false;
    }
    sheet = names[index].sheet;
    rect = TcxSSUtils::normalized(names[index].rect);
    return true;
}

CellRead FormulaEvaluator::readCell(std::int32_t sheet, std::int32_t column, std::int32_t row) {
    if (column < 0 || row < 0) {
        setError(4);
        return {};
    }
    const CellReader* reader = sheetReader(sheet);
    if (!reader) return {};
    const CellContent content = reader->readCell(column, row);
    switch (content.kind) {
    case CellContent::Kind::Empty: return {};
    case CellContent::Kind::Number: return {CellValueKind::Number, content.number, content.text};
    case CellContent::Kind::Text:
    case CellContent::Kind::Object: return {CellValueKind::Text, 0, content.text};
    case CellContent::Kind::Formula: break;
    }
    const CellValue* result = nullptr;
    if (auto* record = dynamic_cast<FormulaRecord*>(content.formula)) {
        if (record->textOnly) return {CellValueKind::Text, 0, content.text};
        if (!record->calculated() && nesting_ < kMaxNesting) cache_.calcFormula(*record);
        result = record->cachedResult();
    } else if (content.formula) {
        result = content.formula->cachedResult();
    }
    if (!result) return {};  // a formula without a value reads as empty
    switch (result->kind) {
    case CellValueKind::Error: return {CellValueKind::Error, 0, "#VALUE!"};
    case CellValueKind::Text: return {CellValueKind::Text, 0, result->text};
    default: return {result->kind, result->number, {}};
    }
}

bool FormulaEvaluator::referenceCell(const StackValue& value, CellRead& cell) {
    std::int32_t sheet = value.sheet;
    CellRect rect = value.rect;
    if (value.kind == StackKind::Name) {
        if (!resolveName(value.name, sheet, rect)) return false;
        if (!TcxSSUtils::isSingleCell(rect)) {
            setError(3);
            return false;
        }
    } else if (value.area) {
        setError(3);
        return false;
    }
    cell = readCell(sheet, rect.left, rect.top);
    return true;
}

bool FormulaEvaluator::numberOf(const CellRead& cell, double& value) {
    switch (cell.kind) {
    case CellValueKind::Empty: value = 0; return true;
    case CellValueKind::Number:
    case CellValueKind::Boolean: value = cell.number; return true;
    case CellValueKind::Text:
        if (cell.text.empty()) {
            value = 0;
            return true;
        }
        if (textToNumber(cell.text, value)) return true;
        break;
    case CellValueKind::Error: break;
    }
    setError(3);
    return false;
}

void FormulaEvaluator::textOf(const CellRead& cell, std::string& out) const {
    switch (cell.kind) {
    case CellValueKind::Empty: break;
    case CellValueKind::Number:
        if (!cell.text.empty())
            out += cell.text;
        else
            appendNumberText(cell.number, out);
        break;
    case CellValueKind::Boolean: out += cell.number != 0 ? "TRUE" : "FALSE"; break;
    case CellValueKind::Text:
    case CellValueKind::Error: out += cell.text; break;
    }
}

void FormulaEvaluator::textOfValue(const StackValue& value, std::string& out) {
    switch (value.kind) {
    case StackKind::Number: appendNumberText(value.number, out); break;
    case StackKind::Boolean: out += value.number != 0 ? "TRUE" : "FALSE"; break;
    case StackKind::String: out += value.text; break;
    case StackKind::Reference:
    case StackKind::Name: {
        CellRead cell;
        if (referenceCell(value, cell)) textOf(cell, out);
        break;
    }
    }
}

double FormulaEvaluator::popNumber() {
    if (available() == 0) {
        setError(3);
        return 0;
    }
    const StackValue& v = stack_[--top_];
    double value = 0;
    switch (v.kind) {
    case StackKind::Number:
    case StackKind::Boolean: return v.number;
    case StackKind::String:
        if (!textToNumber(v.text, value)) setError(3);
        return value;
    case StackKind::Reference:
    case StackKind::Name: {
        CellRead cell;
        if (referenceCell(v, cell) && numberOf(cell, value)) return value;
        return 0;
    }
    }
    return 0;
}

bool FormulaEvaluator::popBoolean() {
    if (available() == 0) {
        setError(3);
        return false;
    }
    const StackValue& v = stack_[--top_];
    bool value = false;
    double number = 0;
    switch (v.kind) {
    case StackKind::Number:
    case StackKind::Boolean: return v.number != 0;
    case StackKind::String:
        if (!parseBooleanText(v.text, value)) setError(3);
        return value;
    case StackKind::Reference:
    case StackKind::Name: {
        CellRead cell;
        if (!referenceCell(v, cell)) return false;
        switch (cell.kind) {
        case CellValueKind::Empty: return false;
        case CellValueKind::Number:
        case CellValueKind::Boolean: return cell.number != 0;
        case CellValueKind::Text:
            if (cell.text.empty()) return false;
            if (parseBooleanText(cell.text, value)) return value;
            if (textToNumber(cell.text, number)) return number != 0;
            break;
        case CellValueKind::Error: break;
        }
        setError(3);
        return false;
    }
    }
    return false;
}

std::string FormulaEvaluator::popText() {
    std::string text;
    if (available() == 0) {
        setError(3);
        return text;
    }
    const StackValue& v = stack_[--top_];
    if (v.kind == StackKind::String) return v.text;
    textOfValue(v, text);
    return text;
}

void FormulaEvaluator::pushReference(const char* p) {
    const token::Reference r = token::readReference(p);
    const std::int32_t sheet = r.onSheet ? r.sheet : frame_.sheet;
    const std::int64_t baseRow = r.onSheet ? 0 : frame_.row;
    const std::int64_t baseColumn = r.onSheet ? 0 : frame_.column;
    const std::int64_t row1 = r.rowAbsolute1 ? r.row1 : r.row1 + baseRow;
    const std::int64_t row2 = r.rowAbsolute2 ? r.row2 : r.row2 + baseRow;
    const std::int64_t column1 = r.columnAbsolute1 ? r.column1 : r.column1 + baseColumn;
    const std::int64_t column2 = r.columnAbsolute2 ? r.column2 : r.column2 + baseColumn;
    constexpr std::int64_t limit = TcxSSUtils::kSheetEnd;
    if (row1 < 0 || row2 < 0 || column1 < 0 || column2 < 0 || row1 > limit || row2 > limit || column1 > limit ||
        column2 > limit || (r.onSheet && !sheetReader(sheet))) {
        setError(4);
        return;
    }
    StackValue& slot = pushSlot();
    slot.kind = StackKind::Reference;
    slot.area = r.area;
    slot.sheet = sheet;
    slot.rect = TcxSSUtils::normalized({static_cast<std::int32_t>(column1), static_cast<std::int32_t>(row1),
                                        static_cast<std::int32_t>(column2), static_cast<std::int32_t>(row2)});
}

void FormulaEvaluator::pushName(std::uint16_t index) {
    StackValue& slot = pushSlot();
    slot.kind = StackKind::Name;
    slot.name = index;
}

void FormulaEvaluator::binaryArithmetic(std::uint8_t code) {
    const double right = popNumber();
    const double left = popNumber();
    if (errorCode()) return;
    double result = 0;
    switch (code) {
    case token::Add: result = left + right; break;
    case token::Subtract: result = left - right; break;
    case token::Multiply: result = left * right; break;
    case token::Divide:
        if (right == 0) {
            setError(2);
            return;
        }
        result = left / right;
        break;
    default: result = std::pow(left, right); break;
    }
    pushNumber(result);
}

void FormulaEvaluator::compare(std::uint8_t code) {
    std::string right = popText();
    std::string left = popText();
    if (errorCode()) return;
    int order = 0;
    double l = 0, r = 0;
    bool lb = false, rb = false;
    if (textToNumber(left, l) && (right.empty() || textToNumber(right, r))) {
        order = l < r ? -1 : (l > r ? 1 : 0);
    } else if (parseBooleanText(left, lb) && parseBooleanText(right, rb)) {
        order = static_cast<int>(lb) - static_cast<int>(rb);
    } else {
        order = LocaleSettings::compareText(left, right);
    }
    bool result = false;
    switch (code) {
    case token::Less: result = order < 0; break;
    case token::LessEqual: result = order <= 0; break;
    case token::Equal: result = order == 0; break;
    case token::GreaterEqual: result = order >= 0; break;
    case token::Greater: result = order > 0; break;
    default: result = order != 0; break;
    }
    pushBoolean(result);
}

void FormulaEvaluator::concatenate() {
    std::string right = popText();
    std::string left = popText();
    if (errorCode()) return;
    left += right;
    pushString(std::move(left));
}

void FormulaEvaluator::intersect(bool unite) {
    StackValue right, left;
    const bool ok = popValue(right) && popValue(left);
    if (!ok || errorCode()) return;
    auto area = [&](const StackValue& v, std::int32_t& sheet, CellRect& rect) {
        sheet = v.sheet;
        rect = v.rect;
        if (v.kind == StackKind::Name) return resolveName(v.name, sheet, rect);
        if (v.kind != StackKind::Reference) {
            setError(3);
            return false;
        }
        return true;
    };
    std::int32_t leftSheet, rightSheet;
    CellRect leftRect, rightRect;
    if (!area(left, leftSheet, leftRect) || !area(right, rightSheet, rightRect)) return;
    if (leftSheet != rightSheet) {
        setError(4);
        return;
    }
    CellRect rect;
    if (unite) {
        rect = TcxSSUtils::unite(leftRect, rightRect);
    } else if (auto common = TcxSSUtils::intersection(leftRect, rightRect)) {
        rect = *common;
    } else {
        setError(4);
        return;
    }
    StackValue& slot = pushSlot();
    slot.kind = StackKind::Reference;
    slot.area = true;
    slot.sheet = leftSheet;
    slot.rect = rect;
}

void FormulaEvaluator::callFunction(const char* p) {
    const int count = static_cast<std::uint8_t>(p[1]);
    const FunctionInfo* info = cache_.functions().find(token::read<std::uint16_t>(p + 2));
    if (!info || !info->handler) {
        setError(3);
        return;
    }
    const size_t pushesBefore = pushes_;
    info->handler(*this, count);
    if (pushes_ == pushesBefore && errorCode() == 0) throw ECalculationError("Function need result");
}

void FormulaEvaluator::run(std::string_view tokens) {
    for (size_t at = 0; at < tokens.size();) {
        const size_t size = token::sizeAt(tokens, at);
        if (size == 0) throw ECalculationError("Error syntax in string expression");
        const char* p = tokens.data() + at;
        at += size;
        const auto code = static_cast<std::uint8_t>(*p);
        switch (code) {
        case token::Add:
        case token::Subtract:
        case token::Multiply:
        case token::Divide:
        case token::Power: binaryArithmetic(code); break;
        case token::Concat: concatenate(); break;
        case token::Less:
        case token::LessEqual:
        case token::Equal:
        case token::GreaterEqual:
        case token::Greater:
        case token::NotEqual: compare(code); break;
        case token::Intersect: intersect(false); break;
        case token::Range: intersect(true); break;
        case token::ListSeparator:
        case token::Parentheses: break;
        case token::UnaryPlus:
        case token::UnaryMinus:
        case token::Percent: {
            const double value = popNumber();
            if (errorCode()) break;
            pushNumber(code == token::UnaryPlus ? value : code == token::UnaryMinus ? -value : value / 100);
            break;
        }
        case token::String: {
            StackValue& slot = pushSlot();
            slot.kind = StackKind::String;
            slot.text = token::readString(p);
            break;
        }
        case token::Boolean: pushBoolean(p[1] != 0); break;
        case token::Number: pushNumber(token::read<double>(p + 1)); break;
        case token::Name: pushName(token::read<std::uint16_t>(p + 1)); break;
        case token::Cell:
        case token::Area:
        case token::Cell3D:
        case token::Area3D: pushReference(p); break;
        case token::Function: callFunction(p); break;
        default: throw ECalculationError("Error syntax in string expression");
        }
    }
}

void FormulaEvaluator::storeResult(FormulaRecord& record) {
    // The value is made first and stored last: reading a referenced cell may
    // calculate others, which must still see this record as not calculated.
    CellValue result;
    if (!errorCode()) {
        if (available() == 0) throw ECalculationError("Error syntax in string expression");
        const StackValue& top = stack_[top_ - 1];
        switch (top.kind) {
        case StackKind::Number:
            result.kind = CellValueKind::Number;
            result.number = top.number;
            break;
        case StackKind::Boolean:
            result.kind = CellValueKind::Boolean;
            result.number = top.number;
            break;
        case StackKind::String:
            result.kind = CellValueKind::Text;
            result.text = top.text;
            break;
        case StackKind::Reference:
        case StackKind::Name: {
            // A reference's cell: numeric or empty text gives a number.
            const StackValue reference = top;
            CellRead cell;
            double number = 0;
            if (!referenceCell(reference, cell)) break;
            if (cell.kind == CellValueKind::Empty || cell.kind == CellValueKind::Number ||
                (cell.kind == CellValueKind::Text && textToNumber(cell.text, number))) {
                result.kind = CellValueKind::Number;
                result.number = cell.kind == CellValueKind::Text ? number : cell.number;
            } else if (cell.kind == CellValueKind::Boolean) {
                result.kind = CellValueKind::Boolean;
                result.number = cell.number;
            } else {
                result.kind = CellValueKind::Text;
                result.text.assign(cell.text);
            }
            break;
        }
        }
    }
    if (errorCode()) {
        result.kind = CellValueKind::Error;
        result.text.clear();
        result.number = errorCode();
    }
    record.resultSlot() = std::move(result);
}

void FormulaEvaluator::evaluate(FormulaRecord& record) {
    const Frame saved = frame_;
    frame_ = Frame{top_, record.sheet(), record.cell().column, record.cell().row, 0};
    ++nesting_;
    try {
        run(record.tokens());
        storeResult(record);
    } catch (const ECalculationError&) {
        CellValue& result = record.resultSlot();
        result.kind = CellValueKind::Error;
        result.text.clear();
        result.number = errorCode() ? errorCode() : 3;
    }
    top_ = frame_.base;
    --nesting_;
    frame_ = saved;
}

}  // namespace zorfa::sheet
