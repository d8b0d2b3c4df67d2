#include "app/ColourWork.h"

#include "catalogues/forms/ColourTab.h"
#include "colorpicker/forms/frmcolor.h"
#include "controls/Commands.h"
#include "controls/EditingKeys.h"
#include "source/forms/SourceBox.h"
#include "theme/ThemeProject.h"

#include <QAction>

namespace quillmere {

namespace {
constexpr int kBeside = 24; // pixels
}

ColourWork::ColourWork(ColourTab &tab, ThemeProject &theme, SourceBox &source, const QWidget &beside,
                       Talk &talk, QWidget &window)
    : QObject(&window), m_tab(tab), m_theme(theme), m_source(source), m_beside(beside), m_talk(talk),
      m_window(window)
{
    connect(&tab, &ColourTab::entryOpened, this, [this](const QString &name, const QString &code) {
        dialog().NamaFile = m_theme.colours.document.path();
        dialog().NamaColor = name;
        dialog().setEntry(name, code);
    });
    connect(&tab, &ColourTab::colourOpened, this,
            [this](int red, int green, int blue) { dialog().showColour(red, green, blue); });
}

void ColourWork::addCommands(Commands &menu)
{
    m_save = menu.action("mnuCSave");
    menu.on("mnuColCode(1)", [this] { convert(ColourForm::Code); });
    menu.on("mnuColCode(2)", [this] { convert(ColourForm::Name); });
}

frmcolor &ColourWork::dialog()
{
    if (!m_frmcolor) {
        m_frmcolor = new frmcolor(
            m_theme.lvColor, [this] { return m_tab.selectedRow(); }, m_talk, &m_window);
        const auto step = [this](const char *name) {
            if (auto *action = m_tab.findChild<QAction *>(QLatin1String(name)))
                action->trigger();
        };
        new EditingKeys(*m_frmcolor, {[this] { m_save->trigger(); }, [step] { step("mnuRowsUndo"); },
                                      [step] { step("mnuRowsRedo"); }});
        m_frmcolor->move(m_beside.mapToGlobal(QPoint(kBeside, kBeside)));
    }
    return *m_frmcolor;
}

void ColourWork::convert(ColourForm to)
{
    m_source.rewriteAll(ConvertColours(m_source.text(), m_theme.lvColor, to));
}

} // namespace quillmere
