#include "shell/TextLinesView.h"

#include "platform/QtText.h"
#include "text/EasyStrings.h"

#include <QFontDatabase>
#include <QPainter>
#include <QScrollBar>

#include <algorithm>
#include <cstring>

namespace zorfa::shell {

namespace {

// The width of a line in character cells, tabs expanded. Lines without a tab
// (most) cost one memchr.
int displayWidth(std::string_view line) {
    if (!std::memchr(line.data(), '\t', line.size())) return static_cast<int>(line.size());
    int column = 0;
    for (char c : line)
        column = c == '\t' ? (column / TTextLinesView::kTabWidth + 1) * TTextLinesView::kTabWidth : column + 1;
    return column;
}

QString displayText(std::string_view line) {
    if (!std::memchr(line.data(), '\t', line.size())) return platform::toQString(line);
    std::string expanded;
    expanded.reserve(line.size() + 16);
    for (char c : line) {
        if (c == '\t')
            expanded.append(TTextLinesView::kTabWidth - expanded.size() % TTextLinesView::kTabWidth, ' ');
        else
            expanded += c;
    }
    return platform::toQString(expanded);
}

}  // namespace

TTextLinesView::TTextLinesView(const text::TEasyStrings& lines, QWidget* parent)
    : QAbstractScrollArea(parent), lines_(lines) {
    setObjectName("EasyEdit");
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setFamilies({"Courier New", font.family()});
    font.setStyleHint(QFont::TypeWriter);
    font.setFixedPitch(true);
    viewport()->setFont(font);
    setFont(font);
    setFocusPolicy(Qt::StrongFocus);
    viewport()->setAutoFillBackground(true);
    viewport()->setBackgroundRole(QPalette::Base);
    LinesChanged();
}

void TTextLinesView::LinesChanged() {
    int longest = 0;
    const int count = lines_.Count();
    for (int i = 0; i < count; ++i) longest = std::max(longest, displayWidth(lines_.GetRawLine(i)));
    longestLine_ = longest;
    UpdateScrollBars();
    viewport()->update();
}

int TTextLinesView::LineHeight() const { return std::max(1, viewport()->fontMetrics().lineSpacing()); }

int TTextLinesView::TopLine() const { return verticalScrollBar()->value(); }

int TTextLinesView::LinesPerPage() const { return std::max(1, viewport()->height() / LineHeight()); }

void TTextLinesView::UpdateScrollBars() {
    const int page = LinesPerPage();
    verticalScrollBar()->setRange(0, std::max(0, lines_.Count() - page));
    verticalScrollBar()->setPageStep(page);
    verticalScrollBar()->setSingleStep(1);
    const int charWidth = std::max(1, viewport()->fontMetrics().horizontalAdvance(QLatin1Char('M')));
    const int columns = std::max(1, viewport()->width() / charWidth);
    horizontalScrollBar()->setRange(0, std::max(0, longestLine_ + 1 - columns));
    horizontalScrollBar()->setPageStep(columns);
    horizontalScrollBar()->setSingleStep(1);
}

void TTextLinesView::resizeEvent(QResizeEvent* event) {
    QAbstractScrollArea::resizeEvent(event);
    UpdateScrollBars();
}

void TTextLinesView::paintEvent(QPaintEvent*) {
    QPainter painter(viewport());
    const QFontMetrics metrics = viewport()->fontMetrics();
    const int lineHeight = LineHeight();
    const int charWidth = std::max(1, metrics.horizontalAdvance(QLatin1Char('M')));
    const int x = -horizontalScrollBar()->value() * charWidth + 2;
    const int first = TopLine();
    const int last = std::min(lines_.Count(), first + LinesPerPage() + 1);
    painter.setPen(palette().color(QPalette::Text));
    for (int line = first, y = 0; line < last; ++line, y += lineHeight)
        painter.drawText(x, y + metrics.ascent(), displayText(lines_.GetRawLine(line)));
}

}  // namespace zorfa::shell
