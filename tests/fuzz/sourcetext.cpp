#include "Fuzz.h"
#include "markup/InsertCode.h"
#include "markup/WidgetDocument.h"
#include "source/SavedText.h"

// What goes around a selection leaves the rest and the selection alone; a saved text has one line end, at its
// end, and saving it again changes nothing; a block is found at the beginning of a line.
void fuzz(const Input &input)
{
    const QString text = input.text(0), opening = input.text(1), closing = input.text(2);
    const qsizetype start = input.choice(3, 256) - 5, length = input.choice(4, 256) - 5;
    const TextSelection wrapped = InsertCode({text, start, length}, opening, closing);
    const qsizetype end = wrapped.start + wrapped.length;
    QString unwrapped = wrapped.text;
    same(wrapped.text.mid(end, closing.size()), closing, "closes behind the selection");
    same(wrapped.text.mid(wrapped.start - opening.size(), opening.size()), opening, "opens before it");
    same(unwrapped.remove(end, closing.size()).remove(wrapped.start - opening.size(), opening.size()), text,
         "leaves the rest alone");

    const QString saved = textToSave(text);
    check(saved.endsWith(u"\r\n") && saved.count(u'\r') == 1, "one line end", saved);
    same(textToSave(saved.chopped(2)), saved, "saving again changes nothing");

    const qsizetype line = lineOfBlock(text, opening);
    check(line == 0 || QStringView(text).first(line).endsWith(u"\r\n"), "begins a line", text);
}
