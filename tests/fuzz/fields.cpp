#include "Fuzz.h"
#include "markup/LiteralTwins.h"
#include "markup/TagWidget.h"
#include "markup/mndIni.h"

namespace {

QString literalTag(const QString &document, const QString &name)
{
    const QStringList pieces = document.split(u"<widget "_s, Qt::KeepEmptyParts, Qt::CaseInsensitive);
    for (const QString &piece : pieces.mid(1)) {
        if (piece.contains(QString(u"name=\"" + name + u'"')))
            return u"<widget " + piece.left(std::max<qsizetype>(piece.indexOf(u"/>"), 0)) + u"/>";
    }
    return {};
}

} // namespace

// Fields, stripped names, closed-up attributes and tags are what their slow forms give.
void fuzz(const Input &input)
{
    const QString text = input.text(0), first = input.text(1), second = input.text(2);
    QString copy = text;
    same(StripControlChars(copy), twins::stripControlChars(text), "strips");
    copy = text;
    same(CloseUpEquals(copy), twins::closeUpEquals(text), "closes up");
    same(GetTagWidget(text, first), literalTag(text, first), "cuts a tag");
    // An empty separator cuts nothing here, and everything in the library.
    if (hasSurrogates(first + second) || first.isEmpty())
        return;
    const int one = input.choice(3, 4), two = input.choice(4, 4);
    same(SplitField(text, first, second, one, two), twins::splitField(text, first, second, one, two),
         "cuts a field");
}
