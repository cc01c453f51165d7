// zorfa-cli match: compiles a mask of the editor's own dialect and matches
// it at the first character of a text, or searches the text for it, exactly
// as scheme rules and the find command use masks.
#include <ostream>

#include "cli/Args.h"
#include "cli/Command.h"
#include "syntax/EasyRegExpr.h"

namespace zorfa::cli {

namespace {

int RunMatch(const std::vector<std::string>& argv, std::ostream& out, std::ostream&) {
    Args args(argv, {"--ci", "--search"}, {});
    args.expectPositionals(2, 2);
    const std::string& mask = args.positional()[0];
    const std::string& text = args.positional()[1];
    TEasyRegExpr expression(mask, !args.has("--ci"));  // a bad mask throws the system's message
    if (args.has("--search")) {
        int position = 1;
        int length = 0;
        if (expression.Search(text, true, position, length)) out << position << " " << length << "\n";
        else out << "no match\n";
    } else {
        int length = 0;
        if (expression.MatchAt(text.data(), text.data() + text.size(), true, length)) out << length << "\n";
        else out << "no match\n";
    }
    return kExitOk;
}

}  // namespace

extern const Command kCommand_match{
    "match", "match or search a mask of the editor's own dialect in a text",
    "usage: zorfa-cli match [--ci] [--search] MASK TEXT\n"
    "\n"
    "Compiles MASK and, without --search, matches it at the first character of\n"
    "TEXT (which counts as a line start) and prints the matched length, or\n"
    "\"no match\". With --search, scans TEXT forward from its first character and\n"
    "prints \"POS LEN\" of the first match (POS from 1), or \"no match\".\n"
    "\n"
    "The dialect: {...} groups; postfix * + and | (| means optional); ! negates\n"
    "the next item or group; #nnn is the character of code nnn; [...] sets with\n"
    "^ for negation, ranges and \\ escapes; . any character; ^ $ anchors; \\x a\n"
    "literal x; ( ) ? are plain characters.\n"
    "\n"
    "  --ci       compile case-insensitive\n"
    "  --search   search instead of matching at the first character\n"
    "\n"
    "Exit codes: 0 done (matched or not), 1 the mask is invalid (the message\n"
    "\"MASK is invalid mask at (N)\" goes to stderr), 2 bad usage.\n",
    RunMatch};

}  // namespace zorfa::cli
