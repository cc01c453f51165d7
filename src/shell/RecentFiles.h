#pragma once
// The recent files list (dxBarMRUFiles): full path names, most recent first,
// at most MaxItemCount entries. Adding a name that is present (compared
// ignoring ASCII case) moves that entry, as it is spelled, to the front; a
// new name goes to the front and pushes the oldest out. Names are the operating system's bytes. The
// list is kept with the main window's stored properties as the string list
// "dxBarMRUFiles_Items" (docs/arch/shell.md).

#include <string>
#include <vector>

namespace zorfa::shell {

class TRecentFiles {
public:
    static constexpr int MaxItemCount = 9;

    void Add(const std::string& fileName);
    const std::vector<std::string>& Items() const { return items_; }
    // Takes a stored list as it is, cut to the maximum.
    void SetItems(std::vector<std::string> items);

private:
    std::vector<std::string> items_;
};

}  // namespace zorfa::shell
