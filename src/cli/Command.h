#pragma once
// One command of zorfa-cli. Commands read their arguments, write results to
// `out` and the system's own error message to `err`, and return an exit code:
// 0 success, 1 a failure of the input, 2 bad usage. `--help` is answered by
// the driver from `usage`, before `run` is called.

#include <iosfwd>
#include <span>
#include <string>
#include <vector>

namespace zorfa::cli {

enum ExitCode : int { kExitOk = 0, kExitInputFailure = 1, kExitUsage = 2 };

struct Command {
    const char* name;
    const char* summary;  // one line for `zorfa-cli help`
    const char* usage;    // the whole text of `zorfa-cli NAME --help`
    int (*run)(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);
};

// Every command, sorted by file name; generated from src/cli/commands/.
std::span<const Command* const> commandTable();

}  // namespace zorfa::cli
