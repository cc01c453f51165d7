#include "sheet/StyleCache.h"

#include <algorithm>

#include "sheet/SheetErrors.h"

namespace zorfa::sheet {

const TcxSSPalette kDefaultPalette = {
    0x000000, 0xFFFFFF, 0x0000FF, 0x00FF00, 0xFF0000, 0x00FFFF, 0xFF00FF, 0xFFFF00, 0x000080, 0x008000,
    0x800000, 0x008080, 0x800080, 0x808000, 0xC0C0C0, 0x808080, 0xFF9999, 0x663399, 0xCCFFFF, 0xFFFFCC,
    0x660066, 0x8080FF, 0xCC6600, 0xFFCCCC, 0x800000, 0xFF00FF, 0x00FFFF, 0xFFFF00, 0x800080, 0x000080,
    0x808000, 0xFF0000, 0xFFCC00, 0xFFFFCC, 0xCCFFCC, 0x99FFFF, 0xFFCC99, 0xCC99FF, 0xFF99CC, 0x99CCFF,
    0xFF6633, 0xCCCC33, 0x00CC99, 0x00CCFF, 0x0099FF, 0x0066FF, 0x996666, 0x969696, 0x663300, 0x669933,
    0x003300, 0x003333, 0x003399, 0x663399, 0x993333, 0x333333,
};

StyleHandle::StyleHandle(StyleRecord* record) noexcept : record_(record) {
    if (record_) ++record_->references;
}

StyleHandle& StyleHandle::operator=(const StyleHandle& other) noexcept {
    if (record_ != other.record_) {
        StyleHandle copy(other);
        *this = std::move(copy);
    }
    return *this;
}

StyleHandle& StyleHandle::operator=(StyleHandle&& other) noexcept {
    if (this != &other) {
        reset();
        record_ = other.record_;
        other.record_ = nullptr;
    }
    return *this;
}

void StyleHandle::reset() noexcept {
    if (record_) {
        StyleRecord* record = record_;
        record_ = nullptr;
        if (record->references > 0) --record->references;
        if (record->references == 0 && record->cache) record->cache->release(record);
    }
}

TcxSSStyleCache::TcxSSStyleCache(std::string defaultFontName, std::uint8_t defaultFontSize)
    : palette_(kDefaultPalette) {
    auto first = std::make_unique<StyleRecord>();
    first->fields.font = addFont(defaultFontName, 0, 0, defaultFontSize, 1);
    first->references = 1;  // the cache's own, so that style 0 is never freed
    first->cache = this;
    styles_.push_back(std::move(first));
}

TcxSSStyleCache::~TcxSSStyleCache() {
    // Handles that outlive the cache must not call back into it.
    for (auto& style : styles_) style->cache = nullptr;
}

const FontRecord* TcxSSStyleCache::addFont(std::string_view name, std::uint8_t style, TcxSSColor color,
                                           std::uint8_t size, std::uint8_t charset) {
    for (const auto& font : fonts_) {
        if (font->name == name && font->size == size && font->charset == charset && font->style == style &&
            font->fontColor == color)
            return font.get();
    }
    auto font = std::make_unique<FontRecord>();
    font->name = std::string(name);
    font->style = style;
    font->fontColor = color;
    font->size = size;
    font->charset = charset;
    fonts_.push_back(std::move(font));
    return fonts_.back().get();
}

const FontRecord* TcxSSStyleCache::addFontRecord(const FontRecord& font) {
    return addFont(font.name, font.style, font.fontColor, font.size, font.charset);
}

StyleHandle TcxSSStyleCache::addStyle(const StyleFields& fields) {
    for (const auto& style : styles_) {
        if (style->fields == fields) return StyleHandle(style.get());
    }
    auto style = std::make_unique<StyleRecord>();
    style->fields = fields;
    style->cache = this;
    styles_.push_back(std::move(style));
    return StyleHandle(styles_.back().get());
}

void TcxSSStyleCache::setDefaultStyle(const StyleFields& fields) { styles_.front()->fields = fields; }

StyleRecord& TcxSSStyleCache::style(std::size_t index) const {
    if (index >= styles_.size()) throw EStyleError("Invalid cell style");
    return *styles_[index];
}

std::size_t TcxSSStyleCache::indexOf(const StyleRecord* record) const noexcept {
    auto found = std::find_if(styles_.begin(), styles_.end(), [&](const auto& s) { return s.get() == record; });
    return static_cast<std::size_t>(found - styles_.begin());
}

const FontRecord& TcxSSStyleCache::font(std::size_t index) const {
    if (index >= fonts_.size()) throw EStyleError("Invalid cell style");
    return *fonts_[index];
}

TColor TcxSSStyleCache::paletteColor(TcxSSColor index) const noexcept {
    if (index < kPaletteSize) return palette_[index];
    return index == kColorNone ? clNone : clDefault;
}

void TcxSSStyleCache::release(StyleRecord* record) noexcept {
    if (record == styles_.front().get()) return;
    auto found = std::find_if(styles_.begin(), styles_.end(), [&](const auto& s) { return s.get() == record; });
    if (found != styles_.end()) styles_.erase(found);
}

}  // namespace zorfa::sheet
