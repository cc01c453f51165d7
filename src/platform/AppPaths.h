#pragma once
// The program's global paths. Everything the program reads beside itself is
// found relative to AppPath, the folder of its program file. Computed once at
// start-up and owned by the main window; nothing here is global state.
//
// Paths are byte strings as the operating system takes them, with "/" as
// separator; every folder value ends in "/".

#include <string>
#include <string_view>

namespace zorfa::platform {

struct AppPaths {
    std::string appPath;            // folder of the program file, ending in "/"
    std::string registryRoot;       // "Software\Zorfa Software\Zorfa Editor", a settings key
    std::string syntaxSchemesPath;  // appPath + "Syntax Schemes/"
    std::string quickTypePath;      // appPath + "Quick Type/"
    std::string templatesPath;      // appPath + "Templates/"
    std::string editorIniFile;      // appPath + "ZorfaEditor.ini"
    std::string textMemoryFile;     // appPath + "TextMemory.mem"
    std::string databaseIniFile;    // appPath + "ZorfaEDB.ini"
};

// The name of the environment variable that overrides the program's folder
// (tests, read-only installs).
inline constexpr const char* kAppPathVariable = "ZORFA_APP_PATH";

// Derives every path from the given folder, made absolute against the current
// folder and given its closing "/".
AppPaths derivePaths(std::string_view appPath);

// The folder of the running program file (from /proc/self/exe), ending in "/".
std::string programFolder();

// ZORFA_APP_PATH when set and not empty, else programFolder(); absolute,
// ending in "/".
std::string detectAppPath();

// derivePaths(detectAppPath()).
AppPaths pathsForThisProcess();

}  // namespace zorfa::platform
