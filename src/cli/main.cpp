// zorfa-cli: the driver. Finds the command, answers `help` and `--help`, and
// turns the exceptions of the engines into the exit codes of the contract.

#include <cstring>
#include <exception>
#include <iostream>

#include "base/Errors.h"
#include "cli/Args.h"
#include "cli/Command.h"

namespace {

using zorfa::cli::Command;
using zorfa::cli::commandTable;

void printHelp(std::ostream& out) {
    out << "usage: zorfa-cli COMMAND [ARGS...]\n"
           "       zorfa-cli COMMAND --help\n\ncommands:\n";
    out << "  help        list the commands\n";
    for (const Command* c : commandTable()) {
        std::string name = c->name;
        name.resize(std::max<size_t>(name.size() + 1, 12), ' ');
        out << "  " << name << c->summary << "\n";
    }
}

const Command* findCommand(const char* name) {
    for (const Command* c : commandTable())
        if (std::strcmp(c->name, name) == 0) return c;
    return nullptr;
}

}  // namespace

int main(int argc, char** argv) {
    std::ios::sync_with_stdio(false);
    if (argc < 2) {
        printHelp(std::cerr);
        return zorfa::cli::kExitUsage;
    }
    if (std::strcmp(argv[1], "help") == 0 || std::strcmp(argv[1], "--help") == 0) {
        printHelp(std::cout);
        return zorfa::cli::kExitOk;
    }
    const Command* command = findCommand(argv[1]);
    if (!command) {
        std::cerr << "zorfa-cli: unknown command '" << argv[1] << "'\n";
        printHelp(std::cerr);
        return zorfa::cli::kExitUsage;
    }
    std::vector<std::string> args(argv + 2, argv + argc);
    for (const std::string& a : args) {
        if (a == "--") break;
        if (a == "--help") {
            std::cout << command->usage;
            return zorfa::cli::kExitOk;
        }
    }
    try {
        int code = command->run(args, std::cout, std::cerr);
        std::cout.flush();
        return code;
    } catch (const zorfa::cli::UsageError& e) {
        std::cerr << "zorfa-cli " << command->name << ": " << e.what() << "\n" << command->usage;
        return zorfa::cli::kExitUsage;
    } catch (const zorfa::EAbort&) {
        return zorfa::cli::kExitInputFailure;
    } catch (const std::exception& e) {
        // The engines' own message text, unchanged.
        std::cerr << e.what() << "\n";
        return zorfa::cli::kExitInputFailure;
    }
}
