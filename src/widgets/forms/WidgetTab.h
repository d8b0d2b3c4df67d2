#pragma once

#include "controls/TabFrame.h"

class QLabel;

namespace quillmere {

class Commands;
class FileList;
class Files;
class ListView;
class Talk;
class WidgetCatalogue;

// The Widget tab: the windows of the theme, and the documents that the catalogue does not name.
class WidgetTab : public TabFrame
{
    Q_OBJECT

public:
    WidgetTab(WidgetCatalogue &catalogue, FileList &file1, Files &files, Talk &talk,
              QWidget *parent = nullptr);

    void addCommands(Commands &menu);
    // Shows what the catalogue's loader has read.
    void showCatalogue();

signals:
    // A window was double-clicked: the full path of its document, and the folder of the theme that names it.
    void documentChosen(const QString &path, const QString &theme);
    // Markup to draw that is no document of its own.
    void markupChosen(const QString &markup);

protected:
    void layOut(int height) override;

private:
    void mnuWidgetOpen_Click();
    void mnuWidgetSel_Click();
    void mnuWidgetDel_Click();
    void mnuWidgetFile_Click();
    void mnuWidgetDelFile_Click();
    void mnuInfoChannel_Click();
    // Whether the catalogue may be written.
    bool maySave(const QString &question, const QString &text);
    // Row of the file selected in lvWidgetDel; -1, after a hint, when none is.
    int selectedFile();

    WidgetCatalogue &m_catalogue;
    FileList &m_file1;
    Files &m_files;
    Talk &m_talk;
    CaptionBox *frWidget;
    ListView *LvWidget;
    ListView *lvWidgetDel;
    QLabel *lblWidth, *lblHeight, *lblbpp, *LblWidgetPath;
    QList<QLabel *> m_captions;
};

} // namespace quillmere
