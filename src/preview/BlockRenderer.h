#pragma once

#include "preview/BlockScan.h"
#include "preview/WidgetHtml.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>
#include <vector>

namespace quillmere {

class MarkerReplacement;

// One text written at its end again and again. A QString would look at each piece whether it is shared.
class PageWriter
{
public:
    explicit PageWriter(qsizetype capacity)
        : m_text(capacity, Qt::Uninitialized), m_units(reinterpret_cast<char16_t *>(m_text.data()))
    {
    }

    qsizetype size() const { return m_size; }
    void put(QStringView piece)
    {
        if (piece.size() > m_text.size() - m_size)
            grow(piece.size());
        std::copy_n(piece.utf16(), piece.size(), m_units + m_size);
        m_size += piece.size();
    }
    // Replaces markers in what was put since the size was `from`.
    void replaceSince(qsizetype from, const MarkerReplacement &replacement);
    QStringView written() const { return QStringView(m_units, m_size); }
    // Nothing can be put afterwards.
    QString take()
    {
        m_text.truncate(m_size);
        return std::move(m_text);
    }

private:
    void grow(qsizetype by)
    {
        m_text.resize(std::max(m_size + by, m_text.size() + m_text.size() / 2));
        m_units = reinterpret_cast<char16_t *>(m_text.data());
    }

    QString m_text;
    char16_t *m_units;
    qsizetype m_size = 0;
};

// A row of the font catalogue as the page needs it.
struct FontRow
{
    QString marker; // "<font>NAME</font>"
    QString size;
    QString style;
    bool isDefault = false;

    bool operator==(const FontRow &) const = default;
};
QList<FontRow> fontRows(const QList<ListRows::Row> &lvFont);

// What a block hands on to the next one: a block that does not set one of these is drawn with what the block
// before it left there.
struct HandedOn
{
    enum Value { X, Y, W, H, Back, Fore, FontSize, FontStyle, Count };
    QString text; // of all values, one behind the other
    std::array<qint32, Count> ends = {};

    bool operator==(const HandedOn &) const = default;
};

// Draws block after block.
class BlockRenderer
{
public:
    // `size`: of the markup, in units.
    BlockRenderer(const ImageLookup &lookup, const QList<FontRow> &fonts, qsizetype size)
        : m_getImg(lookup), m_fonts(fonts), m_rules(2 * size + 1000), m_body(2 * size)
    {
    }

    // Goes on behind a block that has handed this on, which must stay as it is.
    void goOn(const HandedOn &from);
    HandedOn handedOn() const;
    // The block must stay where it is as long as others are drawn.
    ListRows::Row draw(QStringView block);
    QStringView rules() const { return m_rules.written(); }
    QStringView body() const { return m_body.written(); }
    // Ends the drawing: the page of all that was drawn. It needs less memory than widgetHtml().
    QString takeHtml();
    // The picture that the rules of the block drawn last name.
    struct Asked
    {
        QString id, answer;
    };
    const std::optional<Asked> &asked() const { return m_asked; }

private:
    using B = BlockScan;

    void readRect();
    void readColours();
    void images();
    void place();
    void alignment();
    void font();
    void toDiv();
    void spans();
    void putValue(QStringView value);
    bool namesFont(const FontRow &row) const;
    bool has(B::Marker marker) const { return m_scan.has(marker); }
    QStringView value(HandedOn::Value which) const { return m_handed[which]; }
    void rule(std::initializer_list<QStringView> declarations);

    const ImageLookup &m_getImg;
    const QList<FontRow> &m_fonts;
    PageWriter m_rules, m_body;
    BlockScan m_scan;
    QStringView m_name, m_string;
    std::optional<Asked> m_asked;
    bool m_styleIsChanged = false;    // in what is scanned
    std::vector<QString> m_rewritten; // blocks whose values are in use
    std::array<QStringView, HandedOn::Count> m_handed;
};

// The page of all that was drawn: its rules and its divs, each in pieces that follow one another.
QString widgetHtml(std::initializer_list<QStringView> rules, std::initializer_list<QStringView> body);
// The rules and the divs in such a page, which are so long; nothing in a page without a text.
std::pair<QStringView, QStringView> partsOfHtml(const QString &page, qsizetype rules, qsizetype body);

} // namespace quillmere
