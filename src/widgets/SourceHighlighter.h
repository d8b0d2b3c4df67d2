#pragma once

#include <QSyntaxHighlighter>
#include <QTextCharFormat>

#include <array>

namespace quillmere {

// Colours theme text, line by line as lines change.
class SourceHighlighter : public QSyntaxHighlighter
{
    Q_OBJECT

public:
    explicit SourceHighlighter(QTextDocument *document);

    // Takes colours that are readable on a light or on a dark ground.
    void setDark(bool dark);

protected:
    void highlightBlock(const QString &line) override;

private:
    std::array<QTextCharFormat, 6> m_formats; // by Token
};

} // namespace quillmere
