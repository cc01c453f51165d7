#pragma once
// The exceptions every subsystem shares. Engines throw an Exception (or a
// subclass) carrying the system's own message text; the shell's one catch-all
// shows that text in the error box. EAbort ends a command with no message.

#include <exception>
#include <stdexcept>
#include <string>

namespace zorfa {

class Exception : public std::runtime_error {
public:
    explicit Exception(const std::string& message, int helpContext = 0)
        : std::runtime_error(message), helpContext_(helpContext) {}
    int helpContext() const noexcept { return helpContext_; }

private:
    int helpContext_;
};

// The silent abort: no message follows it anywhere.
class EAbort : public std::exception {
public:
    const char* what() const noexcept override { return "Operation aborted"; }
};

}  // namespace zorfa
