#include "naming/Hover.h"
#include "Fuzz.h"

// What is told of a place lies in the text, and at the place; a name is what stands there. The parts are a
// text, a place in it, and whether there is an index, of a theme that defines nothing.
void fuzz(const Input &input)
{
    const QString text = input.text(0);
    const Outline outline(text);
    const qint32 at = input.choice(1, 256) * qint32(text.size()) / 255;
    const ThemeIndex nothing;
    const ThemeIndex *const index = input.choice(2, 2) == 0 ? nullptr : &nothing;
    const Hover pointed = hoverAt(outline, at, index), asked = hoverAtCaret(outline, at, index);
    for (const Hover &hover : {pointed, asked}) {
        const Range range = hover.range;
        check(range.start >= 0 && range.start <= range.end && range.end <= text.size(),
              "the range lies in the text", text);
        if (hover.of == Hover::Of::Nothing)
            continue;
        check(text.at(range.start) == u'<' || hover.of == Hover::Of::Name, "a block is known by its tag",
              text);
        if (hover.of == Hover::Of::Name) {
            same(range.in(text).toString(), hover.name, "a name stands in its range");
            check(range.touches(at), "a name is at the place", text);
            check(!hover.isDefined || !index || hover.kind == NameKind::Colour, "nothing is defined", text);
        }
    }
    check(pointed.of != Hover::Of::Name || pointed.range.holds(at), "what is pointed at is at the pointer",
          text);
    check(pointed.of == Hover::Of::Nothing || asked.of != Hover::Of::Nothing, "a caret asks at least as much",
          text);
}
