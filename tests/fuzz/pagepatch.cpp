#include "browser/PagePatch.h"
#include "Fuzz.h"

#include <QJsonObject>
#include <QRandomGenerator>

#include <memory>

namespace {

using Tree = PageTree;

// A document as the browser holds it.
struct Node
{
    QString name, data; // of an element; of the others
    bool isComment = false;
    QList<std::pair<QString, QString>> attributes;
    std::vector<std::unique_ptr<Node>> children;
};
using Nodes = std::vector<std::unique_ptr<Node>>;

void setAll(Node &node, const QJsonArray &pairs)
{
    for (const QJsonValue &pair : pairs)
        node.attributes.append({pair[0].toString(), pair[1].toString()});
}

QString textOf(QString text)
{
    for (qsizetype tag = text.indexOf(u"</"); tag >= 0; tag = text.indexOf(u"</"))
        text.remove(tag, text.indexOf(u'>', tag) + 1 - tag);
    return text;
}

Nodes nodesOf(const Tree &tree, size_t &at, int depth)
{
    Nodes nodes;
    while (at < tree.nodes().size() && tree.nodes()[at].depth == depth) {
        const Tree::Node &from = tree.nodes()[at++];
        nodes.push_back(std::make_unique<Node>());
        Node &node = *nodes.back();
        const QString source = tree.source(from).toString();
        node.isComment = from.kind == Tree::Kind::Comment;
        if (from.kind != Tree::Kind::Element) {
            node.data = node.isComment ? source : textOf(source);
            continue;
        }
        node.name = tree.name(from);
        for (const Tree::Attribute &attribute : tree.attributes(from))
            node.attributes.append({attribute.name.toString().toLower(), attribute.value.toString()});
        node.children = nodesOf(tree, at, depth + 1);
    }
    return nodes;
}

Nodes nodesOf(const QJsonArray &trees)
{
    Nodes nodes;
    for (const QJsonValue &tree : trees) {
        nodes.push_back(std::make_unique<Node>());
        Node &node = *nodes.back();
        node.isComment = tree.isObject();
        if (!tree.isArray()) {
            node.data = node.isComment ? tree[u"comment"_s].toString() : tree.toString();
            continue;
        }
        node.name = tree[0].toString();
        setAll(node, tree[1].toArray());
        node.children = nodesOf(tree[2].toArray());
    }
    return nodes;
}

Node rootOf(const Tree &tree)
{
    Node root;
    for (const char *name : {"head", "body"}) {
        root.children.push_back(std::make_unique<Node>());
        root.children.back()->name = QLatin1String(name);
    }
    Nodes &head = root.children[0]->children;
    head.push_back(std::make_unique<Node>());
    head.push_back(std::make_unique<Node>());
    head[1]->children.push_back(std::make_unique<Node>());
    head[1]->children[0]->data = tree.sheet().toString();
    size_t at = 0;
    root.children[1]->children = nodesOf(tree, at, 0);
    check(at == tree.nodes().size(), "no node is deeper than below the one before");
    return root;
}

QString asText(const Node &node, int depth = 0)
{
    QString text = QString(depth, u' ') + node.name + (node.isComment ? u'!' : u' ') + node.data;
    for (const auto &[name, value] : node.attributes)
        text += u'[' + name + u'=' + value + u']';
    text += u'\n';
    for (const auto &child : node.children)
        text += asText(*child, depth + 1);
    return text;
}

void apply(Node &node, const QJsonArray &change)
{
    const QString kind = change[0].toString();
    if (kind == u"data") {
        check(node.name.isEmpty() && node.data.size() == change[2].toInteger(), "finds the text");
        const QString text = change[5].toString();
        check(text.isEmpty() || (!text.front().isLowSurrogate() && !text.back().isHighSurrogate()),
              "cuts no letter in two", text);
        node.data.replace(change[3].toInteger(), change[4].toInteger(), text);
    } else if (kind == u"attributes") {
        node.attributes.resize(change[2].toInteger());
        setAll(node, change[3].toArray());
    } else {
        check(qint64(node.children.size()) == change[2].toInteger(), "finds the element");
        const auto first = node.children.begin() + change[3].toInteger();
        const auto place = node.children.erase(first, first + change[4].toInteger());
        Nodes fresh = nodesOf(change[5].toArray());
        node.children.insert(place, std::make_move_iterator(fresh.begin()),
                             std::make_move_iterator(fresh.end()));
    }
}

QString pageOf(const QString &sheet, const QString &body)
{
    return u"<html><head><title>Tes Skin</title><style>" + sheet + u"</style></head><body>" + body +
           u"<body></html>";
}

// What is taken over from another page is what would have been read.
std::optional<Tree> readLike(const QString &page, const std::optional<Tree> &like)
{
    std::optional<Tree> plain = Tree::read(page);
    const std::optional<Tree> quick = like ? Tree::read(page, &*like) : Tree::read(page);
    check(quick.has_value() == plain.has_value(), "reads as much as without the other page", page);
    if (quick) {
        check(quick->nodes() == plain->nodes(), "reads the same as without the other page", page);
        same(quick->sheet().toString(), plain->sheet().toString(), "the same sheet");
    }
    return plain;
}

void readOneAfterAnother(const QString &sheet, QString body, std::optional<Tree> like)
{
    constexpr int kEdits = 6;
    QRandomGenerator random(quint32(qHash(body)));
    const auto number = [&random](qsizetype most) { return qsizetype(random.bounded(qint64(most) + 1)); };
    for (int edit = 0; edit < kEdits; ++edit) {
        const qsizetype from = number(body.size()), at = number(body.size());
        if (edit % 2 == 0)
            body.insert(at, body.sliced(from, std::min(body.size() - from, number(60))));
        else
            body.remove(at, number(30));
        if (std::optional<Tree> next = readLike(pageOf(sheet.first(number(sheet.size())), body), like))
            like = std::move(next);
    }
}

} // namespace

// The changes between two pages, made in the document of the one, give that of the other; a page that is the
// same has none.
void fuzz(const Input &input)
{
    const auto before = Tree::read(pageOf(input.text(0), input.text(1)));
    const auto after = readLike(pageOf(input.text(2), input.text(3)), before);
    readOneAfterAnother(input.text(2), input.text(3), after);
    if (before)
        check(changesBetween(*before, *before) == QJsonArray(), "nothing to change");
    const auto changes = before && after ? changesBetween(*before, *after) : std::nullopt;
    if (!changes)
        return;
    Node root = rootOf(*before);
    std::vector<Node *> places;
    for (const QJsonValue &change : *changes) {
        Node *place = &root;
        for (const QJsonValue &number : change[1].toArray()) {
            check(size_t(number.toInt()) < place->children.size(), "finds the place");
            place = place->children[size_t(number.toInt())].get();
        }
        places.push_back(place);
    }
    for (size_t i = 0; i < places.size(); ++i)
        apply(*places[i], (*changes)[qsizetype(i)].toArray());
    same(asText(root), asText(rootOf(*after)), "the document of the page");
}
