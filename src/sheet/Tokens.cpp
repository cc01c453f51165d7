#include "sheet/Tokens.h"

#include "base/CodePage.h"

namespace zorfa::sheet {

namespace token {

size_t sizeAt(std::string_view tokens, size_t at) noexcept {
    if (at >= tokens.size()) return 0;
    const auto code = static_cast<std::uint8_t>(tokens[at]);
    size_t size = 0;
    if (isOperator(code)) {
        size = 1;
    } else {
        switch (code) {
        case String:
            if (at + 1 >= tokens.size()) return 0;
            size = 3 + 2 * static_cast<size_t>(static_cast<std::uint8_t>(tokens[at + 1]));
            break;
        case Boolean: size = 2; break;
        case Number: size = 9; break;
        case Name: size = 3; break;
        case Cell: size = 11; break;
        case Area: size = 21; break;
        case Cell3D: size = 13; break;
        case Area3D: size = 23; break;
        case Function: size = 4; break;
        default: return 0;
        }
    }
    return at + size <= tokens.size() ? size : 0;
}

Reference readReference(const char* p) noexcept {
    Reference r;
    const auto code = static_cast<std::uint8_t>(*p++);
    r.onSheet = code == Cell3D || code == Area3D;
    r.area = code == Area || code == Area3D;
    if (r.onSheet) {
        r.sheet = read<std::uint16_t>(p);
        p += 2;
    }
    if (!r.area) {
        r.rowAbsolute1 = r.rowAbsolute2 = p[0] != 0;
        r.columnAbsolute1 = r.columnAbsolute2 = p[1] != 0;
        r.row1 = r.row2 = read<std::int32_t>(p + 2);
        r.column1 = r.column2 = read<std::int32_t>(p + 6);
    } else {
        r.rowAbsolute1 = p[0] != 0;
        r.rowAbsolute2 = p[1] != 0;
        r.columnAbsolute1 = p[2] != 0;
        r.columnAbsolute2 = p[3] != 0;
        r.row1 = read<std::int32_t>(p + 4);
        r.row2 = read<std::int32_t>(p + 8);
        r.column1 = read<std::int32_t>(p + 12);
        r.column2 = read<std::int32_t>(p + 16);
    }
    return r;
}

void writeReference(char* p, const Reference& r) noexcept {
    p += r.onSheet ? 3 : 1;
    if (!r.area) {
        p[0] = r.rowAbsolute1;
        p[1] = r.columnAbsolute1;
        write(p + 2, r.row1);
        write(p + 6, r.column1);
    } else {
        p[0] = r.rowAbsolute1;
        p[1] = r.rowAbsolute2;
        p[2] = r.columnAbsolute1;
        p[3] = r.columnAbsolute2;
        write(p + 4, r.row1);
        write(p + 8, r.row2);
        write(p + 12, r.column1);
        write(p + 16, r.column2);
    }
}

void appendReference(std::string& out, const Reference& r) {
    std::uint8_t code = r.area ? (r.onSheet ? Area3D : Area) : (r.onSheet ? Cell3D : Cell);
    const size_t at = out.size();
    out += static_cast<char>(code);
    if (r.onSheet) append(out, r.sheet);
    out.append(r.area ? 20 : 10, '\0');
    writeReference(out.data() + at, r);
}

void appendNumber(std::string& out, double value) {
    out += static_cast<char>(Number);
    append(out, value);
}

void appendBoolean(std::string& out, bool value) {
    out += static_cast<char>(Boolean);
    out += static_cast<char>(value ? 1 : 0);
}

void appendString16(std::string& out, std::string_view text) {
    for (char c : text) append(out, static_cast<std::uint16_t>(codepage::toUnicode(static_cast<unsigned char>(c))));
}

void appendString(std::string& out, std::string_view text) {
    const auto count = static_cast<std::uint8_t>(text.size() & 0xFF);
    out += static_cast<char>(String);
    out += static_cast<char>(count);
    out += '\x01';
    appendString16(out, text.substr(0, count));
}

std::string readString(const char* p) {
    const auto count = static_cast<std::uint8_t>(p[1]);
    std::string text;
    text.reserve(count);
    for (size_t i = 0; i < count; ++i) {
        const auto unit = read<std::uint16_t>(p + 3 + 2 * i);
        auto byte = codepage::fromUnicode(unit);
        text += byte ? static_cast<char>(*byte) : '?';
    }
    return text;
}

namespace {
void appendFileCoordinates(std::string& out, const Reference& r, std::int32_t column, std::int32_t row) {
    const std::int32_t baseRow = r.onSheet ? 0 : row, baseColumn = r.onSheet ? 0 : column;
    auto rowWord = [&](std::int32_t stored, bool absolute) {
        return static_cast<std::uint16_t>(absolute ? stored : stored + baseRow);
    };
    auto columnWord = [&](std::int32_t stored, bool columnAbsolute, bool rowAbsolute) {
        auto word = static_cast<std::uint16_t>((columnAbsolute ? stored : stored + baseColumn) & 0x3FFF);
        if (!columnAbsolute) word |= 0x4000;
        if (!rowAbsolute) word |= 0x8000;
        return word;
    };
    append(out, rowWord(r.row1, r.rowAbsolute1));
    if (r.area) append(out, rowWord(r.row2, r.rowAbsolute2));
    append(out, columnWord(r.column1, r.columnAbsolute1, r.rowAbsolute1));
    if (r.area) append(out, columnWord(r.column2, r.columnAbsolute2, r.rowAbsolute2));
}
}  // namespace

std::string toFileTokens(std::string_view tokens, std::int32_t column, std::int32_t row) {
    std::string out;
    out.reserve(tokens.size());
    for (size_t at = 0; at < tokens.size();) {
        const size_t size = sizeAt(tokens, at);
        if (size == 0) break;
        const char* p = tokens.data() + at;
        at += size;
        const auto code = static_cast<std::uint8_t>(*p);
        if (code == Name) {
            out += '\x43';
            append(out, static_cast<std::uint16_t>(read<std::uint16_t>(p + 1) + 1));
            append(out, std::uint16_t{0});
        } else if (isReference(code)) {
            const Reference r = readReference(p);
            out += static_cast<char>(code == Cell || code == Cell3D ? code + 32 : code);
            if (r.onSheet) append(out, r.sheet);
            appendFileCoordinates(out, r, column, row);
        } else {
            out.append(p, size);
        }
    }
    return out;
}

}  // namespace token

TokenItem TcxTokensStack::pop() {
    if (items_.empty()) throw ECalculationError("Error syntax in string expression");
    TokenItem item = std::move(items_.back());
    items_.pop_back();
    return item;
}

}  // namespace zorfa::sheet
