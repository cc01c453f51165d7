#include "sheet/CellStyle.h"

#include "sheet/DataStorage.h"
#include "sheet/NumberFormat.h"
#include "sheet/StyleCache.h"

namespace zorfa::sheet {

TcxSSCellStyle::TcxSSCellStyle(TcxSSDataStorage& storage, std::int32_t column, std::int32_t row)
    : storage_(&storage), cache_(storage.styles()), column_(column), row_(row) {}

TcxSSCellStyle::TcxSSCellStyle(TcxSSStyleCache& cache, std::function<void()> onChange)
    : cache_(cache), onChange_(std::move(onChange)) {}

const StyleFields& TcxSSCellStyle::fields() const {
    return storage_ ? storage_->cell(column_, row_).style.fields() : cache_.defaultRecord().fields;
}

bool TcxSSCellStyle::isDefaultStyle() const {
    return !storage_ || storage_->cell(column_, row_).style.get() == &cache_.defaultRecord();
}

bool TcxSSCellStyle::isLocked() const {
    return storage_ && storage_->isReadOnly() && locked() && !isDefaultStyle();
}

void TcxSSCellStyle::change(StyleFields fields, ChangeKind kind) {
    if (isLocked() || fields == this->fields()) return;
    if (!storage_) {
        // The default style has no neighbours: its right and bottom edges
        // are its left and top.
        if (kind == ckEdge) {
            const StyleFields& old = this->fields();
            if (fields.edges[eRight] != old.edges[eRight]) fields.edges[eLeft] = fields.edges[eRight];
            if (fields.edges[eBottom] != old.edges[eBottom]) fields.edges[eTop] = fields.edges[eBottom];
            fields.edges[eRight] = fields.edges[eLeft];
            fields.edges[eBottom] = fields.edges[eTop];
        }
        cache_.setDefaultStyle(fields);
        if (onChange_) onChange_();
        return;
    }
    if (column_ < 0 || row_ < 0) return;
    const StyleFields old = this->fields();
    storage_->setStyle(column_, row_, cache_.addStyle(fields));
    if (kind == ckEdge && !mirroring_) {
        for (int e = eLeft; e <= eBottom; ++e) {
            if (fields.edges[e] != old.edges[e]) mirrorEdge(static_cast<TcxSSEdgeBorder>(e), fields.edges[e]);
        }
    }
}

void TcxSSCellStyle::mirrorEdge(TcxSSEdgeBorder edge, const EdgeRecord& value) {
    static constexpr int kColumnStep[4] = {-1, 0, 1, 0};
    static constexpr int kRowStep[4] = {0, -1, 0, 1};
    static constexpr TcxSSEdgeBorder kFacing[4] = {eRight, eBottom, eLeft, eTop};
    const std::int32_t column = column_ + kColumnStep[edge];
    const std::int32_t row = row_ + kRowStep[edge];
    if (column < 0 || row < 0) return;
    TcxSSCellStyle neighbour(*storage_, column, row);
    neighbour.mirroring_ = true;
    StyleFields fields = neighbour.fields();
    fields.edges[kFacing[edge]] = value;
    neighbour.change(fields, ckEdge);
}

template <class T, class V>
void TcxSSCellStyle::setField(T StyleFields::*member, V value, ChangeKind kind) {
    StyleFields f = fields();
    f.*member = static_cast<T>(value);
    change(f, kind);
}

template <class T, class V>
void TcxSSCellStyle::setFontField(T FontRecord::*member, V value) {
    FontRecord changed = font();
    changed.*member = static_cast<T>(value);
    StyleFields f = fields();
    f.font = cache_.addFontRecord(changed);
    change(f, ckFont);
}

std::uint16_t TcxSSCellStyle::format() const { return formatIndexFromCode(fields().format); }

void TcxSSCellStyle::setFormat(std::uint16_t index) { setFormatCode(formatCodeFromIndex(index)); }

void TcxSSCellStyle::setFormatCode(std::uint16_t code) { setField(&StyleFields::format, code, ckOther); }

void TcxSSCellStyle::setHorzTextAlign(TcxHorzTextAlign align) { setField(&StyleFields::horzTextAlign, align, ckOther); }

void TcxSSCellStyle::setVertTextAlign(TcxVertTextAlign align) { setField(&StyleFields::vertTextAlign, align, ckOther); }

void TcxSSCellStyle::setWordBreak(bool wordBreak) { setField(&StyleFields::wordBreak, wordBreak ? 1 : 0, ckOther); }

void TcxSSCellStyle::setLocked(bool locked) {
    StyleFields f = fields();
    f.flags = locked ? (f.flags | kStyleLocked) : (f.flags & ~kStyleLocked);
    change(f, ckLocked);
}

void TcxSSCellStyle::setFontName(std::string_view name) { setFontField(&FontRecord::name, std::string(name)); }

void TcxSSCellStyle::setFontSize(std::uint8_t size) { setFontField(&FontRecord::size, size); }

void TcxSSCellStyle::setFontStyle(std::uint8_t style) { setFontField(&FontRecord::style, style); }

void TcxSSCellStyle::setFontCharset(std::uint8_t charset) { setFontField(&FontRecord::charset, charset); }

void TcxSSCellStyle::setFontColor(TcxSSColor color) { setFontField(&FontRecord::fontColor, color); }

void TcxSSCellStyle::setFillStyle(TcxSSFillStyle style) { setField(&StyleFields::fillStyle, style, ckBrush); }

void TcxSSCellStyle::setBackgroundColor(TcxSSColor color) { setField(&StyleFields::background, color, ckBrush); }

void TcxSSCellStyle::setForegroundColor(TcxSSColor color) { setField(&StyleFields::foreground, color, ckBrush); }

TcxSSEdgeLineStyle TcxSSCellStyle::edgeStyle(TcxSSEdgeBorder edge) const {
    if (storage_) {
        if (auto range = storage_->merged().rangeAt(column_, row_)) {
            const bool inside = (edge == eLeft && column_ > range->left) ||
                                (edge == eRight && column_ < range->right) ||
                                (edge == eTop && row_ > range->top) || (edge == eBottom && row_ < range->bottom);
            if (inside) return lsNone;
        }
    }
    const StyleFields& f = fields();
    const auto line = static_cast<TcxSSEdgeLineStyle>(f.edges[edge].line);
    const bool filled = f.fillStyle != fsSolid || f.background < kPaletteSize;
    if (line == lsDefault && !isDefaultStyle() && filled) return lsNone;
    return line;
}

TcxSSColor TcxSSCellStyle::edgeColor(TcxSSEdgeBorder edge) const {
    const EdgeRecord& e = fields().edges[edge];
    return e.line == lsDefault ? kColorAutomatic : e.color;
}

void TcxSSCellStyle::setEdge(TcxSSEdgeBorder edge, TcxSSEdgeLineStyle line, TcxSSColor color) {
    StyleFields f = fields();
    f.edges[edge] = EdgeRecord{line, color};
    change(f, ckEdge);
}

void TcxSSCellStyle::setEdgeStyle(TcxSSEdgeBorder edge, TcxSSEdgeLineStyle line) {
    setEdge(edge, line, fields().edges[edge].color);
}

void TcxSSCellStyle::setEdgeColor(TcxSSEdgeBorder edge, TcxSSColor color) {
    setEdge(edge, static_cast<TcxSSEdgeLineStyle>(fields().edges[edge].line), color);
}

void TcxSSCellStyle::assign(const TcxSSCellStyle& other) {
    const StyleFields& from = other.fields();
    StyleFields f = fields();
    f.horzTextAlign = from.horzTextAlign;
    f.vertTextAlign = from.vertTextAlign;
    f.format = from.format;
    f.wordBreak = from.wordBreak;
    f.edges = from.edges;
    f.font = cache_.addFontRecord(*from.font);
    f.fillStyle = from.fillStyle;
    f.foreground = from.foreground;
    f.background = from.background;
    f.flags = static_cast<std::uint8_t>((f.flags & ~kStyleLocked) | (from.flags & kStyleLocked));
    change(f, ckEdge);
}

}  // namespace zorfa::sheet
