#include "markup/Comments.h"

#include "markup/Matching.h"

namespace quillmere {

namespace {

constexpr QStringView opener = u"<!--";
constexpr QStringView closer = u"-->";

} // namespace

QString GetRemoveComment(QString &html)
{
    const qsizetype open = indexOfExact(html, opener);
    const qsizetype strayEnd = indexOfExact(html, closer);
    if (strayEnd >= 0 && (open < 0 || strayEnd < open)) {
        replaceIgnoringCase(html, closer, {});
    } else if (open >= 0) {
        // The closer may share its "--" with the opener: "<!-->" is a whole comment.
        const qsizetype end = indexOfExact(html, closer, open + 1);
        if (end >= 0)
            replaceIgnoringCase(html, QStringView(html).sliced(open, end + closer.size() - open), {});
    }
    return html;
}

QString RemoveComment(QString &html)
{
    // Each turn removes something, or one of the two is gone.
    while (containsExact(html, opener) && containsExact(html, closer))
        GetRemoveComment(html);
    return html;
}

} // namespace quillmere
