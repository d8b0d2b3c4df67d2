#pragma once

#include <QStringView>
#include <QVarLengthArray>

#include <array>

namespace quillmere {

// Finds in one pass over a block whatever the page of it is made from. Letter case is ignored in finding, as
// it is in cutting; a value is there only where its marker also stands somewhere in just these letters.
class BlockScan
{
public:
    enum Marker {
        String, // in the order of the table in the source
        Rect,
        BackColor,
        ForeColor,
        Img,
        TopImg,
        BottomImg,
        LeftImg,
        RightImg,
        LeftTopImg,
        RightTopImg,
        LeftBottomImg,
        RightBottomImg,
        UnfocusImg,
        Font,
        Imgs,
        SingleMode,
        MultipleMode,
        Property,
        PropertyEnd,
        Id,
        Style,
        Class,
        ElementEnd, // "/>"
        TextClass,
        HCentre,
        VCentre,
        Count
    };
    // A stretch that stands in the page in another form: Property, PropertyEnd, ElementEnd or Style.
    struct Change
    {
        qsizetype position, size;
        Marker marker;
    };

    // Looks at another block, which must stay where it is as long as its values are in use.
    void scan(QStringView block);

    QStringView block() const { return m_block; }
    bool has(Marker marker) const { return m_found[marker].first >= 0; }
    // 0-based, of the first one; -1 without one.
    qsizetype positionOf(Marker marker) const { return m_found[marker].first; }
    // The text between the first such marker and what closes it; all up to the next such marker where nothing
    // does.
    QStringView value(Marker marker) const { return m_found[marker].value; }
    // In order, none touching another. The style is among them where changing it can change nothing else.
    const QVarLengthArray<Change, 64> &changes() const { return m_changes; }
    // False where what else was found depends on whether the style has been changed.
    bool isStyleApart() const;
    const QVarLengthArray<qsizetype, 8> &fonts() const { return m_fonts; }

private:
    struct Found
    {
        qsizetype first = -1, second = -1;
        bool exact = false;
        QStringView value;
    };

    void atElement(qsizetype position);
    void atQuote(qsizetype position);
    void atLetter(qsizetype position);
    void note(Marker marker, qsizetype position);
    void noteStyle(qsizetype position);
    void readValue(Marker marker);

    QStringView m_block;
    std::array<Found, Count> m_found;
    QVarLengthArray<Change, 64> m_changes;
    QVarLengthArray<qsizetype, 8> m_fonts; // positions of "<font>"
    qsizetype m_styleEnd = 0;              // behind the first style attribute
    bool m_styleTangled = false;           // something begins inside that, or a value reaches into it
};

} // namespace quillmere
