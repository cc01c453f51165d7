#include "text/TabStops.h"

#include <algorithm>
#include <charconv>
#include <cstdint>

#include "base/Errors.h"
#include "text/EasyLineText.h"

namespace zorfa::text {

namespace {

constexpr int kDefaultStop = 8;

std::string_view Trim(std::string_view s) {
    while (!s.empty() && static_cast<unsigned char>(s.front()) <= ' ') s.remove_prefix(1);
    while (!s.empty() && static_cast<unsigned char>(s.back()) <= ' ') s.remove_suffix(1);
    return s;
}

}  // namespace

TTabStopList::TTabStopList() : text_("8"), stops_{kDefaultStop} {}

void TTabStopList::SetTabStops(std::string_view text) {
    if (text == text_) return;
    text_ = std::string(text);
    stops_.clear();
    std::string_view rest = text;
    bool any = !Trim(text).empty();
    while (any) {
        const size_t comma = rest.find(',');
        const std::string_view item = Trim(rest.substr(0, comma));
        int value = 0;
        const auto [end, error] = std::from_chars(item.data(), item.data() + item.size(), value);
        if (item.empty() || error != std::errc() || end != item.data() + item.size() || value < 1 ||
            (!stops_.empty() && value <= stops_.back()))
            throw Exception("Invalid Tab Stop");
        stops_.push_back(value);
        if (comma == std::string_view::npos) break;
        rest.remove_prefix(comma + 1);
    }
    if (stops_.empty()) stops_.push_back(kDefaultStop);
}

// A list left empty by a bad first value behaves as the default single stop.
const std::vector<int>& TTabStopList::Effective() const {
    static const std::vector<int> kDefault{kDefaultStop};
    return stops_.empty() ? kDefault : stops_;
}

int TTabStopList::LastStop() const { return Effective().back(); }

int TTabStopList::Interval() const {
    const std::vector<int>& stops = Effective();
    if (stops.size() < 2) return stops.back();
    return stops.back() - stops[stops.size() - 2];
}

int TTabStopList::NextStop(int column) const {
    if (column >= MaxInt) return MaxInt;
    if (column < 0) column = 0;
    const int last = LastStop();
    const std::vector<int>& stops = Effective();
    if (column < last) return *std::upper_bound(stops.begin(), stops.end(), column);
    const std::int64_t step = Interval();
    const std::int64_t stop = last + ((static_cast<std::int64_t>(column) - last) / step + 1) * step;
    return stop > MaxInt ? MaxInt : static_cast<int>(stop);
}

int TTabStopList::PrevStop(int column) const {
    if (column <= 0) return 0;
    const int last = LastStop();
    if (column > last) {
        const int step = Interval();
        return last + ((column - 1 - last) / step) * step;
    }
    // The largest explicit stop below `column`.
    const std::vector<int>& stops = Effective();
    auto it = std::lower_bound(stops.begin(), stops.end(), column);
    return it == stops.begin() ? 0 : *(it - 1);
}

}  // namespace zorfa::text
