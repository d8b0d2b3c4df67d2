#include "browser/PageLines.h"

#include <algorithm>

namespace quillmere {

namespace {

bool hasWholePairs(QStringView text)
{
    for (qsizetype at = 0; at < text.size(); ++at) {
        const bool isHigh = text[at].isHighSurrogate();
        if (text[at].isLowSurrogate() ||
            (isHigh && (at + 1 == text.size() || !text[at + 1].isLowSurrogate())))
            return false;
        at += isHigh;
    }
    return true;
}

} // namespace

// What few pages have is only looked at closely where it is, which a loop without branches tells.
std::optional<QString> withPlainLines(const QString &page)
{
    unsigned nulls = 0, surrogates = 0;
    for (const QChar unit : page) {
        nulls |= unsigned(unit.unicode() == 0);
        surrogates |= unsigned((unit.unicode() & 0xf800) == 0xd800);
    }
    if (nulls || (surrogates && !hasWholePairs(page)))
        return {};
    qsizetype breaks = page.indexOf(u'\r');
    if (breaks < 0)
        return page;
    QString text(page.size(), Qt::Uninitialized);
    QChar *out = text.data();
    const QChar *const in = page.constData();
    qsizetype done = 0;
    for (; breaks >= 0; breaks = page.indexOf(u'\r', done)) {
        out = std::copy(in + done, in + breaks, out);
        *out++ = u'\n';
        done = breaks + 1;
        if (done < page.size() && in[done] == u'\n')
            ++done;
    }
    out = std::copy(in + done, in + page.size(), out);
    text.truncate(out - text.constData());
    return text;
}

} // namespace quillmere
