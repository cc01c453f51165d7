#pragma once
// The one catch-all for exceptions: what reaches the message loop, a command
// handler or an event ends here, and nothing goes further.
//
// For an exception it (1) sets the cursor to the default first; (2) if the
// database error handler is set and reports errors, lets it show its box;
// (3) else shows the exception's own message in the error box (error icon, OK
// and Help) with its help context (zorfa::Exception::helpContext(), 0 for
// other exceptions). zorfa::EAbort ends silently (the cursor is still reset).
// Exceptions of unknown types show "Unknown exception"; std::bad_alloc shows
// "Out of memory". Whatever the box or the handler throw in turn is swallowed.

#include <exception>
#include <functional>
#include <string>
#include <utility>

namespace zorfa::platform {

class Dialogs;
class CursorControl;

// The console's database error box: asked whether its connection holds
// errors, and if so shown instead of the plain message. Empty until the
// console registers it.
struct DatabaseErrorHandler {
    std::function<bool()> hasErrors;
    std::function<void()> showErrorBox;
    explicit operator bool() const { return hasErrors && showErrorBox; }
};

class CatchAll {
public:
    CatchAll(Dialogs& dialogs, CursorControl& cursor) : dialogs_(dialogs), cursor_(cursor) {}

    void setDatabaseErrorHandler(DatabaseErrorHandler handler) { database_ = std::move(handler); }

    // Runs f; an exception from it is handled as above. True when f ran to its
    // end without an exception.
    template <class F>
    bool run(F&& f) noexcept {
        try {
            std::forward<F>(f)();
            return true;
        } catch (...) {
            handle(std::current_exception());
            return false;
        }
    }

    // Handles an exception caught elsewhere (the guarded block of a load).
    void handle(std::exception_ptr error) noexcept;

    // The message the error box shows for an exception ("" for EAbort).
    static std::string messageOf(std::exception_ptr error);
    static int helpContextOf(std::exception_ptr error);

private:
    Dialogs& dialogs_;
    CursorControl& cursor_;
    DatabaseErrorHandler database_;
};

}  // namespace zorfa::platform
