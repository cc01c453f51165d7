#include "shell/RecentFiles.h"

#include "base/IniFile.h"

#include <algorithm>

namespace zorfa::shell {

void TRecentFiles::Add(const std::string& fileName) {
    const auto present = std::find_if(items_.begin(), items_.end(), [&](const std::string& item) {
        return sameNameIgnoringCase(item, fileName);
    });
    // A present entry is moved, not replaced: it keeps the spelling it was
    // listed under.
    if (present != items_.end()) {
        std::rotate(items_.begin(), present, present + 1);
        return;
    }
    items_.insert(items_.begin(), fileName);
    if (items_.size() > MaxItemCount) items_.resize(MaxItemCount);
}

void TRecentFiles::SetItems(std::vector<std::string> items) {
    items_ = std::move(items);
    if (items_.size() > MaxItemCount) items_.resize(MaxItemCount);
}

}  // namespace zorfa::shell
