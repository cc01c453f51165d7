#include "platform/AppPaths.h"

#include <cstdlib>
#include <filesystem>
#include <system_error>

#include "platform/FileFacts.h"
#include "platform/SettingsStore.h"

namespace zorfa::platform {

AppPaths derivePaths(std::string_view appPath) {
    AppPaths p;
    p.appPath = includeTrailingSlash(fullPath(std::string(appPath)));
    p.registryRoot = keys::kRegistryRoot;
    p.syntaxSchemesPath = p.appPath + "Syntax Schemes/";
    p.quickTypePath = p.appPath + "Quick Type/";
    p.templatesPath = p.appPath + "Templates/";
    p.editorIniFile = p.appPath + "ZorfaEditor.ini";
    p.textMemoryFile = p.appPath + "TextMemory.mem";
    p.databaseIniFile = p.appPath + "ZorfaEDB.ini";
    return p;
}

std::string programFolder() {
    std::error_code error;
    const auto exe = std::filesystem::read_symlink("/proc/self/exe", error);
    if (error) return includeTrailingSlash(fullPath("."));
    return extractFilePath(exe.string());
}

std::string detectAppPath() {
    if (const char* overridden = std::getenv(kAppPathVariable); overridden && *overridden)
        return includeTrailingSlash(fullPath(overridden));
    return programFolder();
}

AppPaths pathsForThisProcess() { return derivePaths(detectAppPath()); }

}  // namespace zorfa::platform
