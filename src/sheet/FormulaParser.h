#pragma once
// Formula text to postfix tokens. Accepts the text a user types into a cell:
// leading blanks and "=" signs are skipped, trailing blanks cut. Numbers use
// the locale's decimal separator, function arguments its list separator;
// references are A1 ("$B$3", "B3:C4", "Sheet2!A1", "'My Sheet'!A1:B2") or,
// with the R1C1 reference style, R1C1 ("R1C1", "R[-1]C", "RC[2]"); defined
// names and TRUE/FALSE are words, strings are double-quoted with "" for a quote.
//
// The reduction is a deliberate two-pass scheme, not a precedence parser:
// "^", "%" and intersections bind first; then "+", "&" and comparisons take
// everything to their right first while "*", "/" and "-" are taken strictly
// left to right at one level, so 2-3*4 is (2-3)*4 and 2+3*4 is 14.
//
// Failure is not an exception: compile() returns no tokens and the system's
// messages ("Error - symbol ')' expected!", "Error - unterminated string!",
// "X - Unknown string expression", "Error syntax in string expression") in
// the order they arose, with the error code the handler had set (6 for an
// unknown word or function name).

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "sheet/FormulaScope.h"
#include "sheet/Tokens.h"

namespace zorfa::sheet {

struct CompileResult {
    std::string tokens;                 // empty when the text did not compile
    std::vector<std::string> messages;  // in the order they arose
    std::uint8_t errorCode = 0;         // the handler's error code at the end

    bool ok() const noexcept { return !tokens.empty() && messages.empty(); }
};

class FormulaParser {
public:
    // `sheet`, `column`, `row`: the formula's own cell, the base of relative parts.
    FormulaParser(const FormulaScope& scope, std::int32_t sheet, std::int32_t column, std::int32_t row);

    CompileResult compile(std::string_view text);

private:
    enum class TokenKind { Plain, Function, Parentheses };
    struct NextToken {
        TokenKind kind = TokenKind::Plain;
        std::string bytes;
        std::uint8_t code = 0;
        std::string_view inner;  // Function and Parentheses: the text between the parentheses
        std::uint16_t functionId = 0;
    };

    void parseExpression(std::string_view text);
    void parseLevel(std::string_view text);
    NextToken nextToken(std::string_view& text);
    size_t prefixLength(std::string_view text) const;
    bool readStringLiteral(std::string_view& text, std::string& bytes);
    void classifyWord(std::string_view word, NextToken& token);
    bool parseReference(std::string_view word, std::string& bytes) const;
    bool parseCorner(std::string_view text, bool onSheet, token::Reference& ref, bool second) const;
    std::uint8_t operatorCode(std::string_view text) const noexcept;

    void reduce(size_t first, size_t last);
    void secondPass(size_t start, size_t& end);
    void merge(size_t at, std::uint8_t kind, size_t& end);
    // Merges left, operator, right at `i` when both operands are there within
    // [start, end); otherwise sets error 3 and answers false.
    bool mergeAt(size_t start, size_t i, std::uint8_t kind, size_t& end);
    void makeUnary(size_t operatorIndex, size_t operandIndex, std::uint8_t code, size_t& end);
    bool isOperand(size_t index) const noexcept;
    void report(std::string message);
    void setError(std::uint8_t code) noexcept {
        if (errorCode_ == 0) errorCode_ = code;
    }
    bool stopped() const noexcept { return errorCode_ != 0 || failed_; }
    bool isDelimiter(char c) const noexcept { return delimiters_[static_cast<unsigned char>(c)]; }

    const FormulaScope& scope_;
    FormulaSeparators separators_;
    std::int32_t sheet_, column_, row_;
    TcxTokensStack stack_;
    std::uint8_t errorCode_ = 0;
    bool failed_ = false;
    // Levels of parentheses and function calls being parsed (the whole text
    // is level 0), and how many may nest.
    static constexpr int kMaxNesting = 1024;
    int nesting_ = 0;
    std::vector<std::string> messages_;
    bool delimiters_[256] = {};
};

}  // namespace zorfa::sheet
