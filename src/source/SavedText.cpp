#include "source/SavedText.h"

#include "markup/Matching.h"

namespace quillmere {

QString textToSave(const QString &source)
{
    QString text = source;
    text.remove(u'\r');
    replaceIgnoringCase(text, u"Class = \"TEXT\"", u"class=\"text\"");
    replaceIgnoringCase(text, u"<string></string>", u"<string/>");
    return text + u"\r\n";
}

} // namespace quillmere
