#include "i18n/forms/TranslationPanel.h"

#include "asking/Talk.h"
#include "controls/ListView.h"
#include "controls/Named.h"
#include "files/RunTimeError.h"
#include "i18n/ExchangeUnits.h"
#include "i18n/TypedTranslation.h"
#include "i18n/forms/SuggestionList.h"
#include "i18n/forms/TranslationEdit.h"
#include "rows/ToolTip.h"

#include <QAction>
#include <QBoxLayout>
#include <QComboBox>
#include <QEvent>
#include <QLabel>
#include <QSettings>

#include <algorithm>

namespace quillmere {

namespace {

constexpr int kGap = 3;                     // pixels
constexpr int kNoteLines = 3;               // of what is wrong with a string
constexpr qsizetype kMostShown = 10'000;    // units; beside what one types
constexpr qsizetype kMostTyped = 1'000'000; // units; a row with more is none that one types

QString settingOf(int beside)
{
    return QStringLiteral("language/beside%1").arg(beside);
}

// A text to be read: it has the ground of the window, and nothing of a box to type in.
class ReadText : public QPlainTextEdit
{
public:
    ReadText() { takeColours(); }

protected:
    void changeEvent(QEvent *event) override
    {
        QPlainTextEdit::changeEvent(event);
        if (event->type() == QEvent::PaletteChange)
            takeColours();
    }

private:
    void takeColours()
    {
        QPalette colours = palette();
        const QColor ground = colours.color(QPalette::AlternateBase);
        if (colours.color(QPalette::Base) == ground)
            return;
        colours.setColor(QPalette::Base, ground);
        setPalette(colours);
    }
};

QPlainTextEdit *readOnly(const QString &name, const QString &accessibleName)
{
    auto *text = new ReadText;
    text->setObjectName(name);
    text->setAccessibleName(accessibleName);
    text->setReadOnly(true);
    text->setTabChangesFocus(true);
    text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    return text;
}

} // namespace

TranslationPanel::TranslationPanel(ListRows &strings, ListView &list, std::function<QString()> file,
                                   Talk &talk, QWidget *parent)
    : QWidget(parent), txtTranslation(named(new TranslationEdit, "txtTranslation", tr("Translation"))),
      m_strings(strings), m_list(list), m_fileNow(std::move(file)), m_talk(talk),
      txtSource(readOnly(QStringLiteral("txtSource"), tr("Source"))),
      lblPanelNote(named(new QLabel, "lblPanelNote", tr("About this translation"))),
      m_suggestions(new SuggestionList(*parent))
{
    named(this, "translationPanel", tr("Selected string"));
    txtSource->setPlaceholderText(tr("Select a string"));
    txtSource->setToolTip(tr("Source"));
    txtTranslation->setPlaceholderText(tr("Translation"));
    txtTranslation->setToolTip(tr("Enter takes the translation and checks the row, Ctrl+Enter goes on to the "
                                  "next string without one, Shift+Enter breaks the line, Esc puts back what "
                                  "the row holds."));
    lblPanelNote->setTextFormat(Qt::PlainText);
    lblPanelNote->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Minimum);
    lblPanelNote->setWordWrap(true);
    lblPanelNote->setMinimumHeight(lblPanelNote->fontMetrics().lineSpacing());
    lblPanelNote->setMaximumHeight(kNoteLines * lblPanelNote->fontMetrics().lineSpacing());
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(kGap);
    column->addWidget(txtSource, 4);
    column->addWidget(txtTranslation, 5);
    column->addWidget(lblPanelNote);
    column->addWidget(m_suggestions->view(), 8);
    column->addLayout(makeBeside(), 6);
    connect(m_suggestions, &SuggestionList::chosen, this, &TranslationPanel::putSuggestion);
    for (QWidget *box : findChildren<QAbstractScrollArea *>()) {
        box->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored); // each has its share of what there is
        box->setMinimumHeight(0);
    }
    connectEdit();

    connect(list.selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex &now) { showRow(now.row()); });
    connect(&strings, &QAbstractItemModel::modelAboutToBeReset, this, &TranslationPanel::keepDraft);
    connect(&strings, &QAbstractItemModel::modelReset, this, [this] { showRow(-1); });
    connect(&strings, &QAbstractItemModel::rowsAboutToBeRemoved, this,
            [this](const QModelIndex &, int first, int last) {
                if (row() >= first && row() <= last)
                    keepDraft();
            });
    connect(&strings, &QAbstractItemModel::dataChanged, this,
            [this](const QModelIndex &first, const QModelIndex &last) {
                if (row() >= first.row() && row() <= last.row())
                    rowsChanged();
            });
    showRow(-1);
}

QLayout *TranslationPanel::makeBeside()
{
    auto *line = new QHBoxLayout;
    line->setSpacing(kGap);
    for (int i = 0; i < int(m_beside.size()); ++i) {
        auto *choice = new QComboBox;
        choice->setObjectName(QStringLiteral("cboBeside(%1)").arg(i));
        choice->setAccessibleName(tr("Other language"));
        choice->setToolTip(tr("A language to show beside the one that is open"));
        choice->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
        QPlainTextEdit *text =
            readOnly(QStringLiteral("txtBeside(%1)").arg(i), tr("Translation in the other language"));
        m_beside[size_t(i)] = {choice, text};
        connect(choice, &QComboBox::activated, this, [this, i, choice](int index) {
            QSettings().setValue(settingOf(i), index > 0 ? choice->currentText() : QString());
            refresh();
        });
        auto *column = new QVBoxLayout;
        column->setSpacing(kGap);
        column->addWidget(choice);
        column->addWidget(text, 1);
        line->addLayout(column, 1);
    }
    setLanguages({});
    return line;
}

void TranslationPanel::connectEdit()
{
    connect(txtTranslation, &TranslationEdit::taken, this, [this] { m_talk.run([this] { take(); }); });
    connect(txtTranslation, &TranslationEdit::takenAndOn, this, [this] {
        m_talk.run([this] {
            take();
            emit nextWanted();
        });
    });
    connect(txtTranslation, &TranslationEdit::left, this, &TranslationPanel::takeTyped);
    connect(txtTranslation, &TranslationEdit::putBack, this, [this] {
        if (row() >= 0 && isTyped())
            txtTranslation->replaceBy(withLineFeeds(m_strings.sub(row(), 2)));
    });
    connect(txtTranslation, &QPlainTextEdit::textChanged, this, &TranslationPanel::showNote);
    const auto pass = [this](const char *action) {
        if (auto *step = m_list.findChild<QAction *>(QLatin1String(action)))
            step->trigger();
    };
    connect(txtTranslation, &TranslationEdit::undoWanted, this, [pass] { pass("mnuRowsUndo"); });
    connect(txtTranslation, &TranslationEdit::redoWanted, this, [pass] { pass("mnuRowsRedo"); });
}

void TranslationPanel::showEvent(QShowEvent *event)
{
    showRow(m_list.currentIndex().row());
    emit suggestionsWanted(row());
    QWidget::showEvent(event);
}

void TranslationPanel::hideEvent(QHideEvent *event)
{
    takeTyped();
    emit suggestionsWanted(-1);
    QWidget::hideEvent(event);
}

bool TranslationPanel::isTyped() const
{
    return row() >= 0 && txtTranslation->text() != m_before;
}

std::optional<QString> TranslationPanel::typed() const
{
    const QString text = isTyped() ? txtTranslation->text() : QString();
    return isTyped() && reasonAgainst(text).isEmpty() ? std::optional(inRow(text, m_strings.row(row())))
                                                      : std::nullopt;
}

void TranslationPanel::showRow(int row)
{
    if (m_row.isValid() && m_row.row() == row)
        return;
    takeTyped();
    m_row = row >= 0 ? m_strings.index(row, 0) : QModelIndex();
    m_file = m_fileNow();
    m_source = row >= 0 ? m_strings.sub(row, 1) : QString();
    txtSource->setPlainText(withLineFeeds(m_source.left(kMostShown)));
    const QString translation = row >= 0 ? withLineFeeds(m_strings.sub(row, 2)) : QString();
    txtTranslation->begin(translation);
    m_before = txtTranslation->text();
    txtTranslation->setReadOnly(row < 0 || translation.size() > kMostTyped);
    if (row >= 0 && m_drafts.contains(key()))
        txtTranslation->replaceBy(m_drafts.take(key()));
    m_suggestions->show({});
    if (isVisible())
        emit suggestionsWanted(row);
    refresh();
}

// The row has another text now: it was undone, or a command has filled it. What is being typed stays.
void TranslationPanel::rowsChanged()
{
    const QString now = withLineFeeds(m_strings.sub(row(), 2));
    if (m_strings.sub(row(), 1) != m_source) { // it was renamed
        m_source = m_strings.sub(row(), 1);
        txtSource->setPlainText(withLineFeeds(m_source.left(kMostShown)));
    }
    if (!isTyped() && txtTranslation->text() != now) {
        txtTranslation->begin(now);
        m_before = txtTranslation->text();
    }
    refresh();
}

void TranslationPanel::put(const QString &typed)
{
    m_before = typed;
    m_drafts.remove(key());
    m_strings.setSub(row(), 2, inRow(typed, m_strings.row(row())));
}

void TranslationPanel::take()
{
    if (row() < 0)
        return;
    const QString typed = txtTranslation->text();
    if (isTyped()) {
        if (const QString reason = reasonAgainst(typed); !reason.isEmpty())
            throw RunTimeError(reason);
        put(typed);
    }
    m_strings.setChecked(row(), isTranslated(typed));
    txtTranslation->document()->clearUndoRedoStacks();
    showNote();
}

void TranslationPanel::takeTyped()
{
    if (!isTyped())
        return;
    const QString typed = txtTranslation->text();
    if (reasonAgainst(typed).isEmpty())
        put(typed);
    else
        m_drafts.insert(key(), typed);
    showNote();
}

void TranslationPanel::showSuggestions(int ofRow, const QList<Suggestion> &suggestions)
{
    if (ofRow != row())
        return;
    m_suggestions->show(suggestions);
    showNote();
}

// It is in the row at once, and may be changed in the box before Enter checks the row.
void TranslationPanel::putSuggestion(const QString &translation)
{
    if (row() < 0)
        return;
    txtTranslation->replaceBy(withLineFeeds(translation));
    takeTyped();
    txtTranslation->setFocus();
}

void TranslationPanel::keepDraft()
{
    if (isTyped())
        m_drafts.insert(key(), txtTranslation->text());
    m_row = QModelIndex();
}

bool TranslationPanel::mayClose()
{
    takeTyped();
    if (m_drafts.isEmpty())
        return true;
    QStringList kept;
    for (const QString &typed : std::as_const(m_drafts))
        kept.append(u'"' + inOneLine(typed.left(100)) + u'"');
    return m_talk.ask(QStringLiteral("Quillmere"),
                      tr("These translations were typed and not taken: %1\nLeave anyway, and lose them?")
                          .arg(kept.mid(0, 10).join(QStringLiteral(", "))));
}

void TranslationPanel::setLanguages(const QStringList &names)
{
    for (int i = 0; i < int(m_beside.size()); ++i) {
        QComboBox &choice = *m_beside[size_t(i)].language;
        choice.clear();
        choice.addItem(tr("No other language"));
        choice.addItems(names);
        choice.setCurrentIndex(std::max(0, choice.findText(QSettings().value(settingOf(i)).toString())));
    }
}

void TranslationPanel::refresh()
{
    // Who looks at no other language has the room.
    const auto hasLanguage = [](const Beside &beside) { return beside.language->currentIndex() > 0; };
    const bool isAny = std::any_of(m_beside.begin(), m_beside.end(), hasLanguage);
    for (const Beside &beside : m_beside) {
        beside.text->setVisible(isAny);
        beside.text->setEnabled(hasLanguage(beside));
        const bool isChosen = beside.language->currentIndex() > 0 && translationIn && row() >= 0;
        const QString text =
            isChosen ? translationIn(beside.language->currentText(), m_source).left(kMostShown) : QString();
        if (beside.text->toPlainText() != text)
            beside.text->setPlainText(withLineFeeds(text));
    }
    showNote();
}

void TranslationPanel::showNote()
{
    QString note;
    if (isTyped()) {
        note = reasonAgainst(txtTranslation->text());
        if (note.isEmpty())
            note = tr("Enter takes it, Ctrl+Enter goes on, Shift+Enter breaks the line.");
    } else if (row() >= 0 && problemsOf) {
        note = problemsOf(row()).join(QStringLiteral("; "));
        if (note.isEmpty() && m_suggestions->isDisputed())
            note = tr("The dictionaries differ in this string.");
    }
    note = inOneLine(note);
    lblPanelNote->setText(note);
    lblPanelNote->setToolTip(plainToolTip(note));
}

} // namespace quillmere
