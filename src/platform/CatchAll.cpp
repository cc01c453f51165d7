#include "platform/CatchAll.h"

#include <new>

#include "base/Errors.h"
#include "platform/Cursor.h"
#include "platform/Dialogs.h"

namespace zorfa::platform {

std::string CatchAll::messageOf(std::exception_ptr error) {
    try {
        std::rethrow_exception(error);
    } catch (const EAbort&) {
        return {};
    } catch (const std::bad_alloc&) {
        return "Out of memory";
    } catch (const std::exception& e) {
        return e.what();
    } catch (...) {
        return "Unknown exception";
    }
}

int CatchAll::helpContextOf(std::exception_ptr error) {
    try {
        std::rethrow_exception(error);
    } catch (const Exception& e) {
        return e.helpContext();
    } catch (...) {
        return 0;
    }
}

void CatchAll::handle(std::exception_ptr error) noexcept {
    try {
        cursor_.set(CursorShape::Default);
    } catch (...) {
    }
    if (!error) return;
    try {
        std::rethrow_exception(error);
    } catch (const EAbort&) {
        return;
    } catch (...) {
    }
    try {
        if (database_ && database_.hasErrors()) {
            database_.showErrorBox();
            return;
        }
        dialogs_.showError(messageOf(error), helpContextOf(error));
    } catch (...) {
        // The box itself failed: there is nowhere further to report it.
    }
}

}  // namespace zorfa::platform
