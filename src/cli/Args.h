#pragma once
// A small command-line reader for the zorfa-cli commands: flags, options that
// take a value (`--out FILE` or `--out=FILE`), positionals, and `--` to end
// the options. Anything it does not know is a UsageError (exit code 2).

#include <initializer_list>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace zorfa::cli {

class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

class Args {
public:
    Args(const std::vector<std::string>& argv,
         std::initializer_list<std::string_view> flags,
         std::initializer_list<std::string_view> valued);

    bool has(std::string_view flag) const;
    std::optional<std::string> value(std::string_view option) const;
    const std::vector<std::string>& positional() const { return positional_; }

    // Throws UsageError unless the number of positionals lies in [min, max].
    void expectPositionals(size_t min, size_t max) const;

private:
    std::vector<std::string> flags_;
    std::vector<std::pair<std::string, std::string>> values_;
    std::vector<std::string> positional_;
};

}  // namespace zorfa::cli
