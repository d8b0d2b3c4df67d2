#pragma once

#include "controls/Scheme.h"

#include <QObject>

class QMainWindow;

namespace quillmere {

class Commands;

// Light or dark, as the desktop has it or as the person fixes it. All windows of the program follow at once.
class Looks : public QObject
{
    Q_OBJECT

public:
    Looks(Commands &menu, QMainWindow &window);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void choose(Scheme scheme);
    void apply(Scheme scheme);
    void mendDesktop();

    Commands &m_menu;
    Scheme m_scheme = Scheme::Desktop;
    QString m_desktopStyle;
    QPalette m_desktopTips;
    bool m_isDimmed; // by us, where the desktop does not dim a selection without the focus
};

} // namespace quillmere
