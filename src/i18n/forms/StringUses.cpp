#include "i18n/forms/StringUses.h"

#include "controls/ListView.h"

namespace quillmere {

StringUses::StringUses(QWidget *parent)
    : QObject(parent), m_rows({tr("Window"), tr("Line")}),
      m_view(new ListView(QStringLiteral("lvStringUses"), tr("Windows with the selected string"), m_rows,
                          parent))
{
    m_view->setColumnShares({7, 3});
    m_view->setTextElideMode(Qt::ElideMiddle);
    m_view->setToolTip(
        tr("The windows in which the selected string stands. A double click or Enter opens one in "
           "this language."));
    connect(m_view, &ListView::rowOpened, this, [this](int row) {
        if (row >= 0 && row < m_uses.size())
            emit chosen(StringUse(m_uses.at(row))); // the rows may become others on the way
    });
}

void StringUses::show(const QString &source)
{
    m_source = source;
    refresh();
}

void StringUses::refresh()
{
    m_uses = usesOf && !m_source.isEmpty() ? usesOf(m_source) : QList<StringUse>();
    QList<ListRows::Row> rows;
    for (const StringUse &use : std::as_const(m_uses))
        rows.append({use.window, {QString::number(use.line)}});
    m_rows.update(std::move(rows));
}

} // namespace quillmere
