#include "markup/Comments.h"
#include "Fuzz.h"
#include "markup/LiteralTwins.h"

// The comments that go are those that go one by one.
void fuzz(const Input &input)
{
    const QString text = input.text(0);
    if (hasSurrogates(text))
        return;
    QString one = text, all = text;
    same(quillmere::GetRemoveComment(one), twins::getRemoveComment(text), "removes a comment");
    same(quillmere::RemoveComment(all), twins::removeComment(text), "removes all comments");
}
