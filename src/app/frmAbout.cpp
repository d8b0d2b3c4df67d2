#include "app/frmAbout.h"

#include "app/MenuCommands.h"
#include "app/SystemDetails.h"
#include "controls/Named.h"
#include "controls/PageScroll.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QIcon>
#include <QLabel>
#include <QPushButton>
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

// The box goes where the command comes up.
QPushButton *frmAbout::leadTo(QAction &command, const char *name)
{
    auto *button = named(new QPushButton(command.text()), name, plainCaption(command));
    button->setToolTip(command.toolTip());
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, &QDialog::accept);
    connect(button, &QPushButton::clicked, &command, &QAction::trigger);
    return button;
}

frmAbout::frmAbout(QAction &shortcuts, QAction &guide, QWidget *parent) : QDialog(parent)
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
    maker->setToolTip(tr("Who made Quillmere. The address can be selected and copied."));
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    auto *copy = named(new QPushButton(tr("Copy &Details")), "cmdCopyDetails", tr("Copy Details"));
    copy->setToolTip(tr("Copies versions, system and screen to the clipboard, for a bug report. It "
                        "names no files."));
    copy->setAutoDefault(false);
    connect(copy, &QPushButton::clicked, this, [copy] {
        QGuiApplication::clipboard()->setText(systemDetails());
        copy->setText(tr("Copied"));
    });
    buttons->addButton(copy, QDialogButtonBox::ActionRole);
    buttons->button(QDialogButtonBox::Ok)->setDefault(true);
    auto *help = new QHBoxLayout;
    help->addWidget(leadTo(guide, "cmdAboutGuide"));
    help->addWidget(leadTo(shortcuts, "cmdAboutShortcuts"));
    help->addStretch();

    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(32, 24, 32, 16);
    column->setSpacing(8);
    column->addLayout(beside(named(new QLabel, "lblIcon", tr("Icon")), name, version));
    column->addWidget(what);
    column->addWidget(maker);
    column->addSpacing(8);
    column->addLayout(help);
    column->addWidget(buttons);
    column->setSizeConstraint(QLayout::SetFixedSize);
    scrollWhereSmall(*this);
}

} // namespace quillmere
