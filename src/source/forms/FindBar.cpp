#include "source/forms/FindBar.h"

#include "controls/Named.h"
#include "source/forms/SourceBox.h"
#include "source/forms/SourceMarks.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QToolButton>

#include <algorithm>
#include <limits>

namespace quillmere {

namespace {

constexpr int kMargin = 3;              // pixels
constexpr int kLeastText = 120;         // pixels
constexpr int kPause = 150;             // ms without a key, before a large text is counted
constexpr qsizetype kCounted = 300'000; // units of a text that is counted at every key
constexpr qsizetype kMostTaken = 200;   // units of a selection that is looked for

} // namespace

FindBar::FindBar(SourceBox &box)
    : QWidget(&box), m_box(box), txtFind(named(new QLineEdit, "txtFind", tr("Find in the source"))),
      lblFind(named(new QLabel, "lblFind", tr("Number of places")))
{
    setObjectName(QStringLiteral("frmFind"));
    setAccessibleName(tr("Find"));
    setAutoFillBackground(true);
    setFont(QApplication::font()); // not that of the source
    setCursor(Qt::ArrowCursor);
    makeControls();
    hide();
    m_counting.setSingleShot(true);
    m_counting.setInterval(kPause);
    connect(&m_counting, &QTimer::timeout, this, [this] {
        count();
        say();
    });
    connect(&box, &SourceBox::changed, this, [this] {
        if (isVisible())
            m_counting.start();
    });
    box.viewport()->installEventFilter(this);
}

void FindBar::makeControls()
{
    txtFind->setPlaceholderText(tr("Find"));
    txtFind->setMinimumWidth(kLeastText);
    txtFind->setMaxLength(std::numeric_limits<int>::max());
    lblFind->setTextFormat(Qt::PlainText);
    auto *line = new QHBoxLayout(this);
    line->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    line->setSpacing(kMargin);
    line->addWidget(txtFind, 1);
    line->addWidget(lblFind);
    const auto button = [line](const char *name, const QString &what, const QString &text) {
        auto *made = named(new QToolButton, name, what);
        made->setText(text);
        made->setToolTip(what);
        made->setAutoRaise(true);
        line->addWidget(made);
        return made;
    };
    chkFindCase = button("chkFindCase", tr("Match letter case"), QStringLiteral("Aa"));
    chkFindWord = button("chkFindWord", tr("Whole words only"), QStringLiteral("|w|"));
    for (QToolButton *choice : {chkFindCase, chkFindWord}) {
        choice->setCheckable(true);
        connect(choice, &QToolButton::toggled, this, &FindBar::look);
    }
    auto *back = button("cmdFindPrevious", tr("Previous place (Shift+F3, Shift+Enter)"), {});
    back->setArrowType(Qt::UpArrow);
    connect(back, &QToolButton::clicked, this, &FindBar::previous);
    auto *onward = button("cmdFindNext", tr("Next place (F3, Enter)"), {});
    onward->setArrowType(Qt::DownArrow);
    connect(onward, &QToolButton::clicked, this, &FindBar::next);
    connect(button("cmdFindClose", tr("Close (Esc)"), QStringLiteral("\u00d7")), &QToolButton::clicked, this,
            &FindBar::close);
    connect(txtFind, &QLineEdit::textChanged, this, &FindBar::look);
}

FindText FindBar::what() const
{
    return {txtFind->text(), chkFindCase->isChecked(), chkFindWord->isChecked()};
}

void FindBar::open()
{
    const qsizetype start = m_box.selectionStart(), length = m_box.selectionLength();
    const QString selected = length <= kMostTaken ? m_box.text().mid(start, length) : QString();
    m_start = start;
    show();
    placeBar();
    if (!selected.isEmpty() && !selected.contains(u'\n') && !selected.contains(u'\r'))
        txtFind->setText(selected);
    m_box.found().show(what());
    count();
    say();
    txtFind->setFocus();
    txtFind->selectAll();
}

void FindBar::close()
{
    hide();
    m_counting.stop();
    m_box.found().show({});
    m_box.setTopMargin(0);
    m_box.setFocus();
}

// As wide as the lines with their numbers and marks; the scroll bar keeps its place.
void FindBar::placeBar()
{
    const QRect inside = m_box.contentsRect();
    const int height = sizeHint().height();
    m_box.setTopMargin(height);
    const int right = m_box.viewport()->geometry().right() + SourceMarks::kWidth;
    setGeometry(inside.left(), inside.top(), right - inside.left() + 1, height);
    raise();
}

bool FindBar::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Resize && !isHidden())
        placeBar();
    return QWidget::eventFilter(watched, event);
}

// Keys that mean nothing here are not for the text behind the bar either.
void FindBar::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape)
        close();
    else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        go(!event->modifiers().testFlag(Qt::ShiftModifier));
    event->accept();
}

// The first place from where looking began is selected at once; a large text is counted when typing pauses.
void FindBar::look()
{
    const FindText looked = what();
    m_box.found().show(looked);
    const QString text = m_box.text();
    qsizetype at = findFrom(text, looked, m_start);
    if (at < 0)
        at = findFrom(text, looked);
    m_box.select(at < 0 ? m_start : at, at < 0 ? 0 : looked.text.size());
    if (text.size() <= kCounted)
        count();
    else
        m_counting.start();
    say();
}

void FindBar::count()
{
    const FindText looked = what();
    if (m_revision == m_box.revision() && m_counted == looked)
        return;
    m_places = findAll(m_box.text(), looked);
    m_counted = looked;
    m_revision = m_box.revision();
}

bool FindBar::go(bool onward)
{
    const FindText looked = what();
    if (looked.text.isEmpty())
        return false;
    count();
    QString wrapped;
    if (!m_places.isEmpty()) {
        const qsizetype start = m_box.selectionStart();
        auto place =
            std::ranges::lower_bound(m_places, onward && m_box.selectionLength() > 0 ? start + 1 : start);
        if (onward && place == m_places.end()) {
            place = m_places.begin();
            wrapped = tr("from the top");
        } else if (!onward && place == m_places.begin()) {
            place = m_places.end();
            wrapped = tr("from the end");
        }
        if (!onward)
            --place;
        m_box.select(*place, looked.text.size());
        m_start = *place;
    }
    say(wrapped);
    return true;
}

void FindBar::say(const QString &wrapped)
{
    const FindText looked = what();
    QString text;
    if (looked.text.isEmpty()) {
        text.clear();
    } else if (m_revision != m_box.revision() || m_counted != looked) {
        text = QStringLiteral("\u2026");
    } else if (m_places.isEmpty()) {
        text = tr("No match");
    } else {
        const qsizetype start = m_box.selectionStart();
        const auto place = std::ranges::lower_bound(m_places, start);
        const bool isPlace =
            place != m_places.end() && *place == start && m_box.selectionLength() == looked.text.size();
        text = isPlace ? tr("%1 of %2").arg(place - m_places.begin() + 1).arg(m_places.size())
                       : tr("%1 found").arg(m_places.size());
    }
    lblFind->setText(wrapped.isEmpty() ? text : tr("%1, %2").arg(text, wrapped));
}

} // namespace quillmere
