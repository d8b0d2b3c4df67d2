#include "Fuzz.h"
#include "outline/OutlineChecks.h"
#include "stage/Arrange.h"
#include "stage/ElementChanges.h"
#include "stage/SelectionAfter.h"
#include "stage/Snapping.h"

using namespace quillmere;

namespace {

// A window as one writes it: each byte begins a block or ends one, or says how they stand.
QString windowOf(const QByteArray &bytes)
{
    QString text = QStringLiteral("<widget class=\"window\" name=\"w\">\r\n<children>\r\n");
    int depth = 0;
    for (const char byte : bytes.first(std::min<qsizetype>(bytes.size(), 40))) {
        const int what = uchar(byte) % 8, number = uchar(byte) / 8;
        const QString rect = QStringLiteral("<rect>[%1, %2,+7,8]</rect>").arg(number).arg(-number);
        const QString name = QStringLiteral("<widget name=\"n%1\">").arg(number % 5);
        if (what < 2)
            text += (what == 0 ? u"  " : u"") + name + rect + u"<children>";
        else if (what < 5)
            text += (what == 2 ? name + rect + u"</widget>"
                               : QString(u"<style class=\"s\">\r\n  " + rect + u"</style>"));
        else if (what == 5)
            text += QStringLiteral("\r\n  ");
        else if (what == 6)
            text += QStringLiteral("<!-- c -->");
        else if (depth > 0)
            text += QStringLiteral("</children></widget>");
        depth += what < 2 ? 1 : what == 7 && depth > 0 ? -1 : 0;
    }
    return text + QStringLiteral("</children></widget>").repeated(depth + 1);
}

QString nameOf(const Outline &outline, int row)
{
    const auto name = outline.nameAttribute(outline.blocks()[size_t(row)]);
    return name ? outline.at(name->value).toString() : QString();
}

QStringList namesOf(const Outline &outline, const QList<int> &rows)
{
    QStringList names;
    for (const int row : rows)
        names.append(nameOf(outline, row));
    return names;
}

QList<int> allRows(const Outline &outline)
{
    QList<int> rows;
    for (size_t row = 0; row < outline.blocks().size(); ++row)
        rows.append(int(row));
    return rows;
}

Outline after(const Outline &outline, const QList<TextChange> &changes)
{
    qsizetype end = -1;
    for (const TextChange &change : changes) {
        check(change.start > end && change.length >= 0 &&
                  change.start + change.length <= outline.text().size() &&
                  (change.length > 0 || !change.text.isEmpty()),
              "changes are in the text and in order", outline.text());
        end = change.start + change.length;
    }
    const Outline changed(withChanges(outline.text(), changes));
    same(twins::brokenPromise(changed), QString(), "the outline after an edit");
    return changed;
}

// What any edit keeps. `isWhole`: all that begins in the text ends there.
void compare(const Outline &before, const Outline &changed, const Edited &edited, bool isWhole)
{
    for (const int row : edited.selection)
        check(row >= 0 && size_t(row) < changed.blocks().size(), "selected rows are there", before.text());
    for (const QList<int> &rows : {selectionAfter(before, allRows(before), changed, edited.changes),
                                   selectionAfter(before, allRows(before), changed)}) {
        QList<int> once = rows;
        std::sort(once.begin(), once.end());
        once.erase(std::unique(once.begin(), once.end()), once.end());
        check(once.size() == rows.size() && (once.isEmpty() || once.first() >= 0) &&
                  (once.isEmpty() || size_t(once.last()) < changed.blocks().size()),
              "no row stands for two blocks", before.text());
    }
    for (const Element &element : changed.elements())
        check(!isWhole || element.end == End::Tag || element.end == End::Self, "what was whole stays whole",
              changed.text());
}

Outline places(const Outline &outline, const QList<int> &rows, int way)
{
    const Snapping drag(outline, rows, {QSize(64, 48), way % 3, {way}, {9}, {}});
    const Snapped snapped = way % 2 == 0
                                ? drag.moved(QPointF(way, 64 - way), 6, way % 5 == 0)
                                : drag.sized(Qt::Edges(way % 16), QPointF(way, way), 6, way % 3 == 0);
    QList<BlockBox> boxes = snapped.boxes;
    boxes += arranged(Arrange(way % 13), outline, rows, [](const QString &) { return QSize(5, 6); });
    const Outline changed = after(outline, rectChanges(outline, boxes));
    QList<Box> wanted;
    for (const int row : allRows(outline))
        wanted.append(rectOfRow(outline, row).value_or(RectValue()).box);
    std::reverse(boxes.begin(), boxes.end()); // the first one counts
    for (BlockBox &box : boxes) {
        const qint64 most = std::numeric_limits<qint32>::max();
        for (qint64 *number : {&box.box.x, &box.box.y, &box.box.w, &box.box.h})
            *number = std::clamp(*number, -most, most);
        if (rectOfRow(outline, box.block))
            wanted[box.block] = box.box;
    }
    check(changed.blocks().size() == outline.blocks().size(), "rects make no blocks", outline.text());
    for (const int row : allRows(outline))
        check(rectOfRow(changed, row).value_or(RectValue()).box == wanted[row], "rects are as asked for",
              outline.text());
    return changed;
}

// One edit after the other: the command, and which blocks.
void edit(Outline outline, const QByteArray &commands, const QString &clip, bool isWhole)
{
    for (qsizetype i = 0; i + 1 < std::min<qsizetype>(commands.size(), 12) && outline.text().size() < 6000;
         i += 2) {
        const int command = uchar(commands[i]), which = uchar(commands[i + 1]);
        QList<int> rows;
        for (int row = which % 5; row < int(outline.blocks().size()); row += 1 + which / 5 % 7)
            rows.prepend(row);
        rows.append(which);
        Edited edited;
        const int kind = command % 8;
        const Box box = {which, -which, 1LL << which % 40, 5};
        if (kind == 0) {
            outline = places(outline, rows, command / 8 + which);
            continue;
        }
        if (kind == 1)
            edited = deleted(outline, rows);
        else if (kind == 2)
            edited = duplicated(outline, rows);
        else if (kind <= 4)
            edited = moved(outline, rows, kind == 3 ? Toward::Front : Toward::Back);
        else if (kind == 5)
            edited = pasted(outline, rows, clip);
        else if (kind == 6)
            edited = pasted(outline, {}, copied(outline, rows));
        else
            edited = inserted(outline, NewBlock(which % 5), parentForNew(outline, rows), box);
        const Outline changed = after(outline, edited.changes);
        compare(outline, changed, edited, isWhole);
        const QStringList old = namesOf(outline, allRows(outline));
        QStringList now = namesOf(changed, allRows(changed));
        if (isWhole && kind == 1)
            same(namesOf(changed, selectionAfter(outline, allRows(outline), changed, edited.changes))
                     .join(u' '),
                 now.join(u' '), "what is not deleted stays");
        if (isWhole && (kind == 3 || kind == 4)) {
            now.sort();
            QStringList sorted = old;
            sorted.sort();
            same(now.join(u' '), sorted.join(u' '), "moved blocks are the same blocks");
            if (!edited.changes.isEmpty())
                same(namesOf(changed, edited.selection).join(u' '),
                     namesOf(outline, outermost(outline, rows)).join(u' '), "moved blocks are selected");
        }
        for (const QString &name : namesOf(changed, edited.selection)) {
            const bool isNew = kind != 3 && kind != 4 && !name.isEmpty();
            check(!isWhole || !isNew || (!old.contains(name, Qt::CaseInsensitive) && now.count(name) == 1),
                  "names that come in are free", changed.text());
        }
        outline = changed;
    }
}

} // namespace

// Edits in the picture, on any text and on a window as one writes it: changes are in the text and in order,
// rects are read again as they were asked for, what was whole stays whole, what comes in has names that were
// free. The parts are the text, the edits, what is pasted (or how it is made), and how the window is made.
void fuzz(const Input &input)
{
    edit(Outline(input.text(0)), input.bytes(1), input.text(2), false);
    edit(Outline(windowOf(input.bytes(3))), input.bytes(1), windowOf(input.bytes(2)), true);
}
