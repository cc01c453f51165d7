#include "ShellFixture.h"

#include <filesystem>

#include "shell/DocumentForm.h"
#include "shell/DocumentPanel.h"
#include "shell/DocumentTabContainer.h"
#include "shell/FormAppLoading.h"
#include "shell/RecentFiles.h"

namespace zorfa::shell::testing {
namespace {

class ShellReview : public ShellTest {};

// The loading form is a captioned window: its title bar shows
// "Zorfa Editor loading ...", but it offers no border icons to close,
// minimise or maximise it while the program starts.
TEST(LoadingForm, HasATitleBarWithoutBorderIcons) {
    TFormAppLoading loading;
    const Qt::WindowFlags flags = loading.windowFlags();
    EXPECT_FALSE(flags & Qt::FramelessWindowHint);
    EXPECT_TRUE(flags & Qt::WindowTitleHint);
    EXPECT_TRUE(flags & Qt::CustomizeWindowHint);  // without it the platform adds its own buttons
    EXPECT_FALSE(flags & Qt::WindowSystemMenuHint);
    EXPECT_FALSE(flags & Qt::WindowCloseButtonHint);
    EXPECT_FALSE(flags & Qt::WindowMinimizeButtonHint);
    EXPECT_FALSE(flags & Qt::WindowMaximizeButtonHint);
    EXPECT_TRUE(flags & Qt::WindowStaysOnTopHint);
    EXPECT_EQ(loading.windowTitle(), "Zorfa Editor loading ...");
}

// A name that is present in other letter case is the same entry, and that
// entry is moved to the front as it is: the list keeps the spelling it had.
TEST(RecentFilesReview, APresentNameIsMovedToTheFrontWithItsOwnSpelling) {
    TRecentFiles recent;
    for (const char* name : {"/a/One.txt", "/a/two.txt", "/a/three.txt"}) recent.Add(name);
    recent.Add("/A/ONE.TXT");
    EXPECT_EQ(recent.Items(), (std::vector<std::string>{"/a/One.txt", "/a/three.txt", "/a/two.txt"}));

    // At the front already: nothing changes.
    recent.Add("/a/one.txt");
    EXPECT_EQ(recent.Items(), (std::vector<std::string>{"/a/One.txt", "/a/three.txt", "/a/two.txt"}));

    // The last entry of a full list moves up; nothing falls out.
    TRecentFiles full;
    for (int i = 0; i < TRecentFiles::MaxItemCount; ++i) full.Add("/f" + std::to_string(i));
    full.Add("/F0");
    ASSERT_EQ(full.Items().size(), 9u);
    EXPECT_EQ(full.Items().front(), "/f0");
    EXPECT_EQ(full.Items().back(), "/f1");
}

// Opening a file through another spelling of a listed name moves the listed
// entry; the recent-files click then opens the file under that entry.
TEST_F(ShellReview, ReopeningUnderAnotherCaseKeepsTheListedName) {
    TMain& m = NewMain();
    const std::string real = WriteFile("Notes.txt", "n\n");
    const std::string other = WriteFile("other.txt", "o\n");
    m.OpenDocumentFile(real);
    m.OpenDocumentFile(other);
    std::string shouted = real;
    shouted.replace(shouted.size() - 9, 9, "NOTES.TXT");
    m.OpenDocumentFile(shouted);  // fails to load on a case-sensitive file system
    EXPECT_EQ(m.RecentFiles().Items(), (std::vector<std::string>{real, other}));

    Script().clear();
    m.RecentFileClick(0);
    EXPECT_TRUE(Errors().empty());
    EXPECT_EQ(m.ActiveDocument()->FileName(), real);
}

// A save that converts a document closes it and opens it again at the end of
// the tabs. The documents behind it must still be asked at shutdown and still
// be saved by Save All.
TEST_F(ShellReview, CloseWalkStillAsksTheDocumentsBehindAConvertedOne) {
    TMain& m = NewMain();
    m.NewRTFFile->trigger();
    m.ActiveDocument()->SetModified(true);
    m.NewFile->trigger();
    m.ActiveDocument()->SetModified(true);

    Script().answerYes();                          // "New RTF file 1"
    Script().chooseFile(PathOf("plain.txt"), 3);   // plain text: reopened as text
    Script().answerCancel();                       // "New file 2" refuses
    EXPECT_FALSE(m.close());
    ASSERT_EQ(Script().asked().size(), 3u);
    EXPECT_EQ(Script().asked()[2].text, "Save changes to \"New file 2\"");
    EXPECT_TRUE(m.isVisible());
    EXPECT_EQ(TabCaptions(), (std::vector<QString>{"New file 2", "plain.txt"}));
    EXPECT_TRUE(m.TabContainer()->PanelAt(1)->Form()->Modified());
}

TEST_F(ShellReview, SaveAllStillSavesTheDocumentsBehindAConvertedOne) {
    TMain& m = NewMain();
    const std::string b = WriteFile("b.txt", "b\n");
    m.NewRTFFile->trigger();
    m.OpenDocumentFile(b);
    std::filesystem::remove(b);
    Script().chooseFile(PathOf("plain.txt"), 3);  // the rich document's Save As
    m.SaveAll->trigger();
    EXPECT_TRUE(Errors().empty());
    EXPECT_TRUE(FileExists(PathOf("plain.txt")));
    EXPECT_EQ(ReadFile(b), "b\r\n");
    EXPECT_EQ(Script().asked().size(), 1u);
}

}  // namespace
}  // namespace zorfa::shell::testing
