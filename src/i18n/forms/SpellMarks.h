#pragma once

#include "outline/Range.h"

#include <QSyntaxHighlighter>

#include <functional>

class QAction;
class QMenu;

namespace quillmere {

class Speller;
class TranslationEdit;

// Draws a wave under the misspelled words of a translation, and offers what was meant in its context menu; F7
// leads to the next of them and opens that menu.
class SpellMarks : public QSyntaxHighlighter
{
    Q_OBJECT

public:
    SpellMarks(Speller &speller, TranslationEdit &edit);

    void setOn(bool on);
    // The misspelled word at a position of the text; empty for none.
    Range wrongAt(int position) const;
    // Of the whole text, in its order.
    QList<Range> wrongWords() const;

signals:
    // The next misspelled word was wanted, and there is none.
    void nothingWrong();

protected:
    void highlightBlock(const QString &text) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool isWrong(const QString &text, const Range &word, int block) const;
    void showMenu(const QPoint &place, int position);
    void addActions(QMenu &menu, const Range &word);
    void addSuggestions(QMenu &menu, const Range &word, QAction *before);
    void replace(const Range &word, const QString &by);
    void goToNext();
    void lookUpSoon();
    void forEachWord(const std::function<void(Range place, const QString &word)> &use) const;
    void endTyping();

    Speller &m_speller;
    TranslationEdit &m_edit;
    QAction *m_next;
    bool m_isOn = false;
    bool m_isLooking = false; // what is there is looked up when the event loop comes round
    int m_typing = -1;        // position behind the word that is being typed
};

} // namespace quillmere
