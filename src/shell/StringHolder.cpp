#include "shell/StringHolder.h"

namespace zorfa::shell {

void TZFStringHolder::SetStrings(const QString& name, const QStringList& lines) {
    for (TStringDataItem& item : items_) {
        if (item.Name == name) {
            item.Value = lines;
            return;
        }
    }
    items_.append({name, lines});
}

QStringList TZFStringHolder::Strings(const QString& name) const {
    for (const TStringDataItem& item : items_)
        if (item.Name == name) return item.Value;
    return {};
}

QString TZFStringHolder::Value(const QString& name, const QString& key) const {
    // Names compare without regard to case, as a name=value list does.
    for (const QString& line : Strings(name)) {
        const qsizetype eq = line.indexOf('=');
        if (eq >= 0 && QStringView(line).left(eq).compare(key, Qt::CaseInsensitive) == 0)
            return line.mid(eq + 1);
    }
    return {};
}

}  // namespace zorfa::shell
