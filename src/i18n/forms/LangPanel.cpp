#include "i18n/forms/LangTab.h"

#include "asking/Talk.h"
#include "controls/ListView.h"
#include "files/Files.h"
#include "i18n/LanguageCatalogue.h"
#include "i18n/forms/LanguageFiles.h"
#include "i18n/forms/StringFilters.h"
#include "i18n/forms/Suggestions.h"
#include "i18n/forms/TranslationEdit.h"
#include "i18n/forms/TranslationPanel.h"

#include <QAction>
#include <QSettings>

#include <algorithm>

// The panel of the Lang tab, and the way from string to string.

namespace quillmere {

namespace {

constexpr int kGap = 3;          // pixels, above the panel
constexpr int kRoomFor = 400;    // pixels of the strings, for a panel that nobody has asked for
constexpr int kLeastPanel = 200; // pixels
constexpr int kMostPanel = 380;  // pixels

const QString kPanel = QStringLiteral("language/panel");

} // namespace

void LangTab::makePanel()
{
    panel = new TranslationPanel(
        m_strings, *LvBhs, [this] { return m_file.document.path(); }, m_talk, this);
    panel->hide();
    panel->translationIn = [this](const QString &language, const QString &source) {
        const QString path = pathOf(language);
        if (path == m_file.document.path())
            return m_strings.sub(panel->row(), 2);
        const auto text = languageFiles->at(path);
        return text ? text->translationOf(source).toString() : QString();
    };
    panel->problemsOf = [this](int row) { return filters->messagesOf(row); };
    const auto showLanguages = [this] {
        QStringList names;
        for (const ListRows::Row &language : m_languages.rows())
            names.append(language.sub(1));
        panel->setLanguages(names);
        panel->refresh();
    };
    connect(&m_languages, &QAbstractItemModel::modelReset, panel, showLanguages);
    connect(languageFiles, &LanguageFiles::changed, panel, &TranslationPanel::refresh);
    connect(filters, &StringFilters::problemsChanged, panel, &TranslationPanel::refresh);
    auto *suggestions = new Suggestions(m_strings, this);
    connect(panel, &TranslationPanel::suggestionsWanted, suggestions, [this, suggestions](int row) {
        const QString path = m_file.document.path();
        const QString language = languageOf(m_languages, path);
        if (row < 0)
            suggestions->forget();
        else
            suggestions->ask(row, {language, path, m_files.programFolder(),
                                   otherThemes ? otherThemes() : QStringList(), languageFileIn});
    });
    connect(suggestions, &Suggestions::found, panel, &TranslationPanel::showSuggestions);
    connect(panel, &TranslationPanel::nextWanted, this, &LangTab::goToNextUntranslated);
    connect(&m_strings, &QAbstractItemModel::modelReset, this, &LangTab::placePanel);
    connect(&m_strings, &QAbstractItemModel::rowsInserted, this, &LangTab::placePanel);
    connect(&m_strings, &QAbstractItemModel::rowsRemoved, this, &LangTab::placePanel);
}

bool LangTab::hasPanel(int room) const
{
    const QVariant chosen = QSettings().value(kPanel);
    return chosen.isValid() ? chosen.toBool() : room >= kRoomFor;
}

// The strings have this place, and give some of it to the panel.
void LangTab::layOutStrings(const QRect &room)
{
    const bool isOn = hasPanel(room.height());
    const bool shows = isOn && !m_strings.isEmpty();
    const int height = shows ? std::clamp(room.height() * 11 / 20, kLeastPanel, kMostPanel) : 0;
    LvBhs->setGeometry(room.adjusted(0, 0, 0, shows ? -height - kGap : 0));
    if (shows)
        panel->setGeometry(room.adjusted(0, room.height() - height, 0, 0));
    panel->setVisible(shows);
    if (m_panelItem)
        m_panelItem->setChecked(isOn);
}

void LangTab::placePanel()
{
    if (panel->isVisibleTo(this) == m_strings.isEmpty())
        layOut(m_height);
}

void LangTab::mnuLangPanel_Click()
{
    QSettings().setValue(kPanel, m_panelItem->isChecked());
    layOut(m_height);
    if (!m_panelItem->isChecked())
        LvBhs->setFocus();
    else if (m_strings.isEmpty())
        m_talk.say(tr("The panel shows the strings of a language: double-click one on the Lang tab."));
    else if (isVisible())
        panel->txtTranslation->setFocus();
    LvBhs->scrollTo(LvBhs->currentIndex());
}

void LangTab::goToNextUntranslated()
{
    const auto isUntranslated = [this](const QModelIndex &index) {
        return QStringView(m_strings.sub(index.row(), 2)).trimmed().isEmpty();
    };
    const QModelIndex start = LvBhs->currentIndex();
    const auto firstFrom = [&](QModelIndex index) {
        while (index.isValid() && !isUntranslated(index))
            index = LvBhs->seenBelow(index);
        return index;
    };
    QModelIndex found = start.isValid() ? firstFrom(LvBhs->seenBelow(start)) : QModelIndex();
    const bool isFromTop = !found.isValid();
    if (isFromTop)
        found = firstFrom(LvBhs->seenFirst());
    if (!found.isValid()) {
        m_talk.say(tr("All strings in the list are translated."));
        return;
    }
    LvBhs->setCurrentIndex(found);
    LvBhs->scrollTo(found);
    m_talk.say(found.row() == start.row() ? tr("This is the only string in the list without a translation.")
               : isFromTop && start.isValid() ? tr("From the top again.")
                                              : QString());
}

} // namespace quillmere
