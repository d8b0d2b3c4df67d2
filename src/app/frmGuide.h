#pragma once

#include "controls/ModelessDialog.h"

class QLabel;
class QLineEdit;
class QToolButton;
class QTreeWidget;
class QTreeWidgetItem;

namespace quillmere {

class GuideText;

// The user guide: its text, its contents at the left, and a line to find words in it.
class frmGuide : public ModelessDialog
{
    Q_OBJECT

public:
    // `folder` holds guide.md.
    frmGuide(const QString &folder, QWidget &owner);

    // Comes up; where it was not to be seen yet, at the first heading with these words.
    void open(const QStringList &words);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void showContents();
    void markHeading();
    void find(bool backwards);
    QToolButton *button(const char *name, const QString &caption, const QString &tip);

    GuideText *txtGuide;
    QTreeWidget *tvGuide;
    QLineEdit *txtGuideFind;
    QLabel *lblGuideFind;
    QToolButton *cmdGuideBack, *cmdGuideForward;
};

} // namespace quillmere
