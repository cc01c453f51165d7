#include "platform/QtText.h"

#include <QFile>

#include "base/CodePage.h"

namespace zorfa::platform {

QString toQString(std::string_view bytes) {
    QString text(static_cast<qsizetype>(bytes.size()), Qt::Uninitialized);
    QChar* out = text.data();
    for (unsigned char b : bytes) *out++ = QChar(codepage::toUnicode(b));
    return text;
}

std::string fromQString(const QString& text, char replacement) {
    std::string bytes;
    bytes.reserve(static_cast<size_t>(text.size()));
    const qsizetype n = text.size();
    for (qsizetype i = 0; i < n; ++i) {
        const char16_t unit = text[i].unicode();
        if (QChar::isHighSurrogate(unit) && i + 1 < n && QChar::isLowSurrogate(text[i + 1].unicode())) {
            ++i;  // a character beyond the code page, whatever it is
            bytes += replacement;
            continue;
        }
        const auto b = codepage::fromUnicode(unit);
        bytes += b ? static_cast<char>(*b) : replacement;
    }
    return bytes;
}

QString pathToQString(std::string_view path) {
    return QFile::decodeName(QByteArray(path.data(), static_cast<qsizetype>(path.size())));
}

std::string qStringToPath(const QString& path) { return QFile::encodeName(path).toStdString(); }

std::string displayFileName(std::string_view path) { return fromQString(pathToQString(path)); }

std::string pathFromDisplay(std::string_view codePageText) { return qStringToPath(toQString(codePageText)); }

}  // namespace zorfa::platform
