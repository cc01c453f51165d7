#pragma once
// Named string lists (TZFStringHolder): each entry has a name and a list of
// lines, often name=value lines. The main window keeps the defaults of its
// own settings in one ("StoredValues"); each text form keeps its quick type
// list in another. Saving the whole holder as a stored property is the work
// of the stored-properties hook.

#include <QList>
#include <QString>
#include <QStringList>

namespace zorfa::shell {

class TZFStringHolder {
public:
    struct TStringDataItem {
        QString Name;
        QStringList Value;
    };

    // Adds an entry, or replaces the lines of the one of that name.
    void SetStrings(const QString& name, const QStringList& lines);
    // The lines of the entry, or an empty list when there is no such entry.
    QStringList Strings(const QString& name) const;
    // The value of "key=value" in the entry's lines, or "" when absent.
    QString Value(const QString& name, const QString& key) const;

    QList<TStringDataItem>& StringData() { return items_; }
    const QList<TStringDataItem>& StringData() const { return items_; }

private:
    QList<TStringDataItem> items_;
};

}  // namespace zorfa::shell
