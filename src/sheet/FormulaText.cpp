#include "sheet/FormulaText.h"

#include <vector>

namespace zorfa::sheet {

namespace {

void appendCoordinate(std::string& out, char letter, std::int32_t stored, bool absolute, std::int32_t base,
                      bool r1c1, bool isColumn) {
    if (r1c1) {
        out += letter;
        if (absolute) {
            out += std::to_string(static_cast<std::int64_t>(stored) + 1);
        } else if (stored != 0) {
            out += '[';
            out += std::to_string(stored);
            out += ']';
        }
        return;
    }
    if (absolute) out += '$';
    const std::int32_t value = absolute ? stored : stored + base;
    out += isColumn ? TcxSSUtils::columnText(value) : TcxSSUtils::rowText(value);
}

void appendCorner(std::string& out, std::int32_t row, std::int32_t column, bool rowAbsolute, bool columnAbsolute,
                  std::int32_t baseRow, std::int32_t baseColumn, bool r1c1) {
    if (r1c1) {
        appendCoordinate(out, 'R', row, rowAbsolute, baseRow, true, false);
        appendCoordinate(out, 'C', column, columnAbsolute, baseColumn, true, true);
    } else {
        appendCoordinate(out, 0, column, columnAbsolute, baseColumn, false, true);
        appendCoordinate(out, 0, row, rowAbsolute, baseRow, false, false);
    }
}

const char* operatorText(std::uint8_t code) {
    static const char* const table[] = {"+", "-", "*", "/", "^", "&", "<", "<=", "=", ">=", ">", "<>",
                                        " ", ",", ":", "", "-", "%"};
    return table[code - token::Add];
}

[[noreturn]] void missingTokens() { throw ECalculationError("Missing tokens"); }

}  // namespace

std::string referenceText(const token::Reference& ref, const FormulaScope& scope, std::int32_t column,
                          std::int32_t row) {
    std::string out;
    std::int32_t baseRow = row, baseColumn = column;
    if (ref.onSheet) {
        out = scope.sheetText(ref.sheet);
        out += '!';
        baseRow = baseColumn = 0;
    }
    // A moved block keeps its offsets, so a relative corner can land above
    // row 1 or left of column A. A1 text has no name for such a cell; it reads
    // as the reference error the evaluator gives it (R1C1 text can still say it).
    if (!scope.r1c1) {
        auto offSheet = [](std::int32_t stored, bool absolute, std::int32_t base) {
            return static_cast<std::int64_t>(absolute ? stored : stored + static_cast<std::int64_t>(base)) < 0;
        };
        if (offSheet(ref.row1, ref.rowAbsolute1, baseRow) || offSheet(ref.column1, ref.columnAbsolute1, baseColumn) ||
            (ref.area && (offSheet(ref.row2, ref.rowAbsolute2, baseRow) ||
                          offSheet(ref.column2, ref.columnAbsolute2, baseColumn))))
            return "#REF!";
    }
    appendCorner(out, ref.row1, ref.column1, ref.rowAbsolute1, ref.columnAbsolute1, baseRow, baseColumn, scope.r1c1);
    if (ref.area) {
        out += ':';
        appendCorner(out, ref.row2, ref.column2, ref.rowAbsolute2, ref.columnAbsolute2, baseRow, baseColumn,
                     scope.r1c1);
    }
    return out;
}

std::string formulaText(std::string_view tokens, const FormulaScope& scope, std::int32_t column, std::int32_t row) {
    const FormulaSeparators separators = scope.separators();
    std::vector<std::string> parts;
    auto popTwo = [&](std::string& left, std::string& right) {
        if (parts.size() < 2) missingTokens();
        right = std::move(parts.back());
        parts.pop_back();
        left = std::move(parts.back());
        parts.pop_back();
    };
    for (size_t at = 0; at < tokens.size();) {
        const size_t size = token::sizeAt(tokens, at);
        if (size == 0) throw ECalculationError("Error constructing formula. Parsed expression error offset at");
        const char* p = tokens.data() + at;
        const auto code = static_cast<std::uint8_t>(*p);
        at += size;
        if (code >= token::Add && code <= token::Range) {
            std::string left, right;
            popTwo(left, right);
            left += code == token::ListSeparator ? std::string(1, separators.list) : std::string(operatorText(code));
            left += right;
            parts.push_back(std::move(left));
            continue;
        }
        switch (code) {
        case token::UnaryPlus:
        case token::UnaryMinus:
        case token::Percent:
        case token::Parentheses:
            if (parts.empty()) missingTokens();
            if (code == token::UnaryMinus) parts.back().insert(0, 1, '-');
            if (code == token::Percent) parts.back() += '%';
            if (code == token::Parentheses) parts.back() = "(" + parts.back() + ")";
            break;
        case token::String: {
            std::string text = "\"";
            for (char c : token::readString(p)) {
                if (c == '"') text += '"';
                text += c;
            }
            text += '"';
            parts.push_back(std::move(text));
            break;
        }
        case token::Boolean:
            parts.emplace_back(p[1] ? "TRUE" : "FALSE");
            break;
        case token::Number:
            parts.emplace_back();
            LocaleSettings::appendFloatText(token::read<double>(p + 1), separators.decimal, parts.back());
            break;
        case token::Name: {
            const auto index = token::read<std::uint16_t>(p + 1);
            if (scope.names && index < scope.names->size())
                parts.push_back((*scope.names)[index].name);
            else
                parts.emplace_back("#NAME!");
            break;
        }
        case token::Cell:
        case token::Area:
        case token::Cell3D:
        case token::Area3D:
            parts.push_back(referenceText(token::readReference(p), scope, column, row));
            break;
        case token::Function: {
            const auto count = static_cast<std::uint8_t>(p[1]);
            const FunctionInfo* info = scope.functions->find(token::read<std::uint16_t>(p + 2));
            if (parts.size() < count) missingTokens();
            std::string call = info ? info->name : "#NAME!";
            call += '(';
            for (size_t k = parts.size() - count; k < parts.size(); ++k) {
                if (k > parts.size() - count) call += separators.list;
                call += parts[k];
            }
            call += ')';
            parts.resize(parts.size() - count);
            parts.push_back(std::move(call));
            break;
        }
        default:
            throw ECalculationError("Error constructing formula. Parsed expression error offset at");
        }
    }
    if (parts.size() != 1) throw ECalculationError("Error constructing formula. Parsed expression error offset at");
    return "=" + parts.front();
}

}  // namespace zorfa::sheet
