#include "keeping/forms/Recoverable.h"

#include "rows/RowsText.h"
#include "source/forms/SourceBox.h"

#include <QCoreApplication>
#include <QSignalBlocker>

namespace quillmere {

namespace {

// What the box held last before it was emptied; nothing where that is saved.
QString textBefore(SourceBox &emptied)
{
    const QSignalBlocker quiet(emptied);
    QTextDocument &document = *emptied.document();
    int steps = 0;
    for (; document.isEmpty() && document.isUndoAvailable(); ++steps)
        document.undo();
    const QString text = document.isModified() ? emptied.text() : QString();
    for (; steps > 0; --steps)
        document.redo();
    return text;
}

} // namespace

Recoverable recoverableText(SourceBox &source, Document &document)
{
    Recoverable text;
    text.kind = UnsavedKind::Text;
    text.name = QCoreApplication::translate("Recoverable", "text");
    text.document = &document;
    text.hasUndo = true;
    text.isEdited = [&source] { return source.document()->isModified(); };
    text.textToKeep = [&source]() -> std::optional<QString> {
        QString typed = source.document()->isEmpty() ? textBefore(source) : source.text();
        return typed.isEmpty() ? std::nullopt : std::optional(std::move(typed));
    };
    text.shows = [&source](const QString &kept) { return kept == source.text(); };
    text.restore = [&source](const QString &kept) {
        source.rewrite(kept);
        return true;
    };
    return text;
}

Recoverable recoverableRows(RowsDocument &document, UnsavedKind kind, const QString &name,
                            const std::function<std::optional<TypedText>()> &typed)
{
    Recoverable rows;
    rows.kind = kind;
    rows.name = name;
    rows.document = &document;
    rows.isEdited = [&document, typed] { return document.isEdited() || typed(); };
    rows.textToKeep = [&document, typed] {
        QList<ListRows::Row> kept = document.rows().rows();
        if (const auto text = typed(); text && text->row < kept.size())
            kept[text->row].subItems[text->subItem - 1] = text->text;
        return rowsToText(kept);
    };
    rows.shows = [&document](const QString &kept) {
        const auto read = rowsFromText(kept);
        return read && isSameButForChecks(*read, document.rows().rows());
    };
    rows.restore = [&document](const QString &kept) {
        auto read = rowsFromText(kept);
        if (!read)
            return false;
        document.rows().assign(std::move(*read));
        emit document.rows().edited();
        return true;
    };
    return rows;
}

} // namespace quillmere
