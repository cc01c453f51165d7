#include "ShellFixture.h"

#include <QImage>
#include <QScrollBar>

#include "shell/DocumentPanel.h"
#include "shell/DocumentTabContainer.h"
#include "shell/EditorForm.h"
#include "shell/RecentFiles.h"
#include "shell/StringHolder.h"
#include "shell/TextLinesView.h"
#include "text/EasyStrings.h"

namespace zorfa::shell::testing {
namespace {

class Forms : public ShellTest {};

TEST_F(Forms, SetModifiedWritesTheStatusOnlyOnAChange) {
    TMain& m = NewMain();
    m.NewFile->trigger();
    TDocumentForm* form = m.ActiveDocument();
    m.SetStatusPanelText(0, "Busy");
    m.SetStatusPanelText(3, "untouched");
    form->SetModified(false);  // no change of the flag
    EXPECT_EQ(m.StatusPanelText(0), "Ready");
    EXPECT_EQ(m.StatusPanelText(3), "untouched");
    form->SetModified(true);
    EXPECT_EQ(m.StatusPanelText(3), "Modified");
    form->SetModified(false);
    EXPECT_EQ(m.StatusPanelText(3), "Not modified");
}

TEST_F(Forms, ActivatingATabBringsTheStatusPanelsInLine) {
    TMain& m = NewMain();
    m.NewFile->trigger();
    m.ActiveDocument()->SetModified(true);
    TDocumentForm* modified = m.ActiveDocument();
    m.NewFile->trigger();
    EXPECT_EQ(m.StatusPanelText(3), "Not modified");
    EXPECT_EQ(m.StatusPanelText(4), "Writable");
    m.ActivateDocument(*modified);
    EXPECT_EQ(m.StatusPanelText(3), "Modified");
}

TEST_F(Forms, TheBasePanelIsAHiddenTabThatNeverCloses) {
    TMain& m = NewMain();
    TDocumentTabContainer* tabs = m.TabContainer();
    EXPECT_EQ(tabs->widget(0), m.dxDockPanelFiles());
    EXPECT_FALSE(tabs->isTabVisible(0));
    EXPECT_TRUE(tabs->tabsClosable());
    EXPECT_FALSE(tabs->CloseTab(0));
    EXPECT_EQ(tabs->DocumentCount(), 0);
}

TEST_F(Forms, PanelsHearWhenTheyStopAndStartBeingActive) {
    TDocumentTabContainer tabs;
    std::vector<std::string> events;
    const auto panel = [&](const std::string& name) {
        auto* p = new TDocumentPanel;
        p->OnActivate = [&events, name](TDocumentPanel&, bool active) {
            events.push_back(name + (active ? "+" : "-"));
        };
        return p;
    };
    TDocumentPanel* a = panel("a");
    tabs.AddPanel(a, "a");
    tabs.AddPanel(panel("b"), "b");
    tabs.ActivatePanel(a);
    EXPECT_EQ(events, (std::vector<std::string>{"a+", "a-", "b+", "b-", "a+"}));
    events.clear();
    EXPECT_TRUE(tabs.CloseTab(tabs.IndexOfPanel(a)));  // no close query handler: it may close
    EXPECT_EQ(events, std::vector<std::string>{"b+"});
}

TEST_F(Forms, TextViewScrollsOverItsLinesWithTabsExpanded) {
    text::TEasyStrings lines;
    for (int i = 0; i < 500; ++i) lines.Add("x");
    lines.Add("\tab");  // 8 cells of tab, then 2
    TTextLinesView view(lines);
    view.resize(300, 200);
    view.show();
    const int page = view.LinesPerPage();
    EXPECT_GT(page, 1);
    EXPECT_EQ(view.verticalScrollBar()->maximum(), 501 - page);
    view.verticalScrollBar()->setValue(100);
    EXPECT_EQ(view.TopLine(), 100);
    // Every byte paints through the code page, control bytes included.
    lines.Put(100, std::string("\x80\x93\x01\xff", 4));
    view.LinesChanged();
    QImage image(view.size(), QImage::Format_ARGB32);
    view.render(&image);
    EXPECT_FALSE(image.isNull());
}

TEST(RecentFilesList, NewNamesGoToTheFrontAndTheOldestFallsOut) {
    TRecentFiles recent;
    for (int i = 0; i < 12; ++i) recent.Add("/f" + std::to_string(i));
    ASSERT_EQ(recent.Items().size(), 9u);
    EXPECT_EQ(recent.Items().front(), "/f11");
    EXPECT_EQ(recent.Items().back(), "/f3");
    recent.Add("/F5");
    EXPECT_EQ(recent.Items().front(), "/f5");
    EXPECT_EQ(recent.Items().size(), 9u);
    recent.SetItems(std::vector<std::string>(20, "/x"));
    EXPECT_EQ(recent.Items().size(), 9u);
}

TEST(StringHolder, ValuesAreFoundByNameIgnoringCase) {
    TZFStringHolder holder;
    holder.SetStrings("StoredValues", {"DefaultUncollapsed=False", "BackgroundImage=", "a=b=c"});
    EXPECT_EQ(holder.Value("StoredValues", "defaultuncollapsed"), "False");
    EXPECT_EQ(holder.Value("StoredValues", "a"), "b=c");
    EXPECT_EQ(holder.Value("StoredValues", "BackgroundImage"), "");
    EXPECT_EQ(holder.Value("StoredValues", "missing"), "");
    EXPECT_TRUE(holder.Strings("nothing").isEmpty());
    holder.SetStrings("StoredValues", {"x=1"});
    EXPECT_EQ(holder.StringData().size(), 1);
}

}  // namespace
}  // namespace zorfa::shell::testing
