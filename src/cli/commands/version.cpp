// zorfa-cli version: the program's name and version.
#include <ostream>

#include "cli/Args.h"
#include "cli/Command.h"

namespace zorfa::cli {

namespace {
int runVersion(const std::vector<std::string>& argv, std::ostream& out, std::ostream&) {
    Args args(argv, {}, {});
    args.expectPositionals(0, 0);
    out << "zorfa-cli " << ZORFA_VERSION << "\n";
    return kExitOk;
}
}  // namespace

extern const Command kCommand_version{
    "version", "print the program's version",
    "usage: zorfa-cli version\n\nPrints the name and version of the program.\n", runVersion};

}  // namespace zorfa::cli
