#pragma once

#include "receiver/Backdrop.h"

#include <QFrame>

class QAction;
class QBoxLayout;
class QComboBox;
class QToolButton;

namespace quillmere {

class PreviewFrame;

// Above the picture: the switch between the two views, and what can be chosen in that of the receiver. Where
// the picture is narrow, the choices come out of one button.
class ReceiverBar : public QWidget
{
    Q_OBJECT

public:
    ReceiverBar(PreviewFrame &frame, QAction &toggle);

    // The choices are there only while that view is.
    void showChoices(bool shown);
    // The one chosen stays where it is among them.
    void setLanguages(const QStringList &names);
    int state() const;        // 1 to 3
    QString language() const; // empty for the texts as written
    bool chooseLanguage(const QString &name);
    Backdrop backdrop() const;
    void setBackdrop(Backdrop backdrop);

signals:
    void stateChosen();
    void languageChosen();
    // Also when it is the one before: the picture can be another one.
    void backdropChosen();

protected:
    // Keeps its place at the frame.
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void addChoice(const QString &caption, QComboBox *box);
    void layOut();
    void fold(bool folded);

    PreviewFrame &m_frame;
    QToolButton *m_switch, *m_button;
    QFrame *m_popup;
    QWidget *m_choices;
    QBoxLayout *m_line;
    QComboBox *cboState, *cboLanguage, *cboBackdrop;
    bool m_shown = false, m_folded = false;
};

} // namespace quillmere
