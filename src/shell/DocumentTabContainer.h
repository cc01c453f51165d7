#pragma once
// The one tab container of the workspace. Its first child, at index 0, is
// the base panel dxDockPanelFiles, whose tab stays hidden for the whole run;
// every document panel is docked after it as a new tab. Tabs offer a close
// button and cannot be undocked or float.
//
// Closing a tab asks the panel's close query; when it agrees the panel's
// close event is raised and the panel with its form is freed.

#include <QPointer>
#include <QTabWidget>

namespace zorfa::shell {

class TDocumentPanel;

class TDocumentTabContainer : public QTabWidget {
    Q_OBJECT
public:
    explicit TDocumentTabContainer(QWidget* parent = nullptr);

    QWidget* BasePanel() const { return basePanel_; }

    // Docks the panel as the last tab and makes it the active tab.
    void AddPanel(TDocumentPanel* panel, const QString& caption);
    // The document panel at a tab index, or null for the base panel.
    TDocumentPanel* PanelAt(int index) const;
    int IndexOfPanel(const TDocumentPanel* panel) const;
    // The document panels in tab order (the base panel left out), guarded:
    // walks that ask or save may close and reopen documents on the way.
    QList<QPointer<TDocumentPanel>> DocumentPanels() const;
    // The number of document panels (the base panel not counted).
    int DocumentCount() const { return count() - 1; }

    void SetPanelCaption(TDocumentPanel* panel, const QString& caption);
    void ActivatePanel(TDocumentPanel* panel);

    // Asks the panel at the index; true when it closed. The base panel never closes.
    bool CloseTab(int index);

private:
    void CurrentChanged(int index);

    QWidget* basePanel_;
    QPointer<TDocumentPanel> activePanel_;
};

}  // namespace zorfa::shell
