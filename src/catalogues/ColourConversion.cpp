#include "catalogues/ColourConversion.h"

#include "markup/Matching.h"
#include "rows/ListRows.h"

#include <QHash>

#include <algorithm>
#include <vector>

namespace quillmere {

namespace {

struct Change
{
    QString from;
    QString to;
};

bool isMark(QChar unit)
{
    switch (unit.unicode()) {
    case u',':
    case u'[':
    case u']':
    case u'<':
    case u'>':
        return true;
    default:
        return false;
    }
}

bool hasMark(const QString &text)
{
    return std::any_of(text.begin(), text.end(), isMark);
}

// A change whose texts hold one of the marks can make lists or break them, so each sees the whole text.
void changeAll(QString &text, const Change &change)
{
    replaceIgnoringCase(text, QString(u">[" + change.from + u','), QString(u">[" + change.to + u','));
    replaceIgnoringCase(text, QString(u',' + change.from + u','), QString(u',' + change.to + u','));
    replaceIgnoringCase(text, QString(u',' + change.from + u"]<"), QString(u',' + change.to + u"]<"));
}

// Changes without marks leave the marks of the text where they are, so it is cut at them once, and the
// changes then only hop from value to value: each value waits for the next change that means it.
class ListValues
{
public:
    explicit ListValues(const QList<Change> &changes)
        : m_changes(changes), m_steps(size_t(changes.size())), m_waiting(m_steps.size())
    {
        // From the end, so that what has been seen are the changes behind the one at hand.
        for (int i = int(changes.size()) - 1; i >= 0; --i) {
            const QString from = foldedText(changes[i].from);
            m_steps[size_t(i)] = {m_firstOf.value(foldedText(changes[i].to), -1), m_firstOf.value(from, -1)};
            m_firstOf.insert(from, i);
            m_longest = std::max(m_longest, from.size());
        }
    }

    QString &change(QString &text)
    {
        collect(text);
        for (int i = 0; i < m_changes.size(); ++i)
            apply(i);
        return put(text);
    }

private:
    struct Value
    {
        qsizetype start;
        qsizetype length;
        bool sharesComma; // with the value before it, and both are middle ones
        int changedBy = -1;
    };
    // The next change that means a value which this one has changed, or has left for its comma; -1 for none.
    struct Steps
    {
        int whenTaken;
        int whenLeft;
    };

    // True for the mark at `left` as the beginning of a first, or of a middle or last value.
    static bool opensList(QStringView text, qsizetype left)
    {
        return text[left] == u'[' && left > 0 && text[left - 1] == u'>';
    }
    static bool closesList(QStringView text, qsizetype right)
    {
        return text[right] == u']' && right + 1 < text.size() && text[right + 1] == u'<';
    }

    void collect(QStringView text)
    {
        QString name;
        qsizetype left = -1;
        qsizetype lastMiddle = -1; // where the middle value collected last ends
        for (qsizetype right = 0; right < text.size(); ++right) {
            if (!isMark(text[right]))
                continue;
            const qsizetype start = left + 1;
            const qsizetype length = right - start;
            const bool comma = text[right] == u',';
            const bool afterComma = left >= 0 && text[left] == u',';
            const bool counts =
                afterComma ? comma || closesList(text, right) : left >= 0 && comma && opensList(text, left);
            if (counts && length <= m_longest) {
                foldInto(name, text.sliced(start, length));
                if (const int first = m_firstOf.value(name, -1); first >= 0) {
                    const bool middle = afterComma && comma;
                    await(first, int(m_values.size()));
                    m_values.push_back({start, length, middle && lastMiddle == left});
                    if (middle)
                        lastMiddle = right;
                }
            }
            left = right;
        }
    }

    void await(int change, int value)
    {
        if (change >= 0)
            m_waiting[size_t(change)].push_back(value);
    }

    void apply(int change)
    {
        std::vector<int> &waiting = m_waiting[size_t(change)];
        if (!std::is_sorted(waiting.begin(), waiting.end()))
            std::sort(waiting.begin(), waiting.end());
        const Steps steps = m_steps[size_t(change)];
        for (const int index : waiting) {
            Value &value = m_values[size_t(index)];
            if (value.sharesComma && m_values[size_t(index - 1)].changedBy == change) {
                await(steps.whenLeft, index);
            } else {
                value.changedBy = change;
                await(steps.whenTaken, index);
            }
        }
        waiting = {};
    }

    QString &put(QString &text) const
    {
        QString result;
        result.reserve(text.size());
        qsizetype done = 0;
        for (const Value &value : m_values) {
            if (value.changedBy < 0)
                continue;
            result += QStringView(text).sliced(done, value.start - done);
            result += m_changes[value.changedBy].to;
            done = value.start + value.length;
        }
        result += QStringView(text).sliced(done);
        return text = std::move(result);
    }

    const QList<Change> &m_changes;
    std::vector<Steps> m_steps;
    std::vector<std::vector<int>> m_waiting; // values, by the change that means them next
    std::vector<Value> m_values;
    QHash<QString, int> m_firstOf; // change by folded name
    qsizetype m_longest = 0;
};

} // namespace

QString ConvertColours(QString text, const ListRows &lvColor, ColourForm to)
{
    replaceIgnoringCase(text, u"> ", u">");
    replaceIgnoringCase(text, u" <", u"<");

    QList<Change> changes;
    const auto changeValues = [&] {
        if (!changes.isEmpty())
            ListValues(changes).change(text);
        changes.clear();
    };
    for (const ListRows::Row &row : lvColor.rows()) {
        const Change change =
            to == ColourForm::Code ? Change{row.sub(1), row.sub(2)} : Change{row.sub(2), row.sub(1)};
        if (!hasMark(change.from) && !hasMark(change.to)) {
            changes.append(change);
            continue;
        }
        changeValues();
        changeAll(text, change);
    }
    changeValues();
    return text;
}

} // namespace quillmere
