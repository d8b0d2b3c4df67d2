#include "making/forms/MakingDialog.h"

#include "controls/Named.h"
#include "controls/PageScroll.h"

#include <QBoxLayout>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>

#include <algorithm>

namespace quillmere {

namespace {
constexpr int kWidth = 520;  // pixels, where there is room
constexpr int kWhyLines = 2; // for the reason, so that nothing moves when it comes and goes
} // namespace

MakingDialog::MakingDialog(const char *name, const QString &title, const QString &make, QWidget *parent)
    : QDialog(parent), m_fields(new QFormLayout), lblNewWhy(named(new QLabel, "lblNewWhy", tr("Why not"))),
      cmdNew(named(new QPushButton(make), "cmdNew", QString(make).remove(u'&')))
{
    setObjectName(QLatin1String(name));
    setWindowTitle(title);
    m_fields->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    lblNewWhy->setTextFormat(Qt::PlainText);
    lblNewWhy->setWordWrap(true);
    lblNewWhy->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    lblNewWhy->setMinimumHeight(kWhyLines * lblNewWhy->fontMetrics().lineSpacing());
}

void MakingDialog::addField(const QString &caption, QWidget *field)
{
    auto *label = new QLabel(caption);
    label->setBuddy(field);
    m_fields->addRow(label, field);
}

void MakingDialog::addField(const QString &caption, QWidget *field, QWidget *beside)
{
    auto *label = new QLabel(caption);
    label->setBuddy(field);
    auto *line = new QHBoxLayout;
    line->addWidget(field, 1);
    line->addWidget(beside);
    m_fields->addRow(label, line);
}

void MakingDialog::complete(QWidget *first)
{
    auto *cancel = named(new QPushButton(tr("Cancel")), "cmdNewCancel", tr("Close without making anything"));
    cmdNew->setDefault(true);
    cmdNew->setToolTip(tr("Makes it, and closes this dialog."));
    cancel->setToolTip(tr("Closes this dialog and makes nothing."));
    cancel->setAutoDefault(false);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(cmdNew, &QPushButton::clicked, this, [this] {
        if (make())
            accept();
    });
    auto *buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(cmdNew);
    buttons->addWidget(cancel);
    auto *column = new QVBoxLayout(this);
    column->addLayout(m_fields);
    column->addWidget(lblNewWhy, 1);
    column->addLayout(buttons);
    scrollWhereSmall(*this);
    resize(std::max(kWidth, sizeHint().width()), sizeHint().height());
    check();
    first->setFocus();
}

void MakingDialog::check()
{
    const QString why = whyNot();
    lblNewWhy->setText(why);
    cmdNew->setEnabled(why.isEmpty());
}

} // namespace quillmere
