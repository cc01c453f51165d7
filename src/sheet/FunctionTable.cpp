#include "sheet/FunctionTable.h"

#include <array>

#include "sheet/FunctionHandlers.h"
#include "sheet/LocaleSettings.h"

namespace zorfa::sheet {

namespace {

using namespace functions;

const FunctionInfo kBuiltIn[FunctionTable::kBuiltInCount] = {
    {24, "ABS", Abs, 1},          {99, "ACOS", Acos, 1},         {233, "ACOSH", Acosh, 1},
    {36, "AND", And, 1},          {98, "ASIN", Asin, 1},         {232, "ASINH", Asinh, 1},
    {18, "ATAN", Atan, 1},        {97, "ATAN2", Atan2, 2},       {234, "ATANH", Atanh, 1},
    {5, "AVERAGE", Average, 1},   {361, "AVERAGEA", AverageA, 1}, {16, "COS", Cos, 1},
    {230, "COSH", Cosh, 1},       {0, "COUNT", Count, 1},        {169, "COUNTA", CountA, 1},
    {347, "COUNTBLANK", CountBlank, 1}, {346, "COUNTIF", CountIf, 2}, {65, "DATE", Date, 3},
    {67, "DAY", Day, 1},          {13, "DOLLAR", Dollar, 1},     {21, "EXP", Exp, 1},
    {184, "FACT", Fact, 1},       {25, "INT", Int, 1},           {1, "IF", If, 2},
    {22, "LN", Ln, 1},            {109, "LOG", Log, 1},          {23, "LOG10", Log10, 1},
    {7, "MAX", Max, 1},           {6, "MIN", Min, 1},            {39, "MOD", Mod, 2},
    {68, "MONTH", Month, 1},      {38, "NOT", Not, 1},           {74, "NOW", Now, 0},
    {298, "ODD", Odd, 1},         {37, "OR", Or, 1},             {19, "PI", Pi, 0},
    {337, "POWER", Power, 2},     {342, "RADIANS", Radians, 1},  {63, "RAND", Rand, 0},
    {27, "ROUND", Round, 2},      {213, "ROUNDDOWN", RoundDown, 2}, {212, "ROUNDUP", RoundUp, 2},
    {26, "SIGN", Sign, 1},        {15, "SIN", Sin, 1},           {229, "SINH", Sinh, 1},
    {20, "SQRT", Sqrt, 1},        {4, "SUM", Sum, 1},            {321, "SUMSQ", SumSq, 1},
    {17, "TAN", Tan, 1},          {231, "TANH", Tanh, 1},        {66, "TIME", Time, 3},
    {221, "TODAY", Today, 0},     {197, "TRUNC", Trunc, 1},      {69, "YEAR", Year, 1},
    {70, "WEEKDAY", Weekday, 1},  {35, "FALSE", False, 0},       {34, "TRUE", True, 0},
    {118, "TRIM", Trim, 1},       {279, "EVEN", Even, 1},        {288, "CEILING", Ceiling, 2},
    {285, "FLOOR", Floor, 2},     {336, "CONCATENATE", Concatenate, 1}, {343, "DEGREES", Degrees, 1},
    {14, "FIXED", Fixed, 1},      {71, "HOUR", Hour, 1},         {72, "MINUTE", Minute, 1},
    {73, "SECOND", Second, 1},    {198, "ISLOGICAL", IsLogical, 1}, {126, "ISERR", IsErr, 1},
    {3, "ISERROR", IsError, 1},   {190, "ISNONTEXT", IsNonText, 1}, {129, "ISBLANK", IsBlank, 1},
    {2, "ISNA", IsNa, 1},         {128, "ISNUMBER", IsNumber, 1}, {127, "ISTEXT", IsText, 1},
    {32, "LEN", Len, 1},          {115, "LEFT", Left, 1},        {116, "RIGHT", Right, 1},
    {31, "MID", Mid, 3},          {112, "LOWER", Lower, 1},      {113, "UPPER", Upper, 1},
};

// Built-in rows by id: evaluation looks a function up at every call.
struct IdIndex {
    std::array<std::uint8_t, 512> row{};  // row + 1, 0 for none
    IdIndex() {
        for (size_t i = 0; i < FunctionTable::kBuiltInCount; ++i) row[kBuiltIn[i].id] = static_cast<std::uint8_t>(i + 1);
    }
};

}  // namespace

const FunctionInfo* FunctionTable::builtIn() noexcept { return kBuiltIn; }

const FunctionInfo* FunctionTable::find(std::uint16_t id) const noexcept {
    static const IdIndex index;
    if (id < index.row.size() && index.row[id]) return &kBuiltIn[index.row[id] - 1];
    for (const FunctionInfo& f : added_)
        if (f.id == id) return &f;
    return nullptr;
}

const FunctionInfo* FunctionTable::find(std::string_view name) const noexcept {
    for (const FunctionInfo& f : kBuiltIn)
        if (LocaleSettings::sameText(f.name, name)) return &f;
    for (const FunctionInfo& f : added_)
        if (LocaleSettings::sameText(f.name, name)) return &f;
    return nullptr;
}

}  // namespace zorfa::sheet
