#include "app/Going.h"

#include "app/OpenDocument.h"
#include "app/TabStrip.h"
#include "asking/Talk.h"
#include "controls/ListView.h"
#include "controls/TabFrame.h"
#include "files/Paths.h"
#include "markup/FormatXML.h"
#include "source/forms/SourceBox.h"
#include "theme/ThemeProject.h"

#include <QFileInfo>
#include <QHeaderView>
#include <QScopedValueRollback>
#include <QScrollBar>

#include <algorithm>

namespace quillmere {

namespace {

constexpr qsizetype kMostPlaces = 200;
constexpr int kLangTab = 4, kSourceTab = 8; // in the strip
// The list of each tab that a row is shown in.
constexpr const char *kLists[] = {"lvTheme", "LvWidget", "lvImage", "lvColor", "lvLang",
                                  "lvFont",  "lvKeyMap", nullptr,   nullptr,   "lvCheck"};

} // namespace

// A file whose entries are rows of a list.
struct Going::Catalogue
{
    QString path;
    int tab;
    const char *list;
};

Going::Going(Parts parts, Talk &talk, QObject *parent)
    : QObject(parent), m_parts(std::move(parts)), m_talk(talk), m_tab(m_parts.strip.currentIndex())
{
    connect(&m_parts.strip, &TabStrip::currentChanged, this, &Going::tabChanged);
    connect(&m_parts.document, &OpenDocument::leaving, this, [this] {
        if (m_tab == kSourceTab)
            leave();
    });
}

void Going::goTo(const QString &file, Range range, qint32 row)
{
    leave();
    m_talk.run([&] {
        const QScopedValueRollback going(m_isGoing, true);
        if (row < 0 || !goToRow(file, row))
            goToText(file, range);
    });
}

bool Going::goToRow(const QString &file, qint32 row)
{
    const ThemeProject &theme = m_parts.theme;
    const Catalogue catalogues[] = {{theme.widgets.document.path(), 1, "LvWidget"},
                                    {theme.images.document.path(), 2, "lvImage"},
                                    {theme.colours.document.path(), 3, "lvColor"},
                                    {theme.languageList.path(), kLangTab, "lvLang"},
                                    {theme.fontFile.path(), 5, "lvFont"}};
    const auto *catalogue = std::find_if(std::begin(catalogues), std::end(catalogues),
                                         [&](const Catalogue &each) { return each.path == file; });
    ListView *list = nullptr;
    if (catalogue != std::end(catalogues)) {
        m_parts.strip.setCurrentIndex(catalogue->tab);
        list = m_parts.tabs[catalogue->tab]->findChild<ListView *>(QLatin1String(catalogue->list));
    } else {
        // The list has the name of the file as it was written.
        const auto &languages = theme.lvLang.rows();
        const auto language =
            std::find_if(languages.begin(), languages.end(),
                         [&](const ListRows::Row &each) { return withOwnSeparators(each.text) == file; });
        if (language == languages.end())
            return false;
        if (theme.language.document.path() != language->text)
            m_parts.openLanguage(language->text);
        m_parts.strip.setCurrentIndex(kLangTab);
        list = m_parts.tabs[kLangTab]->findChild<ListView *>(QStringLiteral("LvBhs"));
    }
    showRow(list, row);
    return true;
}

void Going::goToText(const QString &file, Range range)
{
    FormattedPlace place = {range.start, range.end};
    if (m_parts.document.path() != file) {
        if (findFile(file).isEmpty()) {
            m_talk.say(tr("There is no file %1.").arg(file));
            return;
        }
        // The source box shows a window formatted, and the range is one of the file.
        const QString text = LoadFile(file, m_parts.theme.rule);
        m_parts.openDocument(file, m_parts.theme.folder());
        if (m_parts.document.path() != file)
            return;
        place = formattedPlace(text, range.start, range.end, m_parts.source.text());
    }
    showSource(place.start, place.end - place.start);
}

void Going::showSource(qsizetype start, qsizetype length)
{
    m_parts.strip.setCurrentIndex(kSourceTab);
    SourceBox &source = m_parts.source;
    const int scrolled = source.verticalScrollBar()->value();
    source.select(start, length);
    if (source.verticalScrollBar()->value() != scrolled)
        source.centerCursor(); // with what stands around it
    source.setFocus();
}

void Going::showRow(ListView *list, int row)
{
    if (!list)
        return;
    const QAbstractItemModel *rows = list->model();
    if (row < 0 || row >= rows->rowCount()) {
        m_talk.say(tr("That row is no longer in the list."));
        return;
    }
    int column = 0;
    while (column + 1 < rows->columnCount() && list->isColumnHidden(column))
        ++column;
    list->setCurrentIndex(rows->index(row, column));
    emit list->rowClicked(row); // as the arrow keys do: the tab shows what it shows of a row
    list->scrollTo(rows->index(row, column), QAbstractItemView::PositionAtCenter);
    list->setFocus();
}

ListView *Going::listOf(int tab) const
{
    if (tab < 0 || tab >= int(std::min<qsizetype>(std::size(kLists), m_parts.tabs.size())) || !kLists[tab])
        return nullptr;
    return m_parts.tabs[tab]->findChild<ListView *>(QLatin1String(kLists[tab]));
}

Going::Place Going::placeNow() const
{
    Place place;
    place.tab = m_tab;
    if (m_tab == kSourceTab) {
        place.file = m_parts.document.path();
        place.theme = m_parts.document.theme();
        place.start = m_parts.source.selectionStart();
        place.length = m_parts.source.selectionLength();
    } else if (const ListView *list = listOf(m_tab)) {
        place.row = list->selectedRow();
    }
    return place;
}

bool Going::isSamePlace(const Place &a, const Place &b)
{
    return a.tab == b.tab && a.file == b.file && a.start == b.start && a.row == b.row;
}

void Going::leave()
{
    if (m_isGoing)
        return;
    const Place now = placeNow();
    m_forward.clear();
    if (!m_back.isEmpty() && isSamePlace(m_back.last(), now))
        return;
    m_back.append(now);
    if (m_back.size() > kMostPlaces)
        m_back.removeFirst();
}

void Going::tabChanged()
{
    leave();
    m_tab = m_parts.strip.currentIndex();
}

void Going::back()
{
    step(m_back, m_forward);
}

void Going::forward()
{
    step(m_forward, m_back);
}

void Going::step(QList<Place> &from, QList<Place> &to)
{
    const Place now = placeNow();
    while (!from.isEmpty()) {
        const Place place = from.takeLast();
        if (isSamePlace(place, now) || !show(place))
            continue;
        to.append(now);
        return;
    }
    m_talk.say(&from == &m_back ? tr("There is no place before this one.")
                                : tr("There is no place after this one."));
}

bool Going::show(const Place &place)
{
    const QScopedValueRollback going(m_isGoing, true);
    if (place.tab != kSourceTab) {
        m_parts.strip.setCurrentIndex(place.tab);
        if (place.row >= 0)
            showRow(listOf(place.tab), place.row);
        else
            m_parts.tabs[place.tab]->setFocus();
        return true;
    }
    if (place.file != m_parts.document.path()) {
        if (findFile(place.file).isEmpty())
            return false; // it has gone since
        m_parts.openDocument(place.file, place.theme);
        if (m_parts.document.path() != place.file)
            return false;
    }
    showSource(place.start, place.length);
    return true;
}

} // namespace quillmere
