#pragma once
// The token form of formulas: postfix byte strings whose opcodes are the file
// format's `ptg` numbers, widened to 32-bit rows and columns. A relative row or
// column holds the offset to the formula's own row or column; on a sheet-
// qualified (3D) reference the offset is taken from row 0, column 0.
//
//   3..14  binary operators + - * / ^ & < <= = >= > <>        1 byte
//   15     intersection (" "), 16 list separator (parse only), 17 range (":")
//   18, 19 unary plus and minus, 20 percent, 21 parentheses marker
//   23     string: code, count u8, 1, UTF-16 text              3 + 2 x count
//   29     boolean: code, u8                                   2
//   31     number: code, f64                                   9
//   35     defined name: code, u16 index                       3
//   36     cell: code, rowAbs, colAbs, row i32, column i32     11
//   37     area: code, rowAbs1, rowAbs2, colAbs1, colAbs2,
//                row1, row2, column1, column2                  21
//   58, 59 cell and area on a sheet: code, sheet u16, then as 36 and 37
//   66     function call: code, argument count u8, id u16      4
//
// All multi-byte fields are little-endian. TcxTokensStack is the parser's
// stack of items, each a byte string of one or more tokens.

#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "base/Errors.h"

namespace zorfa::sheet {

// Raised for a broken token stack and for a function that pushed no result;
// caught around one formula's calculation.
class ECalculationError : public Exception {
public:
    using Exception::Exception;
};

namespace token {
enum : std::uint8_t {
    Add = 3, Subtract = 4, Multiply = 5, Divide = 6, Power = 7, Concat = 8,
    Less = 9, LessEqual = 10, Equal = 11, GreaterEqual = 12, Greater = 13, NotEqual = 14,
    Intersect = 15, ListSeparator = 16, Range = 17,
    UnaryPlus = 18, UnaryMinus = 19, Percent = 20, Parentheses = 21,
    String = 0x17, Boolean = 0x1D, Number = 0x1F, Name = 0x23,
    Cell = 0x24, Area = 0x25, Cell3D = 0x3A, Area3D = 0x3B, Function = 0x42,
};

constexpr bool isOperator(std::uint8_t code) noexcept { return code >= Add && code <= Parentheses; }
constexpr bool isReference(std::uint8_t code) noexcept {
    return code == Cell || code == Area || code == Cell3D || code == Area3D;
}

// The size of the token starting at `at`, or 0 when the code is unknown or
// the token runs past the end.
size_t sizeAt(std::string_view tokens, size_t at) noexcept;

// Little-endian field access.
template <typename T>
T read(const char* p) noexcept {
    T value;
    std::memcpy(&value, p, sizeof value);
    return value;
}
template <typename T>
void append(std::string& out, T value) {
    out.append(reinterpret_cast<const char*>(&value), sizeof value);
}
template <typename T>
void write(char* p, T value) noexcept {
    std::memcpy(p, &value, sizeof value);
}

// A cell, area, or either on a sheet, decoded. For a cell the second corner
// equals the first.
struct Reference {
    bool area = false;
    bool onSheet = false;
    std::uint16_t sheet = 0;
    bool rowAbsolute1 = false, rowAbsolute2 = false, columnAbsolute1 = false, columnAbsolute2 = false;
    std::int32_t row1 = 0, row2 = 0, column1 = 0, column2 = 0;
};

// Decodes the reference token at `p` (one of Cell, Area, Cell3D, Area3D).
Reference readReference(const char* p) noexcept;
// Writes back the coordinates and flags of a decoded reference in place.
void writeReference(char* p, const Reference& ref) noexcept;
void appendReference(std::string& out, const Reference& ref);

void appendNumber(std::string& out, double value);
void appendBoolean(std::string& out, bool value);
// The count byte holds the length modulo 256 and only that many characters are
// kept, so a literal of more than 255 characters loses its head count.
void appendString(std::string& out, std::string_view text);
// The 8-bit text of the string token at `p`.
std::string readString(const char* p);
void appendString16(std::string& out, std::string_view text);

// The tokens as a file stores them, for a formula in (column, row): names
// become 0x43 with index + 1 and two spare bytes; references get absolute
// 16-bit rows and columns, the column word carrying 0x4000 for a relative
// column and 0x8000 for a relative row, 3D forms their 16-bit sheet first;
// cells become 0x44 and 0x5A, areas stay 0x25 and 0x3B. Everything else is
// copied. Stops at a token it does not know.
std::string toFileTokens(std::string_view tokens, std::int32_t column, std::int32_t row);
}  // namespace token

// One item of the stack: its bytes and the kind of token that defines it.
struct TokenItem {
    std::string bytes;
    std::uint8_t kind = 0;

    // A bare operator: the one-byte item that came from the text as is.
    bool isOperator(std::uint8_t code) const noexcept { return bytes.size() == 1 && kind == code; }
    bool isBareOperator() const noexcept { return bytes.size() == 1 && token::isOperator(kind); }
};

class TcxTokensStack {
public:
    size_t count() const noexcept { return items_.size(); }
    bool empty() const noexcept { return items_.empty(); }
    void push(std::string bytes, std::uint8_t kind) { items_.push_back({std::move(bytes), kind}); }
    // Raises ECalculationError "Error syntax in string expression" when empty.
    TokenItem pop();
    TokenItem& operator[](size_t index) { return items_[index]; }
    const TokenItem& operator[](size_t index) const { return items_[index]; }
    void erase(size_t index, size_t count = 1) {
        items_.erase(items_.begin() + static_cast<std::ptrdiff_t>(index),
                     items_.begin() + static_cast<std::ptrdiff_t>(index + count));
    }
    void clear() noexcept { items_.clear(); }

private:
    std::vector<TokenItem> items_;
};

}  // namespace zorfa::sheet
