#pragma once
// The table of spreadsheet functions: the built-in 81 rows, looked up by the
// file format's function number (used in function tokens and in files) and by
// name, case-insensitively, plus a second table for functions a book adds.
// Built-in rows are tried first.

#include <cstdint>
#include <string_view>
#include <vector>

namespace zorfa::sheet {

class FormulaEvaluator;

// A function pops its arguments from the evaluator and pushes one result.
using FunctionHandler = void (*)(FormulaEvaluator& evaluator, int argumentCount);

struct FunctionInfo {
    std::uint16_t id = 0;
    const char* name = "";
    FunctionHandler handler = nullptr;
    // The argument count a file's fixed-argument function token stands for.
    std::uint8_t fixedArguments = 0;
};

class FunctionTable {
public:
    static constexpr size_t kBuiltInCount = 81;

    const FunctionInfo* find(std::uint16_t id) const noexcept;
    const FunctionInfo* find(std::string_view name) const noexcept;
    void add(const FunctionInfo& info) { added_.push_back(info); }

    static const FunctionInfo* builtIn() noexcept;

private:
    std::vector<FunctionInfo> added_;
};

}  // namespace zorfa::sheet
