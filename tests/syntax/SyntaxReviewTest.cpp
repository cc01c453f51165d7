// Cases where masks, schemes and the scanner once gave answers other than
// the dialect's own rules: each pins the intended result.
#include <gtest/gtest.h>

#include <chrono>
#include <optional>
#include <string>

#include "base/Errors.h"
#include "syntax/EasyRegExpr.h"

namespace {

using zorfa::TEasyRegExpr;

std::optional<int> matchAt(const std::string& mask, const std::string& text, bool caseSensitive = true) {
    TEasyRegExpr e(mask, caseSensitive);
    int length = -1;
    if (!e.MatchAt(text.data(), text.data() + text.size(), true, length)) return std::nullopt;
    return length;
}

// A match that needs a long backtrack is still found: the answer does not
// depend on how much work it takes (only the failed-resume memo keeps the
// work polynomial). The first ".*" has to give back all 3000 characters.
TEST(SyntaxReview, LongBacktracksStillFindTheMatch) {
    const auto start = std::chrono::steady_clock::now();
    const std::string as(3000, 'a');
    EXPECT_EQ(matchAt(".*.*=x", "=x" + as), 2);
    EXPECT_EQ(matchAt(".*.*.*=x", "=x" + as), 2);
    EXPECT_EQ(matchAt("{.*.*}*=x", "=x" + as), 2);
    EXPECT_EQ(matchAt("a*a*a*ab", std::string(2000, 'a') + "b" + as), 2001);

    TEasyRegExpr e(".*.*b", true);
    const std::string text = "b" + as;
    int position = text.size();
    int length = 0;
    ASSERT_TRUE(e.Search(text, false, position, length));  // backward from the end
    EXPECT_EQ(position, 1);
    EXPECT_EQ(length, 1);

    const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    EXPECT_LT(seconds, 10.0);
}

// On a text so long that the failed-resume memo cannot be a bitmap the
// memo must still be kept, or thirty optional items before a mismatch cost
// billions of resumes.
TEST(SyntaxReview, VeryLongTextsKeepTheMemo) {
    std::string optionals;
    for (int i = 0; i < 30; ++i) optionals += "{a|}";
    const std::string text = std::string(30, 'a') + "c" + std::string(800000, 'x');
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(matchAt(optionals + "b", text), std::nullopt);
    EXPECT_EQ(matchAt(optionals + std::string(30, 'a') + "c", text), 31);
    const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    EXPECT_LT(seconds, 10.0);
}

std::string compileError(const std::string& mask, bool caseSensitive = true) {
    try {
        TEasyRegExpr e(mask, caseSensitive);
    } catch (const zorfa::Exception& ex) {
        return ex.what();
    }
    return "compiled";
}

// A code after "#" is read to its last digit before it is judged, so a
// number too large reports the character reached behind the digits, just
// as a "#" without digits reports the character behind the "#".
TEST(SyntaxReview, OversizedCodeReportsThePositionBehindItsDigits) {
    EXPECT_EQ(compileError("a#99999999999"), "a#99999999999 is invalid mask at (14)");
    EXPECT_EQ(compileError("#99999999999x"), "#99999999999x is invalid mask at (13)");
    EXPECT_EQ(compileError("[#99999999999]"), "[#99999999999] is invalid mask at (14)");
    EXPECT_EQ(compileError("[a-#99999999999]"), "[a-#99999999999] is invalid mask at (16)");
    EXPECT_EQ(compileError("#2147483647"), "compiled");
}

// In a case-insensitive set, characters written as themselves and the high
// end of a range are upper-cased; a "#" code written as a member (or as a
// range's low end) is taken as the code it names.
TEST(SyntaxReview, CodesInCaseInsensitiveSetsKeepTheirValue) {
    EXPECT_EQ(matchAt("[#97]", "a", false), std::nullopt) << "the input is upper-cased, the member is not";
    EXPECT_EQ(matchAt("[#97]", "A", false), std::nullopt);
    EXPECT_EQ(matchAt("[#97]", "a", true), 1);
    EXPECT_EQ(matchAt("[#65]", "a", false), 1);
    EXPECT_EQ(matchAt("[a-#122]+", "quiz", false), 4) << "a high end written as a code is upper-cased";
    EXPECT_EQ(matchAt("#97", "A", false), 1) << "outside a set a code is a plain character";
    const TEasyRegExpr set("[#97b]", false);
    EXPECT_TRUE(set.Items()[0].InSet('a'));
    EXPECT_FALSE(set.Items()[0].InSet('A'));
    EXPECT_TRUE(set.Items()[0].InSet('B'));
    // Low end 97 and high end "Z" (90): an inverted range, so an empty set.
    EXPECT_EQ(compileError("[#97-z]", false), "[#97-z] is invalid mask at (7)");
    EXPECT_EQ(compileError("[#97-z]", true), "compiled");
}

}  // namespace
