#include "markup/TagWidget.h"

#include "markup/Matching.h"

#include <QStringBuilder>

#include <algorithm>

namespace quillmere {

QString GetTagWidget(QStringView document, QStringView name)
{
    const QString attribute = QStringView(u"name=\"") % name % QStringView(u"\"");
    const QStringView opening = u"<widget ";
    const QStringView closing = u"/>";

    qsizetype start = indexOfIgnoringCase(document, opening);
    while (start >= 0) {
        start += opening.size();
        const qsizetype next = indexOfIgnoringCase(document, opening, start);
        const QStringView widget = document.sliced(start, (next < 0 ? document.size() : next) - start);
        if (containsExact(widget, attribute)) {
            const qsizetype end = std::max<qsizetype>(indexOfExact(widget, closing), 0);
            return opening % widget.first(end) % closing;
        }
        start = next;
    }
    return {};
}

} // namespace quillmere
