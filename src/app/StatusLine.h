#pragma once

#include "files/TextFile.h"

#include <QHash>
#include <QObject>

class QAction;
class QLabel;
class QStatusBar;
class QToolButton;

namespace quillmere {

class OfferBar;
class SourceTab;
class WebBrowser;

// The line below the window: hints at the left; caret, number of blocks and code page at the right. A click
// on the code page offers to change how bytes become text.
class StatusLine : public QObject
{
    Q_OBJECT

public:
    explicit StatusLine(QStatusBar &bar);

    void showCaret(int line, int column); // both 1-based
    void showBlocks(int count);
    void showCodePage(CodePage page);
    // The rule that is in force; also after one was chosen and not taken.
    void showRule(CodePageRule rule);
    // How many problems the theme has; nothing for an empty text.
    void showProblems(const QString &summary);
    // Says from now on where the caret is, how many blocks there are, and when the browser shows an older
    // text than the source box holds.
    void watchSource(const SourceTab &source, const WebBrowser &browser);

    OfferBar *offers;
    QToolButton *changes; // shows what a command has changed; hidden at first

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

signals:
    void ruleChosen(CodePageRule rule);
    // A click on the number of problems.
    void problemsChosen();

private:
    QRect messageRoom() const;
    bool isCut() const;
    void drawCut() const;

    QStatusBar &m_bar;
    QLabel *m_behind;
    QLabel *m_caret;
    QLabel *m_blocks;
    QToolButton *m_problems;
    QToolButton *m_page;
    QHash<CodePageRule, QAction *> m_rules;
};

} // namespace quillmere
