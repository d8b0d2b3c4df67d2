#include "i18n/forms/SuggestionList.h"

#include "controls/ListView.h"
#include "i18n/ExchangeUnits.h"

#include <QShortcut>

#include <algorithm>

namespace quillmere {

namespace {

// All rows are as high as the first.
QString inCell(const QString &text)
{
    return inOneLine(withLineFeeds(text).replace(u'\n', QChar(0x21B5)));
}

} // namespace

SuggestionList::SuggestionList(QWidget &keys)
    : QObject(&keys), m_rows({QString(), tr("Suggestion"), tr("Similar source"), tr("From")}),
      m_view(new ListView(QStringLiteral("lvSuggestions"), tr("Suggestions"), m_rows))
{
    m_view->setColumnShares({5, 11, 8, 6});
    m_view->setTextElideMode(Qt::ElideRight);
    m_view->setToolTip(
        tr("Translations of the same source or similar ones, in the dictionaries, in this theme "
           "and in themes that were open before. Alt and the number takes one. \u2260 marks "
           "those in which dictionaries differ."));
    connect(m_view, &ListView::rowOpened, this, &SuggestionList::choose);
    for (int number = 1; number <= kMostSuggestions; ++number) {
        auto *key = new QShortcut(Qt::ALT | Qt::Key(Qt::Key_0 + number), &keys);
        key->setContext(Qt::WidgetWithChildrenShortcut);
        connect(key, &QShortcut::activated, this, [this, number] { choose(number - 1); });
    }
}

void SuggestionList::show(const QList<Suggestion> &suggestions)
{
    m_suggestions = suggestions;
    QList<ListRows::Row> rows;
    for (const Suggestion &each : suggestions)
        rows.append({tr("%1   %2 %").arg(rows.size() + 1).arg(each.percent),
                     {inCell(each.translation), each.percent == 100 ? QString() : inCell(each.source),
                      each.isDisputed ? QString(u"\u2260 " + each.origin) : each.origin}});
    m_rows.update(rows);
}

bool SuggestionList::isDisputed() const
{
    return std::any_of(m_suggestions.begin(), m_suggestions.end(),
                       [](const Suggestion &each) { return each.isDisputed; });
}

void SuggestionList::choose(int row)
{
    if (m_view->isVisible() && row < m_suggestions.size())
        emit chosen(QString(m_suggestions.at(row).translation));
}

} // namespace quillmere
