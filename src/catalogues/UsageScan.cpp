#include "catalogues/UsageScan.h"

#include "catalogues/NameSearch.h"
#include "files/ReadProblems.h"
#include "files/TextFile.h"
#include "markup/Matching.h"
#include "rows/ListRows.h"

#include <algorithm>

namespace quillmere {

namespace {

QString imageMarker(const QString &id)
{
    return u'>' + id + u'<';
}

bool isDivider(QChar unit)
{
    return unit == u',' || unit == u'[' || unit == u']';
}

class UsedImages
{
public:
    explicit UsedImages(const ListRows &rows) : m_met(rows.count())
    {
        for (int row = 0; row < rows.count(); ++row) {
            const QString id = rows.sub(row, 1);
            // One that holds a marker itself may reach over several pieces.
            if (id.contains(u'<') || id.contains(u'>'))
                m_anywhere.add(imageMarker(id), row);
            else
                m_whole.add(id, row);
        }
    }

    void readDocument(QStringView text)
    {
        m_anywhere.meet(text, m_met);
        qsizetype from = 0;
        for (qsizetype end = text.indexOf(u'<'); end >= 0; end = text.indexOf(u'<', from)) {
            const QStringView element = text.sliced(from, end - from);
            const qsizetype start = element.lastIndexOf(u'>');
            if (start >= 0)
                m_whole.meet(element.sliced(start + 1), m_met);
            from = end + 1;
        }
    }

    const MetRows &met() const { return m_met; }

private:
    WholeNames m_whole;
    NamesAnywhere m_anywhere;
    MetRows m_met;
};

class UsedColours
{
public:
    explicit UsedColours(const ListRows &rows) : m_met(rows.count())
    {
        for (int row = 0; row < rows.count(); ++row) {
            const QString name = rows.sub(row, 1);
            // Brackets count as commas in a document, so a name with a bracket stands in none.
            if (name.contains(u'[') || name.contains(u']'))
                continue;
            if (name.contains(u','))
                m_anywhere.add(QString(u',' + name + u','), row);
            else
                m_whole.add(name, row);
        }
    }

    void readDocument(QStringView text)
    {
        if (!m_anywhere.isEmpty()) {
            QString commas = text.toString();
            commas.replace(u'[', u',').replace(u']', u',');
            m_anywhere.meet(commas, m_met);
        }
        qsizetype start = -1;
        for (qsizetype i = 0; i < text.size(); ++i) {
            if (!isDivider(text[i]))
                continue;
            if (start >= 0)
                m_whole.meet(text.sliced(start, i - start), m_met);
            start = i + 1;
        }
    }

    const MetRows &met() const { return m_met; }

private:
    WholeNames m_whole;
    NamesAnywhere m_anywhere;
    MetRows m_met;
};

void checkExactly(const MetRows &met, ListRows &rows)
{
    for (int row = 0; row < rows.count(); ++row)
        rows.setChecked(row, met[row]);
}

// Reads the windows that can be read, and says at the end which cannot.
class Documents
{
public:
    explicit Documents(CodePageRule rule) : m_rule(rule) {}

    QString text(const QString &path)
    {
        try {
            return LoadFile(path, m_rule);
        } catch (const RunTimeError &error) {
            m_problems.add(error);
            return {};
        }
    }
    void report() const
    {
        if (!m_problems.isEmpty())
            throw RunTimeError(m_problems.text());
    }

private:
    CodePageRule m_rule;
    ReadProblems m_problems;
};

} // namespace

void scanWindows(const ListRows &LvWidget, ListRows &lvImage, ListRows &lvColor, const Progress &progress,
                 CodePageRule rule)
{
    UsedImages images(lvImage);
    UsedColours colours(lvColor);
    Documents documents(rule);
    for (int row = 0; row < LvWidget.count(); ++row) {
        const QString text = documents.text(LvWidget.text(row));
        images.readDocument(text);
        colours.readDocument(text);
        tell(progress, row + 1, LvWidget.count());
    }
    checkExactly(images.met(), lvImage);
    checkExactly(colours.met(), lvColor);
    documents.report();
}

int checkWindowsWith(const QString &imageId, ListRows &LvWidget, const Progress &progress, CodePageRule rule)
{
    const QString marker = imageMarker(imageId);
    MetRows uses(LvWidget.count());
    Documents documents(rule);
    for (int row = 0; row < LvWidget.count(); ++row) {
        uses[row] = containsIgnoringCase(documents.text(LvWidget.text(row)), marker);
        tell(progress, row + 1, LvWidget.count());
    }
    checkExactly(uses, LvWidget);
    documents.report();
    return int(std::count(uses.cbegin(), uses.cend(), true));
}

QList<int> checkNamesIn(const QString &text, const QList<ListRows *> &lists, const Progress &progress)
{
    QList<MetRows> metOfLists;
    for (const ListRows *rows : lists) {
        tell(progress, metOfLists.size(), lists.size());
        NamesAnywhere names;
        MetRows met(rows->count());
        for (int row = 0; row < rows->count(); ++row)
            names.add(rows->sub(row, 1), row);
        names.meet(text, met);
        metOfLists.append(met);
    }
    tell(progress, lists.size(), lists.size());
    QList<int> found;
    for (qsizetype list = 0; list < lists.size(); ++list) {
        const MetRows &met = metOfLists[list];
        for (int row = 0; row < lists[list]->count(); ++row) {
            if (met[row])
                lists[list]->setChecked(row, true);
        }
        found.append(int(std::count(met.cbegin(), met.cend(), true)));
    }
    return found;
}

} // namespace quillmere
