#pragma once

#include "theme/ThemeEdit.h"

#include <QObject>

#include <memory>
#include <optional>

namespace quillmere {

class Files;
class OpenDocument;
class SourceBox;
class Talk;
class ThemeProject;

// Makes edits of the theme in the running program: the text in the source box and the rows of open catalogues
// take part in the place of their files, each as one undo step; all other files are written.
class ThemeEditing : public QObject
{
    Q_OBJECT

public:
    ThemeEditing(SourceBox &source, OpenDocument &document, ThemeProject &theme, Files &files, Talk &talk,
                 QObject *parent = nullptr);
    ~ThemeEditing() override;

    // Makes all of an edit or none of it, and gives the one that takes it back; nothing where a file lies
    // outside of the theme and the person would rather not have it written. RunTimeError as in
    // ThemeEdit::apply.
    std::optional<ThemeEdit> apply(const ThemeEdit &edit);

    // Whether the file at `path` is edited in the source box.
    bool isOpenText(const QString &path) const;
    // Whether the file is open and something else than its text or rows as they are now.
    bool isUnsaved(const QString &path) const;
    // The rows in which the file at `path` is edited; they have to be changed and not the file.
    std::optional<QList<ListRows::Row>> openRows(const QString &path) const;

signals:
    // Around an edit, the second one only where it was made.
    void applying();
    void applied();
    // An edit was made; this one takes it back.
    void made(const quillmere::ThemeEdit &inverse);
    // Of an edit of several files, the part in these was taken back.
    void takenBack(const QStringList &paths);
    // The last edit was taken back: nothing is left of it.
    void allTakenBack();
    // Rows or files have changed and the text in the source box has not: what shows them together is to be
    // drawn again.
    void othersChanged();

private:
    class Source;
    class Rows;
    Rows *rowsAt(const QString &path) const;
    bool mayWrite(const QStringList &closed, const ThemeEdit &edit) const;

    OpenDocument &m_document;
    ThemeProject &m_theme;
    Files &m_files;
    Talk &m_talk;
    bool m_isApplying = false;
    std::unique_ptr<Source> m_source;
    std::unique_ptr<Rows> m_images, m_colours, m_strings;
};

} // namespace quillmere
