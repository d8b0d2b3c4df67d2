#include "naming/Completion.h"
#include "Fuzz.h"

namespace {

// What stands in a text, without its places: a line an element.
QString shape(const Outline &outline)
{
    QString text;
    for (const Element &element : outline.elements())
        text += u"%1 %2 %3\n"_s.arg(int(element.kind)).arg(element.parent).arg(element.block);
    return text;
}

bool isInComment(const Outline &outline, qint32 caret)
{
    for (const Comment &comment : outline.comments()) {
        if (caret > comment.range.start && (caret < comment.range.end || !comment.closed))
            return true;
    }
    return false;
}

} // namespace

// What gives way to an entry lies in the text, around the caret, and nothing is offered in a comment. An
// entry taken in a closed value leaves all elements as they are. The parts are a text, the caret's place in
// it, and whether the text is the catalogue of windows.
void fuzz(const Input &input)
{
    const QString text = input.text(0);
    const Outline outline(text);
    const qint32 caret = input.choice(1, 256) * qint32(text.size()) / 255;
    const Completion found = completionAt(
        outline, caret, nullptr, input.choice(2, 2) == 0 ? FileRole::Window : FileRole::WindowCatalogue);
    check(found.of == Completion::Of::Nothing || !isInComment(outline, caret), "nothing in comments", text);
    check(found.word.start >= 0 && found.word.start <= caret && found.word.end >= caret &&
              found.word.end <= text.size(),
          "the word lies in the text, around the caret", text);
    QStringList entries = found.entries;
    if (found.of == Completion::Of::Name)
        entries.append(u"name"_s);
    check(entries.isEmpty() == (found.of == Completion::Of::Nothing), "there is something to offer", text);
    for (const QString &entry : std::as_const(entries)) {
        const TakenEntry taken = takeEntry(outline, found, entry);
        check(taken.range.start == found.word.start && taken.range.end >= found.word.end &&
                  taken.range.end <= text.size(),
              "the range lies in the text", text);
        check(taken.caret >= taken.range.start && taken.caret <= taken.range.start + taken.text.size(),
              "the caret is in what was taken", text);
        check(taken.text.contains(entry), "the entry is taken", text);
        if ((found.of != Completion::Of::Name && found.of != Completion::Of::Word) ||
            found.kind == NameKind::Window)
            continue;
        if (outline.element(found.element).end != End::Tag || taken.range != found.word)
            continue;
        QString after = text;
        after.replace(taken.range.start, taken.range.size(), taken.text);
        same(shape(Outline(after)), shape(outline), "all elements stay");
    }
}
