#pragma once
// The seams of the main window: every step of start-up, document creation,
// activation and shutdown that belongs to a subsystem still to come is one
// virtual method here, called by TMain at exactly its place in the order.
// The defaults do what can be done honestly today and nothing else; later
// work overrides them (one subclass passed to TMain) or fills in the
// defaults themselves. docs/arch/shell.md lists every hook with the work
// that fills it.
//
// Hooks may throw; what they throw travels like the rest of the step they
// belong to (to the catch-all, or into the guarded load of a document).

#include <QWidget>

#include <string>

namespace zorfa::shell {

class TMain;
class TDocumentForm;
class TEditorForm;
class TRichEditorForm;

class ShellHooks {
public:
    virtual ~ShellHooks();

    // ---- FormCreate, in this order -------------------------------------
    // Reads CurrentSyntaxParserName from "EditorOptions"/"SyntaxParser" of
    // ZorfaEditor.ini; appends what the scheme folder holds to
    // SyntaxParserList (the scan is not done by the default). Runs again at
    // the first activation; the list must not be cleared.
    virtual void GetSyntaxParsers(TMain& main);
    // Fills the language selector from SyntaxParserList and selects
    // CurrentSyntaxParserName, else "None", else the first item.
    virtual void SetSyntaxParsers(TMain& main);
    // Ties the Clip Text tree to TextMemoryFile and loads it.
    virtual void LoadClipText(TMain& main);
    // Creates the console form TFormDB in dxDockPanelDatabase and shows it.
    virtual void CreateConsole(TMain& main);
    // Reads the section names of ZorfaEDB.ini into the console's connection
    // list and selects the first.
    virtual void LoadConnectionList(TMain& main);
    // SQL.xs into the console's parser, SQL.qt into "SQLQuickType",
    // DefaultSave.sql into the SQL pane, each only when it exists.
    virtual void LoadConsoleFiles(TMain& main);
    virtual void LoadUserTools(TMain& main);

    // ---- Stored properties and placement --------------------------------
    // At every show the program makes (one in a run), before the restore
    // completion. The default restores the recent files and the three
    // start-with options.
    virtual void RestoreFormPlacement(TMain& main);
    // When the close goes through (or at destruction when it never did).
    // The default saves what RestoreFormPlacement restores.
    virtual void SaveFormPlacement(TMain& main);

    // ---- Restore completion ----------------------------------------------
    virtual void SetMenuAccessModifier(TMain& main, Qt::KeyboardModifiers modifiers);
    // Brings user tools, the console's SQL pane and every document form into
    // line with the editor-wide settings.
    virtual void ApplyAllSettings(TMain& main);

    // ---- First activation of the main window ----------------------------
    // Called only when the key RegistryRoot\Layout exists. The default
    // restores the main window's dock and toolbar state saved by SaveDockLayout.
    virtual void LoadDockLayout(TMain& main);
    // Makes the toolbars "File Explorer" and "Clip Text" visible.
    virtual void ShowToolPanelToolbars(TMain& main);

    // ---- Document creation ------------------------------------------------
    // Picks the selector item for the active text document's extension.
    virtual void ChooseSyntaxParser(TMain& main);
    virtual void UpdateCollapseRegions(TMain& main, bool collapsed, bool reset);
    // The selector's change handler: applies the selected language to the
    // active text document. Also run by TMain when the selection changes.
    virtual void SyntaxParsersChange(TMain& main);
    // Loads an HTML file into a rich form through the HTML importer.
    virtual void ImportHtml(TMain& main, TRichEditorForm& form, const std::string& path);

    // ---- Document activation ----------------------------------------------
    // What a form's FormActivate does beyond the status panels: toggle
    // buttons, colour combos, the language restore at the parser's Tag,
    // toolbar groups, page-mode buttons, the caret position.
    virtual void DocumentActivated(TMain& main, TDocumentForm& form);

    // ---- Save as, the rows that convert ------------------------------------
    // The whole document through the HTML exporter.
    virtual void ExportHtml(TMain& main, TDocumentForm& form, const std::string& path);
    // A text document through the RTF exporter.
    virtual void ExportRtf(TMain& main, TEditorForm& form, const std::string& path);

    // ---- Console ---------------------------------------------------------
    // The console form when its SQL pane has the focus, else null.
    virtual QWidget* ConsoleFormWithFocus(TMain& main);
    // The console's SQL pane when it is the console's active control or has
    // the focus, else null.
    virtual QWidget* ConsoleSqlPaneWithFocus(TMain& main);
    // Runs the console's disconnect action when its connection is open.
    virtual void DisconnectConsole(TMain& main);

    // ---- Shutdown ----------------------------------------------------------
    // Writes the dock layout into the freshly emptied key RegistryRoot\Layout.
    virtual void SaveDockLayout(TMain& main);
    // The windows go away: the Clip Text tree writes TextMemoryFile once
    // more, the toolbar manager saves to its key.
    virtual void WindowHandlesGone(TMain& main);
};

}  // namespace zorfa::shell
