// Recalculation of a book of 100,000 formulas: 50,000 sums over ranges of 10
// cells and 50 arithmetic chains of 1,000 formulas each. The goal is a whole
// recalculation (both passes) in under 0.5 s.
#include <benchmark/benchmark.h>

#include <memory>
#include <string>

#include "sheet/FormulaBook.h"
#include "sheet/SheetUtils.h"

namespace {

using zorfa::sheet::FormulaBook;
using zorfa::sheet::TcxSSUtils;

constexpr int kValueRows = 10000;
constexpr int kSumColumns = 5;  // B to F: 5 x 10,000 sums
constexpr int kChains = 50;     // G onwards: 50 chains of 1,000
constexpr int kChainLength = 1000;

std::unique_ptr<FormulaBook> makeBook() {
    auto book = std::make_unique<FormulaBook>(1);
    book->formulas().beginUpdate();
    for (int r = 0; r < kValueRows; ++r) book->enter(0, 0, r, std::to_string(r % 97));
    for (int c = 1; c <= kSumColumns; ++c)
        for (int r = 0; r < kValueRows; ++r)
            book->enter(0, c, r, "=SUM(A" + std::to_string(r + 1) + ":A" + std::to_string(r + 10) + ")");
    for (int k = 0; k < kChains; ++k) {
        const int c = 1 + kSumColumns + k;
        const std::string column = TcxSSUtils::columnText(c);
        book->enter(0, c, 0, "=A1+1");
        for (int r = 1; r < kChainLength; ++r)
            book->enter(0, c, r, "=" + column + std::to_string(r) + "*1+1");
    }
    return book;
}

void BM_Recalc100kFormulas(benchmark::State& state) {
    auto book = makeBook();
    book->formulas().endUpdate();  // the first calculation
    for (auto _ : state) {
        book->formulas().recalc();
        benchmark::ClobberMemory();
    }
    state.counters["formulas"] = static_cast<double>(book->formulas().formulaCount());
    if (book->valueText(0, 1 + kSumColumns, kChainLength - 1) != "1000") state.SkipWithError("wrong chain value");
}
BENCHMARK(BM_Recalc100kFormulas)->Unit(benchmark::kMillisecond)->Iterations(5);

void BM_FirstRecalc100kFormulas(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        auto book = makeBook();
        state.ResumeTiming();
        book->formulas().endUpdate();
        state.PauseTiming();
        book.reset();
        state.ResumeTiming();
    }
}
BENCHMARK(BM_FirstRecalc100kFormulas)->Unit(benchmark::kMillisecond)->Iterations(3);

}  // namespace
