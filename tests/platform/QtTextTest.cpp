#include <gtest/gtest.h>

#include "platform/QtText.h"

namespace zorfa::platform {
namespace {

TEST(QtText, AllBytesRoundTripThroughQString) {
    std::string all;
    for (int b = 0; b < 256; ++b) all += static_cast<char>(b);
    const QString text = toQString(all);
    ASSERT_EQ(text.size(), 256);
    EXPECT_EQ(fromQString(text), all);
    EXPECT_EQ(text[0x80], QChar(0x20AC));  // euro sign
    EXPECT_EQ(text[0xE9], QChar(0x00E9));
    EXPECT_EQ(text[0x00], QChar(0));       // a zero byte is a character, not an end
}

TEST(QtText, CharactersOutsideTheCodePageBecomeTheReplacement) {
    EXPECT_EQ(fromQString(QString::fromUtf8("a\u0100b")), "a?b");
    EXPECT_EQ(fromQString(QString::fromUtf8("x\U0001F600y")), "x?y");  // one ? per character, not per unit
    EXPECT_EQ(fromQString(QString::fromUtf8("\u20AC"), '_'), "\x80");
    EXPECT_EQ(fromQString(QString::fromUtf8("\u0100"), '_'), "_");
}

TEST(QtText, FileNamesAreTheOperatingSystemsBytes) {
    const std::string utf8Name = "/tmp/B\xC3\xBC" "cher.txt";  // "Bücher.txt" as Linux stores it
    EXPECT_EQ(pathToQString(utf8Name), QString::fromUtf8("/tmp/B\u00FCcher.txt"));
    EXPECT_EQ(qStringToPath(pathToQString(utf8Name)), utf8Name);
    // Shown in the program's own text it is code-page bytes...
    EXPECT_EQ(displayFileName(utf8Name), "/tmp/B\xFC" "cher.txt");
    // ...and such text typed by the user becomes the OS's name again.
    EXPECT_EQ(pathFromDisplay("/tmp/B\xFC" "cher.txt"), utf8Name);
    // A name the code page can't show still opens; only its display is lossy.
    const std::string cjk = "/tmp/\xE6\x97\xA5.txt";
    EXPECT_EQ(qStringToPath(pathToQString(cjk)), cjk);
    EXPECT_EQ(displayFileName(cjk), "/tmp/?.txt");
    EXPECT_EQ(displayFileName("/plain/ascii.txt"), "/plain/ascii.txt");
}

}  // namespace
}  // namespace zorfa::platform
