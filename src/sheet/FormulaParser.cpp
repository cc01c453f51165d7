#include "sheet/FormulaParser.h"

namespace zorfa::sheet {

namespace {

constexpr const char* kSyntaxError = "Error syntax in string expression";

// Index of the ")" that closes the "(" at `open`, by plain counting: quotes
// are not honoured here, so a ")" inside a string argument ends the cut.
size_t matchingParenthesis(std::string_view text, size_t open) {
    int depth = 0;
    for (size_t i = open; i < text.size(); ++i) {
        if (text[i] == '(') {
            ++depth;
        } else if (text[i] == ')') {
            if (--depth == 0) return i;
        }
    }
    return std::string_view::npos;
}

bool isReferenceKind(std::uint8_t kind) { return token::isReference(kind) || kind == token::Name; }

}  // namespace

FormulaSeparators FormulaSeparators::from(const LocaleSettings& locale) noexcept {
    FormulaSeparators s{locale.listSeparator, locale.decimalSeparator};
    if (s.list == s.decimal) {
        if (s.decimal == ';')
            s.decimal = '.';
        else
            s.list = ';';
    }
    return s;
}

std::string FormulaScope::sheetText(std::int32_t sheet) const {
    if (!sheets || sheet < 0 || sheet >= sheets->sheetCount()) return "#REF!";
    std::string caption = sheets->sheetCaption(sheet);
    if (caption.find(' ') != std::string::npos) return "'" + caption + "'";
    return caption;
}

FormulaParser::FormulaParser(const FormulaScope& scope, std::int32_t sheet, std::int32_t column, std::int32_t row)
    : scope_(scope), separators_(scope.separators()), sheet_(sheet), column_(column), row_(row) {
    for (char c : std::string_view("+-*/^<=>&%\"() ")) delimiters_[static_cast<unsigned char>(c)] = true;
    delimiters_[static_cast<unsigned char>(separators_.list)] = true;
}

void FormulaParser::report(std::string message) {
    failed_ = true;
    messages_.push_back(std::move(message));
}

CompileResult FormulaParser::compile(std::string_view text) {
    size_t b = 0, e = text.size();
    while (b < e && (text[b] == ' ' || text[b] == '=')) ++b;
    while (e > b && text[e - 1] == ' ') --e;
    const std::string_view body = text.substr(b, e - b);

    int depth = 0;
    bool inQuote = false, closedTooSoon = false;
    for (char c : body) {
        if (c == '"') {
            inQuote = !inQuote;
        } else if (!inQuote) {
            if (c == '(') ++depth;
            if (c == ')' && --depth < 0) closedTooSoon = true;
        }
    }
    CompileResult result;
    if (depth != 0 || closedTooSoon) {
        result.messages.push_back("Error - symbol ')' expected!");
        return result;
    }
    if (inQuote) {
        result.messages.push_back("Error - unterminated string!");
        return result;
    }

    parseExpression(body);
    if (errorCode_ != 0) report(kSyntaxError);
    if (!failed_) {
        if (stack_.count() == 1 && isOperand(0)) {
            result.tokens = std::move(stack_[0].bytes);
        } else {
            report(kSyntaxError);
        }
    }
    stack_.clear();
    result.messages = std::move(messages_);
    result.errorCode = errorCode_;
    if (!result.messages.empty()) result.tokens.clear();
    return result;
}

void FormulaParser::parseExpression(std::string_view text) {
    // Each level of parentheses or function call is one level of recursion:
    // a text nested deeper than any real formula is refused, not a crash.
    if (nesting_ > kMaxNesting) {
        report(kSyntaxError);
        return;
    }
    ++nesting_;
    parseLevel(text);
    --nesting_;
}

void FormulaParser::parseLevel(std::string_view text) {
    const size_t first = stack_.count();
    while (!text.empty() && !stopped()) {
        NextToken t = nextToken(text);
        if (stopped()) break;
        if (t.kind == TokenKind::Function) {
            const size_t height = stack_.count();
            parseExpression(t.inner);
            if (stopped()) break;
            std::string call;
            for (size_t i = height; i < stack_.count(); ++i) call += stack_[i].bytes;
            const auto count = static_cast<std::uint8_t>(stack_.count() - height);
            stack_.erase(height, stack_.count() - height);
            call += static_cast<char>(token::Function);
            call += static_cast<char>(count);
            token::append(call, t.functionId);
            stack_.push(std::move(call), token::Function);
        } else if (t.kind == TokenKind::Parentheses) {
            const size_t height = stack_.count();
            parseExpression(t.inner);
            if (stopped()) break;
            if (stack_.count() != height + 1 || !isOperand(height)) {
                report(kSyntaxError);
                break;
            }
            stack_[height].bytes += static_cast<char>(token::Parentheses);
            stack_[height].kind = token::Parentheses;
        } else {
            if (t.bytes.empty()) {
                setError(6);
                break;
            }
            const bool percent = t.code == token::Percent;
            stack_.push(std::move(t.bytes), t.code);
            // A percent sign belongs to the operand before it at once.
            const size_t top = stack_.count() - 1;
            if (percent && top > first && isOperand(top - 1)) {
                stack_[top - 1].bytes += static_cast<char>(token::Percent);
                stack_[top - 1].kind = token::Percent;
                stack_.erase(top);
            }
        }
    }
    if (!stopped()) reduce(first, stack_.count());
}

size_t FormulaParser::prefixLength(std::string_view text) const {
    // A defined name or a sheet caption may hold delimiters (a blank): the
    // word starts after it. Names first, the longest match wins.
    size_t best = 0;
    auto consider = [&](std::string_view candidate) {
        if (candidate.size() > best && candidate.size() <= text.size() &&
            LocaleSettings::sameText(text.substr(0, candidate.size()), candidate))
            best = candidate.size();
    };
    if (scope_.names)
        for (const FormulaName& name : *scope_.names) consider(name.name);
    if (best == 0 && scope_.sheets)
        for (std::int32_t s = 0; s < scope_.sheets->sheetCount(); ++s) consider(scope_.sheetText(s));
    return best;
}

FormulaParser::NextToken FormulaParser::nextToken(std::string_view& text) {
    NextToken token;
    const size_t n = text.size();
    size_t q = prefixLength(text);
    for (; q < n; ++q) {
        const char c = text[q];
        if (isDelimiter(c) && !(c == '-' && q >= 2 && text[q - 1] == '[')) break;
    }
    if (q == n) {
        classifyWord(text, token);
        text = {};
        return token;
    }
    const char stop = text[q];
    if (stop == '(') {
        const size_t close = matchingParenthesis(text, q);
        if (close == std::string_view::npos) {
            setError(3);
            return token;
        }
        token.inner = text.substr(q + 1, close - q - 1);
        if (q == 0) {
            token.kind = TokenKind::Parentheses;
        } else {
            token.kind = TokenKind::Function;
            const FunctionInfo* info = scope_.functions->find(text.substr(0, q));
            if (!info)
                setError(6);
            else
                token.functionId = info->id;
        }
        text.remove_prefix(close + 1);
        return token;
    }
    if (q == 0) {
        if (stop == '"') {
            if (readStringLiteral(text, token.bytes)) token.code = token::String;
            return token;
        }
        size_t length = 1;
        if ((stop == '<' || stop == '>') && n > 1 && (text[1] == '=' || text[1] == '>')) length = 2;
        classifyWord(text.substr(0, length), token);
        text.remove_prefix(length);
        return token;
    }
    // "1E+3": the exponent's sign is a delimiter, so extend over it.
    size_t end = q;
    if ((stop == '+' || stop == '-') && q >= 2 && (text[q - 1] == 'E' || text[q - 1] == 'e')) {
        double ignored;
        if (parseNumberText(text.substr(0, q - 1), separators_.decimal, ignored)) {
            end = q + 1;
            while (end < n && text[end] >= '0' && text[end] <= '9') ++end;
        }
    }
    classifyWord(text.substr(0, end), token);
    text.remove_prefix(end);
    return token;
}

bool FormulaParser::readStringLiteral(std::string_view& text, std::string& bytes) {
    std::string value;
    size_t i = 1;
    for (;;) {
        const size_t quote = text.find('"', i);
        if (quote == std::string_view::npos) {
            report("Error - unterminated string!");
            return false;
        }
        value.append(text.substr(i, quote - i));
        size_t run = 0;
        while (quote + run < text.size() && text[quote + run] == '"') ++run;
        value.append(run / 2, '"');
        i = quote + run;
        if (run % 2 == 1) break;  // an odd run of quotes ends the literal
    }
    text.remove_prefix(i);
    token::appendString(bytes, value);
    return true;
}

std::uint8_t FormulaParser::operatorCode(std::string_view text) const noexcept {
    static const char* const table[] = {"+", "-", "*", "/", "^", "&", "<", "<=", "=", ">=", ">", "<>",
                                        " ", nullptr, ":", "", "-", "%"};
    size_t from = 0, to = 17;
    if (text.size() == 2) {
        from = 6;
        to = 11;
    } else if (text.size() != 1) {
        return 0;
    }
    for (size_t i = from; i <= to; ++i) {
        if (i == 13) {
            if (text.size() == 1 && text[0] == separators_.list) return token::ListSeparator;
        } else if (text == table[i]) {
            return static_cast<std::uint8_t>(i + 3);
        }
    }
    return 0;
}

void FormulaParser::classifyWord(std::string_view word, NextToken& token) {
    if (word.size() <= 2) {
        if (std::uint8_t code = operatorCode(word)) {
            token.bytes.assign(1, static_cast<char>(code));
            token.code = code;
            return;
        }
    }
    double number;
    bool boolean;
    if (parseNumberText(word, separators_.decimal, number)) {
        token::appendNumber(token.bytes, number);
        token.code = token::Number;
    } else if (parseBooleanText(word, boolean)) {
        token::appendBoolean(token.bytes, boolean);
        token.code = token::Boolean;
    } else if (parseReference(word, token.bytes)) {
        token.code = static_cast<std::uint8_t>(token.bytes[0]);
    } else {
        setError(6);
        report(std::string(word) + " - " + "Unknown string expression");
    }
}

bool FormulaParser::parseCorner(std::string_view text, bool onSheet, token::Reference& ref, bool second) const {
    // Sheet-qualified references take row 0, column 0 as their base.
    const std::int32_t baseRow = onSheet ? 0 : row_;
    const std::int32_t baseColumn = onSheet ? 0 : column_;
    std::int32_t row, column;
    bool rowAbsolute, columnAbsolute;
    if (!scope_.r1c1) {
        auto name = TcxSSUtils::parseCellName(text);
        if (!name) return false;
        rowAbsolute = name->rowAbsolute;
        columnAbsolute = name->columnAbsolute;
        row = rowAbsolute ? name->row : name->row - baseRow;
        column = columnAbsolute ? name->column : name->column - baseColumn;
    } else {
        size_t i = 0;
        // "R" or "C", then nothing (offset 0), digits (absolute) or "[n]" (offset n).
        auto part = [&](char letter, std::int32_t& value, bool& absolute) {
            if (i >= text.size() || text[i] != letter) return false;
            ++i;
            absolute = false;
            value = 0;
            if (i < text.size() && text[i] >= '1' && text[i] <= '9') {
                std::int64_t v = 0;
                while (i < text.size() && text[i] >= '0' && text[i] <= '9') {
                    v = v * 10 + (text[i++] - '0');
                    if (v - 1 > TcxSSUtils::kSheetEnd) return false;
                }
                absolute = true;
                value = static_cast<std::int32_t>(v - 1);
            } else if (i < text.size() && text[i] == '[') {
                ++i;
                bool negative = false;
                if (i < text.size() && (text[i] == '-' || text[i] == '+')) negative = text[i++] == '-';
                std::int64_t v = 0;
                const size_t digitsFrom = i;
                while (i < text.size() && text[i] >= '0' && text[i] <= '9') {
                    v = v * 10 + (text[i++] - '0');
                    if (v > TcxSSUtils::kSheetEnd) return false;
                }
                if (i == digitsFrom || i >= text.size() || text[i] != ']') return false;
                ++i;
                value = static_cast<std::int32_t>(negative ? -v : v);
            }
            return true;
        };
        if (!part('R', row, rowAbsolute) || !part('C', column, columnAbsolute) || i != text.size()) return false;
    }
    if (!second) {
        ref.row1 = ref.row2 = row;
        ref.column1 = ref.column2 = column;
        ref.rowAbsolute1 = ref.rowAbsolute2 = rowAbsolute;
        ref.columnAbsolute1 = ref.columnAbsolute2 = columnAbsolute;
    } else {
        ref.row2 = row;
        ref.column2 = column;
        ref.rowAbsolute2 = rowAbsolute;
        ref.columnAbsolute2 = columnAbsolute;
    }
    return true;
}

bool FormulaParser::parseReference(std::string_view word, std::string& bytes) const {
    const std::string upper = LocaleSettings::upperCase(word);
    const std::string_view text = upper;
    const size_t bang = text.find('!');
    const size_t cut = bang != std::string_view::npos ? bang : text.find(':');
    const std::string_view prefix = text.substr(0, cut);

    if (scope_.names) {
        const auto& names = *scope_.names;
        for (size_t i = 0; i < names.size() && i <= 0xFFFF; ++i) {
            if (LocaleSettings::sameText(names[i].name, prefix)) {
                if (cut != std::string_view::npos) break;  // a name followed by more is no reference
                bytes += static_cast<char>(token::Name);
                token::append(bytes, static_cast<std::uint16_t>(i));
                return true;
            }
        }
    }
    token::Reference ref;
    std::string_view rest = text;
    if (bang != std::string_view::npos) {
        if (!scope_.sheets) return false;
        std::int32_t sheet = -1;
        for (std::int32_t s = 0; s < scope_.sheets->sheetCount() && s <= 0xFFFF; ++s) {
            if (LocaleSettings::sameText(scope_.sheetText(s), prefix)) {
                sheet = s;
                break;
            }
        }
        if (sheet < 0) return false;
        ref.onSheet = true;
        ref.sheet = static_cast<std::uint16_t>(sheet);
        rest = text.substr(bang + 1);
    }
    const size_t colon = rest.find(':');
    if (colon == std::string_view::npos) {
        if (!parseCorner(rest, ref.onSheet, ref, false)) return false;
    } else {
        std::string_view first = rest.substr(0, colon);
        std::string_view second = rest.substr(colon + 1);
        // "Sheet1!A1:Sheet2!B2": a second "!" makes the second corner the first.
        if (ref.onSheet && second.find('!') != std::string_view::npos) second = first;
        ref.area = true;
        if (!parseCorner(first, ref.onSheet, ref, false) || !parseCorner(second, ref.onSheet, ref, true))
            return false;
    }
    token::appendReference(bytes, ref);
    return true;
}

bool FormulaParser::isOperand(size_t index) const noexcept {
    return index < stack_.count() && !stack_[index].isBareOperator();
}

void FormulaParser::merge(size_t at, std::uint8_t kind, size_t& end) {
    TokenItem& left = stack_[at - 1];
    left.bytes += stack_[at + 1].bytes;
    left.bytes += stack_[at].bytes;
    left.kind = kind;
    stack_.erase(at, 2);
    end -= 2;
}

void FormulaParser::makeUnary(size_t operatorIndex, size_t operandIndex, std::uint8_t code, size_t& end) {
    stack_[operandIndex].bytes += static_cast<char>(code);
    stack_[operandIndex].kind = code;
    stack_.erase(operatorIndex);
    --end;
}

void FormulaParser::reduce(size_t first, size_t last) {
    size_t i = first, partStart = first, end = last;
    while (i < end && !stopped()) {
        const TokenItem& item = stack_[i];
        if (!item.isBareOperator()) {
            ++i;
            continue;
        }
        switch (item.kind) {
        case token::Power:
            if (i + 2 < end && stack_[i + 1].isOperator(token::Subtract) && isOperand(i + 2))
                makeUnary(i + 1, i + 2, token::UnaryMinus, end);
            if (i > partStart && i + 1 < end && isOperand(i - 1) && isOperand(i + 1))
                merge(i, token::Power, end);
            else
                setError(3);
            break;
        case token::Intersect:
            if (i > partStart && i + 1 < end && isReferenceKind(stack_[i - 1].kind) &&
                isReferenceKind(stack_[i + 1].kind)) {
                merge(i, token::Intersect, end);
                // An intersection is a reference: its first token tells.
                stack_[i - 1].kind = static_cast<std::uint8_t>(stack_[i - 1].bytes[0]);
            } else {
                stack_.erase(i);
                --end;
            }
            break;
        case token::ListSeparator: {
            stack_.erase(i);
            --end;
            size_t partEnd = i;
            secondPass(partStart, partEnd);
            end -= i - partEnd;
            i = partStart = partEnd;
            break;
        }
        case token::Percent:
            if (i > partStart && isOperand(i - 1)) {
                stack_[i - 1].bytes += static_cast<char>(token::Percent);
                stack_[i - 1].kind = token::Percent;
                stack_.erase(i);
                --end;
            } else {
                setError(3);
            }
            break;
        default:
            ++i;
        }
    }
    if (!stopped()) secondPass(partStart, end);
}

void FormulaParser::secondPass(size_t start, size_t& end) {
    // "+", "&" and comparisons reduce everything to their right first. That
    // is a descent into the rest of the part, kept here as a list of the
    // operators waiting for their right side rather than as recursion, so a
    // long chain needs no stack.
    struct Waiting {
        size_t start, at;
        std::uint8_t kind;
    };
    std::vector<Waiting> waiting;
    size_t i = start;
    for (;;) {
        bool descended = false;
        while (i < end && i < stack_.count() && !stopped()) {
            const TokenItem& item = stack_[i];
            const std::uint8_t kind = item.kind;
            if (!item.isBareOperator()) {
                ++i;
                continue;
            }
            if (kind == token::Add || kind == token::Subtract || kind == token::Concat) {
                if (i == start) {
                    // A leading sign is unary; "&" has no unary form.
                    if (kind == token::Concat || !isOperand(i + 1) || i + 1 >= end) {
                        setError(3);
                        return;
                    }
                    makeUnary(i, i + 1, static_cast<std::uint8_t>(kind + 15), end);
                    continue;
                }
                if (kind != token::Subtract) descended = true;
            } else if (kind >= token::Less && kind <= token::NotEqual) {
                descended = true;
            } else if (kind == token::Multiply || kind == token::Divide) {
                if (i + 2 < end && stack_[i + 1].isOperator(token::Subtract) && isOperand(i + 2))
                    makeUnary(i + 1, i + 2, token::UnaryMinus, end);
            } else {
                ++i;
                continue;
            }
            if (descended) {
                waiting.push_back({start, i, kind});
                start = i + 1;
                i = start;
                descended = false;
                continue;
            }
            if (!mergeAt(start, i, kind, end)) return;
        }
        if (stopped() || waiting.empty()) return;
        // The right side is done: take the operator that waited for it.
        const Waiting w = waiting.back();
        waiting.pop_back();
        start = w.start;
        i = w.at;
        if (!mergeAt(start, i, w.kind, end)) return;
    }
}

bool FormulaParser::mergeAt(size_t start, size_t i, std::uint8_t kind, size_t& end) {
    if (start < i && i + 1 < end && isOperand(i - 1) && isOperand(i + 1)) {
        merge(i, kind, end);
        return true;
    }
    setError(3);
    return false;
}

}  // namespace zorfa::sheet
