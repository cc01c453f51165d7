#pragma once
// A book with one or more sheets for formula tests: cells are set by name
// ("B3") as typed text, values read as the cells show them, and the
// messages the formula engine would show are collected.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "sheet/FormulaBook.h"
#include "sheet/FormulaEnvironment.h"
#include "sheet/SheetUtils.h"

namespace zorfa::sheet::test {

class FixedClock final : public FormulaClock {
public:
    double serial = 45292.75;  // 1 January 2024, 18:00
    double now() const override { return serial; }
};

class FixedRandom final : public FormulaRandom {
public:
    double value = 0.25;
    double next() override { return value; }
};

class FormulaTest : public ::testing::Test {
protected:
    explicit FormulaTest(std::int32_t sheets = 2) : book(sheets) {
        book.formulas().setMessageHandler([this](const std::string& m) { messages.push_back(m); });
        book.formulas().setClock(&clock);
        book.formulas().setRandom(&random);
    }

    static CellPoint at(const std::string& name) {
        auto cell = TcxSSUtils::parseCellName(name);
        EXPECT_TRUE(cell.has_value()) << name;
        return cell ? CellPoint{cell->column, cell->row} : CellPoint{};
    }

    void set(const std::string& name, const std::string& text, std::int32_t sheet = 0) {
        const CellPoint p = at(name);
        book.enter(sheet, p.column, p.row, text);
    }
    std::string value(const std::string& name, std::int32_t sheet = 0) {
        const CellPoint p = at(name);
        return book.valueText(sheet, p.column, p.row);
    }
    std::string text(const std::string& name, std::int32_t sheet = 0) {
        const CellPoint p = at(name);
        return book.sheet(sheet).cell(p.column, p.row).text;
    }
    bool isFormula(const std::string& name, std::int32_t sheet = 0) {
        const CellPoint p = at(name);
        return book.sheet(sheet).cell(p.column, p.row).kind == CellKind::Formula;
    }
    // The value of a formula typed into a cell of its own (Z100), recalculated.
    std::string eval(const std::string& formula) {
        set("Z100", formula);
        book.formulas().recalc();
        return value("Z100");
    }
    // The text rebuilt from the tokens, or "!" and the messages.
    std::string compile(const std::string& formula, const std::string& cell = "A1") {
        const CompileResult r = book.formulas().compileText(formula, 0, at(cell));
        if (!r.ok()) {
            std::string joined = "!";
            for (const auto& m : r.messages) joined += (joined.size() > 1 ? " | " : "") + m;
            return joined;
        }
        return book.formulas().tokensText(r.tokens, at(cell));
    }

    FixedClock clock;
    FixedRandom random;
    FormulaBook book;
    std::vector<std::string> messages;
};

}  // namespace zorfa::sheet::test
