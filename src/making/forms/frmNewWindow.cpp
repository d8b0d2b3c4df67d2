#include "making/forms/frmNewWindow.h"

#include "controls/Named.h"

#include <QComboBox>
#include <QLineEdit>

namespace quillmere {

frmNewWindow::frmNewWindow(const QString &original, const WindowNames &names, Make make, QWidget *parent)
    : MakingDialog("frmNewWindow", original.isEmpty() ? tr("New Window") : tr("Duplicate %1").arg(original),
                   original.isEmpty() ? tr("&Make") : tr("&Duplicate"), parent),
      m_names(names), m_make(std::move(make)),
      txtNewName(named(new QLineEdit(names.free(original.isEmpty() ? QStringLiteral("wnd_new") : original)),
                       "txtNewName", tr("Name of the new window"))),
      cbNewTemplate(named(new QComboBox, "cbNewTemplate", tr("Template")))
{
    txtNewName->setToolTip(tr("The document gets this name, followed by .xml."));
    connect(txtNewName, &QLineEdit::textChanged, this, [this] { check(); });
    addField(tr("&Name:"), txtNewName);
    // In the order of WindowTemplate.
    cbNewTemplate->addItems({tr("Empty"), tr("List"), tr("Message box"), tr("Bar")});
    cbNewTemplate->setToolTip(tr("What the new window begins with."));
    if (original.isEmpty())
        addField(tr("&Template:"), cbNewTemplate);
    else
        cbNewTemplate->setParent(this);
    cbNewTemplate->setVisible(original.isEmpty());
    txtNewName->selectAll();
    complete(txtNewName);
}

QString frmNewWindow::whyNot() const
{
    return m_names.whyNot(txtNewName->text());
}

bool frmNewWindow::make()
{
    return m_make(txtNewName->text(), WindowTemplate(cbNewTemplate->currentIndex()));
}

} // namespace quillmere
