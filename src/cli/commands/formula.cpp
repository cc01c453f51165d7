// zorfa-cli formula: compiles a formula text as a cell would and prints the
// text rebuilt from its tokens, which is what the cell then holds.
#include <ostream>

#include "base/CodePage.h"
#include "cli/Args.h"
#include "cli/Command.h"
#include "sheet/FormulaBook.h"
#include "sheet/SheetUtils.h"

namespace zorfa::cli {

namespace {

sheet::CellPoint parseCell(const std::string& name) {
    auto cell = sheet::TcxSSUtils::parseCellName(name);
    if (!cell) throw UsageError("--at takes a cell name such as B3, not '" + name + "'");
    return {cell->column, cell->row};
}

int runFormula(const std::vector<std::string>& argv, std::ostream& out, std::ostream& err) {
    Args args(argv, {"--r1c1"}, {"--at", "--list-separator"});
    args.expectPositionals(1, 1);
    sheet::LocaleSettings locale;
    if (auto separator = args.value("--list-separator")) {
        if (separator->size() != 1) throw UsageError("--list-separator takes one character");
        locale.listSeparator = (*separator)[0];
    }
    const sheet::CellPoint cell = args.value("--at") ? parseCell(*args.value("--at")) : sheet::CellPoint{};

    sheet::FormulaBook book(1, locale);
    book.formulas().setR1C1(args.has("--r1c1"));
    const std::string text = codepage::fromUtf8(args.positional()[0]);
    const sheet::CompileResult result = book.formulas().compileText(text, 0, cell);
    if (!result.ok()) {
        for (const std::string& message : result.messages) err << codepage::toUtf8(message) << "\n";
        return kExitInputFailure;
    }
    out << codepage::toUtf8(book.formulas().tokensText(result.tokens, cell)) << "\n";
    return kExitOk;
}

}  // namespace

extern const Command kCommand_formula{
    "formula", "compile a spreadsheet formula and print the text rebuilt from its tokens",
    "usage: zorfa-cli formula [--r1c1] [--at CELL] [--list-separator C] TEXT\n"
    "\n"
    "Compiles TEXT as the cell CELL (default A1) of sheet Sheet1 would: leading\n"
    "blanks and \"=\" signs are skipped, words are numbers, TRUE/FALSE, function\n"
    "names or references, and the reduction groups the operators. Prints the\n"
    "formula text rebuilt from the tokens (\"=  sum(a1:a3)\" prints \"=SUM(A1:A3)\"),\n"
    "or the system's message(s) on stderr and exits 1.\n"
    "\n"
    "  --r1c1                references are read and printed in R1C1 form\n"
    "  --at CELL             the formula's own cell, in A1 form; relative\n"
    "                        references are kept as offsets from it\n"
    "  --list-separator C    the locale's list separator (default \",\"); when it\n"
    "                        equals the decimal separator \".\" the list\n"
    "                        separator becomes \";\"\n",
    runFormula};

}  // namespace zorfa::cli
