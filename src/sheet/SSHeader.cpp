#include "sheet/SSHeader.h"

#include <algorithm>

namespace zorfa::sheet {

TcxSSHeader::TcxSSHeader(Kind kind) : kind_(kind) {
    default_.flags = kHeaderDefaultSize;
    default_.size = kind == Columns ? kDefaultColumnWidth : kDefaultRowHeight;
    default_.savedSize = default_.size;
}

HeaderItem TcxSSHeader::item(std::int32_t index) const noexcept {
    if (index < 0 || index >= count()) return default_;
    return items_[static_cast<std::size_t>(index)];
}

void TcxSSHeader::setItem(std::int32_t index, const HeaderItem& item) {
    if (index < 0) return;
    if (index >= count()) items_.resize(static_cast<std::size_t>(index) + 1, default_);
    items_[static_cast<std::size_t>(index)] = item;
}

std::uint16_t TcxSSHeader::size(std::int32_t index) const noexcept {
    HeaderItem it = item(index);
    return (it.flags & kHeaderHidden) ? 0 : it.size;
}

void TcxSSHeader::setSize(std::int32_t index, std::uint16_t size) {
    HeaderItem it = item(index);
    it.size = size;
    it.savedSize = size;
    it.flags &= static_cast<std::uint8_t>(~kHeaderDefaultSize);
    setItem(index, it);
}

void TcxSSHeader::setVisible(std::int32_t index, bool visible) {
    HeaderItem it = item(index);
    if (visible) {
        it.flags &= static_cast<std::uint8_t>(~kHeaderHidden);
        if (it.size == 0) {
            it.size = default_.size;
            it.flags |= kHeaderDefaultSize;
        }
    } else {
        it.flags |= kHeaderHidden;
    }
    setItem(index, it);
}

void TcxSSHeader::setFlags(std::int32_t index, std::uint8_t flags) {
    HeaderItem it = item(index);
    it.flags = flags;
    setItem(index, it);
}

void TcxSSHeader::setDefaultSize(std::uint16_t size) {
    default_.size = size;
    default_.savedSize = size;
    for (auto& it : items_) {
        if (it.flags & kHeaderDefaultSize) {
            it.size = size;
            it.savedSize = size;
        }
    }
}

void TcxSSHeader::insert(std::int32_t index, std::int32_t count) {
    if (index < 0 || count <= 0 || index >= this->count()) return;
    HeaderItem fresh = default_;
    fresh.flags = kHeaderDefaultSize;
    items_.insert(items_.begin() + index, static_cast<std::size_t>(count), fresh);
}

void TcxSSHeader::remove(std::int32_t index, std::int32_t count) {
    if (index < 0 || count <= 0 || index >= this->count()) return;
    std::int32_t end = std::min(this->count(), index + count);
    items_.erase(items_.begin() + index, items_.begin() + end);
}

std::int64_t TcxSSHeader::span(std::int32_t from, std::int32_t to) const noexcept {
    std::int64_t total = 0;
    std::int32_t stored = std::min(to, count());
    for (std::int32_t i = std::max(from, 0); i < stored; ++i) total += size(i);
    if (to > std::max(from, stored)) total += static_cast<std::int64_t>(to - std::max(from, stored)) * size(-1);
    return total;
}

}  // namespace zorfa::sheet
