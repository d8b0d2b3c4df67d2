#pragma once

#include "theme/ThemeEdit.h"

#include <QObject>
#include <QTimer>

#include <memory>

class QMainWindow;

namespace quillmere {

class Commands;
class LangTab;
class Talk;
class ThemeEditing;
class ThemeProject;
class frmCompareLanguages;

// Compare Languages of the Language menu. A language that is open is shown and changed in its rows, saved or
// not, any other in its file. Each edit is one step, which can be taken back in the dialog.
class LanguageCompare : public QObject
{
    Q_OBJECT

public:
    LanguageCompare(LangTab &tab, const ThemeProject &theme, ThemeEditing &editing, Talk &talk,
                    QMainWindow &window);
    ~LanguageCompare() override;

    void addCommands(Commands &menu);
    // Whether files that have changed are of interest.
    bool isShown() const;

private:
    void mnuLangCompare_Click();
    void showLanguages();
    bool put(const QString &language, const QString &source, const QString &translation);
    // Makes the last of these edits; what takes it back is the last of the others then.
    void step(QList<ThemeEdit> &from, QList<ThemeEdit> &to);
    void stepsChanged();

    LangTab &m_tab;
    const ThemeProject &m_theme;
    ThemeEditing &m_editing;
    Talk &m_talk;
    QMainWindow &m_window;
    std::unique_ptr<frmCompareLanguages> m_dialog; // made when it is first wanted
    QList<ThemeEdit> m_toUndo, m_toRedo;
    QTimer m_soon; // rows change many at a time
};

} // namespace quillmere
