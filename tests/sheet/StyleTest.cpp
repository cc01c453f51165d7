// Shared styles: one record per distinct style, counted by the cells that use
// it; the palette; edges as they show and as they mirror into neighbours.

#include <gtest/gtest.h>

#include "sheet/CellStyle.h"
#include "sheet/DataStorage.h"
#include "sheet/NumberFormat.h"
#include "sheet/SheetErrors.h"
#include "sheet/StyleCache.h"

namespace zorfa::sheet {
namespace {

TEST(StyleCacheTest, StartsWithTheDefaultStyle) {
    TcxSSStyleCache cache;
    ASSERT_EQ(cache.styleCount(), 1u);
    const StyleFields& f = cache.defaultRecord().fields;
    EXPECT_EQ(f.format, 0);
    EXPECT_EQ(f.horzTextAlign, haGENERAL);
    EXPECT_EQ(f.vertTextAlign, 1);
    EXPECT_EQ(f.wordBreak, 0);
    EXPECT_EQ(f.fillStyle, fsSolid);
    EXPECT_EQ(f.foreground, 56);
    EXPECT_EQ(f.background, 56);
    for (const EdgeRecord& e : f.edges) EXPECT_EQ(e, (EdgeRecord{lsDefault, 57}));
    EXPECT_EQ(cache.defaultRecord().references, 1u);
    EXPECT_EQ(f.font->size, 8);
    EXPECT_EQ(f.font->charset, 1);
}

TEST(StyleCacheTest, EqualStylesAreOneRecordAndTheLastReleaseFreesIt) {
    TcxSSStyleCache cache;
    StyleFields bold = cache.defaultRecord().fields;
    bold.font = cache.addFont("Arial", kFontBold, 0, 10, 1);
    StyleHandle a = cache.addStyle(bold);
    StyleHandle b = cache.addStyle(bold);
    EXPECT_EQ(a, b);
    EXPECT_EQ(a.get()->references, 2u);
    EXPECT_EQ(cache.styleCount(), 2u);
    EXPECT_EQ(cache.indexOf(a.get()), 1u);
    a.reset();
    EXPECT_EQ(cache.styleCount(), 2u);
    b.reset();
    EXPECT_EQ(cache.styleCount(), 1u);
}

TEST(StyleCacheTest, TheDefaultStyleSurvivesACountOfZero) {
    TcxSSStyleCache cache;
    {
        StyleHandle h = cache.defaultStyle();
        h.get()->references = 1;  // as if only this handle held it
    }
    EXPECT_EQ(cache.styleCount(), 1u);
    EXPECT_EQ(cache.defaultRecord().references, 0u);
    StyleHandle again = cache.defaultStyle();
    EXPECT_EQ(again.get(), &cache.defaultRecord());
}

TEST(StyleCacheTest, SameFontTwiceMakesOneRecord) {
    TcxSSStyleCache cache;
    const std::size_t before = cache.fontCount();
    const FontRecord* a = cache.addFont("Courier", kFontItalic, 3, 12, 0);
    const FontRecord* b = cache.addFont("Courier", kFontItalic, 3, 12, 0);
    EXPECT_EQ(a, b);
    EXPECT_EQ(cache.fontCount(), before + 1);
    EXPECT_NE(cache.addFont("Courier", kFontItalic, 3, 12, 1), a);  // charset differs
    EXPECT_NE(cache.addFont("courier", kFontItalic, 3, 12, 0), a);  // names compare exactly
}

TEST(StyleCacheTest, AnIndexPastTheListIsAnInvalidCellStyle) {
    TcxSSStyleCache cache;
    EXPECT_NO_THROW(cache.style(0));
    try {
        cache.style(1);
        FAIL() << "no error";
    } catch (const EStyleError& error) {
        EXPECT_STREQ(error.what(), "Invalid cell style");
    }
    EXPECT_THROW(cache.font(99), EStyleError);
}

TEST(StyleCacheTest, TheDefaultPalette) {
    TcxSSStyleCache cache;
    ASSERT_EQ(cache.palette().size(), 56u);
    EXPECT_EQ(cache.palette()[0], 0x000000);
    EXPECT_EQ(cache.palette()[1], 0xFFFFFF);
    EXPECT_EQ(cache.palette()[kColorRed], clRed);
    EXPECT_EQ(cache.palette()[16], 0xFF9999);
    EXPECT_EQ(cache.palette()[55], 0x333333);
    EXPECT_EQ(cache.paletteColor(4), clBlue);
    EXPECT_EQ(cache.paletteColor(kColorNone), clNone);
    EXPECT_EQ(cache.paletteColor(kColorAutomatic), clDefault);
    cache.palette()[4] = 0x123456;
    EXPECT_EQ(cache.paletteColor(4), 0x123456);
    EXPECT_EQ(kDefaultPalette[4], clBlue);
}

class StyleViewTest : public ::testing::Test {
protected:
    StyleViewTest() : storage(styles) {}
    TcxSSCellStyle at(std::int32_t c, std::int32_t r) { return TcxSSCellStyle(storage, c, r); }
    TcxSSStyleCache styles;
    TcxSSDataStorage storage;
};

TEST_F(StyleViewTest, CellsWithEqualStylesShareAndAChangeSplits) {
    at(0, 0).setFontStyle(kFontBold);
    at(1, 0).setFontStyle(kFontBold);
    EXPECT_EQ(storage.cell(0, 0).style, storage.cell(1, 0).style);
    EXPECT_EQ(storage.cell(0, 0).style.get()->references, 2u);
    EXPECT_EQ(styles.styleCount(), 2u);
    at(1, 0).setHorzTextAlign(haCENTER);
    EXPECT_NE(storage.cell(0, 0).style, storage.cell(1, 0).style);
    EXPECT_EQ(storage.cell(0, 0).style.get()->references, 1u);
    EXPECT_EQ(styles.styleCount(), 3u);
}

TEST_F(StyleViewTest, BoldAndBackReturnsToTheFirstRecordAndFreesTheOther) {
    storage.setText(2, 2, "x");
    const StyleRecord* first = storage.cell(2, 2).style.get();
    at(2, 2).setFontStyle(kFontBold);
    EXPECT_NE(storage.cell(2, 2).style.get(), first);
    EXPECT_EQ(styles.styleCount(), 2u);
    at(2, 2).setFontStyle(0);
    EXPECT_EQ(storage.cell(2, 2).style.get(), first);
    EXPECT_EQ(styles.styleCount(), 1u);
}

TEST_F(StyleViewTest, SettingTheSameValueChangesNothing) {
    at(0, 0).setWordBreak(false);
    EXPECT_EQ(storage.recordCount(), 0u);
    const std::size_t fonts = styles.fontCount();
    at(0, 0).setFontName(styles.defaultRecord().fields.font->name);
    EXPECT_EQ(styles.fontCount(), fonts);
    EXPECT_EQ(storage.recordCount(), 0u);
}

TEST_F(StyleViewTest, FormatIndexMapsToStoredCodes) {
    auto view = at(0, 0);
    view.setFormat(35);
    EXPECT_EQ(view.formatCode(), 164);
    EXPECT_EQ(view.format(), 35);
    view.setFormat(36);
    EXPECT_EQ(view.formatCode(), 165);
    view.setFormat(23);
    EXPECT_EQ(view.formatCode(), 38);
    EXPECT_EQ(view.format(), 23);
    view.setFormat(34);
    EXPECT_EQ(view.formatCode(), kFormatText);
    view.setFormat(22);
    EXPECT_EQ(view.formatCode(), 22);
    view.setFormat(60);
    EXPECT_EQ(view.formatCode(), 0);
}

TEST_F(StyleViewTest, EdgesMirrorIntoTheNeighbours) {
    at(1, 1).setEdge(eBottom, lsThick, 4);
    EXPECT_EQ(at(1, 2).storedEdge(eTop), (EdgeRecord{lsThick, 4}));
    at(1, 1).setEdgeStyle(eLeft, lsDouble);
    EXPECT_EQ(at(0, 1).storedEdge(eRight).line, lsDouble);
    at(1, 1).setEdgeStyle(eTop, lsHair);
    EXPECT_EQ(at(1, 0).storedEdge(eBottom).line, lsHair);
    at(1, 1).setEdgeStyle(eRight, lsDotted);
    EXPECT_EQ(at(2, 1).storedEdge(eLeft).line, lsDotted);
    // The neighbours' own other edges are untouched, and nothing echoes back.
    EXPECT_EQ(at(1, 2).storedEdge(eBottom).line, lsDefault);
    EXPECT_EQ(at(1, 1).storedEdge(eBottom), (EdgeRecord{lsThick, 4}));
}

TEST_F(StyleViewTest, EdgesAtTheSheetEdgeHaveNoNeighbour) {
    at(0, 0).setEdgeStyle(eLeft, lsThin);
    at(0, 0).setEdgeStyle(eTop, lsThin);
    EXPECT_EQ(storage.recordCount(), 1u);
}

TEST_F(StyleViewTest, DefaultEdgesHideOnFilledCells) {
    at(0, 0).setWordBreak(true);  // not the default style, no fill
    EXPECT_EQ(at(0, 0).edgeStyle(eTop), lsDefault);
    at(0, 0).setBackgroundColor(5);
    EXPECT_EQ(at(0, 0).edgeStyle(eTop), lsNone);
    at(0, 0).setEdgeStyle(eTop, lsThin);
    EXPECT_EQ(at(0, 0).edgeStyle(eTop), lsThin);
    at(1, 0).setFillStyle(fsGray50);
    EXPECT_EQ(at(1, 0).edgeStyle(eBottom), lsNone);
    EXPECT_EQ(at(1, 0).edgeColor(eBottom), kColorAutomatic);
    at(1, 0).setEdge(eBottom, lsThin, 9);
    EXPECT_EQ(at(1, 0).edgeColor(eBottom), 9);
}

TEST_F(StyleViewTest, TheDefaultStyleChangesInPlace) {
    int told = 0;
    TcxSSCellStyle defaults(styles, [&] { ++told; });
    storage.setText(0, 0, "x");
    defaults.setFontSize(11);
    EXPECT_EQ(told, 1);
    EXPECT_EQ(styles.styleCount(), 1u);
    EXPECT_EQ(storage.cell(0, 0).style.fields().font->size, 11);
    EXPECT_EQ(storage.cell(5, 5).style.fields().font->size, 11);
    defaults.setEdgeStyle(eRight, lsThin);  // right and bottom are left and top
    EXPECT_EQ(defaults.storedEdge(eLeft).line, lsThin);
    EXPECT_EQ(defaults.storedEdge(eRight).line, lsThin);
    EXPECT_EQ(defaults.storedEdge(eTop).line, lsDefault);
}

TEST_F(StyleViewTest, LockedStylesRefuseChangesOnAReadOnlySheet) {
    at(0, 0).setLocked(true);
    EXPECT_TRUE(at(0, 0).locked());
    storage.setReadOnly(true);
    EXPECT_TRUE(at(0, 0).isLocked());
    const StyleRecord* before = storage.cell(0, 0).style.get();
    at(0, 0).setFontStyle(kFontBold);
    at(0, 0).setLocked(false);
    EXPECT_EQ(storage.cell(0, 0).style.get(), before);
    EXPECT_FALSE(at(1, 1).isLocked());  // the default style is never locked
    storage.setReadOnly(false);
    at(0, 0).setFontStyle(kFontBold);
    EXPECT_EQ(at(0, 0).font().style, kFontBold);
}

TEST_F(StyleViewTest, AssignCopiesTheLook) {
    auto source = at(0, 0);
    source.setHorzTextAlign(haRIGHT);
    source.setFormatCode(4);
    source.setFontName("Courier");
    source.setBackgroundColor(7);
    source.setEdgeStyle(eBottom, lsMedium);
    at(3, 3).assign(source);
    EXPECT_EQ(at(3, 3).horzTextAlign(), haRIGHT);
    EXPECT_EQ(at(3, 3).formatCode(), 4);
    EXPECT_EQ(at(3, 3).font().name, "Courier");
    EXPECT_EQ(at(3, 3).backgroundColor(), 7);
    EXPECT_EQ(at(3, 3).storedEdge(eBottom).line, lsMedium);
    EXPECT_EQ(at(3, 4).storedEdge(eTop).line, lsMedium);
}

}  // namespace
}  // namespace zorfa::sheet
