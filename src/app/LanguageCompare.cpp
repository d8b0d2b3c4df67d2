#include "app/LanguageCompare.h"

#include "app/ThemeEditing.h"
#include "asking/Talk.h"
#include "controls/Commands.h"
#include "files/Paths.h"
#include "i18n/forms/LangTab.h"
#include "i18n/forms/LanguageFiles.h"
#include "i18n/forms/TranslationPanel.h"
#include "i18n/forms/frmCompareLanguages.h"
#include "theme/LanguageEdit.h"
#include "theme/ReceiverParts.h"
#include "theme/ThemeProject.h"

#include <QMainWindow>

namespace quillmere {

namespace {
constexpr qsizetype kMostSteps = 200;
}

LanguageCompare::LanguageCompare(LangTab &tab, const ThemeProject &theme, ThemeEditing &editing, Talk &talk,
                                 QMainWindow &window)
    : QObject(&window), m_tab(tab), m_theme(theme), m_editing(editing), m_talk(talk), m_window(window)
{
    m_soon.setSingleShot(true);
    m_soon.setInterval(0);
    connect(&m_soon, &QTimer::timeout, this, &LanguageCompare::showLanguages);
    const auto soon = [this] {
        if (isShown())
            m_soon.start();
    };
    connect(m_tab.languageFiles, &LanguageFiles::changed, this, soon);
    for (const ListRows *rows : {&theme.LvBhs, &theme.lvLang}) {
        connect(rows, &ListRows::dataChanged, this, soon);
        connect(rows, &ListRows::modelReset, this, soon);
        connect(rows, &ListRows::rowsInserted, this, soon);
        connect(rows, &ListRows::rowsRemoved, this, soon);
    }
    // Steps of one theme are none of another.
    connect(&theme, &ThemeProject::loaded, this, [this, folder = QString()]() mutable {
        if (std::exchange(folder, m_theme.folder()) == m_theme.folder())
            return;
        m_toUndo.clear();
        m_toRedo.clear();
        stepsChanged();
    });
}

LanguageCompare::~LanguageCompare() = default;

void LanguageCompare::addCommands(Commands &menu)
{
    menu.on("mnuLangCompare", [this] { mnuLangCompare_Click(); });
}

bool LanguageCompare::isShown() const
{
    return m_dialog && m_dialog->isVisible();
}

void LanguageCompare::mnuLangCompare_Click()
{
    m_tab.panel->takeTyped();
    if (m_theme.lvLang.isEmpty()) {
        m_talk.say(tr("The theme has no languages to compare."));
        return;
    }
    if (!m_dialog) {
        m_dialog = std::make_unique<frmCompareLanguages>(m_window);
        m_dialog->model.put = [this](const QString &language, const QString &source,
                                     const QString &translation) {
            return put(language, source, translation);
        };
        connect(m_dialog.get(), &frmCompareLanguages::shown, m_tab.languageFiles, &LanguageFiles::lookAgain);
        connect(m_dialog.get(), &frmCompareLanguages::undoWanted, this,
                [this] { m_talk.run([this] { step(m_toUndo, m_toRedo); }); });
        connect(m_dialog.get(), &frmCompareLanguages::redoWanted, this,
                [this] { m_talk.run([this] { step(m_toRedo, m_toUndo); }); });
    }
    stepsChanged();
    showLanguages();
    m_dialog->present(ModelessDialog::Keyboard::Takes);
}

void LanguageCompare::showLanguages()
{
    QList<ComparedLanguage> languages;
    for (const ListRows::Row &language : m_theme.lvLang.rows()) {
        if (const auto rows = m_editing.openRows(language.text))
            languages.append({language.sub(1), *rows});
        else if (const auto text = m_tab.languageFiles->at(language.text))
            languages.append({language.sub(1), text});
    }
    m_dialog->showLanguages(languages);
}

bool LanguageCompare::put(const QString &language, const QString &source, const QString &translation)
{
    bool isMade = false;
    m_talk.run([&] {
        const QString path = languageFileOf(m_theme, language);
        ThemeEdit edit;
        if (const auto rows = m_editing.openRows(path)) {
            edit = translationInRows(path, *rows, source, translation);
        } else {
            const DecodedText file = LoadText(path, m_theme.rule);
            edit = translationInFile(path, file.text, file.page, source, translation);
        }
        const std::optional<ThemeEdit> inverse = m_editing.apply(edit);
        if (!inverse)
            return;
        isMade = true;
        m_toUndo.append(*inverse);
        if (m_toUndo.size() > kMostSteps)
            m_toUndo.removeFirst();
        m_toRedo.clear();
        stepsChanged();
        m_talk.say(
            m_editing.openRows(path)
                ? tr("%1: \"%2\" has a new translation, not saved yet.").arg(language, source.trimmed())
                : tr("%1: \"%2\" has a new translation in %3.").arg(language, source.trimmed(), path));
    });
    return isMade;
}

// One that cannot be made any more, as its language has changed since, is forgotten.
void LanguageCompare::step(QList<ThemeEdit> &from, QList<ThemeEdit> &to)
{
    if (from.isEmpty())
        return;
    const ThemeEdit edit = from.takeLast();
    const std::optional<ThemeEdit> inverse = m_editing.apply(edit);
    if (inverse)
        to.append(*inverse);
    stepsChanged();
}

void LanguageCompare::stepsChanged()
{
    if (m_dialog)
        m_dialog->setSteps(!m_toUndo.isEmpty(), !m_toRedo.isEmpty());
}

} // namespace quillmere
