#pragma once

#include <QDialog>

class QAction;
class QPushButton;

namespace quillmere {

// The About box: name, version and the maker's address, and ways to help.
class frmAbout : public QDialog
{
    Q_OBJECT

public:
    // With these commands on buttons.
    frmAbout(QAction &shortcuts, QAction &guide, QWidget *parent = nullptr);

private:
    QPushButton *leadTo(QAction &command, const char *name);
};

} // namespace quillmere
