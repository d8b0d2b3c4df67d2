#include "making/forms/frmConvertTheme.h"

#include "controls/Named.h"
#include "making/ThemeConversion.h"

#include <QComboBox>
#include <QLabel>
#include <QRegularExpression>

namespace quillmere {

namespace {

QString sizeText(const QSize &size)
{
    return QObject::tr("%1 x %2").arg(size.width()).arg(size.height());
}

} // namespace

frmConvertTheme::frmConvertTheme(const QSize &screen, Make make, QWidget *parent)
    : MakingDialog("frmConvertTheme", tr("Convert Theme"), tr("&Convert"), parent), m_screen(screen),
      m_make(std::move(make)),
      cbConvertScreen(named(new QComboBox, "cbConvertScreen", tr("Screen to convert to")))
{
    auto *from = named(new QLabel(sizeText(screen)), "lblConvertFrom", tr("Screen of the theme"));
    from->setToolTip(tr("As the window catalogue says."));
    for (const QSize size : {QSize(1024, 576), QSize(1280, 720), QSize(1920, 1080)}) {
        if (size != screen)
            cbConvertScreen->addItem(sizeText(size));
    }
    cbConvertScreen->setEditable(true);
    cbConvertScreen->setInsertPolicy(QComboBox::NoInsert);
    cbConvertScreen->setToolTip(tr("Every rect of every window is scaled to it. Choose a size or type one."));
    connect(cbConvertScreen, &QComboBox::editTextChanged, this, [this] { check(); });
    addField(tr("From:"), from);
    addField(tr("&To:"), cbConvertScreen);
    complete(cbConvertScreen);
}

QSize frmConvertTheme::screen() const
{
    static const QRegularExpression pattern(
        QStringLiteral("^\\s*(\\d{1,6})\\s*[x\u00D7*]\\s*(\\d{1,6})\\s*$"),
        QRegularExpression::CaseInsensitiveOption);
    const auto match = pattern.match(cbConvertScreen->currentText());
    return {match.captured(1).toInt(), match.captured(2).toInt()};
}

QString frmConvertTheme::whyNot() const
{
    if (screen() == m_screen)
        return tr("The theme has this size already.");
    return whyNotScreen(screen());
}

bool frmConvertTheme::make()
{
    return m_make(screen());
}

} // namespace quillmere
