#include "source/forms/ReadyText.h"

#include "source/forms/HeldText.h"
#include "source/forms/SourceLayout.h"

#include <QTextCursor>

namespace quillmere {

namespace {
constexpr qsizetype kPiece = 1 << 15; // units; a few milliseconds' work
} // namespace

QString withLineFeeds(const QString &text)
{
    QString lines(text.size(), Qt::Uninitialized);
    QChar *to = lines.data();
    const QChar *from = text.constData(), *const end = from + text.size();
    for (; from != end; ++from) {
        if (*from != u'\r' || from + 1 == end || from[1] != u'\n')
            *to++ = *from;
    }
    lines.truncate(to - lines.constData());
    return lines;
}

ReadyText makeReady(const QString &text, const Progress &progress)
{
    ReadyText ready{text, std::make_unique<QTextDocument>()};
    ready.document->setDocumentLayout(new SourceLayout(ready.document.get()));
    QTextOption option;
    option.setTextDirection(Qt::LeftToRight);
    option.setWrapMode(QTextOption::NoWrap);
    ready.document->setDefaultTextOption(option);
    ready.firstView = std::make_unique<QPlainTextEdit>();
    ready.firstView->setLineWrapMode(QPlainTextEdit::NoWrap);
    ready.firstView->viewport()->resize(QWIDGETSIZE_MAX, 1); // a wider view would lay the lines out again
    ready.firstView->setDocument(ready.document.get());
    ready.document->setUndoRedoEnabled(false);
    ready.held = new HeldText(ready.document.get());
    const QString lines = withLineFeeds(text);
    QTextCursor end(ready.document.get());
    for (qsizetype done = 0; done < lines.size();) {
        const qsizetype lineBreak = lines.indexOf(u'\n', std::min(done + kPiece, lines.size()));
        const qsizetype next = lineBreak < 0 ? lines.size() : lineBreak + 1;
        ready.held->insert(end, QStringView(lines).sliced(done, next - done));
        done = next;
        tell(progress, done, lines.size());
    }
    ready.document->setUndoRedoEnabled(true);
    ready.document->setModified(false);
    return ready;
}

} // namespace quillmere
