#pragma once

#include <QList>
#include <QWidget>

#include <vector>

class QTextDocument;

namespace quillmere {

class SourceBox;

// A stretch of the source that somebody has something to say about. Positions are those of SourceBox::text().
struct SourceMark
{
    qsizetype start = 0, length = 0;
    int level = 0; // 0 for the worst, to 2
};

// Underlines stretches of the source in the colour of their level, and shows them all in a strip beside the
// scroll bar, where a click leads to one. The marks move with the text while it is edited.
class SourceMarks : public QWidget
{
    Q_OBJECT

public:
    explicit SourceMarks(SourceBox *box);

    // Only the first line of each is underlined.
    void show(const QList<SourceMark> &marks);
    int count() const { return int(m_marks.size()); }
    // The box shows another document, which has no marks yet.
    void setDocument(QTextDocument *document);
    // Draws what is below the lines in `area` of the box's viewport.
    void drawUnderlines(const QRect &area);

    static constexpr int kWidth = 8; // pixels

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;

private:
    struct Mark
    {
        int start, end; // in the document
        int level;
    };

    void follow(int from, int removed, int added);
    // The middle of the place in the strip that stands for a mark.
    int heightOf(const Mark &mark) const;

    SourceBox *m_box;
    std::vector<Mark> m_marks; // by their beginnings
    QMetaObject::Connection m_following;
};

} // namespace quillmere
