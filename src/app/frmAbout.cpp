#include "app/frmAbout.h"

#include "controls/Named.h"
#include "controls/PageScroll.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QIcon>
#include <QLabel>
#include <QVBoxLayout>

namespace quillmere {

namespace {

// The icon of the program, and its name and version to the right of it.
QLayout *beside(QLabel *icon, QLabel *name, QLabel *version)
{
    icon->setPixmap(QApplication::windowIcon().pixmap(64));
    auto *names = new QVBoxLayout;
    names->setSpacing(4);
    names->addWidget(name);
    names->addWidget(version);
    auto *row = new QHBoxLayout;
    row->setSpacing(16);
    row->addWidget(icon);
    row->addLayout(names, 1);
    return row;
}

} // namespace

frmAbout::frmAbout(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmAbout"));
    setWindowTitle(tr("About Quillmere"));
    setWindowFlag(Qt::WindowStaysOnTopHint); // the colour picker stays on top, too
    auto *name = named(new QLabel(QStringLiteral("Quillmere")), "lblProduct", tr("Product"));
    QFont large = name->font();
    large.setPointSizeF(large.pointSizeF() * 2);
    large.setBold(true);
    name->setFont(large);
    auto *version = named(new QLabel(tr("Version %1").arg(QCoreApplication::applicationVersion())),
                          "lblVersion", tr("Version"));
    auto *what = new QLabel(tr("The editor for the theme skins of television receivers."));
    auto *maker =
        named(new QLabel(tr("The Quillmere authors\nauthors@quillmere.example")), "lblMaker", tr("Maker"));
    maker->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);

    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(32, 24, 32, 16);
    column->setSpacing(8);
    column->addLayout(beside(named(new QLabel, "lblIcon", tr("Icon")), name, version));
    column->addWidget(what);
    column->addWidget(maker);
    column->addSpacing(8);
    column->addWidget(buttons);
    column->setSizeConstraint(QLayout::SetFixedSize);
    scrollWhereSmall(*this);
}

} // namespace quillmere
