#include "CliRunner.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <stdexcept>

namespace zorfa::test {

namespace {
std::string readAll(int fd) {
    std::string s;
    char buf[65536];
    ssize_t n;
    while ((n = ::read(fd, buf, sizeof buf)) > 0) s.append(buf, static_cast<size_t>(n));
    return s;
}

std::string tempFileName() {
    char name[] = "/tmp/zorfa-cli-XXXXXX";
    int fd = ::mkstemp(name);
    if (fd < 0) throw std::runtime_error("mkstemp failed");
    ::close(fd);
    return name;
}
}  // namespace

CliResult runCli(const std::vector<std::string>& args, const std::string& stdinText) {
    const char* binDir = std::getenv("ZORFA_BIN_DIR");
    std::string program = std::string(binDir ? binDir : ".") + "/zorfa-cli";
    // Output goes through files rather than pipes so a large answer cannot
    // dead-lock against a full pipe.
    const std::string outName = tempFileName(), errName = tempFileName(), inName = tempFileName();
    {
        int fd = ::open(inName.c_str(), O_WRONLY | O_TRUNC);
        if (!stdinText.empty() && ::write(fd, stdinText.data(), stdinText.size()) < 0) {}
        ::close(fd);
    }
    pid_t pid = ::fork();
    if (pid == 0) {
        int in = ::open(inName.c_str(), O_RDONLY);
        int out = ::open(outName.c_str(), O_WRONLY | O_TRUNC);
        int err = ::open(errName.c_str(), O_WRONLY | O_TRUNC);
        ::dup2(in, 0);
        ::dup2(out, 1);
        ::dup2(err, 2);
        std::vector<char*> argv;
        argv.push_back(program.data());
        for (const std::string& a : args) argv.push_back(const_cast<char*>(a.c_str()));
        argv.push_back(nullptr);
        ::execv(program.c_str(), argv.data());
        ::_exit(127);
    }
    int status = 0;
    ::waitpid(pid, &status, 0);
    CliResult r;
    r.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    int fd = ::open(outName.c_str(), O_RDONLY);
    r.out = readAll(fd);
    ::close(fd);
    fd = ::open(errName.c_str(), O_RDONLY);
    r.err = readAll(fd);
    ::close(fd);
    ::unlink(outName.c_str());
    ::unlink(errName.c_str());
    ::unlink(inName.c_str());
    return r;
}

}  // namespace zorfa::test
