#pragma once

#include <QString>

#include <optional>
#include <vector>

namespace quillmere {

// The document that the browser makes of a page, as far as this can be told with certainty: one sheet of
// style, and a body of texts, comments and elements that no rule of the language of pages moves, closes or
// nests by itself.
class PageTree
{
public:
    enum class Kind { Element, Text, Comment };
    struct Node
    {
        Kind kind;
        int depth; // 0 for what stands in the body itself
        qsizetype begin, end;
        bool holdsTags = false; // closing tags that close nothing: the browser skips them in a text

        bool operator==(const Node &) const = default;
    };
    struct Attribute
    {
        QStringView name, value; // as they stand there
    };

    // Nothing where the page holds anything else, is of another form, or is broken in a way that decides how
    // the rest is read. Time is linear in the page. What it has in common with `like`, another page or one
    // that has been changed to it, is not read again.
    static std::optional<PageTree> read(const QString &page, const PageTree *like = nullptr);

    // The page, with "\n" as the only line break, as the document has it.
    QStringView text() const { return m_text; }
    // The part of it that is the sheet.
    QStringView sheet() const;
    // What stands behind the sheet.
    QStringView rest() const;
    // In the order of the text, each element before what it holds: with their depths that is the tree.
    const std::vector<Node> &nodes() const { return m_nodes; }
    // What stands there: all of an opening tag, a text, or the inside of a comment.
    QStringView source(const Node &node) const
    {
        return QStringView(m_text).sliced(node.begin, node.end - node.begin);
    }
    // Of an element, in lower case.
    QString name(const Node &node) const;
    std::vector<Attribute> attributes(const Node &node) const;

private:
    friend class PageTreeReader;

    QString m_text;
    qsizetype m_sheetBegin = 0, m_sheetEnd = 0, m_bodyBegin = 0;
    std::vector<Node> m_nodes;
};

} // namespace quillmere
