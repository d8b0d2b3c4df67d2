#include "markup/WidgetDocument.h"

#include "markup/MarkerSet.h"
#include "markup/Matching.h"

#include <algorithm>

namespace quillmere {

namespace {

void removeInPlace(QString &text, QStringView marker)
{
    qsizetype hit = indexOfIgnoringCase(text, marker);
    if (hit < 0)
        return;
    QChar *out = text.data() + hit;
    const QStringView in(text);
    while (hit >= 0) {
        const qsizetype from = hit + marker.size();
        hit = indexOfIgnoringCase(in, marker, from);
        out = std::copy(in.data() + from, in.data() + (hit < 0 ? in.size() : hit), out);
    }
    text.truncate(out - text.constData());
}

constexpr QStringView kName = u" name=\"";
constexpr QStringView kId = u" id=\"";

// Rewrites a text where it stands and cuts it, from the front to the back. Nothing that is put in is longer
// than what it stands for, so writing never gets ahead of reading.
class BlockCutter
{
public:
    explicit BlockCutter(QString &text)
        : m_out(reinterpret_cast<char16_t *>(text.data())), m_in(m_out, text.size()), m_done(text.size())
    {
    }

    void cut();
    // Of the text as it is now.
    qsizetype size() const { return m_written; }
    QList<QStringView> blocks() const;

private:
    void replaceUpTo(qsizetype position, qsizetype behind, QStringView by);
    void openBlock(qsizetype position, qsizetype behind);
    void atMarker(qsizetype position);
    void atQuote(qsizetype position);
    void put(QStringView units);

    char16_t *m_out;
    QStringView m_in; // the same memory
    qsizetype m_done; // read and written so far; all of it while the first block has not begun
    qsizetype m_written = 0;
    QList<qsizetype> m_begins; // in what was written
};

void BlockCutter::put(QStringView units)
{
    if (units.utf16() != m_out + m_written)
        std::copy_n(units.utf16(), units.size(), m_out + m_written);
    m_written += units.size();
}

void BlockCutter::replaceUpTo(qsizetype position, qsizetype behind, QStringView by)
{
    put(m_in.sliced(m_done, position - m_done));
    put(by);
    m_done = behind;
}

void BlockCutter::openBlock(qsizetype position, qsizetype behind)
{
    if (m_begins.isEmpty())
        m_done = behind; // the document element and whatever else stands before the first widget
    else
        replaceUpTo(position, behind, {});
    m_begins.append(m_written);
}

void BlockCutter::atMarker(qsizetype position)
{
    static const MarkerSet markers({u"<widget ", u"<style ", u"</widget>", u"<signal>", u"</signal>"});
    static constexpr QStringView instead[] = {{}, {}, u"</div>", u"<!--", u"-->"};
    const int marker = markers.at(m_in, position);
    if (marker < 0)
        return;
    const qsizetype behind = position + markers[marker].size();
    if (marker < 2)
        openBlock(position, behind);
    else if (!m_begins.isEmpty())
        replaceUpTo(position, behind, instead[marker]);
}

void BlockCutter::atQuote(qsizetype position)
{
    const qsizetype start = position + 1 - kName.size();
    if (m_begins.isEmpty() || !matchesIgnoringCase(m_in, start, kName))
        return;
    // The blank may be the one that opened the block.
    if (start < m_done)
        replaceUpTo(m_done, position + 1, kId.sliced(1));
    else
        replaceUpTo(start, position + 1, kId);
}

void BlockCutter::cut()
{
    static constexpr StopUnits stops(u"<\"");
    const qsizetype size = m_in.size();
    for (qsizetype at = stops.next(m_in, 0); at < size; at = stops.next(m_in, at + 1)) {
        if (m_in[at] == u'<')
            atMarker(at);
        else
            atQuote(at);
    }
    put(m_in.sliced(m_done));
}

QList<QStringView> BlockCutter::blocks() const
{
    QList<QStringView> blocks;
    blocks.reserve(m_begins.size());
    for (qsizetype i = 0; i < m_begins.size(); ++i) {
        const qsizetype end = i + 1 < m_begins.size() ? m_begins[i + 1] : m_written;
        blocks.append(QStringView(m_out + m_begins[i], end - m_begins[i]));
    }
    return blocks;
}

} // namespace

WidgetBlocks cutBlocks(const QString &document)
{
    WidgetBlocks cut{document, {}};
    // Where one of these has gone, the halves of another marker may have met, so they go first. Of the
    // others none makes another one.
    removeInPlace(cut.text, u"<children>");
    removeInPlace(cut.text, u"</children>");
    BlockCutter cutter(cut.text);
    cutter.cut();
    cut.text.truncate(cutter.size());
    cut.blocks = cutter.blocks();
    return cut;
}

qsizetype lineOfBlock(QStringView text, QStringView name)
{
    if (name.isEmpty())
        return 0;
    const qsizetype found = indexOfIgnoringCase(text, name);
    if (found < 0)
        return 0;
    const qsizetype lineBreak = text.first(found + 1).lastIndexOf(u"\r\n");
    return lineBreak < 0 ? 0 : lineBreak + 2;
}

} // namespace quillmere
