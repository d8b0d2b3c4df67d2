#pragma once

#include "files/PackedText.h"
#include "theme/ReceiverParts.h"
#include "theme/ThemeEdit.h"

#include <QObject>

#include <memory>
#include <optional>

class QToolButton;

namespace quillmere {

class OpenDocument;
class SourceBox;
class StatusLine;
class Talk;
class ThemeEditing;
class ThemeProject;
class frmChanges;
struct ChangedWindow;

// What the last command has changed in windows, for who asks for it in the status line.
class ShownChanges : public QObject
{
    Q_OBJECT

public:
    ShownChanges(StatusLine &status, SourceBox &source, OpenDocument &document, ThemeEditing &editing,
                 const ThemeProject &theme, Talk &talk, QWidget &window);
    ~ShownChanges() override;

private:
    void offer(bool offered);
    void show();
    QList<ChangedWindow> windows() const;
    QString textNow(const QString &path) const;
    void takeBack(const QList<ChangedWindow> &windows, const ThemeEdit &inverse, int number);

    SourceBox &m_source;
    OpenDocument &m_document;
    ThemeEditing &m_editing;
    const ThemeProject &m_theme;
    Talk &m_talk;
    QWidget &m_window;
    QToolButton *m_button;
    ReceiverParts m_parts;              // before
    ReceiverParts m_partsBefore;        // of an edit under way, which may load the theme again
    QSize m_screenBefore;               // pixels
    int m_edits = 0;                    // so far
    std::optional<ThemeEdit> m_inverse; // of files and rows
    std::optional<PackedText> m_before; // of the text in the source box alone
    std::unique_ptr<frmChanges> m_frmChanges;
};

} // namespace quillmere
