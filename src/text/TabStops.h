#pragma once
// TTabStopList: the tab stops of an edit source. The stops text is a comma
// list of ascending positive columns ("4,8,16"); past the last explicit stop
// the stops repeat at the last interval (the last stop itself when there is
// only one). Every answer is computed from the explicit stops, so a column of
// any size costs a binary search and never fills a per-column table.
//
// Accepts: comma-separated integers, blanks around them ignored. Raises
// zorfa::Exception("Invalid Tab Stop") for a value below 1, a value not above
// its predecessor, or text that is not an integer; the stops read before the
// bad value stay.

#include <string>
#include <string_view>
#include <vector>

namespace zorfa::text {

class TTabStopList {
public:
    TTabStopList();

    const std::string& TabStops() const { return text_; }
    // Ignores a text equal to the present one; an empty text leaves the
    // single stop 8.
    void SetTabStops(std::string_view text);

    // The first stop after the 0-based `column`; MaxInt for MaxInt.
    int NextStop(int column) const;
    // The last stop before `column`, or 0.
    int PrevStop(int column) const;

    const std::vector<int>& Stops() const { return stops_; }

private:
    // The last stop and the interval at which stops repeat after it.
    const std::vector<int>& Effective() const;
    int LastStop() const;
    int Interval() const;

    std::string text_;
    std::vector<int> stops_;
};

}  // namespace zorfa::text
