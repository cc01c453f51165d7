// The shell tests need one QApplication for the whole run, on the offscreen
// platform unless the environment chose another.
#include <gtest/gtest.h>

#include <QApplication>

#include <cstdlib>

namespace {

// The offscreen platform says on every shown window that it can't pass size
// hints on; that says nothing about the test.
void quietHandler(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    if (message.contains("propagateSizeHints")) return;
    qt_message_output(type, context, message);
}

}  // namespace

int main(int argc, char** argv) {
    if (!std::getenv("QT_QPA_PLATFORM")) setenv("QT_QPA_PLATFORM", "offscreen", 1);
    qInstallMessageHandler(quietHandler);
    QApplication application(argc, argv);
    // Closing a test's main window must not end anything.
    QApplication::setQuitOnLastWindowClosed(false);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
