// Fuzz target for the formula compiler: compiles arbitrary text as a cell of
// a small book (A1 or R1C1 style, "," or ";" lists, chosen by the first
// byte); when it compiles, the text rebuilt from the tokens must compile
// again and rebuild to the same text (numbers print with 15 digits, so the
// first round may round them), and the formula must evaluate without a crash.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "sheet/FormulaBook.h"
#include "sheet/Tokens.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace zorfa::sheet;
    if (size == 0) return 0;
    const std::uint8_t mode = data[0];
    const std::string text(reinterpret_cast<const char*>(data + 1), size - 1);

    LocaleSettings locale;
    if (mode & 2) locale.listSeparator = ';';
    if (mode & 4) locale.decimalSeparator = ',';
    FormulaBook book(2, locale);
    book.addSheet("My Sheet");
    book.formulas().addName({"Total", 0, {0, 0, 1, 1}});
    book.formulas().setR1C1(mode & 1);
    const CellPoint cell{static_cast<std::int32_t>(mode >> 4), static_cast<std::int32_t>(mode & 8 ? 3 : 0)};

    const CompileResult first = book.formulas().compileText(text, 0, cell);
    if (!first.ok()) return 0;
    std::string rebuilt;
    try {
        rebuilt = book.formulas().tokensText(first.tokens, cell);
    } catch (const ECalculationError&) {
        return 0;
    }
    const CompileResult second = book.formulas().compileText(rebuilt, 0, cell);
    // Text that came from tokens compiles again to the same text, unless a
    // number printed as "INF" or "NAN".
    const bool special = rebuilt.find("INF") != std::string::npos || rebuilt.find("NAN") != std::string::npos;
    if (!special) {
        if (!second.ok()) std::abort();
        if (book.formulas().tokensText(second.tokens, cell) != rebuilt) std::abort();
    }

    // Evaluate it in a cell with a few neighbours.
    book.enter(0, 0, 0, "5");
    book.enter(0, 1, 1, "=A1*2");
    book.enter(0, cell.column + 2, cell.row + 2, "=" + rebuilt.substr(1));
    book.formulas().recalc();
    (void)book.valueText(0, cell.column + 2, cell.row + 2);
    return 0;
}
