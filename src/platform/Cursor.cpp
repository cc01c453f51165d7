#include "platform/Cursor.h"

#include <QApplication>
#include <QCursor>

namespace zorfa::platform {

void QtCursor::set(CursorShape shape) {
    if (shape == current_) return;
    if (shape == CursorShape::Hourglass) {
        QApplication::setOverrideCursor(QCursor(Qt::WaitCursor));
    } else {
        QApplication::restoreOverrideCursor();
    }
    current_ = shape;
}

}  // namespace zorfa::platform
