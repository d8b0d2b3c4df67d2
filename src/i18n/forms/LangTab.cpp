#include "i18n/forms/LangTab.h"

#include "asking/Talk.h"
#include "asking/forms/AskToWrite.h"
#include "controls/Commands.h"
#include "controls/ListView.h"
#include "controls/Named.h"
#include "files/FileList.h"
#include "files/Files.h"
#include "files/Paths.h"
#include "files/RunTimeError.h"
#include "files/TextFile.h"
#include "i18n/LanguageCatalogue.h"
#include "i18n/forms/LanguageFiles.h"
#include "i18n/forms/ProblemDots.h"
#include "i18n/forms/ShareDelegate.h"
#include "i18n/forms/StringFilters.h"
#include "i18n/forms/TranslationPanel.h"
#include "rows/ToolTip.h"

#include <QAction>
#include <QClipboard>
#include <QDir>
#include <QGuiApplication>
#include <QLineEdit>

namespace quillmere {

namespace {

constexpr int kMargin = 8;      // pixels, at the sides
constexpr int kGap = 3;         // pixels, between one control and the next below
constexpr int kLine = 22;       // pixels, a text box or a line of buttons
constexpr int kLanguages = 128; // pixels; the header and six languages
constexpr int kUsesWidth = 176; // pixels, beside the languages
constexpr int kAround = 2820;   // twips of the frame's height that the strings do not take

static_assert(5 * kGap + 2 * kLine + kLanguages <= toPixels(kAround));

} // namespace

LangTab::LangTab(ListRows &languages, const Document &catalogue, LanguageFile &file, FileList &file1,
                 Files &files, Talk &talk, QWidget *parent)
    : TabFrame(QStringLiteral("frYt(4)"), parent), uses(this),
      languageFiles(new LanguageFiles(
          languages, [&catalogue] { return catalogue.encoding().rule; }, this)),
      m_languages(languages), m_catalogue(catalogue), m_file(file), m_strings(file.document.rows()),
      m_file1(file1), m_files(files), m_talk(talk),
      txtLang(named(new QLineEdit(this), "txtLang", tr("Language catalogue"))),
      lvLang(new ListView(QStringLiteral("lvLang"), tr("Languages"), languages, this)),
      txtLangFile(named(new QLineEdit(this), "txtLangFile", tr("Language file"))),
      LvBhs(new ListView(QStringLiteral("LvBhs"), tr("Translations"), m_strings, this))
{
    txtLang->setReadOnly(true);
    txtLang->setPlaceholderText(tr("No language catalogue"));
    txtLangFile->setPlaceholderText(tr("Double-click a language to open its file"));
    connect(txtLangFile, &QLineEdit::textChanged, this,
            [this](const QString &path) { m_file.document.setPath(path, QString(m_file.document.theme())); });
    lvLang->setColumnShares({1, 9, 9});
    lvLang->setColumnElideMode(1, Qt::ElideRight);
    LvBhs->setColumnShares({1, 9, 9});
    LvBhs->setTextElideMode(Qt::ElideRight);
    connect(LvBhs, &ListView::rowOpened, this, &LangTab::LvBhs_DblClick);
    connect(LvBhs->selectionModel(), &QItemSelectionModel::currentRowChanged, this, &LangTab::showUses);
    connect(&uses, &StringUses::chosen, this, [this](const StringUse &use) {
        emit useChosen(use, languageOf(m_languages, m_file.document.path()));
    });
    filters = new StringFilters(m_strings, *LvBhs, this);
    LvBhs->setItemDelegateForColumn(2, new ProblemDots(*LvBhs, *filters));
    lvLang->setItemDelegateForColumn(
        1, new ShareDelegate(*lvLang, [this](int language) { return shareOf(language); }));
    connect(languageFiles, &LanguageFiles::changed, lvLang->viewport(), qOverload<>(&QWidget::update));
    makePanel();
    QWidget *const inOrder[] = {lvLang, txtLang, uses.view(), txtLangFile, filters, LvBhs, panel};
    for (size_t i = 1; i < std::size(inOrder); ++i)
        setTabOrder(inOrder[i - 1], inOrder[i]);

    // A command may change thousands of rows one by one: they are counted when it is done.
    m_counting.setSingleShot(true);
    m_counting.setInterval(0);
    connect(&m_counting, &QTimer::timeout, this, &LangTab::showCounts);
    connect(&m_counting, &QTimer::timeout, this, &LangTab::showUses);
    const auto countSoon = [this] {
        if (!m_counting.isActive())
            m_counting.start();
    };
    connect(&m_strings, &QAbstractItemModel::dataChanged, this, countSoon);
    connect(&m_strings, &QAbstractItemModel::modelReset, this, countSoon);
    showCounts();
}

void LangTab::addCommands(Commands &menu)
{
    const auto on = [&](const char *name, const Commands::Command &command) {
        menu.on(name, [this, command] {
            panel->takeTyped();
            command();
        });
    };
    on("mnuLangOpen", [this] { mnuLangOpen_Click(); });
    on("mnuLangCopy(1)", [this] { mnuLangCopy_Click(CopiedColumn::Source); });
    on("mnuLangCopy(2)", [this] { mnuLangCopy_Click(CopiedColumn::Trans); });
    on("mnuLangCopy(3)", [this] { mnuLangCopy_Click(CopiedColumn::NotTranslated); });
    on("mnuLangPaste", [this] { mnuLangPaste_Click(); });
    on("mnuLangSearch", [this] { mnuLangSearch_Click(); });
    on("mnuLangTranslate", [this] { translate(QStringLiteral("Indonesia.txt")); });
    on("mnuLangTrans(0)", [this, &menu] { LoadDictionaryMenu(menu); });
    on("mnuLangSave", [this] { mnuLangSave_Click(); });
    on("mnuLangNext", [this] { goToNextUntranslated(); });
    on("mnuLangPanel", [this] { mnuLangPanel_Click(); });
    m_panelItem = menu.action("mnuLangPanel");
    connect(lvLang, &ListView::rowOpened, menu.action("mnuLangOpen"), &QAction::trigger);
}

void LangTab::layOut(int height)
{
    m_height = height;
    const int inner = width() - 2 * kMargin;
    const int left = inner - kUsesWidth - kGap;
    int top = kGap;
    place(lvLang, kMargin, top, left, kLanguages);
    place(txtLang, kMargin + left + kGap, top, kUsesWidth, kLine);
    place(uses.view(), kMargin + left + kGap, top + kLine + kGap, kUsesWidth, kLanguages - kLine - kGap);
    top += kLanguages + kGap;
    place(txtLangFile, kMargin, top, inner, kLine);
    top += kLine + kGap;
    place(filters, kMargin, top, inner, kLine);
    top += kLine + kGap;
    layOutStrings(QRect(kMargin, top, inner, toPixels(height - kAround)));
}

void LangTab::showCatalogue()
{
    txtLang->setText(m_catalogue.path());
    txtLang->setToolTip(plainToolTip(m_catalogue.path()));
}

void LangTab::showEvent(QShowEvent *event)
{
    showUses();
    languageFiles->lookAgain();
    TabFrame::showEvent(event);
}

void LangTab::showUses()
{
    const int row = LvBhs->currentIndex().row();
    uses.show(row >= 0 ? m_strings.sub(row, 1) : QString());
}

void LangTab::showCounts()
{
    filters->count();
    lvLang->viewport()->update(); // the share of the language that is open
}

std::optional<StringCounts> LangTab::shareOf(int language) const
{
    const QString &path = m_languages.text(language);
    if (!m_strings.isEmpty() && path == m_file.document.path())
        return countStrings(m_strings);
    const std::shared_ptr<const LanguageText> text = languageFiles->at(path);
    return text ? std::optional(text->counts()) : std::nullopt;
}

int LangTab::selectedLanguage() const
{
    const int row = lvLang->selectedRow();
    if (row < 0)
        throw RunTimeError(tr("No language is selected: select one in the upper list of the Lang tab."));
    return row;
}

int LangTab::startRow() const
{
    return qMax(LvBhs->selectedRow(), 0);
}

void LangTab::mnuLangOpen_Click()
{
    const QString path = m_languages.text(selectedLanguage());
    if (!path.isEmpty())
        openLanguage(path, m_catalogue.theme());
}

void LangTab::openLanguage(const QString &path, const QString &theme)
{
    panel->takeTyped();
    const bool opened = m_file.open(m_files, path, theme, m_catalogue.encoding().rule);
    txtLangFile->setText(path);
    if (!opened) {
        m_talk.say(tr("%1 is missing or empty; the strings stay as they were.").arg(path));
        return;
    }
    m_talk.say(path);
    emit languageOpened(path, theme);
}

int LangTab::numberOf(const QString &languageName) const
{
    int row = 0;
    while (row < m_languages.count() && m_languages.sub(row, 1) != languageName)
        ++row;
    return row;
}

QString LangTab::pathOf(const QString &languageName) const
{
    const int row = numberOf(languageName);
    return row < m_languages.count() ? m_languages.text(row) : QString();
}

void LangTab::putTranslation(const QString &languageName, const QString &source, const QString &translation)
{
    panel->takeTyped();
    const int row = numberOf(languageName);
    const QString path = pathOf(languageName);
    const QString open = m_file.document.path();
    if (open.isEmpty() || !isSameFile(open, path)) {
        // Its rows would be those of the language before, and be saved to its file.
        if (LoadFile(path).isEmpty())
            throw RunTimeError(tr("%1 is missing or empty.").arg(path.isEmpty() ? languageName : path));
        openLanguage(path, m_catalogue.theme());
    }
    lvLang->setCurrentIndex(m_languages.index(row, 0)); // saving goes by it
    quillmere::putTranslation(m_strings, source, translation);
}

void LangTab::mnuLangSave_Click()
{
    const QString name = m_languages.sub(selectedLanguage(), 1);
    const QString target = m_file.document.path();
    if (target.isEmpty())
        throw RunTimeError(tr("No language file is open: double-click a language on the Lang tab first."));
    // Whoever types a path has chosen that very place, and none that a link leads to.
    if (txtLangFile->isModified())
        m_files.allow(QDir::cleanPath(QDir::fromNativeSeparators(target)));
    const WriteQuestion question = {QStringLiteral("Save File"),
                                    QStringLiteral("Save file translate?"),
                                    target,
                                    m_file.document.theme(),
                                    Files::Step::Save,
                                    m_file.asText(name),
                                    m_file.document.encoding().rule};
    if (!askToWrite(m_files, m_talk, question, No::Counts))
        return;
    m_file.save(m_files, name);
    m_talk.sayUntilEdit(tr("%1 saved.").arg(target));
}

void LangTab::mnuLangCopy_Click(CopiedColumn column)
{
    if (m_strings.isEmpty())
        return;
    const QString lines = linesToCopy(m_strings, startRow(), column);
    QGuiApplication::clipboard()->setText(lines);
    m_talk.say(tr("%1 lines copied.").arg(lines.count(u'\n')));
}

void LangTab::mnuLangPaste_Click()
{
    if (m_strings.isEmpty())
        return;
    const int pasted = pasteLines(m_strings, startRow(), QGuiApplication::clipboard()->text());
    m_talk.say(tr("%1 lines pasted.").arg(pasted));
}

void LangTab::mnuLangSearch_Click()
{
    const std::optional<QString> answer =
        m_talk.input(QStringLiteral("Search Text"), QStringLiteral("Translate for "), QString());
    checkContaining(m_strings, answer.value_or(QString()));
}

void LangTab::LvBhs_DblClick()
{
    const int row = LvBhs->selectedRow();
    if (row < 0)
        return;
    const std::optional<QString> answer =
        m_talk.input(QStringLiteral("Input Logo Channel"), QString(u"Translate for " + m_strings.sub(row, 1)),
                     m_strings.sub(row, 2));
    if (answer && !answer->isEmpty())
        m_strings.setSub(row, 2, *answer);
}

void LangTab::translate(const QString &path)
{
    const QString text = LoadFile(joinPath(m_files.programFolder(), path), m_file.document.encoding().rule);
    m_talk.say(tr("%1 rows filled from %2.").arg(fillFromDictionary(m_strings, text)).arg(path));
}

void LangTab::LoadDictionaryMenu(Commands &menu)
{
    qDeleteAll(m_dictionaries);
    m_dictionaries.clear();
    const QString folder = joinPath(m_files.programFolder(), u"trans");
    if (findFolder(folder).isEmpty())
        throw RunTimeError(tr("There is no folder %1 with dictionaries.").arg(folder));
    m_file1.setPath(folder);
    const QStringList names = dictionaryNames(m_file1.files());
    for (const QString &name : names) {
        const QString item = QStringLiteral("mnuLangTrans(%1)").arg(m_dictionaries.size() + 1);
        m_dictionaries.append(menu.insert("mnuLangSave", item, name, [this, name] {
            translate(joinPath(u"trans", QString(name + u".txt")));
        }));
    }
    m_talk.say(tr("%1 dictionaries in %2.").arg(names.size()).arg(folder));
}

} // namespace quillmere
