#include "browser/PagePatch.h"

#include <QJsonObject>

#include <algorithm>
#include <limits>

namespace quillmere {

namespace {

using Node = PageTree::Node;
using Kind = PageTree::Kind;

constexpr size_t kMostNewNodes = 2000; // more of them are written faster than made one by one

// The text of a text, comment or value in the document. Nothing where the browser would have to look up what
// an "&" stands for.
std::optional<QString> shown(QStringView source, bool holdsTags = false)
{
    if (source.contains(u'&'))
        return {};
    QString text = source.toString();
    for (qsizetype tag = 0; holdsTags && (tag = text.indexOf(u'<', tag)) >= 0;)
        text.remove(tag, text.indexOf(u'>', tag) + 1 - tag);
    return text;
}

std::optional<QString> shown(const PageTree &tree, const Node &node)
{
    if (node.kind == Kind::Comment)
        return tree.source(node).toString();
    return shown(tree.source(node), node.holdsTags);
}

std::optional<QJsonArray> pairs(const std::vector<PageTree::Attribute> &attributes, size_t from)
{
    QJsonArray all;
    for (size_t i = from; i < attributes.size(); ++i) {
        const std::optional<QString> value = shown(attributes[i].value);
        if (!value)
            return {};
        all.append(QJsonArray{attributes[i].name.toString().toLower(), *value});
    }
    return all;
}

class Comparison
{
public:
    Comparison(const PageTree &before, const PageTree &after)
        : m_before(before), m_after(after), m_old(before.nodes()), m_new(after.nodes())
    {
    }

    std::optional<QJsonArray> changes();

private:
    bool isSame(const Node &a, const Node &b) const
    {
        return a.kind == b.kind && a.depth == b.depth && m_before.source(a) == m_after.source(b);
    }
    void findDifference();
    bool isSameShape() const;
    bool changeInPlace();
    bool changeNode(const Node &before, const Node &after, const QJsonArray &path);
    bool changeAttributes(const Node &before, const Node &after, const QJsonArray &path);
    void widen();
    bool changeChildren();
    std::optional<QJsonArray> forest(size_t &at, size_t end, int depth) const;

    const PageTree &m_before, &m_after;
    const std::vector<Node> &m_old, &m_new;
    size_t m_first = 0, m_oldEnd = 0, m_newEnd = 0; // what differs
    int m_depth = 0;                                // once widened, of all the trees that differ
    QJsonArray m_changes;
};

void Comparison::findDifference()
{
    const size_t most = std::min(m_old.size(), m_new.size());
    while (m_first < most && isSame(m_old[m_first], m_new[m_first]))
        ++m_first;
    m_oldEnd = m_old.size();
    m_newEnd = m_new.size();
    while (m_oldEnd > m_first && m_newEnd > m_first && isSame(m_old[m_oldEnd - 1], m_new[m_newEnd - 1])) {
        --m_oldEnd;
        --m_newEnd;
    }
}

bool Comparison::isSameShape() const
{
    if (m_oldEnd != m_newEnd)
        return false;
    for (size_t i = m_first; i < m_oldEnd; ++i) {
        if (m_old[i].kind != m_new[i].kind || m_old[i].depth != m_new[i].depth ||
            (m_old[i].kind == Kind::Element && m_before.name(m_old[i]) != m_after.name(m_new[i])))
            return false;
    }
    return true;
}

// The numbers of the children that lead to each node in turn.
class Path
{
public:
    void goTo(const Node &node)
    {
        const size_t length = size_t(node.depth) + 1;
        if (m_numbers.size() < length)
            m_numbers.push_back(0);
        else {
            m_numbers.resize(length);
            ++m_numbers.back();
        }
    }
    QJsonArray path(size_t length) const
    {
        QJsonArray path{1}; // the body
        for (size_t i = 0; i < length; ++i)
            path.append(m_numbers[i]);
        return path;
    }
    QJsonArray path() const { return path(m_numbers.size()); }
    int numberAt(size_t depth) const { return depth < m_numbers.size() ? m_numbers[depth] : -1; }

private:
    std::vector<int> m_numbers;
};

bool Comparison::changeInPlace()
{
    Path path;
    for (size_t i = 0; i < m_oldEnd; ++i) {
        path.goTo(m_old[i]);
        if (i >= m_first && !isSame(m_old[i], m_new[i]) && !changeNode(m_old[i], m_new[i], path.path()))
            return false;
    }
    return true;
}

bool Comparison::changeNode(const Node &before, const Node &after, const QJsonArray &path)
{
    if (before.kind == Kind::Element)
        return changeAttributes(before, after, path);
    const std::optional<QString> is = shown(m_before, before), willBe = shown(m_after, after);
    if (!is || !willBe)
        return false;
    m_changes.append(dataChange(path, *is, *willBe));
    return true;
}

// The order of attributes counts, too.
bool Comparison::changeAttributes(const Node &before, const Node &after, const QJsonArray &path)
{
    const auto is = m_before.attributes(before), willBe = m_after.attributes(after);
    size_t kept = 0;
    while (kept < is.size() && kept < willBe.size() && is[kept].name == willBe[kept].name &&
           is[kept].value == willBe[kept].value)
        ++kept;
    const std::optional<QJsonArray> values = pairs(willBe, kept);
    if (values)
        m_changes.append(QJsonArray{QStringLiteral("attributes"), path, int(kept), *values});
    return values.has_value();
}

// Until whole trees under one element differ.
void Comparison::widen()
{
    m_depth = std::numeric_limits<int>::max();
    for (size_t i = m_first; i < m_oldEnd; ++i)
        m_depth = std::min(m_depth, m_old[i].depth);
    for (size_t i = m_first; i < m_newEnd; ++i)
        m_depth = std::min(m_depth, m_new[i].depth);
    const auto beginsBelow = [this](const std::vector<Node> &nodes, size_t end) {
        return m_first < end && nodes[m_first].depth > m_depth;
    };
    while (beginsBelow(m_old, m_oldEnd) || beginsBelow(m_new, m_newEnd))
        --m_first;
    while (m_oldEnd < m_old.size() && m_old[m_oldEnd].depth > m_depth) {
        ++m_oldEnd;
        ++m_newEnd;
    }
}

std::optional<QJsonArray> Comparison::forest(size_t &at, size_t end, int depth) const
{
    QJsonArray trees;
    while (at < end && m_new[at].depth == depth) {
        const Node &node = m_new[at++];
        if (node.kind == Kind::Element) {
            const auto values = pairs(m_after.attributes(node), 0);
            const auto children = forest(at, end, depth + 1);
            if (!values || !children)
                return {};
            trees.append(QJsonArray{m_after.name(node), *values, *children});
            continue;
        }
        const std::optional<QString> text = shown(m_after, node);
        if (!text)
            return {};
        if (node.kind == Kind::Text)
            trees.append(*text);
        else
            trees.append(QJsonObject{{QStringLiteral("comment"), *text}});
    }
    return trees;
}

bool Comparison::changeChildren()
{
    widen();
    if (m_newEnd - m_first > kMostNewNodes)
        return false;
    Path path;
    for (size_t i = 0; i < m_first; ++i)
        path.goTo(m_old[i]);
    const int first = path.numberAt(size_t(m_depth)) + 1;
    int gone = 0;
    int now = first;
    for (size_t i = m_first; i < m_old.size() && m_old[i].depth >= m_depth; ++i) {
        now += m_old[i].depth == m_depth;
        gone += i < m_oldEnd && m_old[i].depth == m_depth;
    }
    size_t at = m_first;
    const std::optional<QJsonArray> trees = forest(at, m_newEnd, m_depth);
    if (trees)
        m_changes.append(
            QJsonArray{QStringLiteral("children"), path.path(size_t(m_depth)), now, first, gone, *trees});
    return trees.has_value();
}

std::optional<QJsonArray> Comparison::changes()
{
    if (m_before.sheet() != m_after.sheet())
        m_changes.append(dataChange({0, 1, 0}, m_before.sheet(), m_after.sheet()));
    findDifference();
    if (m_first == m_oldEnd && m_first == m_newEnd)
        return m_changes;
    const bool done = isSameShape() ? changeInPlace() : changeChildren();
    return done ? std::optional(m_changes) : std::nullopt;
}

} // namespace

QJsonArray dataChange(const QJsonArray &path, QStringView before, QStringView after)
{
    const auto [left, right] = std::ranges::mismatch(before, after);
    qsizetype first = left - before.begin();
    if (first > 0 && before[first - 1].isHighSurrogate())
        --first;
    qsizetype same = 0;
    const qsizetype most = std::min(before.size(), after.size()) - first;
    while (same < most && before[before.size() - 1 - same] == after[after.size() - 1 - same])
        ++same;
    if (same > 0 && before[before.size() - same].isLowSurrogate())
        --same;
    return {QStringLiteral("data"),
            path,
            before.size(),
            first,
            before.size() - first - same,
            after.sliced(first, after.size() - first - same).toString()};
}

std::optional<QJsonArray> changesBetween(const PageTree &before, const PageTree &after)
{
    return Comparison(before, after).changes();
}

std::optional<std::vector<PageText>> textsWith(const PageTree &tree, QChar unit)
{
    std::vector<PageText> found;
    Path path;
    for (const Node &node : tree.nodes()) {
        path.goTo(node);
        if (!tree.source(node).contains(unit))
            continue;
        const std::optional<QString> text = node.kind == Kind::Element ? std::nullopt : shown(tree, node);
        if (!text)
            return {};
        found.push_back({path.path(), *text});
    }
    return found;
}

} // namespace quillmere
