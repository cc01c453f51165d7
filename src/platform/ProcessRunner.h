#pragma once
// Starting other programs: the user tools run a command line and don't wait
// for it (what WinExec did), and help files and URLs open with the desktop's
// handler. QtProcessRunner does it, RecordingProcessRunner records it.

#include <string>
#include <vector>

namespace zorfa::platform {

class ProcessRunner {
public:
    virtual ~ProcessRunner() = default;
    // Starts the command line detached, in workingDir (empty: the current
    // folder). Both are the OS's bytes, like file names (QtText.h: a command
    // line kept as code-page text goes through pathFromDisplay first). The program and its arguments are split as a shell would split
    // them (blanks separate, double quotes group, "" is a quote). False if it
    // could not be started.
    virtual bool startDetached(const std::string& commandLine, const std::string& workingDir = {}) = 0;
    // Opens a file or URL with the desktop's handler. False on failure.
    virtual bool openWithDesktop(const std::string& fileOrUrl) = 0;
};

class RecordingProcessRunner final : public ProcessRunner {
public:
    struct Started {
        std::string commandLine;
        std::string workingDir;
    };
    bool startDetached(const std::string& commandLine, const std::string& workingDir = {}) override {
        started_.push_back({commandLine, workingDir});
        return result_;
    }
    bool openWithDesktop(const std::string& fileOrUrl) override {
        opened_.push_back(fileOrUrl);
        return result_;
    }
    // What the next calls answer (true unless told otherwise).
    void setResult(bool ok) { result_ = ok; }
    const std::vector<Started>& started() const noexcept { return started_; }
    const std::vector<std::string>& opened() const noexcept { return opened_; }

private:
    bool result_ = true;
    std::vector<Started> started_;
    std::vector<std::string> opened_;
};

class QtProcessRunner final : public ProcessRunner {
public:
    bool startDetached(const std::string& commandLine, const std::string& workingDir = {}) override;
    bool openWithDesktop(const std::string& fileOrUrl) override;
};

// The command line split into program and arguments (see startDetached).
std::vector<std::string> splitCommandLine(const std::string& commandLine);

}  // namespace zorfa::platform
