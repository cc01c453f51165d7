#pragma once
// A private temporary folder for one test, removed afterwards.

#include <QTemporaryDir>
#include <string>

namespace zorfa::platform::test {

class TempDir {
public:
    bool valid() const { return dir_.isValid(); }
    // The folder, with a closing "/".
    std::string path() const { return dir_.path().toStdString() + "/"; }
    std::string file(const std::string& name) const { return path() + name; }

private:
    QTemporaryDir dir_;
};

}  // namespace zorfa::platform::test
