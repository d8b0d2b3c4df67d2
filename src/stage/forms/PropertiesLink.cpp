#include "stage/forms/PropertiesLink.h"

#include "controls/Commands.h"
#include "source/forms/SourceBox.h"
#include "stage/NamedBlocks.h"
#include "stage/forms/BlockLink.h"
#include "widgets/forms/SourceTab.h"

#include <QAction>
#include <QGuiApplication>

namespace quillmere {

PropertiesLink::PropertiesLink(Stage &stage, const BlockLink &link, SourceTab &tab,
                               const PropertyChoices &choices, QWidget &window)
    : QObject(&window), m_stage(stage), m_link(link), m_tab(tab), m_choices(choices), m_window(window)
{
    connect(&tab, &SourceTab::blockOpened, this, &PropertiesLink::openRow);
    connect(&stage, &Stage::selectionChanged, this, &PropertiesLink::onSelected);
}

PropertiesLink::~PropertiesLink() = default;

void PropertiesLink::addCommands(Commands &menu)
{
    m_save = menu.action("mnuSave");
}

void PropertiesLink::open(int row)
{
    const QList<int> selected = m_stage.selection();
    turnTo(selected.contains(row) ? selected : QList<int>{row}, true);
    present();
}

// What was opened in a list of an older text is known by its name alone.
void PropertiesLink::openRow(const QString &name, const QString &className, int row)
{
    const bool isOfText = m_tab.pageRevision() == m_stage.revision();
    const QList<int> selected = m_stage.selection();
    if (isOfText && selected.size() > 1 && selected.contains(row)) {
        turnTo(selected, true);
    } else if (isOfText && !isFirstOfName(m_stage.outline(), row)) {
        turnTo({row}, false);
    } else {
        m_blocks.set(isOfText ? QList<int>{row} : QList<int>{}, m_stage.outline());
        m_document = m_tab.txtSnippet->document();
        dialog().turnTo(name, className);
    }
    present();
}

void PropertiesLink::turnTo(const QList<int> &rows, bool byName)
{
    const Outline &outline = m_stage.outline();
    m_blocks.set(rows, outline);
    m_document = m_tab.txtSnippet->document();
    const int row = rows.value(0, -1);
    const BlockName block = nameOfBlock(outline, row);
    if (rows.size() == 1 && byName && isFirstQuoted(outline, row))
        dialog().turnTo(block.name, block.className);
    else if (rows.size() == 1)
        dialog().turnTo(block.name, block.className, shown());
    else
        dialog().turnTo(tr("%1 blocks").arg(rows.size()), {}, shown());
}

// A double click also puts the caret on the block's line, and one may go on typing there. Who came by the
// keyboard could not get into the dialog otherwise.
void PropertiesLink::present()
{
    const bool byMouse = QGuiApplication::mouseButtons() != Qt::NoButton;
    dialog().present(byMouse ? ModelessDialog::Keyboard::Leaves : ModelessDialog::Keyboard::Takes);
}

void PropertiesLink::onSelected(Stage::By by)
{
    if (by == Stage::By::Dialog || by == Stage::By::Text || !m_link.isOn() || !m_dialog ||
        !m_dialog->isVisible())
        return;
    const QList<int> rows = m_stage.selection();
    if (!rows.isEmpty() &&
        !(m_document == m_tab.txtSnippet->document() && m_blocks.rows(m_stage.outline()) == rows))
        turnTo(rows, true);
}

ShownBlocks PropertiesLink::shown()
{
    return {[this]() -> const Outline & { return m_stage.outline(); },
            [this] {
                return m_document == m_tab.txtSnippet->document() ? m_blocks.rows(m_stage.outline())
                                                                  : QList<int>();
            },
            [this](const QList<TextChange> &changes) {
                const QList<int> selected = m_stage.selection();
                m_stage.write(changes, m_stage.revision(), selected);
            }};
}

frmWidget &PropertiesLink::dialog()
{
    if (!m_dialog) {
        m_dialog = std::make_unique<frmWidget>(*m_tab.txtSnippet, m_choices, m_window);
        connect(m_dialog.get(), &frmWidget::finished, this, [this] { m_blocks.set({}, {}); });
        connect(m_dialog.get(), &frmWidget::sourceWanted, this, &PropertiesLink::sourceWanted);
        // The item of the menu is disabled on other tabs; the dialog is open on all of them.
        connect(m_dialog.get(), &frmWidget::saveWanted, m_save, [this] {
            if (!m_tab.txtSnippet->document()->isEmpty())
                emit m_save->triggered();
        });
    }
    return *m_dialog;
}

} // namespace quillmere
