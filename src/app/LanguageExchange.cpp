#include "app/LanguageExchange.h"

#include "asking/Talk.h"
#include "controls/Commands.h"
#include "files/ChosenFile.h"
#include "files/FailedStep.h"
#include "files/Paths.h"
#include "files/RegularFile.h"
#include "i18n/ExchangeFile.h"
#include "i18n/LanguageNames.h"
#include "i18n/forms/frmImport.h"
#include "theme/StringPlaces.h"
#include "theme/ThemeProject.h"
#include "theme/forms/LiveIndex.h"

#include <QFileInfo>
#include <QSettings>

namespace quillmere {

namespace {

const QString kFolder = QStringLiteral("language/exchangeFolder"); // with a separator at its end

// Of the language that is open, with the folder that was chosen last.
QString presetFor(QString language)
{
    return QSettings().value(kFolder).toString() + language.replace(u'/', u'_').replace(u'\\', u'_') + u".po";
}

ExchangeFormat formatOf(const QString &path)
{
    const std::optional<ExchangeFormat> format = exchangeFormatOf(path);
    if (!format)
        throw RunTimeError(LanguageExchange::tr("\"%1\": the name must end in .po, .xlf, .xliff, .csv "
                                                "or .tsv.")
                               .arg(path));
    return *format;
}

ExchangeTable read(const QString &path)
{
    const ExchangeFormat format = formatOf(path);
    QString reason;
    const QByteArray bytes = readRegular(path, kLargestFile, reason);
    if (!reason.isEmpty())
        throwFailed("read", path, reason);
    try {
        return readExchange(format, bytes);
    } catch (const LineError &error) {
        throwFailed("read", path, LanguageExchange::tr("line %1: %2").arg(error.line()).arg(error.message()));
    }
}

} // namespace

LanguageExchange::LanguageExchange(ThemeProject &theme, const LiveIndex &index, Files &files, Talk &talk,
                                   QWidget &window)
    : QObject(&window), m_theme(theme), m_index(index), m_files(files), m_talk(talk), m_window(window)
{
}

void LanguageExchange::addCommands(Commands &menu)
{
    menu.on("mnuLangExport", [this] { mnuLangExport_Click(); });
    menu.on("mnuLangImport", [this] { mnuLangImport_Click(); });
}

QString LanguageExchange::languageName() const
{
    if (m_theme.LvBhs.isEmpty())
        throw RunTimeError(tr("No language file is open: double-click a language on the Lang tab first."));
    const QString path = m_theme.language.document.path();
    const QString name = languageOf(m_theme.lvLang, path);
    return name.isEmpty() ? QFileInfo(path).completeBaseName() : name;
}

QList<ExchangeUnit> LanguageExchange::units() const
{
    std::shared_ptr<const ThemeIndex> index = m_index.sharedIndex();
    if (!index && !m_theme.folder().isEmpty()) // it is still being made
        index = std::make_shared<const ThemeIndex>(*ThemeIndex::build(m_index.sources()));
    if (!index)
        return unitsOf(m_theme.LvBhs.rows(), {});
    const StringPlaces places(*index);
    return unitsOf(m_theme.LvBhs.rows(), [&places](const QString &source) { return places.of(source); });
}

void LanguageExchange::mnuLangExport_Click()
{
    const QString name = languageName();
    const std::optional<QString> path = m_talk.chooseFile(
        Prompts::FileFor::Writing, tr("Export"), presetFor(name),
        tr("PO (*.po);;XLIFF 1.2 (*.xlf);;Table with commas (*.csv);;Table with tabs (*.tsv)"));
    if (!path)
        return;
    const ExchangeFormat format = formatOf(*path);
    writeChosen(m_files, *path, exchangeBytes(format, {name, units(), {}}));
    QSettings().setValue(kFolder, folderOf(*path).toString());
    m_talk.say(tr("%1 exported.").arg(*path));
}

void LanguageExchange::mnuLangImport_Click()
{
    const QString name = languageName();
    const std::optional<QString> path =
        m_talk.chooseFile(Prompts::FileFor::Reading, tr("Import"), QSettings().value(kFolder).toString(),
                          tr("Translations (*.po *.xlf *.xliff *.csv *.tsv);;All files (*)"));
    if (!path)
        return;
    const ExchangeTable table = read(*path);
    const QString other = otherThan(name, table.language);
    if (!other.isEmpty() &&
        !m_talk.askWarily(tr("Import"), tr("This file says it is %1. Import it into %2?").arg(other, name)))
        return;
    const ImportPlan plan =
        planImport(m_theme.LvBhs.rows(), table, m_theme.language.document.encoding().page);
    QSettings().setValue(kFolder, folderOf(*path).toString());
    if (plan.changes.isEmpty() && plan.choices.isEmpty() && plan.refused.isEmpty() &&
        plan.unknown.isEmpty()) {
        m_talk.tell(tr("Import"), tr("%1 changes nothing: it has the same translations.").arg(*path),
                    Prompts::Icon::Information);
        return;
    }
    auto *dialog = new frmImport(
        fileNameOf(*path).toString(), name, plan,
        [this](const QList<ImportChange> &changes) { take(changes); }, &m_window);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->open();
}

void LanguageExchange::take(const QList<ImportChange> &changes)
{
    QList<ListRows::Row> rows = m_theme.LvBhs.rows();
    int taken = 0;
    for (const ImportChange &change : changes) {
        // The file of the language may have been loaded again meanwhile.
        if (change.row >= rows.size() || withLineFeeds(rows[change.row].sub(1)) != change.source ||
            withLineFeeds(rows[change.row].sub(2)) != change.before)
            continue;
        rows[change.row].subItems[1] = change.after;
        rows[change.row].checked = !change.isFuzzy && isTranslated(change.after);
        ++taken;
    }
    m_theme.LvBhs.edit(rows);
    // Where Ctrl+Z takes it back.
    if (auto *list = m_window.findChild<QWidget *>(QStringLiteral("LvBhs")); list && list->isVisible())
        list->setFocus();
    m_talk.say(taken == 1 ? tr("1 translation imported; Save Trans writes it.")
                          : tr("%1 translations imported; Save Trans writes them.").arg(taken));
}

} // namespace quillmere
