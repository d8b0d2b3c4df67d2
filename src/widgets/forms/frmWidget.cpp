#include "widgets/forms/frmWidget.h"

#include "controls/CaptionBox.h"
#include "controls/ListView.h"
#include "controls/Named.h"
#include "controls/PageScroll.h"
#include "markup/Matching.h"
#include "outline/Vocabulary.h"
#include "source/forms/SourceBox.h"
#include "widgets/BlockProperties.h"
#include "widgets/CommonProperties.h"
#include "widgets/forms/ColourCombo.h"

#include <QAction>
#include <QGridLayout>
#include <QKeyEvent>
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
      m_capture(kMostInKey, [this] { capture(); }), m_rows({tr("Property"), tr("Value")}),
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
    column->addWidget(makeLost());
    column->addWidget(m_editors);
    addKeys();
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

QWidget *frmWidget::makeLost()
{
    lblLost = named(new QLabel, "lblLost", tr("What would be lost"));
    lblLost->setWordWrap(true);
    auto *edit = named(new QPushButton(tr("&Edit in Source")), "cmdEditInSource", tr("Edit in Source"));
    connect(edit, &QPushButton::clicked, this, &frmWidget::editInSource);
    m_lost = new QWidget;
    auto *line = new QHBoxLayout(m_lost);
    line->setContentsMargins({});
    line->addWidget(lblLost, 1);
    line->addWidget(edit);
    m_lost->hide();
    return m_lost;
}

void frmWidget::addKeys()
{
    const auto add = [this](const char *name, QKeySequence::StandardKey keys, auto &&command) {
        auto *action = new QAction(this);
        action->setObjectName(QLatin1String(name));
        action->setShortcut(keys);
        addAction(action);
        connect(action, &QAction::triggered, this, command);
    };
    add("save", QKeySequence::Save, [this] { emit saveWanted(); });
    add("undo", QKeySequence::Undo, [this] { m_source.stepBack(); });
    for (QLineEdit *box : m_editors->findChildren<QLineEdit *>())
        box->installEventFilter(this);
}

bool frmWidget::eventFilter(QObject *watched, QEvent *event)
{
    auto *box = qobject_cast<QLineEdit *>(watched);
    if (!box || (event->type() != QEvent::KeyPress && event->type() != QEvent::ShortcutOverride))
        return ModelessDialog::eventFilter(watched, event);
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

void frmWidget::turnTo(const QString &name, const QString &className, const ShownBlocks &blocks)
{
    setWindowTitle(u" Property :: " + name + u" :: " + className);
    m_name = name;
    m_blocks = blocks;
    lvBlock->clearSelection();
    lvBlock->setCurrentIndex({});
    capture();
    showHint();
}

void frmWidget::capture()
{
    m_isSeveral = false;
    m_start = -1;
    if (!m_blocks.rows) {
        GetProperty(m_name);
        return;
    }
    m_capture.forget();
    const QList<int> blocks = m_blocks.rows();
    m_isSeveral = blocks.size() > 1;
    if (m_isSeveral)
        captureSeveral(blocks);
    else
        captureAt(blocks.value(0, -1));
}

void frmWidget::captureAt(int block)
{
    const Range head = headOfBlock(m_blocks.outline(), block);
    m_start = head.start;
    take(head.isEmpty() ? std::nullopt : propertiesAt(m_source.text(), head));
}

void frmWidget::captureSeveral(const QList<int> &blocks)
{
    txtSnippet->setText(QString());
    m_lost->hide();
    showRows(commonProperties(m_blocks.outline(), blocks));
}

void frmWidget::GetProperty(const QString &name)
{
    m_capture.forget();
    take(quillmere::GetProperty(m_source.text(), name));
}

void frmWidget::take(const std::optional<BlockProperties> &block)
{
    txtSnippet->setText(block ? block->segment : QString());
    const LostElements lost = block ? elementsLost(block->segment, block->rows) : LostElements();
    m_lostAt = lost.at;
    lblLost->setText(tr("Set would take out <%1>, which this list does not show.")
                         .arg(lost.names.join(QStringLiteral(">, <"))));
    m_lost->setHidden(lost.names.isEmpty());
    if (block)
        showRows(block->rows);
}

void frmWidget::showRows(const QList<ListRows::Row> &rows)
{
    const int row = lvBlock->selectedRow();
    const QString selected = row >= 0 ? m_rows.text(row) : QString();
    m_rows.assign(rows);
    if (row >= 0 && row < m_rows.count() && m_rows.text(row) == selected)
        lvBlock->setCurrentIndex(m_rows.index(row, 0));
}

void frmWidget::showHint()
{
    m_hint->setText(m_isSeveral && m_rows.isEmpty() ? tr("There is no property that all these blocks have.")
                    : m_isSeveral                   ? tr("Double-click a property to set it in all blocks.")
                    : txtSnippet->document()->isEmpty()
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
    const bool isInPart = m_isSeveral && m_rows.sub(row, 1).isEmpty();
    const QString value = m_rows.sub(row, isInPart ? 2 : 1);
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
    const bool isRow = row >= 0 && m_rows.text(row) == m_property;
    if (m_isSeveral) {
        if (isRow)
            setForAll(row, content);
    } else {
        if (isRow)
            m_rows.setSub(row, 1, content);
        SaveProperty();
    }
    for (QLineEdit *box : m_editors->currentWidget()->findChildren<QLineEdit *>())
        box->setText(QString(box->text())); // what can be undone now is the write-back
}

void frmWidget::setForAll(int row, const QString &content)
{
    const bool isInPart = m_rows.sub(row, 1).isEmpty();
    const QList<TextChange> changes =
        propertyChanges(m_blocks.outline(), m_blocks.rows(), m_rows.text(row), content, isInPart);
    const QScopedValueRollback saving(m_saving, true);
    m_blocks.write(changes);
    capture();
}

void frmWidget::editInSource()
{
    const QString segment = txtSnippet->text();
    const qsizetype start = m_start >= 0 ? m_start : indexOfIgnoringCase(m_source.text(), segment);
    emit sourceWanted();
    m_source.showFrom(start + m_lostAt);
    m_source.window()->activateWindow();
    m_source.setFocus();
}

void frmWidget::SaveProperty()
{
    const QScopedValueRollback saving(m_saving, true);
    const QString source = m_source.text(), segment = txtSnippet->text();
    m_source.rewrite(m_start < 0 ? quillmere::SaveProperty(source, segment, m_rows.rows())
                                 : savePropertyAt(source, m_start, segment, m_rows.rows()));
    capture();
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
        capture();
}

} // namespace quillmere
