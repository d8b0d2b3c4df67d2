#include "naming/forms/Completer.h"

#include "controls/Commands.h"
#include "controls/Named.h"
#include "naming/forms/CompletionDelegate.h"
#include "naming/forms/CompletionModel.h"
#include "naming/forms/NameFacts.h"
#include "naming/forms/Pictures.h"
#include "source/forms/SourceBox.h"
#include "theme/forms/LiveIndex.h"

#include <QAction>
#include <QCompleter>
#include <QCoreApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QListView>
#include <QSettings>

#include <utility>

namespace quillmere {

namespace {

constexpr double kMostInKey = 8;      // ms that reading the text may take of a key
constexpr qsizetype kLarge = 300'000; // units of a text that no key waits for
constexpr int kWidth = 460;           // pixels, of a list of names
constexpr int kShortWidth = 220;      // the same of a list of words
constexpr int kRows = 8;              // shown at a time

const QString kSetting = QStringLiteral("source/completion");

bool isEnter(const QKeyEvent &key)
{
    return key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
}

bool isArrow(const QKeyEvent &key)
{
    return key.key() == Qt::Key_Up || key.key() == Qt::Key_Down || key.key() == Qt::Key_PageUp ||
           key.key() == Qt::Key_PageDown;
}

bool isPlain(const QKeyEvent &key)
{
    return (key.modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
}

bool isAsking(const QKeyEvent &key)
{
    const Qt::KeyboardModifiers pressed = key.modifiers();
    return (key.key() == Qt::Key_Space && pressed == Qt::ControlModifier) ||
           (key.key() == Qt::Key_Slash && (pressed & ~Qt::ShiftModifier) == Qt::AltModifier);
}

// On some keyboards AltGr, which types letters, is Ctrl and Alt.
bool types(const QKeyEvent &key)
{
    const Qt::KeyboardModifiers commands = key.modifiers() & (Qt::ControlModifier | Qt::AltModifier);
    return !key.text().isEmpty() && key.text().at(0).isPrint() &&
           (commands == 0 || commands == (Qt::ControlModifier | Qt::AltModifier));
}

} // namespace

Completer::Completer(SourceBox &source, LiveIndex &live, NameFacts &facts, QObject *parent)
    : QObject(parent), m_source(source), m_live(live), m_completer(new QCompleter(this)),
      m_list(named(new QListView, "lvCompletion", tr("Completion"))),
      m_pictures(new Pictures(CompletionDelegate::kPicture * source.devicePixelRatio(), this)),
      m_outlining(
          kMostInKey, [this] { m_live.outline(); }, [this] { refresh(); })
{
    m_model = new CompletionModel(facts, *m_pictures, this);
    m_worker.setMaxThreadCount(1);
    m_list->setUniformItemSizes(true);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_completer->setCompletionMode(QCompleter::UnfilteredPopupCompletion);
    m_completer->setModel(m_model);
    m_completer->setPopup(m_list);
    m_completer->setWidget(&m_source);
    m_completer->setMaxVisibleItems(kRows);
    m_completer->setWrapAround(false);
    m_list->setItemDelegate(new CompletionDelegate(m_list));
    // Before the completer's own filter.
    m_list->installEventFilter(this);
    m_source.installEventFilter(this);
    connect(m_completer, qOverload<const QModelIndex &>(&QCompleter::activated), this,
            [this](const QModelIndex &index) { take(index.row()); });
    connect(&m_source, &SourceBox::keyHandled, this, &Completer::keyHandled);
    connect(&m_source, &SourceBox::changed, this, [this] {
        if (m_source.isTyping())
            return;
        m_escaped = -1; // the word is another one now
        close();
    });
    connect(&live, &LiveIndex::changed, this, &Completer::listNames);
    const auto repaint = [this] {
        if (isOpen())
            m_list->viewport()->update();
    };
    connect(m_pictures, &Pictures::arrived, this, repaint);
    connect(&facts, &NameFacts::translationsArrived, this, repaint);
    connect(&live, &LiveIndex::changed, this,
            [this, &facts] { m_pictures->setThemeFolder(facts.themeFolder()); });
}

Completer::~Completer()
{
    m_worker.clear();
    m_worker.waitForDone();
}

void Completer::addCommands(Commands &menu)
{
    QAction *item = menu.action("mnuCompletion");
    m_isOn = QSettings().value(kSetting, true).toBool();
    item->setChecked(m_isOn);
    menu.on("mnuCompletion", [this, item] {
        m_isOn = item->isChecked();
        QSettings().setValue(kSetting, m_isOn);
    });
}

// Tens of thousands of names are put in order before a key asks for them.
void Completer::listNames()
{
    const std::shared_ptr<const ThemeIndex> index = m_live.sharedIndex();
    if (!index)
        m_names = {};
    for (const NameKind kind :
         {NameKind::Image, NameKind::Colour, NameKind::Font, NameKind::String, NameKind::Window}) {
        const qint64 stamp = index ? index->stamp(kind) : -1;
        if (!index || m_names[size_t(kind)].stamp == stamp)
            continue;
        m_names[size_t(kind)].stamp = stamp;
        m_worker.start([this, index, kind, stamp] {
            const auto names = std::make_shared<const Candidates>(index->names(kind));
            const auto take = [this, kind, stamp, names] {
                if (m_names[size_t(kind)].stamp != stamp)
                    return;
                m_names[size_t(kind)].names = names;
                if (m_isWaiting)
                    refresh();
            };
            QMetaObject::invokeMethod(this, take, Qt::QueuedConnection);
        });
    }
}

bool Completer::isOpen() const
{
    return m_list->isVisible();
}

bool Completer::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::InputMethod)
        m_isTyped = !static_cast<QInputMethodEvent *>(event)->commitString().isEmpty();
    if (event->type() == QEvent::KeyPress) {
        auto *key = static_cast<QKeyEvent *>(event);
        m_isTyped = types(*key);
        return watched == m_list ? popupKey(*key) : sourceKey(*key);
    }
    if (watched == &m_source && event->type() == QEvent::FocusOut && !isOpen())
        m_isAsked = false;
    return QObject::eventFilter(watched, event);
}

bool Completer::sourceKey(const QKeyEvent &key)
{
    if (!isAsking(key) || m_source.isReadOnly())
        return false;
    ask();
    return true;
}

bool Completer::popupKey(QKeyEvent &key)
{
    const int row = std::max(0, m_list->currentIndex().row());
    if (key.key() == Qt::Key_Tab && isPlain(key)) {
        take(row);
        return true;
    }
    if (key.key() == Qt::Key_Escape) {
        m_escaped = m_found.word.start;
        close();
        return true;
    }
    if (isEnter(key)) {
        if (m_mayEnter && isPlain(key)) {
            take(row);
            return true;
        }
        close();
        QCoreApplication::sendEvent(&m_source, &key);
        return true;
    }
    if (isArrow(key) && isPlain(key))
        m_mayEnter = true;
    m_mayEnter = m_mayEnter || m_isTyped;
    return isAsking(key);
}

void Completer::keyHandled(bool isText)
{
    const bool opens = isText && m_isTyped && m_isOn;
    m_isTyped = false;
    if (!isOpen() && !opens) {
        m_outlining.forget();
        close();
        return;
    }
    const qsizetype units = m_source.document()->characterCount();
    if (m_outlining.changed(units, units > kLarge ? LateWork::Wait::Always : LateWork::Wait::IfLong))
        close(); // until typing pauses
    else
        refresh();
}

void Completer::ask()
{
    m_isAsked = true;
    m_escaped = -1;
    m_mayEnter = false;
    refresh();
}

void Completer::refresh()
{
    const Outline &outline = m_live.outline();
    const qint32 before = isOpen() ? m_found.word.start : -1;
    m_found = m_source.textCursor().hasSelection()
                  ? Completion()
                  : completionAt(outline, m_source.selectionStart(), m_live.index(), roleOfOpenFile());
    if (m_found.word.start != m_escaped)
        m_escaped = -1;
    if (before >= 0 && before != m_found.word.start) {
        m_isAsked = false; // that was for another word
        m_mayEnter = false;
    }
    const bool isWanted = m_isAsked || (m_found.opensItself() && m_escaped < 0);
    if (!isWanted || m_found.of == Completion::Of::Nothing || !m_source.hasFocus()) {
        close();
        return;
    }
    const std::shared_ptr<const Candidates> candidates = candidatesFor(m_found);
    m_isWaiting = !candidates;
    if (m_isWaiting)
        return;
    std::vector<qint32> rows = candidates->matching(m_found.typed(outline));
    if (rows.empty() || isTaken(*candidates, rows))
        close();
    else
        openList(candidates, std::move(rows));
}

FileRole Completer::roleOfOpenFile() const
{
    if (const ThemeIndex *index = m_live.index()) {
        const QList<qint32> numbers = index->numbersOf(m_live.openFile());
        if (!numbers.isEmpty())
            return index->files().at(numbers.first()).role;
    }
    return FileRole::Window;
}

std::shared_ptr<const Candidates> Completer::candidatesFor(const Completion &completion) const
{
    if (completion.of == Completion::Of::Name)
        return m_names[size_t(completion.kind)].names;
    return std::make_shared<const Candidates>(completion.entries);
}

// Whether the only entry stands there already.
bool Completer::isTaken(const Candidates &candidates, const std::vector<qint32> &rows) const
{
    if (rows.size() != 1)
        return false;
    const Outline &outline = m_live.outline();
    const TakenEntry taken = takeEntry(outline, m_found, candidates.names().at(rows.front()));
    return outline.at(taken.range) == taken.text;
}

void Completer::openList(std::shared_ptr<const Candidates> candidates, std::vector<qint32> rows)
{
    if (!isOpen()) {
        m_mayEnter = false;
        m_pictures->lookAgain();
    }
    m_model->show(m_found, std::move(candidates), std::move(rows));
    QRect place = m_source.placeOf(m_found.word.start);
    place.translate(m_source.viewport()->pos());
    place.setWidth(m_found.of == Completion::Of::Name ? kWidth : kShortWidth);
    m_completer->complete(place);
    closeUpBelow(m_source.mapToGlobal(place.topLeft()).y());
    m_list->setCurrentIndex(m_completer->completionModel()->index(0, 0));
}

// The completer leaves a strip below the last entry.
void Completer::closeUpBelow(int caretTop)
{
    QRect place = m_list->geometry();
    const int height = std::min(kRows, m_model->rowCount()) * m_list->sizeHintForRow(0) + m_list->height() -
                       m_list->viewport()->height();
    if (place.top() < caretTop) // where there was no room below the line
        place.setTop(place.bottom() + 1 - height);
    place.setHeight(height);
    m_list->setGeometry(place);
}

void Completer::close()
{
    m_isAsked = false;
    m_isWaiting = false;
    if (isOpen())
        m_list->hide();
}

void Completer::take(int row)
{
    const QString entry = m_model->entry(row);
    close();
    const TakenEntry taken = takeEntry(m_live.outline(), m_found, entry);
    m_source.replace(taken.range.start, taken.range.size(), taken.text, taken.caret);
    if (taken.goesOn && m_isOn)
        refresh();
}

} // namespace quillmere
