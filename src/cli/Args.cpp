#include "cli/Args.h"

#include <algorithm>

namespace zorfa::cli {

namespace {
bool contains(std::initializer_list<std::string_view> list, std::string_view name) {
    return std::find(list.begin(), list.end(), name) != list.end();
}
}  // namespace

Args::Args(const std::vector<std::string>& argv,
           std::initializer_list<std::string_view> flags,
           std::initializer_list<std::string_view> valued) {
    bool optionsEnded = false;
    for (size_t i = 0; i < argv.size(); ++i) {
        const std::string& a = argv[i];
        if (optionsEnded || a.size() < 2 || a[0] != '-' || a[1] != '-') {
            positional_.push_back(a);
            continue;
        }
        if (a == "--") {
            optionsEnded = true;
            continue;
        }
        std::string name = a;
        std::optional<std::string> inlineValue;
        if (auto eq = a.find('='); eq != std::string::npos) {
            name = a.substr(0, eq);
            inlineValue = a.substr(eq + 1);
        }
        if (contains(valued, name)) {
            if (inlineValue) {
                values_.emplace_back(name, *inlineValue);
            } else if (i + 1 < argv.size()) {
                values_.emplace_back(name, argv[++i]);
            } else {
                throw UsageError("option " + name + " needs a value");
            }
        } else if (contains(flags, name) && !inlineValue) {
            flags_.push_back(name);
        } else {
            throw UsageError("unknown option " + a);
        }
    }
}

bool Args::has(std::string_view flag) const {
    return std::find(flags_.begin(), flags_.end(), flag) != flags_.end();
}

std::optional<std::string> Args::value(std::string_view option) const {
    // The last occurrence wins, as with most command-line tools.
    for (auto it = values_.rbegin(); it != values_.rend(); ++it)
        if (it->first == option) return it->second;
    return std::nullopt;
}

void Args::expectPositionals(size_t min, size_t max) const {
    if (positional_.size() < min) throw UsageError("missing argument");
    if (positional_.size() > max) throw UsageError("too many arguments");
}

}  // namespace zorfa::cli
