#pragma once

#include "stage/FollowedBlocks.h"
#include "stage/forms/Stage.h"
#include "widgets/forms/PropertyEditors.h"
#include "widgets/forms/frmWidget.h"

#include <memory>

namespace quillmere {

class BlockLink;
class Commands;

// The properties dialog: opens it for a block, and turns it to what is selected while it is open.
class PropertiesLink : public QObject
{
    Q_OBJECT

public:
    PropertiesLink(Stage &stage, const BlockLink &link, SourceTab &tab, const PropertyChoices &choices,
                   QWidget &window);
    ~PropertiesLink() override;

    // Ctrl+S in the dialog is the menu's.
    void addCommands(Commands &menu);
    // For a block of the list; for all that are selected where it is one of them.
    void open(int row);

signals:
    // The Source tab is to be shown.
    void sourceWanted();

private:
    // `byName`: where a block is the first of its name, it is found by that.
    void turnTo(const QList<int> &rows, bool byName);
    void openRow(const QString &name, const QString &className, int row);
    void present();
    void onSelected(Stage::By by);
    frmWidget &dialog();
    ShownBlocks shown();

    Stage &m_stage;
    const BlockLink &m_link;
    SourceTab &m_tab;
    PropertyChoices m_choices;
    QWidget &m_window;
    QAction *m_save = nullptr;
    FollowedBlocks m_blocks;
    const QTextDocument *m_document = nullptr; // whose text they stand in
    std::unique_ptr<frmWidget> m_dialog;       // made when it is first wanted
};

} // namespace quillmere
