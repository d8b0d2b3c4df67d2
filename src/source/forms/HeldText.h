#pragma once

#include "source/SourceTokens.h"

#include <QObject>
#include <QTextObjectInterface>

#include <map>
#include <vector>

class QTextBlock;
class QTextCursor;
class QTextDocument;

namespace quillmere {

// Text that stands in the document of an editor as one character, an object with a caption: characters that
// the document would take for line breaks (a lone CR, U+2029 and others), and the middle of a very long line,
// since the document lays out a line as a whole and each key in a line of a megabyte would take a second.
// The objects go with the text around them through undo, and text() gives back what they stand for.
class HeldText : public QObject, public QTextObjectInterface
{
    Q_OBJECT
    Q_INTERFACES(QTextObjectInterface)

public:
    explicit HeldText(QTextDocument *document);
    QTextDocument *document() const { return m_document; }

    // An object in the document: its position there, and in the whole text with one LF a line break.
    struct Place
    {
        int position = 0;
        qsizetype start = 0;
        qsizetype length = 0;
        qsizetype end() const { return start + length; }
    };
    // False where text() is the text of the document, and always has been.
    bool holdsAny() const { return !m_texts.empty(); }
    // In order.
    std::vector<Place> places() const;
    // The whole text with one LF a line break.
    QString text() const;
    // The same of a stretch of the document.
    QString text(int from, int to) const;
    // Between positions in the document and in text(); within an object's text gives its position.
    int toDocument(qsizetype position) const;
    qsizetype fromDocument(int position) const;
    // True where the text of an object goes on over both sides of this position in text().
    bool hides(qsizetype position) const;
    // The text of the object there; empty where none stands.
    QString heldAt(int position) const;

    // Puts a text, with one LF a line break, at the cursor. Of a very long line the middle is held.
    void insert(QTextCursor &cursor, QStringView text);
    // True for a line so long that keys in it would be slow.
    static bool isTooLong(const QTextBlock &line);
    // Puts the cursor's line there anew, its middle held but for what stands around these positions of
    // text(); the cursor stays at its place in the text.
    void shortenLine(QTextCursor &cursor, const QList<qsizetype> &shown);

    // The state in which the object's text leaves the line to what follows it.
    LineState stateBehind(int position, LineState before) const;

    QSizeF intrinsicSize(QTextDocument *document, int position, const QTextFormat &format) override;
    void drawObject(QPainter *painter, const QRectF &rect, QTextDocument *document, int position,
                    const QTextFormat &format) override;

private:
    struct Held
    {
        QString text;
        std::map<LineState, LineState> states; // by the one before; as far as they were asked for
    };

    const Held *find(int position) const;
    void hold(QTextCursor &cursor, QStringView text);
    void insertShort(QTextCursor &cursor, QStringView text);
    void insertLine(QTextCursor &cursor, QStringView line, const QList<qsizetype> &shown);
    QString captionOf(const QTextFormat &format) const;

    QTextDocument *m_document;
    mutable std::vector<Held> m_texts; // by number; also those that only the undo history still shows
};

} // namespace quillmere
