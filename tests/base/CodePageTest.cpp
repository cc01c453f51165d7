#include <gtest/gtest.h>

#include "base/CodePage.h"

namespace cp = zorfa::codepage;

TEST(CodePage, EveryByteRoundTripsThroughUnicodeAndUtf8) {
    std::string all;
    for (int b = 0; b < 256; ++b) {
        const char16_t u = cp::toUnicode(static_cast<unsigned char>(b));
        auto back = cp::fromUnicode(u);
        ASSERT_TRUE(back.has_value()) << b;
        EXPECT_EQ(*back, b);
        all += static_cast<char>(b);
    }
    EXPECT_EQ(cp::fromUtf8(cp::toUtf8(all)), all);
}

TEST(CodePage, HighControlRangeFollowsWindows1252) {
    EXPECT_EQ(cp::toUnicode(0x80), u'\u20AC');  // euro sign
    EXPECT_EQ(cp::toUnicode(0x93), u'\u201C');
    EXPECT_EQ(cp::toUnicode(0x9F), u'\u0178');
    EXPECT_EQ(cp::toUnicode(0x81), u'\u0081');  // undefined bytes keep their number
    EXPECT_EQ(cp::toUnicode(0xE9), u'\u00E9');
    EXPECT_FALSE(cp::fromUnicode(0x0100).has_value());
    EXPECT_FALSE(cp::fromUnicode(0x1F600).has_value());
}

TEST(CodePage, MalformedOrForeignUtf8BecomesTheReplacement) {
    EXPECT_EQ(cp::fromUtf8("a\xC3"), "a?");             // cut sequence
    EXPECT_EQ(cp::fromUtf8("\xFF" "b"), "?b");          // not a lead byte
    EXPECT_EQ(cp::fromUtf8("\xE2\x82\xAC"), "\x80");    // euro
    EXPECT_EQ(cp::fromUtf8("\xF0\x9F\x98\x80", '_'), "_");  // outside the code page
}
