#include "shell/RecentFiles.h"

#include "base/IniFile.h"

#include <algorithm>

namespace zorfa::shell {

void TRecentFiles::Add(const std::string& fileName) {
    const auto present = std::find_if(items_.begin(), items_.end(), [&](const std::string& item) {
        return sameNameIgnoringCase(item, fileName);
    });
    if (present != items_.end()) items_.erase(present);
    items_.insert(items_.begin(), fileName);
    if (items_.size() > MaxItemCount) items_.resize(MaxItemCount);
}

void TRecentFiles::SetItems(std::vector<std::string> items) {
    items_ = std::move(items);
    if (items_.size() > MaxItemCount) items_.resize(MaxItemCount);
}

}  // namespace zorfa::shell
