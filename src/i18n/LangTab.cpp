#include "i18n/LangTab.h"

#include "platform/ListView.h"
#include "platform/Named.h"

#include <QLineEdit>

namespace quillmere {

namespace {

constexpr int kMargin = 8;           // pixels
constexpr int kLine = 26;            // pixels, a text box
constexpr int kLanguagesHeight = 92; // pixels
constexpr int kAround = 2820;        // twips of the frame's height that the strings do not take

} // namespace

LangTab::LangTab(QWidget *parent)
    : TabFrame(QStringLiteral("frYt(4)"), parent),
      m_languages({QString(), QStringLiteral("Nama"), QStringLiteral("Code")}),
      m_strings({QStringLiteral("No"), QStringLiteral("Source"), QStringLiteral("Translate")},
                ListRows::Checks::Yes),
      txtLang(named(new QLineEdit(this), "txtLang", tr("Language catalogue"))),
      lvLang(new ListView(QStringLiteral("lvLang"), tr("Languages"), m_languages, this)),
      txtLangFile(named(new QLineEdit(this), "txtLangFile", tr("Language file"))),
      LvBhs(new ListView(QStringLiteral("LvBhs"), tr("Translations"), m_strings, this))
{
    txtLang->setReadOnly(true);
    lvLang->setColumnShares({4, 3, 3});
    LvBhs->setColumnShares({1, 6, 6});
}

void LangTab::layOut(int height)
{
    const int inner = width() - 2 * kMargin;
    int top = kMargin;
    place(txtLang, kMargin, top, inner, kLine);
    top += kLine + kMargin;
    place(lvLang, kMargin, top, inner, kLanguagesHeight);
    top += kLanguagesHeight + kMargin;
    place(txtLangFile, kMargin, top, inner, kLine);
    top += kLine + kMargin;
    place(LvBhs, kMargin, top, inner, toPixels(height - kAround));
}

} // namespace quillmere
