#pragma once

#include "app/ThemeEditing.h"

#include <functional>

class QAction;

namespace quillmere {

class LiveIndex;

// Makes changes of several places of the theme, says what they have left unsaved, and takes the last one back
// from the Tool menu.
class WideChanges : public QObject
{
    Q_OBJECT

public:
    WideChanges(SourceBox &source, ThemeEditing &editing, LiveIndex &index, ThemeProject &theme, Talk &talk,
                QObject *parent);

    // The item of the menu that takes the last change back.
    void setUndo(QAction *undo);
    // Makes an edit and says `done`; `undo` is what takes it back, in the Tool menu, and `follow` is called
    // once that is done. False where the person would rather not; see ThemeEditing::apply.
    bool make(const ThemeEdit &edit, const QString &done, const QString &undo,
              const std::function<void()> &follow = {});
    // Makes an edit that mends a problem. Where it writes files, and so has no undo of its own, the Tool menu
    // takes it back.
    bool mend(const ThemeEdit &edit, const QString &done);
    // A sentence on what an edit has left open and not saved.
    QString unsavedAfter(const ThemeEdit &edit) const;
    void takeBack();
    // There is nothing to be taken back any more.
    void forget();

private:
    void tellOthers();
    void tellOtherRows();
    void sayRest(const QString &what);

    SourceBox &m_source;
    ThemeEditing &m_editing;
    LiveIndex &m_index;
    ThemeProject &m_theme;
    Talk &m_talk;
    QAction *m_undo = nullptr;
    std::optional<ThemeEdit> m_inverse; // of the last one
    std::function<void()> m_follow;
    bool m_isToldOfRows = false; // that their part was taken back
};

} // namespace quillmere
