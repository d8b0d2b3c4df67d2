#pragma once

#include "outline/Range.h"
#include "rows/ListRows.h"

#include <QList>
#include <QObject>
#include <QString>

#include <functional>

class QWidget;

namespace quillmere {

class ListView;

// A place in a window where a string stands.
struct StringUse
{
    QString window, file; // the name, and the full path
    Range range;          // of the string in it
    qint32 line = 0;      // from 1
};

// The list of the windows in which a string stands. It knows no theme: what it shows and where it leads comes
// from whoever knows.
class StringUses : public QObject
{
    Q_OBJECT

public:
    explicit StringUses(QWidget *parent);

    // Shows where a string stands; nothing for an empty one.
    void show(const QString &source);
    // The same string again: windows may have changed.
    void refresh();
    ListView *view() const { return m_view; }

    // Gives the places of a string; asked again for each one shown.
    std::function<QList<StringUse>(const QString &source)> usesOf;

signals:
    void chosen(const quillmere::StringUse &use);

private:
    ListRows m_rows;
    QList<StringUse> m_uses;
    QString m_source;
    ListView *m_view;
};

} // namespace quillmere
