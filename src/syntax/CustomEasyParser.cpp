#include "syntax/CustomEasyParser.h"

#include <algorithm>

namespace zorfa {

namespace {
std::vector<TCustomEasyParser*>& parserRegistry() {
    static std::vector<TCustomEasyParser*> parsers;
    return parsers;
}
}  // namespace

TCustomEasyParser::TCustomEasyParser() { parserRegistry().push_back(this); }

TCustomEasyParser::~TCustomEasyParser() {
    FDestroying = true;
    auto receivers = std::move(FNotifiers);
    for (auto& [owner, callback] : receivers)
        if (callback) callback(*this);
    auto& parsers = parserRegistry();
    parsers.erase(std::remove(parsers.begin(), parsers.end(), this), parsers.end());
}

const std::vector<TCustomEasyParser*>& TCustomEasyParser::AllParsers() { return parserRegistry(); }

void TCustomEasyParser::Changed() {
    // A receiver may register or remove notifiers while being told; work on
    // a copy so the walk stays valid.
    auto receivers = FNotifiers;
    for (auto& [owner, callback] : receivers)
        if (callback) callback(*this);
}

void TCustomEasyParser::ExchangeColors(TEasyReservedColors&, bool) {}

void TCustomEasyParser::SetBackground(TColor) {}

int TCustomEasyParser::IndexOfToken(std::string_view) const { return -1; }

void TCustomEasyParser::AddNotifier(const void* owner, TNotifyCallback callback) {
    for (auto& entry : FNotifiers)
        if (entry.first == owner) {
            entry.second = std::move(callback);
            return;
        }
    FNotifiers.emplace_back(owner, std::move(callback));
}

void TCustomEasyParser::RemoveNotifier(const void* owner) {
    std::erase_if(FNotifiers, [owner](const auto& entry) { return entry.first == owner; });
}

}  // namespace zorfa
