#include "widgets/forms/PropertyEditors.h"

#include "controls/CaptionBox.h"
#include "controls/Named.h"
#include "markup/Matching.h"
#include "outline/Vocabulary.h"
#include "widgets/BlockProperties.h"
#include "widgets/forms/ColourCombo.h"

#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpressionValidator>

#include <limits>

namespace quillmere {

namespace {

constexpr int kColours = 3;

const QStringList kAlignments = {
    QStringLiteral("left|top"),    QStringLiteral("left|vcentre"),    QStringLiteral("left|bottom"),
    QStringLiteral("hcentre|top"), QStringLiteral("hcentre|vcentre"), QStringLiteral("hcentre|bottom"),
    QStringLiteral("right|top"),   QStringLiteral("right|vcentre"),   QStringLiteral("right|bottom")};
const QStringList kFormats = {QStringLiteral("normal"), QStringLiteral("water"), QStringLiteral("static")};

QStringList namesOf(const ListRows &catalogue)
{
    QStringList names;
    for (const ListRows::Row &row : catalogue.rows())
        names.append(row.sub(1));
    return names;
}

CaptionBox *editorFrame(const char *name)
{
    auto *frame = new CaptionBox(QLatin1String(name));
    frame->setMinimumWidth(1); // or the name of a property, however long, would widen the dialog
    return frame;
}

} // namespace

PropertyEditors::PropertyEditors(const PropertyChoices &choices) : m_choices(choices), m_hint(new QLabel)
{
    m_hint->setAlignment(Qt::AlignCenter);
    m_hint->setWordWrap(true);
    for (QWidget *page : {static_cast<QWidget *>(m_hint), makeRect(), makeColour(), makeCombo(), makeText()})
        addWidget(page);
    for (QLineEdit *box : findChildren<QLineEdit *>())
        box->installEventFilter(this);
}

// Whole numbers with or without a sign. What the source holds is shown all the same, whatever it is.
QLineEdit *PropertyEditors::numberBox(const char *name, const QString &accessibleName)
{
    static const QRegularExpression wholeNumber(QStringLiteral("[+-]?[0-9]*"));
    auto *box = named(new QLineEdit, name, accessibleName);
    box->setMaxLength(std::numeric_limits<int>::max());
    box->setValidator(new QRegularExpressionValidator(wholeNumber, box));
    return box;
}

QPushButton *PropertyEditors::setButton(const char *name, void (PropertyEditors::*click)())
{
    auto *button = named(new QPushButton(tr("&Set")), name, tr("Write the value into the source"));
    connect(button, &QPushButton::clicked, this, click);
    return button;
}

QWidget *PropertyEditors::makeRect()
{
    frRect = editorFrame("frRect");
    txtL = numberBox("txtL", tr("Left"));
    txtT = numberBox("txtT", tr("Top"));
    txtW = numberBox("txtW", tr("Width"));
    txtH = numberBox("txtH", tr("Height"));
    cmdRec = setButton("cmdRec", &PropertyEditors::cmdRec_Click);
    auto *grid = new QGridLayout(frRect);
    int cell = 0;
    for (QLineEdit *box : {txtL, txtT, txtW, txtH}) {
        grid->addWidget(new QLabel(box->accessibleName()), cell / 2, cell % 2 * 2);
        grid->addWidget(box, cell / 2, cell % 2 * 2 + 1);
        ++cell;
    }
    grid->setRowStretch(2, 1);
    grid->addWidget(cmdRec, 3, 3, Qt::AlignRight);
    return frRect;
}

QWidget *PropertyEditors::makeColour()
{
    frColor = editorFrame("frColor");
    cmdColor = setButton("cmdColor", &PropertyEditors::cmdColor_Click);
    auto *grid = new QGridLayout(frColor);
    const QString labels[kColours] = {tr("1st"), tr("2nd"), tr("3rd")};
    for (int i = 0; i < kColours; ++i) {
        cmbColor.append(named(new ColourCombo, "cmbColor", tr("Colour %1").arg(i + 1)));
        cmbColor[i]->setObjectName(QStringLiteral("cmbColor(%1)").arg(i));
        grid->addWidget(new QLabel(labels[i]), i, 0);
        grid->addWidget(cmbColor[i], i, 1);
    }
    grid->setColumnStretch(1, 1);
    grid->addWidget(cmdColor, kColours, 0, 1, 2, Qt::AlignRight);
    return frColor;
}

QWidget *PropertyEditors::makeCombo()
{
    frCombo = editorFrame("frCombo");
    CmbVal = named(new QComboBox, "CmbVal", tr("Value"));
    takeOwnValues(CmbVal);
    // The longest name of a large catalogue must not widen the dialog.
    CmbVal->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    CmdCombo = setButton("CmdCombo", &PropertyEditors::CmdCombo_Click);
    auto *column = new QVBoxLayout(frCombo);
    column->addWidget(CmbVal);
    column->addStretch();
    column->addWidget(CmdCombo, 0, Qt::AlignRight);
    return frCombo;
}

QWidget *PropertyEditors::makeText()
{
    frTxt = editorFrame("frTxt");
    txtTxt = named(new QLineEdit, "txtTxt", tr("Value"));
    txtTxt->setMaxLength(std::numeric_limits<int>::max());
    cmdTxt = setButton("cmdTxt", &PropertyEditors::cmdTxt_Click);
    auto *column = new QVBoxLayout(frTxt);
    column->addWidget(txtTxt);
    column->addStretch();
    column->addWidget(cmdTxt, 0, Qt::AlignRight);
    return frTxt;
}

bool PropertyEditors::eventFilter(QObject *watched, QEvent *event)
{
    auto *box = qobject_cast<QLineEdit *>(watched);
    if (!box || (event->type() != QEvent::KeyPress && event->type() != QEvent::ShortcutOverride))
        return QStackedWidget::eventFilter(watched, event);
    const auto *key = static_cast<QKeyEvent *>(event);
    if (event->type() == QEvent::ShortcutOverride) {
        if (!key->matches(QKeySequence::Undo) || box->isUndoAvailable())
            return false;
        event->ignore();
        return true;
    }
    const bool isNumber = box == txtL || box == txtT || box == txtW || box == txtH;
    const bool isUp = key->key() == Qt::Key_Up;
    const Qt::KeyboardModifiers held = key->modifiers() & ~Qt::KeypadModifier;
    if (!isNumber || (!isUp && key->key() != Qt::Key_Down) || (held & ~Qt::ShiftModifier))
        return false;
    bool isWhole = false;
    const int number = box->text().toInt(&isWhole);
    if (isWhole) {
        const qint64 step = held & Qt::ShiftModifier ? 10 : 1;
        box->selectAll(); // what is inserted can be undone
        box->insert(QString::number(number + (isUp ? step : -step)));
    }
    return true;
}

void PropertyEditors::showHint(const QString &hint)
{
    m_hint->setText(hint);
    setCurrentWidget(m_hint);
}

void PropertyEditors::showEditor(CaptionBox *editor, QPushButton *button, const QString &property)
{
    // Only one that is named "rect" and nothing else is ever set there, though others are shown in its boxes.
    m_property = editor == frRect ? QStringLiteral("rect") : property;
    editor->setCaption(m_property);
    setCurrentWidget(editor);
    button->setDefault(true); // Enter in any box sets the value
}

void PropertyEditors::edit(const QString &name, const QString &value)
{
    if (containsExact(name, u"rect")) {
        const QStringList values = bracketedValues(value, 4);
        txtL->setText(values[0]);
        txtT->setText(values[1]);
        txtW->setText(values[2]);
        txtH->setText(values[3]);
        showEditor(frRect, cmdRec, name);
        txtL->setFocus();
        txtL->selectAll();
        return;
    }
    const bool isChoice =
        name == u"font" || name == u"img" || name == u"alignment" || name == u"mode" || name == u"format";
    if (isChoice) {
        chooseFrom(name == u"font"        ? namesOf(m_choices.lvFont)
                   : name == u"img"       ? namesOf(m_choices.lvImage)
                   : name == u"alignment" ? kAlignments
                   : name == u"mode"      ? wordsFor(Kind::Mode)
                                          : kFormats,
                   value);
        showEditor(frCombo, CmdCombo, name);
        CmbVal->setFocus();
        CmbVal->lineEdit()->selectAll();
    } else if (containsExact(name, u"color")) {
        const QStringList values = bracketedValues(value, kColours);
        for (int i = 0; i < kColours; ++i) {
            cmbColor[i]->setColours(m_choices.lvColor);
            cmbColor[i]->setCurrentIndex(cmbColor[i]->findText(values[i]));
            cmbColor[i]->setEditText(values[i]);
        }
        showEditor(frColor, cmdColor, name);
        cmbColor[0]->setFocus();
        cmbColor[0]->lineEdit()->selectAll();
    } else {
        txtTxt->setText(value);
        showEditor(frTxt, cmdTxt, name);
        txtTxt->setFocus();
        txtTxt->selectAll();
    }
}

void PropertyEditors::chooseFrom(const QStringList &choices, const QString &value)
{
    CmbVal->clear();
    CmbVal->addItems(choices);
    CmbVal->setCurrentIndex(CmbVal->findText(value)); // the arrow keys go on from here
    CmbVal->setEditText(value);
}

void PropertyEditors::cmdRec_Click()
{
    emit contentSet(bracketed({txtL->text(), txtT->text(), txtW->text(), txtH->text()}));
}

void PropertyEditors::cmdColor_Click()
{
    QStringList colours;
    for (const ColourCombo *combo : std::as_const(cmbColor))
        colours.append(combo->currentText());
    emit contentSet(bracketed(colours));
}

void PropertyEditors::CmdCombo_Click()
{
    emit contentSet(CmbVal->currentText());
}

void PropertyEditors::cmdTxt_Click()
{
    emit contentSet(txtTxt->text());
}

void PropertyEditors::forgetTyping()
{
    for (QLineEdit *box : currentWidget()->findChildren<QLineEdit *>())
        box->setText(QString(box->text()));
}

} // namespace quillmere
