#pragma once
// TcxSSStyleCache: the book's one owner of style and font records. It makes
// sure that equal styles are one record and equal fonts one font, counts the
// cells that use each style, and frees a style when its last cell lets go.
// Style 0 is the default style; it lives as long as the cache, whatever its
// count. The cache must outlive every storage whose cells hold its styles.

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "sheet/StyleRecords.h"

namespace zorfa::sheet {

class TcxSSStyleCache {
public:
    explicit TcxSSStyleCache(std::string defaultFontName = "Tahoma", std::uint8_t defaultFontSize = 8);
    TcxSSStyleCache(const TcxSSStyleCache&) = delete;
    TcxSSStyleCache& operator=(const TcxSSStyleCache&) = delete;
    ~TcxSSStyleCache();

    // The font with these attributes, made when there is none yet.
    const FontRecord* addFont(std::string_view name, std::uint8_t style, TcxSSColor color, std::uint8_t size,
                              std::uint8_t charset);
    const FontRecord* addFontRecord(const FontRecord& font);

    // The record equal to `fields` with one more reference, made when there is
    // none yet.
    StyleHandle addStyle(const StyleFields& fields);
    StyleHandle defaultStyle() { return StyleHandle(styles_.front().get()); }
    const StyleRecord& defaultRecord() const { return *styles_.front(); }
    // Overwrites style 0 in place; every cell on the default style follows.
    void setDefaultStyle(const StyleFields& fields);

    // The style at `index`; past the list raises EStyleError "Invalid cell style".
    StyleRecord& style(std::size_t index) const;
    // The index of a record, or the style count when it is not one of ours.
    std::size_t indexOf(const StyleRecord* record) const noexcept;
    std::size_t styleCount() const noexcept { return styles_.size(); }
    std::size_t fontCount() const noexcept { return fonts_.size(); }
    const FontRecord& font(std::size_t index) const;

    const TcxSSPalette& palette() const noexcept { return palette_; }
    TcxSSPalette& palette() noexcept { return palette_; }
    // The colour of a palette index: none and automatic give clNone and clDefault.
    TColor paletteColor(TcxSSColor index) const noexcept;

private:
    friend class StyleHandle;
    void release(StyleRecord* record) noexcept;

    std::vector<std::unique_ptr<FontRecord>> fonts_;
    std::vector<std::unique_ptr<StyleRecord>> styles_;
    TcxSSPalette palette_;
};

}  // namespace zorfa::sheet
