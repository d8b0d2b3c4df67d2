#pragma once

#include "stage/Arrange.h"

#include <QHash>
#include <QList>
#include <QObject>
#include <QTimer>

class QAction;

namespace quillmere {

class BlockLink;
class Commands;
class Picture;
class PreviewFrame;
class SourceTab;
class Stage;
class Talk;

// The Arrange menu: what it does, and which of it can be done now. Its keys count only in the picture and in
// lvBlock, so that a letter that is typed elsewhere stays a letter.
class ArrangeMenu : public QObject
{
    Q_OBJECT

public:
    // `sizeOf` is asked for pictures when a block is to become as large as its picture.
    ArrangeMenu(Stage &stage, BlockLink &link, Picture &picture, PictureSize sizeOf, Talk &talk,
                QObject *parent = nullptr);

    void addCommands(Commands &menu, const QList<QWidget *> &places);
    // Pixels; 0 for none.
    int grid() const { return m_grid; }

protected:
    // Keeps the keys out of menus that are open.
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    struct Item
    {
        QAction *action;
        std::function<bool(const QList<int> &blocks)> applies;
    };

    void add(Commands &menu, const char *name, const QKeySequence &keys, const std::function<void()> &command,
             const std::function<bool(const QList<int> &)> &applies = {});
    void addArranging(Commands &menu);
    void addElements(Commands &menu);
    void addSnapping(Commands &menu);
    void addInserting(Commands &menu);
    void arrange(Arrange command, const QString &caption);
    void enable();

    Stage &m_stage;
    BlockLink &m_link;
    Picture &m_picture;
    PictureSize m_sizeOf;
    Talk &m_talk;
    QList<QWidget *> m_places; // where the keys count
    QHash<Arrange, QAction *> m_arranging;
    QList<Item> m_items;
    QTimer m_soon; // what can be done is to be found out
    int m_grid = 0;
};

} // namespace quillmere
