#pragma once
// The evaluator: runs a formula's postfix tokens on a value stack and stores
// the result in the formula. One evaluator serves a whole book; a reference
// to a formula cell that is not calculated calculates it on demand, and that
// nested run works on the same stack above the current one (a frame), so the
// hot path allocates nothing per token: the stack's slots, strings included,
// are reused, and strings exist only where the formula makes text.
//
// Errors are values: the first error code set during a run wins (1 "#NULL!",
// 2 "#DIV/0!", 3 "#VALUE!", 4 "#REF!", 5 "#NUM!", 6 "#NAME!"), an operator
// with an error set pushes nothing, and the result is that error.
// ECalculationError (a broken stack, a function without a result) is caught
// around each run and becomes "#VALUE!".

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "sheet/CellFormulaLink.h"
#include "sheet/FormulaScope.h"
#include "sheet/Tokens.h"

namespace zorfa::sheet {

class FormulaRecord;
class TcxSSFormulasCache;
class FormulaClock;
class FormulaRandom;

// The text of an error code: 1 to 6 as above, 42 "#N/A!", anything else "".
std::string_view errorText(std::uint8_t code) noexcept;

enum class StackKind : std::uint8_t { Number, Boolean, String, Reference, Name };

// One value of the stack. References are resolved to absolute cells when
// pushed; `sheet` is the book's sheet index.
struct StackValue {
    StackKind kind = StackKind::Number;
    bool area = false;
    std::uint16_t name = 0;
    std::int32_t sheet = 0;
    double number = 0;
    CellRect rect;
    std::string text;
};

// A cell as a formula reads it: Empty, Number (with the cell's text),
// Text, Boolean, or Error (reads as the text "#VALUE!").
struct CellRead {
    CellValueKind kind = CellValueKind::Empty;
    double number = 0;
    std::string_view text;
};

class FormulaEvaluator {
public:
    explicit FormulaEvaluator(TcxSSFormulasCache& cache);

    // Runs the record's tokens and stores its result.
    void evaluate(FormulaRecord& record);

    // --- what operators and functions use ---
    std::uint8_t errorCode() const noexcept { return frame_.error; }
    void setError(std::uint8_t code) noexcept {
        if (frame_.error == 0) frame_.error = code;
    }
    void clearError() noexcept { frame_.error = 0; }
    // Values on the stack of the current run.
    size_t available() const noexcept { return top_ - frame_.base; }

    // Pops: an empty stack, or a value that does not convert, sets error 3.
    double popNumber();
    bool popBoolean();
    std::string popText();
    // Pops whatever is on top; false (and error 3) on an empty stack.
    bool popValue(StackValue& value);
    void drop(size_t count) noexcept;
    // Pushes copies of the top `count` values (for functions that read their
    // arguments twice).
    void duplicate(int count);

    void pushNumber(double value);
    void pushBoolean(bool value);
    void pushString(std::string_view text);
    void pushString(std::string&& text);

    // Pops `count` arguments, last first, and calls number(value) for every
    // number: literals once, cells of references and areas row by row that
    // hold a number. A string literal that is no number is error 3.
    template <typename Visit>
    void enumerateNumbers(int count, Visit&& number);
    // The same with every cell's text, empty cells included; `times` counts
    // repeats of the same text (runs of empty cells past the used area).
    template <typename Visit>
    void enumerateTexts(int count, Visit&& text);
    size_t cellsVisited() const noexcept { return cellsVisited_; }

    CellRead readCell(std::int32_t sheet, std::int32_t column, std::int32_t row);
    const LocaleSettings& locale() const noexcept;
    const FormulaClock& clock() const noexcept;
    FormulaRandom& random() noexcept;

    // Number and boolean reading with this book's locale.
    bool textToNumber(std::string_view text, double& value) const;
    void appendNumberText(double value, std::string& out) const;

private:
    struct Frame {
        size_t base = 0;
        std::int32_t sheet = 0, column = 0, row = 0;
        std::uint8_t error = 0;
    };

    StackValue& pushSlot();
    void run(std::string_view tokens);
    void pushReference(const char* p);
    void pushName(std::uint16_t index);
    void binaryArithmetic(std::uint8_t code);
    void compare(std::uint8_t code);
    void concatenate();
    void intersect(bool unite);
    void callFunction(const char* p);
    void storeResult(FormulaRecord& record);
    bool referenceCell(const StackValue& value, CellRead& cell);
    bool numberOf(const CellRead& cell, double& value);
    void textOf(const CellRead& cell, std::string& out) const;
    void textOfValue(const StackValue& value, std::string& out);
    bool resolveName(std::uint16_t index, std::int32_t& sheet, CellRect& rect);
    const CellReader* sheetReader(std::int32_t sheet) const;
    template <typename Cell>
    void enumerateValue(const StackValue& value, bool textMode, Cell&& cell);

    TcxSSFormulasCache& cache_;
    std::vector<StackValue> stack_;
    size_t top_ = 0;
    Frame frame_;
    size_t cellsVisited_ = 0;
    size_t pushes_ = 0;
    std::string cellText_;  // cell texts during enumeration
    int nesting_ = 0;
};

// --- template members ---

template <typename Cell>
void FormulaEvaluator::enumerateValue(const StackValue& value, bool textMode, Cell&& cell) {
    std::int32_t sheet = value.sheet;
    CellRect rect = value.rect;
    if (value.kind == StackKind::Name && !resolveName(value.name, sheet, rect)) return;
    if (value.kind != StackKind::Reference && value.kind != StackKind::Name) return;
    const CellReader* reader = sheetReader(sheet);
    const std::int32_t usedRight = reader ? std::min(rect.right, reader->columnCount() - 1) : -1;
    const std::int32_t usedBottom = reader ? std::min(rect.bottom, reader->rowCount() - 1) : -1;
    for (std::int32_t r = rect.top; r <= usedBottom; ++r) {
        for (std::int32_t c = rect.left; c <= usedRight; ++c) {
            cell(readCell(sheet, c, r), std::uint64_t{1});
        }
        if (textMode && rect.right > usedRight) {
            const std::uint64_t rest = static_cast<std::uint64_t>(rect.right) - std::max(usedRight, rect.left - 1);
            cell(CellRead{}, rest);
        }
    }
    if (textMode) {
        const std::int64_t firstEmptyRow = std::max<std::int64_t>(rect.top, static_cast<std::int64_t>(usedBottom) + 1);
        const std::int64_t rows = static_cast<std::int64_t>(rect.bottom) - firstEmptyRow + 1;
        if (rows > 0) cell(CellRead{}, static_cast<std::uint64_t>(rows) * (static_cast<std::uint64_t>(rect.right) - rect.left + 1));
    }
}

template <typename Visit>
void FormulaEvaluator::enumerateNumbers(int count, Visit&& number) {
    StackValue value;
    for (int i = 0; i < count; ++i) {
        if (!popValue(value)) return;
        switch (value.kind) {
        case StackKind::Number: ++cellsVisited_; number(value.number); break;
        case StackKind::Boolean: ++cellsVisited_; number(value.number); break;
        case StackKind::String: {
            double parsed;
            if (textToNumber(value.text, parsed)) {
                ++cellsVisited_;
                number(parsed);
            } else {
                setError(3);
            }
            break;
        }
        default:
            enumerateValue(value, false, [&](const CellRead& cell, std::uint64_t) {
                double parsed;
                if (cell.kind == CellValueKind::Number) {
                    ++cellsVisited_;
                    number(cell.number);
                } else if (cell.kind == CellValueKind::Text && textToNumber(cell.text, parsed)) {
                    ++cellsVisited_;
                    number(parsed);
                }
            });
        }
    }
}

template <typename Visit>
void FormulaEvaluator::enumerateTexts(int count, Visit&& text) {
    StackValue value;
    for (int i = 0; i < count; ++i) {
        if (!popValue(value)) return;
        if (value.kind == StackKind::Reference || value.kind == StackKind::Name) {
            enumerateValue(value, true, [&](const CellRead& cell, std::uint64_t times) {
                cellsVisited_ += times;
                cellText_.clear();
                textOf(cell, cellText_);
                text(std::string_view(cellText_), times);
            });
        } else {
            std::string literal;
            textOfValue(value, literal);
            ++cellsVisited_;
            text(std::string_view(literal), std::uint64_t{1});
        }
    }
}

}  // namespace zorfa::sheet
