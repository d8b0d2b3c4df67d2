#pragma once

#include <QPlainTextDocumentLayout>
#include <QTextBlock>
#include <QTextLayout>

#include <functional>
#include <vector>

namespace quillmere {

// The layout of an editor's document, which tells when a line is about to be shown. A line that is laid out
// keeps close to a kilobyte, and a window may have 100,000 of them, of which a person sees some hundred: what
// only the looks of a line need is therefore not done before, and forgotten once some thousand others have
// been looked at. And of a change, only its lines are drawn. Lines are never wrapped and begin at the left,
// so that no width of a view is any matter to them.
class SourceLayout : public QPlainTextDocumentLayout
{
public:
    using QPlainTextDocumentLayout::QPlainTextDocumentLayout;

    // Called with a line before it is laid out, each time; without one where whoever is called goes.
    void setBeforeShown(std::function<void(const QTextBlock &line)> prepare)
    {
        m_prepare = std::move(prepare);
    }
    // Called with a line that is laid out no more and has no formats any more; without one where whoever is
    // called goes.
    void setForgotten(std::function<void(const QTextBlock &line)> forgotten)
    {
        m_forgotten = std::move(forgotten);
    }
    // Gives the line its formats. Draws it again where it is laid out already.
    void setFormats(const QTextBlock &line, const QList<QTextLayout::FormatRange> &formats);

    QRectF blockBoundingRect(const QTextBlock &line) const override;
    // As wide as the widest of the lines that have been shown.
    QSizeF documentSize() const override;

protected:
    void documentChanged(int from, int removed, int added) override;

private:
    void layOut(const QTextBlock &line) const;
    void forgetOldest() const;
    void noteWidth(const QTextBlock &line, qreal width) const;

    std::function<void(const QTextBlock &line)> m_prepare, m_forgotten;
    mutable std::vector<QTextBlock> m_laidOut; // one after the other, since lines have last come or gone
    mutable QTextBlock m_widestLine;
    mutable qreal m_widest = 0;              // pixels, its margins among them
    int m_quietFrom = -1, m_quietLength = 0; // of a line whose formats change unseen
    int m_lines = -1;                        // when the document told of a change last
};

} // namespace quillmere
