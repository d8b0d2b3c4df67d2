#include "source/TextChanges.h"
#include "Fuzz.h"

namespace {

void compare(const QString &now, const QString &next)
{
    const QList<TextChange> changes = changesBetween(now, next);
    check(changes.isEmpty() == (now == next), "texts that differ", now);
    QString changed = now;
    qsizetype end = -1;
    for (const TextChange &change : changes) {
        check(change.start > end && (change.length > 0 || !change.text.isEmpty()), "in order", now);
        end = change.start + change.length;
        for (const qsizetype at : {change.start, end})
            check(at == 0 || at == now.size() || !now[at - 1].isHighSurrogate() || !now[at].isLowSurrogate(),
                  "no letter in two", now);
    }
    for (auto change = changes.crbegin(); change != changes.crend(); ++change)
        changed.replace(change->start, change->length, change->text);
    same(changed, next, "one text of the other");
    for (qsizetype caret = 0; caret <= now.size(); ++caret) {
        const qsizetype to = caretAfter(changes, now, caret);
        check(to >= 0 && to <= next.size(), "the caret is in the text", now);
    }
}

} // namespace

// The changes between two texts make one of the other; they are in order, none empty, none touching another
// or cutting a letter in two; and wherever the caret stands, it comes to stand in the text. Braces are halves
// of pairs.
void fuzz(const Input &input)
{
    QString texts[] = {input.text(0), input.text(1)};
    for (QString &text : texts)
        text.replace(u'{', QChar(0xD83D)).replace(u'}', QChar(0xDE00));
    compare(texts[0], texts[1]);
    QString edited = texts[0]; // some pieces of the other text here and there
    for (qsizetype from = 0; from < texts[1].size(); from += 25)
        edited.replace(texts[1][from].unicode() * (from + 7) % (edited.size() + 1), from % 9,
                       texts[1].mid(from, 6));
    compare(texts[0], edited);
}
