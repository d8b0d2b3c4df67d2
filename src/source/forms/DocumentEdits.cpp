#include "source/forms/DocumentEdits.h"

#include "source/forms/HeldText.h"

#include <QTextBlock>
#include <QTextCursor>

namespace quillmere {

namespace {

constexpr qsizetype kTogether = 16; // units; changes no further apart are one edit, which is quicker

struct Edit
{
    qsizetype start = 0, end = 0; // of what goes, in the text
    qsizetype done = 0;           // as far as `text` stands for what was there
    QString text;
};

// An object goes as a whole: a change inside its text takes the rest of that along.
QList<Edit> wholeObjects(const std::vector<HeldText::Place> &places, const QString &now,
                         const QList<TextChange> &changes)
{
    QList<Edit> edits;
    auto place = places.begin();
    const auto between = [&](qsizetype from, qsizetype to) {
        return QStringView(now).sliced(from, to - from);
    };
    for (const TextChange &change : changes) {
        Edit edit{change.start, change.start + change.length, change.start + change.length, {}};
        while (place != places.end() && place->end() <= change.start)
            ++place;
        for (auto other = place; other != places.end() && other->start < edit.done; ++other) {
            edit.start = std::min(edit.start, other->start);
            edit.end = std::max(edit.end, other->end());
        }
        if (change.length == 0 && place != places.end() && place->start < change.start) {
            edit.start = place->start;
            edit.end = place->end();
        }
        if (!edits.isEmpty() && edit.start < edits.last().end + kTogether) {
            Edit &last = edits.last();
            last.text += between(last.done, change.start);
            last.text += change.text;
            last.done = edit.done;
            last.end = std::max(last.end, edit.end);
        } else {
            edit.text = between(edit.start, change.start) + change.text;
            edits.append(edit);
        }
    }
    for (Edit &edit : edits)
        edit.text += between(edit.done, edit.end);
    return edits;
}

} // namespace

void endStep(QTextCursor &edit)
{
    edit.insertText(QStringLiteral(" "));
    edit.deletePreviousChar();
    edit.endEditBlock();
}

void applyChanges(HeldText &held, const QString &now, const QList<TextChange> &changes, bool joins)
{
    const std::vector<HeldText::Place> places = held.places();
    QList<Edit> edits = wholeObjects(places, now, changes);
    qsizetype more = 0; // units that objects stand for beyond their own one
    auto place = places.begin();
    const auto inDocument = [&](qsizetype position) {
        for (; place != places.end() && place->end() <= position; ++place)
            more += place->length - 1;
        return position - more;
    };
    for (Edit &edit : edits) {
        edit.start = inDocument(edit.start);
        edit.end = inDocument(edit.end);
    }
    QTextCursor edit(held.document());
    if (joins)
        edit.joinPreviousEditBlock();
    else
        edit.beginEditBlock();
    QTextCursor last(held.document());
    last.setPosition(edits.isEmpty() ? 0 : int(edits.last().end));
    for (auto next = edits.crbegin(); next != edits.crend(); ++next) {
        edit.setPosition(int(next->start));
        edit.setPosition(int(next->end), QTextCursor::KeepAnchor);
        edit.removeSelectedText();
        held.insert(edit, next->text);
    }
    for (QTextBlock line = edits.isEmpty() ? QTextBlock()
                                           : held.document()->findBlock(int(edits.first().start));
         line.isValid() && line.position() <= last.position(); line = line.next()) {
        if (HeldText::isTooLong(line)) {
            edit.setPosition(line.position());
            held.shortenLine(edit, {});
        }
    }
    endStep(edit);
}

void indentLines(QTextCursor &selection, int blanks, bool back)
{
    QTextDocument *document = selection.document();
    const bool backwards = selection.position() < selection.anchor();
    const QTextBlock first = document->findBlock(selection.selectionStart());
    QTextBlock last = document->findBlock(selection.selectionEnd());
    if (last != first && last.position() == selection.selectionEnd())
        last = last.previous(); // nothing of it is selected
    const bool fromStart = selection.selectionStart() == first.position();
    QTextCursor edit(document);
    edit.beginEditBlock();
    for (QTextBlock line = first; line.isValid(); line = line.next()) {
        const QString text = line.text();
        edit.setPosition(line.position());
        if (back) {
            int gone = text.startsWith(u'\t') ? 1 : 0;
            while (gone < blanks && gone < text.size() && text[gone] == u' ')
                ++gone;
            edit.setPosition(line.position() + gone, QTextCursor::KeepAnchor);
            edit.removeSelectedText();
        } else if (!text.isEmpty()) {
            edit.insertText(QString(blanks, u' '));
        }
        if (line == last)
            break;
    }
    endStep(edit);
    const int start = fromStart ? first.position() : selection.selectionStart();
    const int end = selection.selectionEnd();
    selection.setPosition(backwards ? end : start);
    selection.setPosition(backwards ? start : end, QTextCursor::KeepAnchor);
}

} // namespace quillmere
