#pragma once

#include "keeping/UnsavedTexts.h"
#include "outline/Document.h"

#include <functional>
#include <optional>

namespace quillmere {

class SourceBox;

// What a Recovery keeps while it is not saved, as text.
struct Recoverable
{
    UnsavedKind kind = UnsavedKind::Text;
    QString name; // "text", "colours"

    Document *document = nullptr; // that it is saved to
    std::function<bool()> isEdited;
    // What to keep; nothing where that is worth nothing.
    std::function<std::optional<QString>()> textToKeep;
    // Whether a text that was kept would change nothing.
    std::function<bool(const QString &kept)> shows;
    // Puts a text that was kept in place, as one step. False where it is damaged.
    std::function<bool(const QString &kept)> restore;
    bool hasUndo = false; // that takes back what was restored
};

// The text of the source box. All must outlive what is returned.
Recoverable recoverableText(SourceBox &source, Document &document);
// A text on its way into a row.
struct TypedText
{
    int row = 0, subItem = 1;
    QString text;
};
// The rows of a list, with what is typed where `typed` gives that.
Recoverable recoverableRows(RowsDocument &document, UnsavedKind kind, const QString &name,
                            const std::function<std::optional<TypedText>()> &typed);

} // namespace quillmere
