#pragma once

#include <QObject>

class QMainWindow;

namespace quillmere {

class Commands;
class Files;
class LangTab;
class LanguageCompare;
class LiveCheck;
class OutsideChanges;
class Talk;
class ThemeEditing;
class ThemeProject;

// What the Lang tab has from the rest of the program: problems of its strings, keys that belong to it, and
// news of files that have changed.
class LanguageWork : public QObject
{
    Q_OBJECT

public:
    struct Parts
    {
        LangTab &tab;
        const ThemeProject &theme;
        const LiveCheck &check;
        OutsideChanges &outside;
        Files &files;
        ThemeEditing &editing;
        Talk &talk;
    };
    LanguageWork(const Parts &parts, Commands &menu, QMainWindow &window);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void showProblems();
    QStringList messagesOf(int row) const;

    LangTab &m_tab;
    const ThemeProject &m_theme;
    const LiveCheck &m_check;
    LanguageCompare *m_compare;
};

} // namespace quillmere
