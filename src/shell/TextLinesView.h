#pragma once
// A read-only view of a line store: a fixed-pitch, scrolling list of lines
// that paints only the lines in sight, converting each line's bytes through
// the code page as it paints it. Nothing is copied out of the store, so a
// 50 MB file shows as fast as it loads. It stands in for the editor view of
// the text engine until that view lands.

#include <QAbstractScrollArea>

namespace zorfa::text {
class TEasyStrings;
}

namespace zorfa::shell {

class TTextLinesView : public QAbstractScrollArea {
    Q_OBJECT
public:
    explicit TTextLinesView(const text::TEasyStrings& lines, QWidget* parent = nullptr);

    // To be called after the store was loaded or changed wholesale.
    void LinesChanged();

    // The first line in sight and how many lines fit the viewport.
    int TopLine() const;
    int LinesPerPage() const;

    static constexpr int kTabWidth = 8;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void UpdateScrollBars();
    int LineHeight() const;

    const text::TEasyStrings& lines_;
    int longestLine_ = 0;  // in characters, tabs expanded
};

}  // namespace zorfa::shell
