// zorfa-cli tokens: scans a text file with a scheme the way the editor
// colours it: line by line from state 0, each line starting in the state the
// line before ended in.
#include <ostream>

#include "base/FileErrors.h"
#include "cli/Args.h"
#include "cli/Command.h"
#include "syntax/EasyParser.h"
#include "text/EasyStrings.h"

namespace zorfa::cli {

namespace {

std::string NameOf(const std::vector<std::string>& names, int index) {
    if (index >= 0 && index < static_cast<int>(names.size())) return names[index];
    return std::to_string(index);
}

int RunTokens(const std::vector<std::string>& argv, std::ostream& out, std::ostream&) {
    Args args(argv, {}, {"--scheme"});
    args.expectPositionals(1, 1);
    const auto schemePath = args.value("--scheme");
    if (!schemePath) throw UsageError("missing --scheme FILE.xs");

    TEasyParser parser;
    parser.SetRulesText(readWholeFile(*schemePath));
    std::vector<std::string> stateNames;
    for (const auto& s : parser.States()) stateNames.push_back(s.Name);

    text::TEasyStrings lines;
    lines.LoadFromFile(args.positional()[0]);

    int state = parser.DefaultState();
    for (int y = 0; y < lines.Count(); ++y) {
        const std::string_view line = lines.GetRawLine(y);
        parser.SetLineIndex(y);
        state = parser.ScanLine(state, line, [&](const TEasyTokenPiece& piece) {
            // A piece may be reported running past the end; show what is on the line.
            const int length = std::min<int>(piece.Length, static_cast<int>(line.size()) - piece.Start + 1);
            out << y << " " << piece.Start << " " << length << " " << NameOf(parser.Tokens(), piece.Token) << "\n";
        });
        out << y << " state " << NameOf(stateNames, state) << "\n";
    }
    return kExitOk;
}

}  // namespace

extern const Command kCommand_tokens{
    "tokens", "scan a text file with a syntax scheme and list its tokens",
    "usage: zorfa-cli tokens --scheme FILE.xs INPUT\n"
    "\n"
    "Compiles the scheme FILE.xs and scans INPUT line by line, starting in state\n"
    "0 and carrying each line's end state into the next line. Prints one line\n"
    "per token\n"
    "    LINE COL LEN TOKEN\n"
    "(LINE from 0, COL from 1, TOKEN the name declared in the scheme, -1 for\n"
    "text in a state without rules) and after each text line\n"
    "    LINE state STATE\n"
    "with the name of the state the line ends in. Empty lines are not scanned\n"
    "and keep the state.\n"
    "\n"
    "Exit codes: 0 done, 1 a file cannot be read or the scheme holds an invalid\n"
    "mask (the message goes to stderr), 2 bad usage.\n",
    RunTokens};

}  // namespace zorfa::cli
