#include "platform/Application.h"

#include "platform/CatchAll.h"

namespace zorfa::platform {

Application::Application(int& argc, char** argv) : QApplication(argc, argv) {}

bool Application::notify(QObject* receiver, QEvent* event) {
    bool result = false;
    const auto deliver = [&] { result = QApplication::notify(receiver, event); };
    if (catchAll_) {
        catchAll_->run(deliver);
    } else {
        try {
            deliver();
        } catch (...) {
        }
    }
    return result;
}

}  // namespace zorfa::platform
