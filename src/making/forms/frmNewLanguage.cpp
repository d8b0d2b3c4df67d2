#include "making/forms/frmNewLanguage.h"

#include "controls/Named.h"

#include <QComboBox>
#include <QLineEdit>

namespace quillmere {

namespace {

QLineEdit *line(const char *name, const QString &accessibleName, const QString &tip)
{
    auto *made = named(new QLineEdit, name, accessibleName);
    made->setToolTip(tip);
    return made;
}

} // namespace

frmNewLanguage::frmNewLanguage(const LanguageNames &names, const QStringList &models, Make make,
                               QWidget *parent)
    : MakingDialog("frmNewLanguage", tr("New Language"), tr("&Make"), parent), m_names(names),
      m_make(std::move(make)),
      txtNewLangId(line("txtNewLangId", tr("ID"),
                        tr("What the catalogue, and the receiver's settings, call the language."))),
      txtNewLangName(line("txtNewLangName", tr("Name"), tr("What the language file calls itself."))),
      txtNewLangFile(
          line("txtNewLangFile", tr("File"), tr("The name of the file, beside the language catalogue."))),
      cbNewLangModel(named(new QComboBox, "cbNewLangModel", tr("Texts")))
{
    connect(txtNewLangId, &QLineEdit::textChanged, this, &frmNewLanguage::txtNewLangId_Change);
    for (QLineEdit *field : {txtNewLangName, txtNewLangFile})
        connect(field, &QLineEdit::textChanged, this, [this] { check(); });
    cbNewLangModel->addItem(tr("All texts of the windows"));
    for (const QString &model : models)
        cbNewLangModel->addItem(tr("Those of %1").arg(model));
    cbNewLangModel->setToolTip(tr("The texts that the language begins with, none of them translated."));
    cbNewLangModel->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    addField(tr("&ID:"), txtNewLangId);
    addField(tr("&Name:"), txtNewLangName);
    addField(tr("&File:"), txtNewLangFile);
    addField(tr("&Texts:"), cbNewLangModel);
    complete(txtNewLangId);
}

// The other two follow until they are typed into.
void frmNewLanguage::txtNewLangId_Change()
{
    const QString id = txtNewLangId->text();
    if (!txtNewLangName->isModified())
        txtNewLangName->setText(id);
    if (!txtNewLangFile->isModified())
        txtNewLangFile->setText(id.isEmpty() ? QString()
                                             : QString(id.toLower().replace(u' ', u'_') + u".xml"));
    check();
}

NewLanguage frmNewLanguage::language() const
{
    return {txtNewLangId->text(), txtNewLangName->text(), txtNewLangFile->text()};
}

QString frmNewLanguage::whyNot() const
{
    return m_names.whyNot(language());
}

bool frmNewLanguage::make()
{
    return m_make(language(), cbNewLangModel->currentIndex() - 1);
}

} // namespace quillmere
