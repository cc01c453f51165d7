// Inserting a row at the top of a 65,536-row sheet full of formulas: every
// formula moves and every reference is fixed (and the cell texts rebuilt).
// The goal is under 0.5 s for the insertion.
#include <benchmark/benchmark.h>

#include <memory>
#include <string>

#include "sheet/FormulaBook.h"

namespace {

using zorfa::sheet::FormulaBook;
using zorfa::sheet::ShiftMode;

constexpr int kRows = 65536;

std::unique_ptr<FormulaBook> makeBook() {
    auto book = std::make_unique<FormulaBook>(1);
    book->formulas().beginUpdate();  // no calculation: only references matter here
    for (int r = 0; r < kRows; ++r) {
        const std::string row = std::to_string(r + 1);
        book->enter(0, 0, r, row);
        book->enter(0, 1, r, "=A" + row + "*2+$A$1+SUM(A" + row + ":A" + std::to_string(r + 2) + ")");
    }
    return book;
}

void BM_InsertRowAtTop(benchmark::State& state) {
    auto book = makeBook();
    for (auto _ : state) {
        book->sheet(0).insertCells({0, 0, 0, 0}, ShiftMode::Rows);
        state.PauseTiming();
        book->sheet(0).deleteCells({0, 0, 0, 0}, ShiftMode::Rows);
        state.ResumeTiming();
    }
    state.counters["formulas"] = static_cast<double>(book->formulas().formulaCount());
    book->sheet(0).insertCells({0, 0, 0, 0}, ShiftMode::Rows);
    if (book->sheet(0).cell(1, 2).text != "=A3*2+$A$1+SUM(A3:A4)") state.SkipWithError("references not fixed");
}
BENCHMARK(BM_InsertRowAtTop)->Unit(benchmark::kMillisecond)->Iterations(5);

}  // namespace
