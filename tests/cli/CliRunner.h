#pragma once
// Runs the zorfa-cli binary for black-box tests and captures what it says.

#include <string>
#include <vector>

namespace zorfa::test {

struct CliResult {
    int exitCode = -1;
    std::string out;
    std::string err;
};

// Runs zorfa-cli (from $ZORFA_BIN_DIR) with the given arguments, no shell
// involved, so arguments may hold any byte but NUL.
CliResult runCli(const std::vector<std::string>& args, const std::string& stdinText = {});

}  // namespace zorfa::test
