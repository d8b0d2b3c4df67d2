#pragma once

#include <QPlainTextEdit>

namespace quillmere {

// The source text of a window. Outside the box, text has CR LF line ends and positions count both of them;
// inside, the document has one separator a line. This class is where the two meet.
class SourceBox : public QPlainTextEdit
{
    Q_OBJECT

public:
    SourceBox(const QString &name, const QString &accessibleName, QWidget *parent = nullptr);

    // What setText() was given, to the letter, until the person or a command changes it; then lines end in CR
    // LF.
    QString text() const;
    // Another document: the undo history starts anew.
    void setText(const QString &text);
    // The same document, rewritten by a command: one undo step, the caret stays at its place in the text.
    void rewrite(const QString &text);

    // Selection as 0-based position and length in text().
    qsizetype selectionStart() const;
    qsizetype selectionLength() const;
    void select(qsizetype start, qsizetype length);

signals:
    // The text is another one than before.
    void changed();

private:
    int toDocument(qsizetype position) const;
    qsizetype fromDocument(int position) const;

    QString m_given;
    bool m_isGiven = false; // the document still is m_given
};

} // namespace quillmere
