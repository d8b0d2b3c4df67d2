#include "i18n/forms/SpellMarks.h"

#include "i18n/SpellWords.h"
#include "i18n/forms/Speller.h"
#include "i18n/forms/TranslationEdit.h"

#include <QAction>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QTextBlock>

#include <algorithm>
#include <memory>
#include <utility>

namespace quillmere {

namespace {

constexpr int kMostSpelled = 10'000; // units of a line; no translation has more
constexpr int kMostLines = 200;

} // namespace

SpellMarks::SpellMarks(Speller &speller, TranslationEdit &edit)
    : QSyntaxHighlighter(edit.document()), m_speller(speller), m_edit(edit),
      m_next(new QAction(tr("&Next Misspelled Word"), &edit))
{
    m_next->setObjectName(QStringLiteral("mnuSpellNext"));
    m_next->setShortcut(Qt::Key_F7);
    m_next->setShortcutContext(Qt::WidgetShortcut);
    m_next->setEnabled(false);
    edit.addAction(m_next);
    connect(m_next, &QAction::triggered, this, &SpellMarks::goToNext);
    connect(&speller, &Speller::changed, this, &SpellMarks::rehighlight);
    connect(&speller, &Speller::found, this, [this] {
        const bool wasLooking = std::exchange(m_isLooking, true); // all has been asked for
        rehighlight();
        m_isLooking = wasLooking;
    });
    connect(&edit, &QPlainTextEdit::cursorPositionChanged, this, [this] {
        if (m_edit.textCursor().position() != m_typing)
            endTyping();
    });
    connect(&edit, &TranslationEdit::taken, this, &SpellMarks::endTyping);
    connect(&edit, &TranslationEdit::left, this, &SpellMarks::endTyping);
    edit.installEventFilter(this);
    edit.viewport()->installEventFilter(this);
}

void SpellMarks::endTyping()
{
    const int left = std::exchange(m_typing, -1);
    if (const QTextBlock block = document()->findBlock(left); m_isOn && left >= 0 && block.isValid())
        rehighlightBlock(block);
}

void SpellMarks::setOn(bool on)
{
    if (m_isOn == on)
        return;
    m_isOn = on;
    m_next->setEnabled(on);
    rehighlight();
}

bool SpellMarks::isWrong(const QString &text, const Range &word, int block) const
{
    return block + word.end != m_typing && m_speller.isWrong(word.in(text).toString()).value_or(false);
}

void SpellMarks::highlightBlock(const QString &text)
{
    if (!m_isOn || !m_speller.hasDictionary() || text.size() > kMostSpelled ||
        currentBlock().blockNumber() >= kMostLines)
        return;
    QTextCharFormat wave;
    wave.setUnderlineStyle(QTextCharFormat::WaveUnderline);
    wave.setUnderlineColor(QColor(0xE0, 0x30, 0x30));
    for (const Range &word : wordsToSpell(text)) {
        if (isWrong(text, word, currentBlock().position()))
            setFormat(word.start, word.size(), wave);
    }
    lookUpSoon();
}

void SpellMarks::lookUpSoon()
{
    if (std::exchange(m_isLooking, true))
        return;
    const auto look = [this] {
        m_isLooking = false;
        QStringList words;
        forEachWord([&](Range place, const QString &word) {
            if (place.end != m_typing)
                words.append(word);
        });
        m_speller.lookUp(words);
    };
    QMetaObject::invokeMethod(this, look, Qt::QueuedConnection);
}

// Places count from the beginning of the document.
void SpellMarks::forEachWord(const std::function<void(Range place, const QString &word)> &use) const
{
    for (QTextBlock block = document()->begin(); block.isValid() && block.blockNumber() < kMostLines;
         block = block.next()) {
        const QString text = block.text();
        if (text.size() > kMostSpelled)
            continue;
        const auto from = qint32(block.position());
        for (const Range &word : wordsToSpell(text))
            use({word.start + from, word.end + from}, word.in(text).toString());
    }
}

QList<Range> SpellMarks::wrongWords() const
{
    QList<Range> wrong;
    if (!m_isOn)
        return wrong;
    forEachWord([&](Range place, const QString &word) {
        if (m_speller.isWrong(word).value_or(false))
            wrong.append(place);
    });
    return wrong;
}

Range SpellMarks::wrongAt(int position) const
{
    for (const Range &word : wrongWords()) {
        if (word.touches(position))
            return word;
    }
    return {};
}

void SpellMarks::replace(const Range &word, const QString &by)
{
    QTextCursor cursor(document());
    cursor.setPosition(word.start);
    cursor.setPosition(word.end, QTextCursor::KeepAnchor);
    cursor.insertText(by);
    m_edit.setTextCursor(cursor);
}

void SpellMarks::addSuggestions(QMenu &menu, const Range &word, QAction *before)
{
    const QString wrong = word.in(document()->toPlainText()).toString();
    const std::optional<QStringList> meant = m_speller.suggestionsFor(wrong);
    for (const QString &suggestion : meant.value_or(QStringList())) {
        auto *action = new QAction(QString(suggestion).replace(u'&', QStringLiteral("&&")), &menu);
        QFont font = action->font();
        font.setBold(true);
        action->setFont(font);
        action->setObjectName(QStringLiteral("mnuSpell(%1)").arg(meant->indexOf(suggestion) + 1));
        connect(action, &QAction::triggered, this, [this, word, wrong, suggestion] {
            if (word.end <= document()->toPlainText().size() && word.in(document()->toPlainText()) == wrong)
                replace(word, suggestion);
        });
        menu.insertAction(before, action);
    }
    if (!meant || meant->isEmpty()) {
        auto *none = new QAction(meant ? tr("No Suggestions") : tr("Looking for Suggestions..."), &menu);
        none->setEnabled(false);
        menu.insertAction(before, none);
        if (meant)
            return;
        // They come in the place of this line, while the menu is open.
        connect(&m_speller, &Speller::found, none, [this, &menu, word, wrong, none, before] {
            if (!none->isVisible() || !m_speller.suggestionsFor(wrong))
                return;
            none->setVisible(false);
            addSuggestions(menu, word, before);
        });
    }
}

void SpellMarks::addActions(QMenu &menu, const Range &word)
{
    QAction *first = menu.actions().isEmpty() ? nullptr : menu.actions().constFirst();
    const QString wrong = word.in(document()->toPlainText()).toString();
    auto *add = new QAction(tr("&Add Word"), &menu);
    add->setObjectName(QStringLiteral("mnuSpellAdd"));
    add->setToolTip(tr("Adds \"%1\" to your own words for this language").arg(wrong));
    connect(add, &QAction::triggered, this, [this, wrong] { m_speller.addWord(wrong); });
    menu.insertAction(first, add);
    menu.insertSeparator(first);
    addSuggestions(menu, word, add);
    menu.insertSeparator(add);
}

void SpellMarks::showMenu(const QPoint &place, int position)
{
    const std::unique_ptr<QMenu> menu(m_edit.createStandardContextMenu());
    menu->setObjectName(QStringLiteral("menuTranslation"));
    if (const Range word = wrongAt(position); !word.isEmpty())
        addActions(*menu, word);
    if (m_isOn) {
        menu->addSeparator();
        menu->addAction(m_next);
    }
    menu->exec(place);
}

// To the next behind the caret, from the top again behind the last.
void SpellMarks::goToNext()
{
    const QList<Range> wrong = wrongWords();
    if (wrong.isEmpty()) {
        emit nothingWrong();
        return;
    }
    const QTextCursor now = m_edit.textCursor();
    const auto next = std::find_if(wrong.begin(), wrong.end(),
                                   [&now](const Range &word) { return word.start >= now.selectionEnd(); });
    const Range word = next == wrong.end() ? wrong.first() : *next;
    QTextCursor cursor(document());
    cursor.setPosition(word.start);
    cursor.setPosition(word.end, QTextCursor::KeepAnchor);
    m_edit.setTextCursor(cursor);
    m_edit.ensureCursorVisible();
    showMenu(m_edit.viewport()->mapToGlobal(m_edit.cursorRect().bottomLeft()), word.start);
}

bool SpellMarks::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyPress && watched == &m_edit) {
        const auto *key = static_cast<QKeyEvent *>(event);
        // The word that is being typed is not finished.
        if (!key->text().isEmpty() && key->text().at(0).isPrint())
            m_typing = m_edit.textCursor().selectionStart() + int(key->text().size());
    } else if (event->type() == QEvent::ContextMenu) {
        const auto *menu = static_cast<QContextMenuEvent *>(event);
        const bool isKey = menu->reason() == QContextMenuEvent::Keyboard;
        const QPoint place = m_edit.viewport()->mapFromGlobal(menu->globalPos());
        showMenu(isKey ? m_edit.viewport()->mapToGlobal(m_edit.cursorRect().bottomLeft()) : menu->globalPos(),
                 isKey ? m_edit.textCursor().position() : m_edit.cursorForPosition(place).position());
        return true;
    }
    return QSyntaxHighlighter::eventFilter(watched, event);
}

} // namespace quillmere
