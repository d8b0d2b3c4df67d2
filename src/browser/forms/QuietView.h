#pragma once

#include <QWebEngineView>

namespace quillmere {

// A view of a browser that does nothing of itself: no menu, no dialog, no files dropped into it.
class QuietView : public QWebEngineView
{
    Q_OBJECT

public:
    explicit QuietView(QWidget *parent);

    // Must be called before the application object is made, and counts for every browser in the program.
    static void prepare();

protected:
    void childEvent(QChildEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
};

} // namespace quillmere
