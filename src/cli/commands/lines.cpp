// zorfa-cli lines: loads a file through the line store and saves it
// again with the store's line break, or tells how many lines it holds. What
// this shows is exactly what the editor does to a text file on open and save.
#include <ostream>

#include "cli/Args.h"
#include "cli/Command.h"
#include "text/EasyStrings.h"

namespace zorfa::cli {

namespace {

text::TEasyLineBreak ParseLineBreak(const std::string& name) {
    if (name == "crlf") return text::lbCRLF;
    if (name == "cr") return text::lbCR;
    if (name == "lf") return text::lbLF;
    throw UsageError("--linebreak takes crlf, cr or lf, not '" + name + "'");
}

int RunLines(const std::vector<std::string>& argv, std::ostream& out, std::ostream&) {
    Args args(argv, {"--count"}, {"--out", "--linebreak"});
    args.expectPositionals(1, 1);
    const auto outPath = args.value("--out");
    const auto lineBreak = args.value("--linebreak");
    const bool count = args.has("--count");
    if (!outPath && !count) throw UsageError("nothing to do: give --out FILE or --count");

    text::TEasyStrings lines;
    if (lineBreak) lines.LineBreak = ParseLineBreak(*lineBreak);
    lines.LoadFromFile(args.positional()[0]);
    if (count) out << lines.Count() << "\n";
    if (outPath) lines.SaveToFile(*outPath);
    return kExitOk;
}

}  // namespace

extern const Command kCommand_lines{
    "lines", "load a text file through the line store; count its lines or save it",
    "usage: zorfa-cli lines IN [--out OUT] [--linebreak crlf|cr|lf] [--count]\n"
    "\n"
    "Loads IN as the editor does: lines split at CR, LF or CR LF (LF CR is two\n"
    "breaks), the text ends at the first NUL byte, and a break at the very end\n"
    "adds no empty line.\n"
    "\n"
    "  --count             print the number of lines\n"
    "  --out OUT           save to OUT: every line followed by the line break,\n"
    "                      the last one included; no lines, no bytes\n"
    "  --linebreak BREAK   the break --out writes: crlf (default), cr or lf\n"
    "\n"
    "Exit codes: 0 done, 1 IN cannot be read or OUT cannot be written (the\n"
    "message names the file), 2 bad usage.\n",
    RunLines};

}  // namespace zorfa::cli
