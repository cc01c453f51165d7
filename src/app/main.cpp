// zorfa-editor: the program's start, in its fixed order: the loading form,
// the title, the main window with its FormCreate, show and restore, the files
// of the command line, the loading form's close, the first activation by
// hand, then the event loop.

#include "platform/AppPaths.h"
#include "platform/Application.h"
#include "platform/CatchAll.h"
#include "platform/Cursor.h"
#include "platform/FileFacts.h"
#include "platform/QtDialogs.h"
#include "platform/SettingsStore.h"
#include "shell/FormAppLoading.h"
#include "shell/Main.h"

#include <cstdio>
#include <cstdlib>

namespace {

bool hasDisplay() {
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
        const char* value = std::getenv(name);
        if (value && *value) return true;
    }
    return false;
}

}  // namespace

int main(int argc, char** argv) {
    using namespace zorfa;
    if (!hasDisplay()) {
        std::fputs("zorfa-editor: no display (neither DISPLAY nor WAYLAND_DISPLAY is set); "
                   "run it in a desktop session or under xvfb-run.\n",
                   stderr);
        return 1;
    }

    platform::Application application(argc, argv);
    platform::QtDialogs dialogs;
    platform::QtCursor cursor;
    platform::CatchAll catchAll(dialogs, cursor);
    application.setCatchAll(&catchAll);

    auto* loading = new shell::TFormAppLoading;
    loading->setAttribute(Qt::WA_DeleteOnClose);
    loading->show();
    QCoreApplication::processEvents();

    QApplication::setApplicationDisplayName("Zorfa Editor");

    platform::SettingsStore settings(platform::SettingsStore::defaultFileName());
    shell::TMain mainWindow({dialogs, cursor, catchAll, settings, platform::detectAppPath(), nullptr});
    dialogs.setParent(&mainWindow);
    mainWindow.show();

    // Every argument is a file name; Qt has taken its own options out of argv.
    for (int i = 1; i < argc; ++i) {
        const std::string path = platform::fullPath(argv[i]);
        catchAll.run([&] { mainWindow.OpenDocumentFile(path); });
    }

    loading->close();
    catchAll.run([&] { mainWindow.ApplicationEventsActivate(); });
    return QApplication::exec();
}
