#include "browser/PageTree.h"

#include "browser/PageLines.h"
#include "markup/Matching.h"

#include <algorithm>

namespace quillmere {

namespace {

constexpr QStringView kHead = u"<html><head><title>Tes Skin</title><style>";
constexpr QStringView kNeck = u"</style></head><body>";
constexpr QStringView kTail = u"<body></html>";
constexpr int kDeepest = 200; // the browser nests some 500 elements, then no more
constexpr size_t kMostAttributes = 30;
constexpr qsizetype kLongestText = 60000; // it cuts texts of the body at 65,536
constexpr int kMostTries = 32;            // to go on as another page does

bool isSpace(QChar unit)
{
    return unit == u' ' || unit == u'\n' || unit == u'\t' || unit == u'\f';
}

bool isLetter(QChar unit)
{
    const char16_t lower = unit.unicode() | 0x20;
    return lower >= u'a' && lower <= u'z';
}

bool isNameUnit(QChar unit)
{
    return isLetter(unit) || (unit >= u'0' && unit <= u'9') || unit == u'_';
}

bool isOneOf(QStringView name, std::initializer_list<QStringView> names)
{
    return std::ranges::any_of(
        names, [name](QStringView other) { return name.compare(other, Qt::CaseInsensitive) == 0; });
}

bool isDiv(QStringView name)
{
    return isOneOf(name, {u"div"});
}

// Elements that are read by the plainest rule there is. The language of pages has no name with "_" in it.
bool isPlainElement(QStringView name)
{
    return name.contains(u'_') ||
           isOneOf(name, {u"span", u"interface", u"widget", u"property", u"children", u"signal", u"state",
                          u"rect", u"string", u"mode", u"imgs", u"alignment", u"format", u"backcolor",
                          u"forecolor", u"press"});
}

// Attributes by which an element does more than look.
bool doesThings(QStringView attribute)
{
    return attribute.startsWith(u"on", Qt::CaseInsensitive) ||
           isOneOf(attribute, {u"is", u"autofocus", u"contenteditable", u"popover", u"slot", u"nonce",
                               u"tabindex", u"accesskey", u"draggable"});
}

} // namespace

// Reads as the browser does, or gives up.
class PageTreeReader
{
public:
    PageTreeReader(PageTree &tree, const PageTree *like) : m_tree(tree), m_text(tree.m_text), m_like(like) {}

    bool read();
    // From behind the name: to behind the closing ">"; -1 where it is no plain tag.
    static qsizetype attributes(QStringView text, qsizetype at, std::vector<PageTree::Attribute> &found);
    static qsizetype nameEnd(QStringView text, qsizetype at);

private:
    bool body();
    void beginAsBefore();
    bool endsAsBefore();
    bool text(qsizetype end);
    bool comment();
    bool openingTag();
    bool closingTag();
    void skipTag(qsizetype behind);
    void add(PageTree::Kind kind, qsizetype begin, qsizetype end);

    PageTree &m_tree;
    QStringView m_text;
    qsizetype m_at = 0, m_end = 0;
    std::vector<QStringView> m_open; // names
    std::vector<PageTree::Attribute> m_attributes;
    const PageTree *m_like;   // null where nothing more can be taken over
    qsizetype m_sameEnd = 0;  // from there on the other page ends as this one does
    qsizetype m_further = 0;  // what stands there in the other one stands here by so much further on
    int m_tries = kMostTries; // that are left
};

bool PageTreeReader::read()
{
    if (!m_text.startsWith(kHead) || !m_text.endsWith(kTail))
        return false;
    m_tree.m_sheetBegin = kHead.size();
    m_tree.m_sheetEnd = indexOfIgnoringCase(m_text, u"</style", kHead.size());
    m_end = m_text.size() - kTail.size();
    if (m_tree.m_sheetEnd <= m_tree.m_sheetBegin || !m_text.sliced(m_tree.m_sheetEnd).startsWith(kNeck))
        return false;
    m_tree.m_bodyBegin = m_at = m_tree.m_sheetEnd + kNeck.size();
    if (m_at > m_end)
        return false;
    if (m_like)
        beginAsBefore();
    return body();
}

// The names of the elements that a node stands in, the outermost first.
static std::vector<QStringView> namesAround(const PageTree &tree, size_t node)
{
    std::vector<QStringView> names(size_t(tree.nodes()[node].depth));
    for (size_t missing = names.size(); missing > 0;) {
        const PageTree::Node &before = tree.nodes()[--node];
        if (before.depth != int(missing) - 1)
            continue;
        const QStringView tag = tree.source(before);
        names[--missing] = tag.sliced(1, PageTreeReader::nameEnd(tag, 1) - 1);
    }
    return names;
}

// An element begins where nothing before it is open to be read in another way: what has been read up to the
// last one before the first difference is what would be read here.
void PageTreeReader::beginAsBefore()
{
    const QStringView is = QStringView(m_like->m_text).sliced(m_like->m_bodyBegin);
    const QStringView willBe = m_text.sliced(m_at);
    const qsizetype first = std::ranges::mismatch(is, willBe).in1 - is.begin();
    const qsizetype most = std::min(is.size(), willBe.size()) - first;
    qsizetype last = 0;
    while (last < most && is[is.size() - 1 - last] == willBe[willBe.size() - 1 - last])
        ++last;
    m_sameEnd = m_like->m_text.size() - last;
    m_further = m_text.size() - m_like->m_text.size();

    const auto &nodes = m_like->m_nodes;
    const qsizetype further = m_at - m_like->m_bodyBegin;
    const auto isBefore = [until = m_like->m_bodyBegin + first](const PageTree::Node &node) {
        return node.begin < until;
    };
    auto end = std::ranges::partition_point(nodes, isBefore);
    do {
        if (end == nodes.begin())
            return;
        --end;
    } while (end->kind != PageTree::Kind::Element);
    const size_t count = size_t(end - nodes.begin());
    m_open = namesAround(*m_like, count);
    m_at = end->begin + further;
    m_tree.m_nodes.reserve(nodes.size());
    m_tree.m_nodes.assign(nodes.begin(), end);
    for (PageTree::Node &node : m_tree.m_nodes) {
        node.begin += further;
        node.end += further;
    }
}

// At the "<" of an element: where the same one begins in the other page, in elements of the same names, all
// the rest is the same.
bool PageTreeReader::endsAsBefore()
{
    const qsizetype there = m_at - m_further;
    if (!m_like || there < m_sameEnd)
        return false;
    const auto &nodes = m_like->m_nodes;
    const auto rest = std::ranges::lower_bound(nodes, there, {}, &PageTree::Node::begin);
    const auto areSame = [](QStringView a, QStringView b) { return a.compare(b, Qt::CaseInsensitive) == 0; };
    if (rest == nodes.end() || rest->begin != there || rest->kind != PageTree::Kind::Element ||
        rest->depth != int(m_open.size()) ||
        !std::ranges::equal(namesAround(*m_like, size_t(rest - nodes.begin())), m_open, areSame)) {
        if (--m_tries == 0)
            m_like = nullptr;
        return false;
    }
    const size_t own = m_tree.m_nodes.size();
    m_tree.m_nodes.insert(m_tree.m_nodes.end(), rest, nodes.end());
    for (size_t node = own; node < m_tree.m_nodes.size(); ++node) {
        m_tree.m_nodes[node].begin += m_further;
        m_tree.m_nodes[node].end += m_further;
    }
    return true;
}

bool PageTreeReader::body()
{
    while (m_at < m_end) {
        const qsizetype tag = m_text.indexOf(u'<', m_at);
        if (tag > m_at) {
            if (!text(tag))
                return false;
            continue;
        }
        const QChar next = m_text[tag + 1]; // the tail follows
        if (next != u'!' && next != u'/' && endsAsBefore())
            return true;
        const bool good = next == u'!' ? comment() : next == u'/' ? closingTag() : openingTag();
        if (!good)
            return false;
    }
    return m_at == m_end;
}

void PageTreeReader::add(PageTree::Kind kind, qsizetype begin, qsizetype end)
{
    m_tree.m_nodes.push_back({kind, int(m_open.size()), begin, end});
}

// A text that goes on behind a tag that was skipped is one with what stands before.
bool PageTreeReader::text(qsizetype end)
{
    auto &nodes = m_tree.m_nodes;
    const bool goesOn = !nodes.empty() && nodes.back().kind == PageTree::Kind::Text &&
                        nodes.back().depth == int(m_open.size()) && nodes.back().end == m_at;
    if (goesOn)
        nodes.back().end = end;
    else
        add(PageTree::Kind::Text, m_at, end);
    m_at = end;
    return nodes.back().end - nodes.back().begin <= kLongestText;
}

bool PageTreeReader::comment()
{
    const qsizetype begin = m_at + 4;
    if (!m_text.sliced(m_at).startsWith(u"<!--"))
        return false;
    const qsizetype end = m_text.indexOf(u"-->", begin);
    const QStringView inside = end < 0 ? QStringView() : m_text.sliced(begin, end - begin);
    if (end < 0 || end + 3 > m_end || m_text[begin] == u'>' || m_text.sliced(begin).startsWith(u"->") ||
        inside.contains(u"--!>"))
        return false;
    add(PageTree::Kind::Comment, begin, end);
    m_at = end + 3;
    return true;
}

qsizetype PageTreeReader::nameEnd(QStringView text, qsizetype at)
{
    while (at < text.size() && isNameUnit(text[at]))
        ++at;
    return at;
}

qsizetype PageTreeReader::attributes(QStringView text, qsizetype at, std::vector<PageTree::Attribute> &found)
{
    found.clear();
    while (at < text.size()) {
        const qsizetype blank = at;
        while (at < text.size() && isSpace(text[at]))
            ++at;
        if (at < text.size() && text[at] == u'>')
            return at + 1;
        const qsizetype end = nameEnd(text, at);
        if (at == blank || end == at || !isLetter(text[at]) || end + 1 >= text.size() || text[end] != u'=' ||
            (text[end + 1] != u'"' && text[end + 1] != u'\''))
            return -1;
        const qsizetype close = text.indexOf(text[end + 1], end + 2);
        const QStringView name = text.sliced(at, end - at);
        const auto isSame = [name](const PageTree::Attribute &other) { return isOneOf(other.name, {name}); };
        if (close < 0 || found.size() == kMostAttributes || doesThings(name) ||
            std::ranges::any_of(found, isSame))
            return -1;
        found.push_back({name, text.sliced(end + 2, close - end - 2)});
        at = close + 1;
    }
    return -1;
}

bool PageTreeReader::openingTag()
{
    const qsizetype end = nameEnd(m_text, m_at + 1);
    const QStringView name = m_text.sliced(m_at + 1, end - m_at - 1);
    if (name.isEmpty() || !isLetter(name[0]) || !(isDiv(name) || isPlainElement(name)) ||
        m_open.size() >= kDeepest)
        return false;
    const qsizetype behind = attributes(m_text, end, m_attributes);
    if (behind < 0 || behind > m_end)
        return false;
    add(PageTree::Kind::Element, m_at, behind);
    m_open.push_back(name);
    m_at = behind;
    return true;
}

void PageTreeReader::skipTag(qsizetype behind)
{
    auto &nodes = m_tree.m_nodes;
    if (!nodes.empty() && nodes.back().kind == PageTree::Kind::Text && nodes.back().end == m_at &&
        nodes.back().depth == int(m_open.size())) {
        nodes.back().end = behind;
        nodes.back().holdsTags = true;
    }
    m_at = behind;
}

// A div closes whatever is open in it; another element is closed by its own tag where no div lies between. A
// style's own tag, of which the opening one has become a div's, closes nothing.
bool PageTreeReader::closingTag()
{
    const qsizetype end = nameEnd(m_text, m_at + 2);
    const QStringView name = m_text.sliced(m_at + 2, end - m_at - 2);
    qsizetype behind = end;
    while (behind < m_end && isSpace(m_text[behind]))
        ++behind;
    if (name.isEmpty() || !isLetter(name[0]) ||
        !(isDiv(name) || isPlainElement(name) || isOneOf(name, {u"style"})) || behind >= m_end ||
        m_text[behind] != u'>')
        return false;
    ++behind;
    for (size_t open = m_open.size(); open > 0; --open) {
        if (isOneOf(m_open[open - 1], {name})) {
            m_open.resize(open - 1);
            m_at = behind;
            return true;
        }
        if (!isDiv(name) && isDiv(m_open[open - 1]))
            break;
    }
    skipTag(behind);
    return true;
}

std::optional<PageTree> PageTree::read(const QString &page, const PageTree *like)
{
    std::optional<QString> text = withPlainLines(page);
    if (!text)
        return {};
    PageTree tree;
    tree.m_text = std::move(*text);
    if (!PageTreeReader(tree, like).read())
        return {};
    return tree;
}

QStringView PageTree::sheet() const
{
    return QStringView(m_text).sliced(m_sheetBegin, m_sheetEnd - m_sheetBegin);
}

QStringView PageTree::rest() const
{
    return QStringView(m_text).sliced(m_sheetEnd);
}

QString PageTree::name(const Node &node) const
{
    const QStringView tag = source(node);
    return tag.sliced(1, PageTreeReader::nameEnd(tag, 1) - 1).toString().toLower();
}

std::vector<PageTree::Attribute> PageTree::attributes(const Node &node) const
{
    std::vector<Attribute> found;
    const QStringView tag = source(node);
    PageTreeReader::attributes(tag, PageTreeReader::nameEnd(tag, 1), found);
    return found;
}

} // namespace quillmere
