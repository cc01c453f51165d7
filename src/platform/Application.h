#pragma once
// The application object: a QApplication that lets no exception cross the
// event loop. Every event is delivered inside the catch-all, so an exception
// from any event handler, slot or timer becomes the error box and the loop
// goes on.

#include <QApplication>

namespace zorfa::platform {

class CatchAll;

class Application : public QApplication {
    Q_OBJECT

public:
    Application(int& argc, char** argv);

    // The catch-all to route through; it is created after the application
    // (its dialogs need one). Until it is set, exceptions are swallowed.
    void setCatchAll(CatchAll* catchAll) { catchAll_ = catchAll; }

    bool notify(QObject* receiver, QEvent* event) override;

private:
    CatchAll* catchAll_ = nullptr;
};

}  // namespace zorfa::platform
