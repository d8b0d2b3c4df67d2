#include "browser/PageTree.h"

#include <algorithm>
#include <array>

namespace quillmere {

namespace {

constexpr QStringView kHead = u"<html><head><title>Tes Skin</title><style>";
constexpr QStringView kNeck = u"</style></head><body>";
constexpr QStringView kTail = u"<body></html>";
constexpr int kDeepest = 200; // the browser nests some 500 elements, then no more
constexpr size_t kMostAttributes = 30;
constexpr qsizetype kLongestText = 60000; // it cuts texts of the body at 65,536

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

// The text with the line breaks of a document; nothing where it holds what the browser puts something else
// for.
std::optional<QString> withPlainLines(const QString &page)
{
    QString text(page.size(), Qt::Uninitialized);
    QChar *out = text.data();
    const QChar *end = page.constData() + page.size();
    for (const QChar *in = page.constData(); in != end; ++in) {
        if (in->isNull() || in->isLowSurrogate())
            return {};
        if (in->isHighSurrogate()) {
            if (in + 1 == end || !in[1].isLowSurrogate())
                return {};
            *out++ = *in++;
        }
        const bool breaks = *in == u'\r';
        if (breaks && in + 1 != end && in[1] == u'\n')
            ++in;
        *out++ = breaks ? QChar(u'\n') : *in;
    }
    text.truncate(out - text.constData());
    return text;
}

} // namespace

// Reads as the browser does, or gives up.
class PageTreeReader
{
public:
    explicit PageTreeReader(PageTree &tree) : m_tree(tree), m_text(tree.m_text) {}

    bool read();
    // From behind the name: to behind the closing ">"; -1 where it is no plain tag.
    static qsizetype attributes(QStringView text, qsizetype at, std::vector<PageTree::Attribute> &found);
    static qsizetype nameEnd(QStringView text, qsizetype at);

private:
    bool body();
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
};

bool PageTreeReader::read()
{
    if (!m_text.startsWith(kHead) || !m_text.endsWith(kTail))
        return false;
    m_tree.m_sheetBegin = kHead.size();
    m_tree.m_sheetEnd = m_text.indexOf(u"</style", kHead.size(), Qt::CaseInsensitive);
    m_end = m_text.size() - kTail.size();
    if (m_tree.m_sheetEnd <= m_tree.m_sheetBegin || !m_text.sliced(m_tree.m_sheetEnd).startsWith(kNeck))
        return false;
    m_at = m_tree.m_sheetEnd + kNeck.size();
    return m_at <= m_end && body();
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

std::optional<PageTree> PageTree::read(const QString &page)
{
    std::optional<QString> text = withPlainLines(page);
    if (!text)
        return {};
    PageTree tree;
    tree.m_text = std::move(*text);
    if (!PageTreeReader(tree).read())
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
