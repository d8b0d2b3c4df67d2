#include "browser/PageForm.h"

#include "browser/SheetRules.h"

#include <QHash>

#include <algorithm>

namespace quillmere {

namespace {

// No font and no theme has letters there.
constexpr QChar kOpen = u'\uF8F0';
constexpr QChar kClose = u'\uF8F1';
constexpr qsizetype kMostMarks = 100; // in one text of the body, whose length is limited
constexpr qsizetype kLongest = 11;    // units of a number

// The properties that a block's rules set; none sets what another sets.
bool isKnown(QStringView property)
{
    static const QSet<QString> known = {
        QStringLiteral("position"),   QStringLiteral("left"),      QStringLiteral("top"),
        QStringLiteral("width"),      QStringLiteral("height"),    QStringLiteral("line-height"),
        QStringLiteral("background"), QStringLiteral("color"),     QStringLiteral("background-color"),
        QStringLiteral("text-align"), QStringLiteral("font-size"), QStringLiteral("font-style"),
        QStringLiteral("display")};
    return known.contains(property.toString());
}

bool isPlace(QStringView property)
{
    return property == u"left" || property == u"top";
}

bool isLength(QStringView property)
{
    return isPlace(property) || property == u"width" || property == u"height" || property == u"line-height";
}

bool isDigit(QChar unit)
{
    return unit >= u'0' && unit <= u'9';
}

bool isNumber(QStringView text)
{
    const QStringView digits = text.startsWith(u'-') || text.startsWith(u'+') ? text.sliced(1) : text;
    return !digits.isEmpty() && text.size() <= kLongest && std::ranges::all_of(digits, isDigit);
}

} // namespace

QString PageForm::mark(qsizetype value)
{
    return kOpen + QString::number(value) + kClose;
}

bool PageForm::isFree(QStringView text)
{
    return !text.contains(kOpen) && !text.contains(kClose);
}

QString PageForm::filled(QStringView marked, const QStringList &values)
{
    QString text;
    text.reserve(marked.size() + marked.size() / 32);
    qsizetype done = 0;
    for (qsizetype open; (open = marked.indexOf(kOpen, done)) >= 0;) {
        const qsizetype close = marked.indexOf(kClose, open);
        if (close < 0)
            break;
        text += marked.sliced(done, open - done);
        text += values.value(marked.sliced(open + 1, close - open - 1).toInt());
        done = close + 1;
    }
    return text += marked.sliced(done);
}

std::optional<PageForm> PageForm::read(const QString &marked)
{
    std::optional<PageTree> tree = PageTree::read(marked);
    std::optional<std::vector<PageText>> texts = tree ? textsWith(*tree, kOpen) : std::nullopt;
    if (!texts)
        return {};
    for (const PageText &text : *texts) {
        if (text.text.count(kOpen) > kMostMarks)
            return {};
    }
    PageForm form;
    form.m_tree = std::move(*tree);
    form.m_texts = std::move(*texts);
    if (!form.readRules())
        return {};
    return form;
}

// The rules set nothing but what has a mark in it, once more. What follows for the same element in the sheet
// of the page, and sets the same, has to follow here, too. Letter case counts for nothing in the ids of a
// page of ours.
bool PageForm::readRules()
{
    const auto rules = plainRules(m_tree.sheet());
    if (!rules)
        return false;
    QHash<QString, QSet<QString>> positions; // by id: the properties that are set
    for (const SheetRule &rule : *rules) {
        const bool isMarked = rule.declarations.contains(kOpen);
        if (!isMarked && (positions.isEmpty() || !rule.selector.startsWith(u'#')))
            continue;
        const QString id = idOfSelector(rule.selector).toString().toLower();
        if (isMarked && (id.isEmpty() || !isFree(id)))
            return false;
        if (!isMarked && !positions.contains(id))
            continue;
        QString copied;
        for (const QStringView declaration : rule.declarations.split(u';')) {
            if (!copy(declaration, positions[id], copied))
                return false;
        }
        if (!copied.isEmpty())
            m_rules += rule.selector + u'{' + copied + u'}';
    }
    return true;
}

// Lengths are pixels in a page, with a unit or without; the sheet in which they stand here knows only those
// with one.
bool PageForm::copy(QStringView declaration, QSet<QString> &positions, QString &copied)
{
    const qsizetype colon = declaration.indexOf(u':');
    if (colon < 0)
        return isFree(declaration) && withoutBlanks(declaration).isEmpty();
    const QString property = withoutBlanks(declaration.first(colon)).toString().toLower();
    const QStringView value = withoutBlanks(declaration.sliced(colon + 1));
    const bool isMarked = !isFree(value);
    if (!isKnown(property) || !isFree(property) || (isMarked && !isLength(property)))
        return false;
    if (!isMarked && !positions.contains(property))
        return true;
    const QStringView number = value.endsWith(u"px") ? value.chopped(2) : value;
    const bool isOneMark = number.startsWith(kOpen) && number.indexOf(kClose) == number.size() - 1;
    if (isMarked ? !isOneMark : !isNumber(number))
        return false;
    if (isMarked && !isPlace(property))
        m_sizes.insert(number.sliced(1).chopped(1).toInt());
    positions.insert(property);
    copied += property + u':' + number + u"px;";
    return true;
}

QString PageForm::page(QStringView sheet, const QStringList &values) const
{
    const QStringView text = m_tree.text();
    const qsizetype begin = m_tree.sheet().utf16() - text.utf16();
    return text.first(begin).toString() + sheet + filled(m_tree.rest(), values);
}

// A negative size is none to the browser: it would go by that of the sheet, which has other values.
bool PageForm::mayStand(const QStringList &values) const
{
    for (qsizetype i = 0; i < values.size(); ++i) {
        if (!isNumber(values[i]) || (m_sizes.contains(i) && values[i].startsWith(u'-')))
            return false;
    }
    return true;
}

std::optional<PageForm::Step> PageForm::step(const QStringList &now, const QStringList &next) const
{
    if (!mayStand(next))
        return {};
    Step step;
    for (const PageText &text : m_texts) {
        const QString is = filled(text.text, now), willBe = filled(text.text, next);
        if (is != willBe)
            step.changes.append(dataChange(text.path, is, willBe));
    }
    step.rules = filled(m_rules, next);
    return step;
}

} // namespace quillmere
