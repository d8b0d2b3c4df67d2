#include "i18n/forms/Spelling.h"

#include "asking/Talk.h"
#include "controls/Commands.h"
#include "i18n/forms/SpellDictionary.h"
#include "i18n/forms/TranslationEdit.h"

#include <QAction>
#include <QEvent>
#include <QSettings>

namespace quillmere {

namespace {
const QString kOn = QStringLiteral("spelling/on");
}

Spelling::Spelling(TranslationEdit &edit, Commands &menu, Talk &talk)
    : QObject(&edit), m_talk(talk), m_marks(new SpellMarks(m_speller, edit)),
      m_item(menu.action("mnuLangSpelling"))
{
    if (!SpellDictionary::isBuiltIn()) {
        m_item->setToolTip(tr("This program was built without Hunspell, which checks spelling."));
        return;
    }
    m_item->setChecked(isOn());
    menu.on("mnuLangSpelling", [this] { mnuLangSpelling_Click(); });
    connect(m_marks, &SpellMarks::nothingWrong, this, [this] {
        const QString why = whyNot();
        m_talk.say(why.isEmpty() ? tr("No word of this translation is misspelled.") : why);
    });
    edit.installEventFilter(this);
    begin();
}

bool Spelling::isOn()
{
    return QSettings().value(kOn, true).toBool();
}

// Once a language, or it would be said at each string.
bool Spelling::eventFilter(QObject *watched, QEvent *event)
{
    const bool comes = event->type() == QEvent::FocusIn && m_item->isChecked() && !m_language.isEmpty();
    if (comes && m_told != m_language) {
        m_told = m_language;
        if (const QString why = whyNot(); !why.isEmpty())
            m_talk.say(why);
    }
    return QObject::eventFilter(watched, event);
}

void Spelling::setLanguage(const QString &name)
{
    m_language = name;
    begin();
}

// Whoever does not want it pays no memory for it.
void Spelling::begin()
{
    m_marks->setOn(m_item->isChecked());
    m_speller.setLanguage(m_item->isChecked() ? m_language : QString());
}

QString Spelling::whyNot() const
{
    if (!m_item->isChecked())
        return tr("Spelling is not checked.");
    if (m_language.isEmpty())
        return tr("Misspelled words will be marked in the panel below the strings of a language.");
    if (!m_speller.hasDictionary())
        return tr("There is no Hunspell dictionary for the language \"%1\" in %2.")
            .arg(m_language, Speller::folders().join(QStringLiteral(", ")));
    return {};
}

void Spelling::mnuLangSpelling_Click()
{
    QSettings().setValue(kOn, m_item->isChecked());
    begin();
    const QString why = whyNot();
    m_talk.say(why.isEmpty() ? tr("Misspelled words are marked in the translation; F7 leads to the next.")
                             : why);
}

} // namespace quillmere
