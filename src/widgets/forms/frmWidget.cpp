#include "widgets/forms/frmWidget.h"

#include "controls/CaptionBox.h"
#include "controls/ListView.h"
#include "controls/Named.h"
#include "controls/PageScroll.h"
#include "markup/Matching.h"
#include "outline/Vocabulary.h"
#include "source/forms/SourceBox.h"
#include "widgets/BlockProperties.h"
#include "widgets/forms/ColourCombo.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpressionValidator>
#include <QScopedValueRollback>
#include <QStackedWidget>

#include <limits>

namespace quillmere {

namespace {

constexpr QSize kFirstSize{420, 460}; // pixels
constexpr int kColours = 3;
constexpr double kMostInKey = 5; // ms that a capture may take of a key

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

frmWidget::frmWidget(SourceBox &source, const PropertyChoices &choices, QWidget &owner)
    : ModelessDialog(QStringLiteral("frmWidget"), owner), m_source(source), m_choices(choices),
      m_capture(kMostInKey, [this] { GetProperty(m_name); }), m_rows({tr("Property"), tr("Value")}),
      lvBlock(new ListView(QStringLiteral("lvBlock"), tr("Properties"), m_rows)),
      txtSnippet(new SourceBox(QStringLiteral("txtSnippet"), tr("Captured text"), this)),
      m_editors(new QStackedWidget), m_hint(new QLabel)
{
    txtSnippet->setReadOnly(true);
    txtSnippet->hide();
    lvBlock->setColumnShares({1, 2});
    lvBlock->setTextElideMode(Qt::ElideRight);
    lvBlock->setToolTip(tr("Double-click a property, or press Enter, to edit it."));
    connect(lvBlock, &ListView::rowOpened, this, &frmWidget::lvBlock_DblClick);
    connect(&m_source, &SourceBox::changed, this, &frmWidget::source_Change);

    m_hint->setAlignment(Qt::AlignCenter);
    m_hint->setWordWrap(true);
    for (QWidget *page : {static_cast<QWidget *>(m_hint), makeRect(), makeColour(), makeCombo(), makeText()})
        m_editors->addWidget(page);

    auto *column = new QVBoxLayout(this);
    column->addWidget(lvBlock, 1);
    column->addWidget(m_editors);
    scrollWhereSmall(*this);
    resize(kFirstSize);
}

// Whole numbers with or without a sign. What the source holds is shown all the same, whatever it is.
QLineEdit *frmWidget::numberBox(const char *name, const QString &accessibleName)
{
    static const QRegularExpression wholeNumber(QStringLiteral("[+-]?[0-9]*"));
    auto *box = named(new QLineEdit, name, accessibleName);
    box->setMaxLength(std::numeric_limits<int>::max());
    box->setValidator(new QRegularExpressionValidator(wholeNumber, box));
    return box;
}

QPushButton *frmWidget::setButton(const char *name, void (frmWidget::*click)())
{
    auto *button = named(new QPushButton(tr("&Set")), name, tr("Write the value into the source"));
    connect(button, &QPushButton::clicked, this, click);
    return button;
}

QWidget *frmWidget::makeRect()
{
    frRect = editorFrame("frRect");
    txtL = numberBox("txtL", tr("Left"));
    txtT = numberBox("txtT", tr("Top"));
    txtW = numberBox("txtW", tr("Width"));
    txtH = numberBox("txtH", tr("Height"));
    cmdRec = setButton("cmdRec", &frmWidget::cmdRec_Click);
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

QWidget *frmWidget::makeColour()
{
    frColor = editorFrame("frColor");
    cmdColor = setButton("cmdColor", &frmWidget::cmdColor_Click);
    auto *column = new QVBoxLayout(frColor);
    for (int i = 0; i < kColours; ++i) {
        cmbColor.append(named(new ColourCombo, "cmbColor", tr("Colour %1").arg(i + 1)));
        cmbColor[i]->setObjectName(QStringLiteral("cmbColor(%1)").arg(i));
        column->addWidget(cmbColor[i]);
    }
    column->addWidget(cmdColor, 0, Qt::AlignRight);
    return frColor;
}

QWidget *frmWidget::makeCombo()
{
    frCombo = editorFrame("frCombo");
    CmbVal = named(new QComboBox, "CmbVal", tr("Value"));
    takeOwnValues(CmbVal);
    // The longest name of a large catalogue must not widen the dialog.
    CmbVal->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    CmdCombo = setButton("CmdCombo", &frmWidget::CmdCombo_Click);
    auto *column = new QVBoxLayout(frCombo);
    column->addWidget(CmbVal);
    column->addStretch();
    column->addWidget(CmdCombo, 0, Qt::AlignRight);
    return frCombo;
}

QWidget *frmWidget::makeText()
{
    frTxt = editorFrame("frTxt");
    txtTxt = named(new QLineEdit, "txtTxt", tr("Value"));
    txtTxt->setMaxLength(std::numeric_limits<int>::max());
    cmdTxt = setButton("cmdTxt", &frmWidget::cmdTxt_Click);
    auto *column = new QVBoxLayout(frTxt);
    column->addWidget(txtTxt);
    column->addStretch();
    column->addWidget(cmdTxt, 0, Qt::AlignRight);
    return frTxt;
}

void frmWidget::turnTo(const QString &name, const QString &className)
{
    setWindowTitle(u" Property :: " + name + u" :: " + className);
    m_name = name;
    lvBlock->clearSelection();
    lvBlock->setCurrentIndex({});
    GetProperty(name);
    showHint();
}

void frmWidget::GetProperty(const QString &name)
{
    m_capture.forget();
    const std::optional<BlockProperties> block = quillmere::GetProperty(m_source.text(), name);
    txtSnippet->setText(block ? block->segment : QString());
    if (!block)
        return;
    const int row = lvBlock->selectedRow();
    const QString selected = row >= 0 ? m_rows.text(row) : QString();
    m_rows.assign(block->rows);
    if (row >= 0 && row < m_rows.count() && m_rows.text(row) == selected)
        lvBlock->setCurrentIndex(m_rows.index(row, 0));
}

void frmWidget::showHint()
{
    m_hint->setText(txtSnippet->document()->isEmpty()
                        ? tr("No properties of this block were found, so nothing can be written back.")
                        : tr("Double-click a property to edit it."));
    m_editors->setCurrentWidget(m_hint);
}

void frmWidget::showEditor(CaptionBox *editor, QPushButton *button, const QString &property)
{
    // Only one that is named "rect" and nothing else is ever set there, though others are shown in its boxes.
    m_property = editor == frRect ? QStringLiteral("rect") : property;
    editor->setCaption(m_property);
    m_editors->setCurrentWidget(editor);
    button->setDefault(true); // Enter in any box sets the value
}

void frmWidget::lvBlock_DblClick(int row)
{
    const QString name = m_rows.text(row);
    catchUp();
    if (row >= m_rows.count() || m_rows.text(row) != name)
        return; // it was the row of a property that is there no longer
    const QString value = m_rows.sub(row, 1);
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

void frmWidget::chooseFrom(const QStringList &choices, const QString &value)
{
    CmbVal->clear();
    CmbVal->addItems(choices);
    CmbVal->setCurrentIndex(CmbVal->findText(value)); // the arrow keys go on from here
    CmbVal->setEditText(value);
}

void frmWidget::cmdRec_Click()
{
    setContent(bracketed({txtL->text(), txtT->text(), txtW->text(), txtH->text()}));
}

void frmWidget::cmdColor_Click()
{
    QStringList colours;
    for (const ColourCombo *combo : std::as_const(cmbColor))
        colours.append(combo->currentText());
    setContent(bracketed(colours));
}

void frmWidget::CmdCombo_Click()
{
    setContent(CmbVal->currentText());
}

void frmWidget::cmdTxt_Click()
{
    setContent(txtTxt->text());
}

void frmWidget::setContent(const QString &content)
{
    catchUp();
    const int row = lvBlock->selectedRow();
    if (row >= 0 && m_rows.text(row) == m_property)
        m_rows.setSub(row, 1, content);
    SaveProperty();
}

void frmWidget::SaveProperty()
{
    const QScopedValueRollback saving(m_saving, true);
    m_source.rewrite(quillmere::SaveProperty(m_source.text(), txtSnippet->text(), m_rows.rows()));
    GetProperty(m_name);
}

// Typed over, undone, or another window opened: what was captured would no longer be found there.
void frmWidget::source_Change()
{
    if (!isVisible() || m_saving)
        return;
    m_capture.changed(m_source.document()->characterCount(),
                      m_source.isTyping() ? LateWork::Wait::IfLong : LateWork::Wait::Never);
}

void frmWidget::catchUp()
{
    if (m_capture.isWaiting())
        GetProperty(m_name);
}

} // namespace quillmere
