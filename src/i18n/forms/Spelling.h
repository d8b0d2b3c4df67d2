#pragma once

#include "i18n/forms/SpellMarks.h"
#include "i18n/forms/Speller.h"

#include <QObject>

class QAction;

namespace quillmere {

class Commands;
class Talk;
class TranslationEdit;

// "Spelling" in the Language menu: marks misspelled words in the box a translation is typed in, where there
// is a dictionary for the language. On until somebody would rather not; remembered.
class Spelling : public QObject
{
    Q_OBJECT

public:
    Spelling(TranslationEdit &edit, Commands &menu, Talk &talk);

    // Whether misspelled words are to be marked at all.
    static bool isOn();
    // The language that is typed, by the name the theme gives it; empty for none.
    void setLanguage(const QString &name);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void mnuLangSpelling_Click();
    void begin();
    QString whyNot() const; // empty where misspelled words are marked

    Talk &m_talk;
    Speller m_speller;
    SpellMarks *m_marks; // the document's
    QAction *m_item;
    QString m_language;
    QString m_told; // the language of which it was said why no words are marked
};

} // namespace quillmere
