#include "controls/EmptyHint.h"

#include <QAbstractItemModel>
#include <QAbstractItemView>
#include <QEvent>
#include <QLabel>

namespace quillmere {

namespace {

constexpr int kMargin = 12; // pixels

// Lies over the empty list, and lets the mouse through.
class EmptyHint : public QLabel
{
public:
    explicit EmptyHint(QAbstractItemView &list) : QLabel(list.viewport()), m_list(list)
    {
        setObjectName(u"hint" + list.objectName());
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setForegroundRole(QPalette::PlaceholderText);
        setAlignment(Qt::AlignCenter);
        setTextFormat(Qt::PlainText);
        setWordWrap(true);
        setMargin(kMargin);
        hide();
        list.viewport()->installEventFilter(this);
        const auto look = [this] { showFitting(); };
        const QAbstractItemModel *rows = list.model();
        connect(rows, &QAbstractItemModel::modelReset, this, look);
        connect(rows, &QAbstractItemModel::rowsInserted, this, look);
        connect(rows, &QAbstractItemModel::rowsRemoved, this, look);
    }
    // The one of a list, made where there is none.
    static EmptyHint &of(QAbstractItemView &list)
    {
        auto *hint =
            dynamic_cast<EmptyHint *>(list.viewport()->findChild<QLabel *>(u"hint" + list.objectName()));
        return hint ? *hint : *new EmptyHint(list);
    }
    void showFitting()
    {
        const bool hasRows = m_list.model()->rowCount() > 0;
        const QString text = hasRows ? filterHint : emptyHint;
        if (text != this->text())
            setText(text);
        if (!text.isEmpty())
            setGeometry(m_list.viewport()->rect());
        setVisible(!text.isEmpty());
    }

    QString emptyHint, filterHint;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Resize && !isHidden())
            setGeometry(m_list.viewport()->rect());
        return QLabel::eventFilter(watched, event);
    }

private:
    QAbstractItemView &m_list;
};

} // namespace

void setEmptyHint(QAbstractItemView &list, const QString &hint)
{
    EmptyHint &label = EmptyHint::of(list);
    label.emptyHint = hint;
    label.showFitting();
}

void setFilterHint(QAbstractItemView &list, const QString &hint)
{
    EmptyHint &label = EmptyHint::of(list);
    label.filterHint = hint;
    label.showFitting();
}

} // namespace quillmere
