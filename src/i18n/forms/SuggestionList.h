#pragma once

#include "i18n/TranslationMemory.h"
#include "rows/ListRows.h"

#include <QObject>

class QWidget;

namespace quillmere {

class ListView;

// The list of suggestions for a string. A double click or Enter chooses one, and so does Alt with its number
// anywhere in `keys`.
class SuggestionList : public QObject
{
    Q_OBJECT

public:
    explicit SuggestionList(QWidget &keys);

    void show(const QList<Suggestion> &suggestions);
    // Whether dictionaries say different things, which are marked.
    bool isDisputed() const;
    ListView *view() const { return m_view; }

signals:
    void chosen(const QString &translation);

private:
    void choose(int row);

    ListRows m_rows;
    QList<Suggestion> m_suggestions;
    ListView *m_view;
};

} // namespace quillmere
