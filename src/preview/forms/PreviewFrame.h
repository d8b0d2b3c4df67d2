#pragma once

#include "controls/CaptionBox.h"
#include "preview/PreviewPage.h"

class QScrollArea;

namespace quillmere {

class Commands;
class WebBrowser;

// The frame at the right with the browser in it. Its caption is the path of the open document. A browser
// larger than the frame scrolls.
class PreviewFrame : public CaptionBox
{
    Q_OBJECT

public:
    explicit PreviewFrame(QWidget *parent = nullptr);

    void addCommands(Commands &menu);
    // The size of the frame and of the browser in it, twips.
    void setFrameSize(int width, int height);
    void showScreen(Screen screen);

    // Between pixels of the browser and those of the page as it is laid out, however it is scaled and
    // scrolled.
    QPointF toPage(QPointF point) const;
    QPointF fromPage(QPointF point) const;
    // Pixels of the browser that one of the page takes.
    double zoom() const { return 1; }

    WebBrowser *wb;

signals:
    void fixedChanged(bool fixed);

protected:
    // The wheel over a page that does not scroll itself scrolls the frame.
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool m_fixed = true;
    Screen m_screen = Screen::S1024x576; // the one chosen last
    QScrollArea *m_scroll;
};

} // namespace quillmere
