#pragma once
// TcxSSCellStyle: a transient view of the style of one cell, or of the book's
// default style. Reading looks at the shared record; every change builds the
// changed fields, finds or makes the equal record in the cache, puts it into
// the cell through the storage and lets the old one go. So a cell made bold
// and back ends on its first record, and the bold record is freed.
//
// Changing an edge also changes the facing edge of the neighbour (the bottom
// edge of B2 is the top edge of B3). The default style has no neighbours: its
// right and bottom edges are its left and top edges.
//
// A locked style on a read-only book or protected sheet refuses every change
// silently.

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "sheet/StyleRecords.h"

namespace zorfa::sheet {

class TcxSSDataStorage;
class TcxSSStyleCache;

class TcxSSCellStyle {
public:
    // The kinds of change, as the book hears of them.
    enum ChangeKind : std::uint8_t { ckOther = 0, ckMerged = 1, ckLocked = 2, ckFont = 3, ckBrush = 4, ckEdge = 5 };

    // The style of the cell (column, row) of `storage`.
    TcxSSCellStyle(TcxSSDataStorage& storage, std::int32_t column, std::int32_t row);
    // The default style (style 0) of `cache`; `onChange` tells the book.
    explicit TcxSSCellStyle(TcxSSStyleCache& cache, std::function<void()> onChange = {});

    const StyleFields& fields() const;
    bool isDefaultStyle() const;
    // True when changes are refused.
    bool isLocked() const;

    // The compact Format index (0 to 36) and the stored format code.
    std::uint16_t format() const;
    void setFormat(std::uint16_t index);
    std::uint16_t formatCode() const { return fields().format; }
    void setFormatCode(std::uint16_t code);

    TcxHorzTextAlign horzTextAlign() const { return static_cast<TcxHorzTextAlign>(fields().horzTextAlign); }
    void setHorzTextAlign(TcxHorzTextAlign align);
    TcxVertTextAlign vertTextAlign() const { return static_cast<TcxVertTextAlign>(fields().vertTextAlign); }
    void setVertTextAlign(TcxVertTextAlign align);
    bool wordBreak() const { return fields().wordBreak != 0; }
    void setWordBreak(bool wordBreak);
    bool locked() const { return (fields().flags & kStyleLocked) != 0; }
    void setLocked(bool locked);
    bool merged() const { return (fields().flags & kStyleMerged) != 0; }

    // Font.
    const FontRecord& font() const { return *fields().font; }
    void setFontName(std::string_view name);
    void setFontSize(std::uint8_t size);
    void setFontStyle(std::uint8_t style);
    void setFontCharset(std::uint8_t charset);
    void setFontColor(TcxSSColor color);

    // Brush.
    TcxSSFillStyle fillStyle() const { return static_cast<TcxSSFillStyle>(fields().fillStyle); }
    void setFillStyle(TcxSSFillStyle style);
    TcxSSColor backgroundColor() const { return fields().background; }
    void setBackgroundColor(TcxSSColor color);
    TcxSSColor foregroundColor() const { return fields().foreground; }
    void setForegroundColor(TcxSSColor color);

    // Edges as they show: lsNone inside a merged range, and lsNone for a
    // default edge of a filled cell, so that grid lines leave fills alone.
    TcxSSEdgeLineStyle edgeStyle(TcxSSEdgeBorder edge) const;
    // 57 (automatic) while the line is lsDefault.
    TcxSSColor edgeColor(TcxSSEdgeBorder edge) const;
    // The stored edge, without the rules above.
    EdgeRecord storedEdge(TcxSSEdgeBorder edge) const { return fields().edges[edge]; }
    void setEdge(TcxSSEdgeBorder edge, TcxSSEdgeLineStyle line, TcxSSColor color);
    void setEdgeStyle(TcxSSEdgeBorder edge, TcxSSEdgeLineStyle line);
    void setEdgeColor(TcxSSEdgeBorder edge, TcxSSColor color);

    // Copies alignment, format, word break, edges, font, brush and the locked bit.
    void assign(const TcxSSCellStyle& other);

private:
    void change(StyleFields fields, ChangeKind kind);
    template <class T, class V>
    void setField(T StyleFields::*member, V value, ChangeKind kind);
    template <class T, class V>
    void setFontField(T FontRecord::*member, V value);
    void mirrorEdge(TcxSSEdgeBorder edge, const EdgeRecord& value);

    TcxSSDataStorage* storage_ = nullptr;
    TcxSSStyleCache& cache_;
    std::int32_t column_ = 0;
    std::int32_t row_ = 0;
    std::function<void()> onChange_;
    bool mirroring_ = false;  // stops the neighbour from echoing the edge back
};

}  // namespace zorfa::sheet
