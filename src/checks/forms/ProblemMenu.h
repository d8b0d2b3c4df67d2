#pragma once

#include "checks/Ignored.h"
#include "checks/Mends.h"

#include <QObject>

class QMenu;

namespace quillmere {

class LiveCheck;
class LiveIndex;
class Talk;

// How edits of the theme are made in the running program.
struct ThemeEditor
{
    // False where the person would rather not; `done` is said afterwards.
    std::function<bool(const ThemeEdit &edit, const QString &done)> apply;
    // Leads to a row of a catalogue.
    std::function<void(const QString &path, qint32 row)> goTo;
    std::function<bool(const QString &path)> isOpenText;
    std::function<std::optional<QList<ListRows::Row>>(const QString &path)> openRows;
};

// What can be done about a problem: the edits that mend it, and no longer being told.
class ProblemMenu : public QObject
{
    Q_OBJECT

public:
    ProblemMenu(LiveCheck &check, const LiveIndex &index, ThemeEditor editor, Talk &talk,
                QObject *parent = nullptr);

    // Opens the menu for problems at a place of the screen; for none it only has what is ignored.
    void popup(const QList<Problem> &problems, const QPoint &at, QWidget *parent);

private:
    void addMends(QMenu &menu, const Problem &problem);
    void addIgnoring(QMenu &menu, const Problem &problem);
    void addIgnored(QMenu &menu);
    bool mayChange(const Mend &mend);
    void mend(const Mend &mend);
    void ignore(const IgnoredRule &rule);

    LiveCheck &m_check;
    const LiveIndex &m_index;
    ThemeEditor m_editor;
    Talk &m_talk;
};

} // namespace quillmere
