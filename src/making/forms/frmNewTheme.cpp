#include "making/forms/frmNewTheme.h"

#include "controls/Named.h"
#include "files/Paths.h"

#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace quillmere {

namespace {

QPushButton *chooser(const char *name, const QString &accessibleName)
{
    auto *button = named(new QPushButton(QStringLiteral("...")), name, accessibleName);
    button->setToolTip(accessibleName);
    button->setAutoDefault(false);
    return button;
}

} // namespace

frmNewTheme::frmNewTheme(const QString &folder, Make make, QWidget *parent)
    : MakingDialog("frmNewTheme", tr("New Theme"), tr("&Make"), parent), m_make(std::move(make)),
      txtNewThemeFolder(named(new QLineEdit(folder), "txtNewThemeFolder", tr("Folder"))),
      txtNewThemeFont(named(new QLineEdit, "txtNewThemeFont", tr("Font"))),
      lblNewThemePath(named(new QLabel, "lblNewThemePath", tr("Folder of the theme"))),
      cbNewThemeScreen(named(new QComboBox, "cbNewThemeScreen", tr("Screen")))
{
    auto *chooseFolder = chooser("cmdNewThemeFolder", tr("Choose a folder"));
    auto *chooseFont = chooser("cmdNewThemeFont", tr("Choose a font file"));
    txtNewThemeFolder->setToolTip(tr("A theme is a folder named \"theme\", in the one that you choose."));
    txtNewThemeFont->setToolTip(
        tr("A TrueType file that is copied into the theme. Without one, the theme names no font."));
    txtNewThemeFont->setPlaceholderText(tr("none"));
    for (const QSize size : {QSize(1280, 720), QSize(1024, 576)})
        cbNewThemeScreen->addItem(tr("%1 x %2").arg(size.width()).arg(size.height()), size);
    lblNewThemePath->setTextFormat(Qt::PlainText);
    lblNewThemePath->setWordWrap(true);
    connect(txtNewThemeFolder, &QLineEdit::textChanged, this, &frmNewTheme::txtNewThemeFolder_Change);
    connect(txtNewThemeFont, &QLineEdit::textChanged, this, [this] { check(); });
    connect(chooseFolder, &QPushButton::clicked, this, &frmNewTheme::cmdNewThemeFolder_Click);
    connect(chooseFont, &QPushButton::clicked, this, &frmNewTheme::cmdNewThemeFont_Click);
    addField(tr("&Folder:"), txtNewThemeFolder, chooseFolder);
    addField(tr("Theme:"), lblNewThemePath);
    cbNewThemeScreen->setToolTip(tr("The screen that the windows of the theme are made for, pixels."));
    addField(tr("&Screen:"), cbNewThemeScreen);
    addField(tr("F&ont:"), txtNewThemeFont, chooseFont);
    complete(txtNewThemeFolder);
    txtNewThemeFolder_Change();
}

QString frmNewTheme::folder() const
{
    const QString typed = txtNewThemeFolder->text();
    return typed.trimmed().isEmpty() ? QString() : themeFolderFor(typed);
}

void frmNewTheme::txtNewThemeFolder_Change()
{
    lblNewThemePath->setText(folder());
    check();
}

void frmNewTheme::cmdNewThemeFolder_Click()
{
    const QString chosen = QFileDialog::getExistingDirectory(this, windowTitle(), txtNewThemeFolder->text());
    if (!chosen.isEmpty())
        txtNewThemeFolder->setText(QDir::toNativeSeparators(chosen));
}

void frmNewTheme::cmdNewThemeFont_Click()
{
    const QString chosen =
        QFileDialog::getOpenFileName(this, windowTitle(), txtNewThemeFont->text(), tr("TrueType (*.ttf)"));
    if (!chosen.isEmpty())
        txtNewThemeFont->setText(QDir::toNativeSeparators(chosen));
}

QString frmNewTheme::whyNot() const
{
    if (folder().isEmpty())
        return tr("Choose a folder.");
    if (const QString why = whyNotNewFolder(folder()); !why.isEmpty())
        return why;
    return txtNewThemeFont->text().isEmpty() ? QString() : whyNotFont(txtNewThemeFont->text());
}

bool frmNewTheme::make()
{
    const QString path = folder();
    return m_make(path, {QFileInfo(QFileInfo(path).path()).fileName(),
                         cbNewThemeScreen->currentData().toSize(), txtNewThemeFont->text()});
}

} // namespace quillmere
