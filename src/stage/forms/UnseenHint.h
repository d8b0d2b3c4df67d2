#pragma once

#include "stage/forms/Stage.h"

#include <QObject>

namespace quillmere {

class ReceiverView;
class SourceTab;
class Talk;

// Says why a block that is chosen in the list is not in the picture.
class UnseenHint : public QObject
{
    Q_OBJECT

public:
    UnseenHint(Stage &stage, const SourceTab &tab, const ReceiverView &receiver, Talk &talk, QObject *parent);

private:
    void onSelected(Stage::By by);

    Stage &m_stage;
    const SourceTab &m_tab;
    const ReceiverView &m_receiver;
    Talk &m_talk;
};

} // namespace quillmere
