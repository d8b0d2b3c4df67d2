#include "controls/EnterClicks.h"

#include <QAbstractButton>
#include <QKeyEvent>

namespace quillmere {

namespace {

class EnterClicks : public QObject
{
public:
    using QObject::QObject;

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        const auto *key = event->type() == QEvent::KeyPress ? static_cast<QKeyEvent *>(event) : nullptr;
        if (!key || (key->key() != Qt::Key_Return && key->key() != Qt::Key_Enter))
            return QObject::eventFilter(watched, event);
        static_cast<QAbstractButton *>(watched)->click();
        return true;
    }
};

} // namespace

void clickOnEnter(QAbstractButton &button)
{
    button.installEventFilter(new EnterClicks(&button));
}

} // namespace quillmere
