// zorfa-cli calc: a CSV file entered as typed text, recalculated, and the
// values written back in the same shape.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "CliRunner.h"

using zorfa::test::runCli;

namespace {

class CalcCommand : public ::testing::Test {
protected:
    void SetUp() override {
        dir_ = std::filesystem::temp_directory_path() /
               ("zorfa-calc-" + std::to_string(::testing::UnitTest::GetInstance()->random_seed()) + "-" +
                ::testing::UnitTest::GetInstance()->current_test_info()->name());
        std::filesystem::create_directories(dir_);
    }
    void TearDown() override { std::filesystem::remove_all(dir_); }

    std::string write(const std::string& name, const std::string& text) {
        const auto path = dir_ / name;
        std::ofstream(path, std::ios::binary) << text;
        return path.string();
    }
    std::string read(const std::string& name) {
        std::ifstream in(dir_ / name, std::ios::binary);
        std::ostringstream s;
        s << in.rdbuf();
        return s.str();
    }

    std::filesystem::path dir_;
};

TEST_F(CalcCommand, FormulasBecomeTheirValues) {
    const auto in = write("in.csv", "a,1,2,=B1+C1\n\"x,y\",=SUM(B1:C1),=1/0,=D1*2\n");
    auto r = runCli({"calc", in});
    EXPECT_EQ(r.exitCode, 0) << r.err;
    EXPECT_EQ(r.out, "a,1,2,3\n\"x,y\",3,#DIV/0!,6\n");
    EXPECT_EQ(r.err, "");
}

TEST_F(CalcCommand, ShapeQuotingAndLineBreaksAreKept) {
    const auto in = write("in.csv", "\"=\"\"a,b\"\"\",,\"=\"\"q\"\"&1\"\r\n\r\n\"two\nlines\",=LEN(A3)\r\n");
    auto r = runCli({"calc", in, "--out", (dir_ / "out.csv").string()});
    EXPECT_EQ(r.exitCode, 0) << r.err;
    EXPECT_EQ(r.out, "");
    EXPECT_EQ(read("out.csv"), "\"a,b\",,q1\r\n\r\n\"two\nlines\",9\r\n");
}

TEST_F(CalcCommand, ErrorsUnknownNamesAndTextThatIsNoFormula) {
    const auto in = write("in.csv", "=FOO(1),=A1,=(1,=A1#,=\n");
    auto r = runCli({"calc", in});
    EXPECT_EQ(r.exitCode, 0);
    EXPECT_EQ(r.out, "#NAME!,#VALUE!,=(1,=A1#,=\n");
    EXPECT_EQ(r.err, "Error syntax in string expression\nError - symbol ')' expected!\n");
}

TEST_F(CalcCommand, CyclesAreReportedOnce) {
    const auto in = write("in.csv", "=B1+1,=A1+1\n");
    auto r = runCli({"calc", in});
    EXPECT_EQ(r.exitCode, 0);
    EXPECT_EQ(r.err, "Calculation error. Formula cycled indexes present\n");
}

TEST_F(CalcCommand, ChainsInAnyOrder) {
    std::string csv;
    for (int row = 1; row <= 50; ++row) csv += "=A" + std::to_string(row + 1) + "+1\n";
    csv += "100\n";
    const auto in = write("in.csv", csv);
    auto r = runCli({"calc", in});
    ASSERT_EQ(r.exitCode, 0);
    EXPECT_EQ(r.out.substr(0, 4), "150\n");
}

TEST_F(CalcCommand, FailuresOfTheInput) {
    EXPECT_EQ(runCli({"calc", (dir_ / "missing.csv").string()}).exitCode, 1);
    EXPECT_EQ(runCli({"calc", write("bad.csv", "\"open")}).exitCode, 1);
    EXPECT_EQ(runCli({"calc"}).exitCode, 2);
}

}  // namespace
