#include "Fuzz.h"
#include "browser/PageTree.h"
#include "browser/PictureUrls.h"
#include "outline/Values.h"
#include "receiver/ReceiverPage.h"

#include <algorithm>

// What blocks the page shows and where, found the slow way: by row, empty for one that is not drawn.
static QStringList placesIn(const Outline &outline)
{
    QStringList places;
    const auto boxes = placesOnScreen(outline);
    for (size_t row = 0; row < boxes.size(); ++row) {
        bool isDrawn = boxes[row] && boxes[row]->w > 0 && boxes[row]->h > 0;
        for (qint32 block = outline.blocks()[row]; isDrawn && block >= 0;
             block = outline.blockOf(outline.element(block).parent)) {
            const qint32 state = outline.property(block, Kind::State);
            const bool hides =
                state >= 0 && outline.valueOf(state).compare(u"hide", Qt::CaseInsensitive) == 0;
            isDrawn = !hides && outline.element(block).kind != Kind::Style;
        }
        if (!isDrawn)
            continue;
        // Far away they are cut.
        const auto cut = [](qint64 at) { return std::clamp<qint64>(at, -(1 << 20), 1 << 20); };
        const Box &box = *boxes[row];
        const qint64 x = cut(box.x), y = cut(box.y), w = cut(box.x + box.w) - x, h = cut(box.y + box.h) - y;
        if (w > 0 && h > 0)
            places.append(
                QStringLiteral("left:%1px;top:%2px;width:%3px;height:%4px;").arg(x).arg(y).arg(w).arg(h));
    }
    return places;
}

// Whatever stands in a window and its theme, the page is a plain one: nothing of it is markup, an address or
// a rule. Its blocks are those that the outline knows, at their places, and in their order.
void fuzz(const Input &input)
{
    const Outline outline(input.text(0));
    const QString hostile = input.text(1);
    ReceiverTheme theme;
    theme.picture = [&](const QString &id) { return QString(u"/t/" + id + hostile); };
    theme.sizeOf = [](const QString &path) { return path.size() % 2 ? QSize(3, 4) : QSize(); };
    theme.colour = [&](const QString &name) { return name.size() % 2 ? hostile : QString(); };
    theme.font = [&](const QString &name) { return ReceiverTheme::Font{{}, name + hostile, hostile}; };
    theme.translation = [&](const QString &source) { return source.size() % 2 ? hostile : QString(); };
    ReceiverOptions options;
    options.cutsChildren = false;
    const auto tree = PageTree::read(withPictureUrls(receiverPage(outline, theme, options), {}));
    check(tree.has_value(), "the page is plain", withPictureUrls(receiverPage(outline, theme, options), {}));

    QStringList drawn;
    for (const PageTree::Node &node : tree->nodes()) {
        check(node.depth < 4, "nothing is deeper than a text", outline.text());
        if (node.depth == 0)
            drawn.append(tree->attributes(node).front().value.toString());
    }
    const QStringList places = placesIn(outline);
    check(places.size() == drawn.size(), "what is drawn are the blocks", outline.text());
    for (qsizetype i = 0; i < places.size(); ++i)
        check(drawn[i].startsWith(places[i]), "every block is drawn at its place", outline.text());
}
