#include "Fuzz.h"
#include "outline/CaretPlace.h"
#include "outline/OutlineChecks.h"

// Ranges lie in the text and nest, and blocks are those of the cutting. An edit of a value changes nothing
// else, and the value is found again where it was put. Carets stand in what is found for them. The parts are
// the text, which value, and what is put there.
void fuzz(const Input &input)
{
    const Outline outline(input.text(0));
    same(twins::brokenPromise(outline), QString(), "the outline of any text");
    for (qsizetype at = input.choice(1, 8); at <= outline.text().size(); at += 1 + outline.text().size() / 40)
        check(caretPlace(outline, at).word.touches(at), "the word is at the caret", outline.text());
    check(placesOnScreen(outline).size() == outline.blocks().size(), "a place a block", outline.text());

    QList<qint32> values;
    for (qint32 i = 0; i < qint32(outline.elements().size()); ++i) {
        if (isValue(outline.element(i).kind) && outline.element(i).end == End::Tag)
            values.append(i);
    }
    if (values.isEmpty())
        return;
    const qint32 index = values[input.choice(1, int(values.size()))];
    QString put = input.text(2);
    put.remove(u'<').remove(u'>').remove(u'"').remove(u'-'); // what ends or begins something
    const Range content = outline.element(index).content();
    QString text = outline.text();
    text.replace(content.start, content.size(), put);
    const Outline after(text);
    same(twins::brokenPromise(after), QString(), "the outline after an edit");
    if (outline.at(content).contains(u'<') || outline.at(content).contains(u'-'))
        return;
    check(after.elements().size() == outline.elements().size(), "no element comes or goes", text);
    same(after.at(after.element(index).content()).toString(), put, "the value is found again");
    same(after.text().first(content.start) + after.text().sliced(content.start + put.size()),
         outline.text().first(content.start) + outline.text().sliced(content.end), "all else stays");
    const qint32 moved = qint32(put.size()) - content.size();
    for (size_t i = 0; i < after.elements().size(); ++i) {
        const Element &before = outline.elements()[i], &element = after.elements()[i];
        check(element.tag.start == before.tag.start + (before.tag.start > content.start ? moved : 0) &&
                  element.parent == before.parent && element.block == before.block,
              "other elements stay what they are", text);
    }
}
