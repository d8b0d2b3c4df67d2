#include "stage/CaretBlock.h"

namespace quillmere {

namespace {

bool isBlank(QChar c)
{
    return c == u' ' || c == u'\t';
}

bool endsLine(const QString &text, qsizetype at)
{
    return at == text.size() || text[at] == u'\r' || text[at] == u'\n';
}

// The unit that tells where the caret is.
qsizetype unitAt(const QString &text, qsizetype caret)
{
    qsizetype first = caret, last = caret;
    while (first > 0 && isBlank(text[first - 1]))
        --first;
    while (last < text.size() && isBlank(text[last]))
        ++last;
    const bool isFirst = first == 0 || text[first - 1] == u'\n';
    if (endsLine(text, last))
        return isFirst ? caret : first - 1;
    return isFirst ? last : caret;
}

} // namespace

int blockAtCaret(const Outline &outline, qsizetype caret)
{
    const QString &text = outline.text();
    if (caret < 0 || caret > text.size())
        return -1;
    const qint32 block = outline.blockOf(outline.elementAt(unitAt(text, caret)));
    return block < 0 ? -1 : outline.element(block).block;
}

} // namespace quillmere
