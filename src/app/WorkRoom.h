#pragma once

#include <QList>
#include <QObject>
#include <QSize>

class QAction;
class QWidget;

namespace quillmere {

class Commands;
class DragLine;
class PreviewFrame;
class TabFrame;
class TabStrip;

// Shares the window out between the tabs at the left and the preview: by a line that can be dragged, half and
// half, or all of it to the preview. What a person chose is remembered.
class WorkRoom : public QObject
{
    Q_OBJECT

public:
    // The frames lie on the strip, the one of the current tab is shown; all of them and the preview in
    // `page`.
    WorkRoom(QWidget &page, TabStrip &strip, const QList<TabFrame *> &frames, PreviewFrame &preview,
             QWidget &window);

    void addCommands(Commands &menu);
    // As it was when the program was left last.
    void restore();
    // Shows the tabs again; false where they are shown.
    bool endAlone();
    // The size of the window, twips. A smaller one than there is a layout for keeps the one it had.
    void Form_Resize(int width, int height);
    // The smallest layout; on a screen too low for one of its own, as wide as that. Pixels.
    void beSmallest(const QSize &screen);

signals:
    // Half of the window is for the source from now on.
    void sourceWanted();

protected:
    // Escape, where nobody else wanted it, shows the tabs again.
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    int column() const;
    void setColumn(int twips);
    void mnuWideSource_Click();
    void setAlone(bool alone);
    void layOut();
    void layOutTabs(int column);
    void layOutPreview(int column);

    QWidget &m_page;
    TabStrip &m_strip;
    const QList<TabFrame *> m_frames;
    PreviewFrame &m_preview;
    QWidget &m_window;
    DragLine *m_line;
    int m_column;                  // twips of the width that are not preview
    bool m_isWide = false;         // half of it is not
    bool m_isAlone = false;        // all of it is preview
    int m_width = 0, m_height = 0; // twips, that all is laid out for
    QSize m_inWindow;              // twips, what there is
    QAction *m_wideItem = nullptr, *m_aloneItem = nullptr;
};

} // namespace quillmere
