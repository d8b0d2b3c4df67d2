#include "controls/PageScroll.h"

#include <QApplication>
#include <QDialog>
#include <QEvent>
#include <QLayout>
#include <QScreen>

namespace quillmere {

namespace {

constexpr int kFrame = 40; // pixels of the screen that a window's frame takes, generously

// Keeps a dialog within its screen; one of fixed size follows its page.
class DialogSize : public QObject
{
public:
    DialogSize(QDialog &dialog, QWidget &page)
        : QObject(&dialog), m_dialog(dialog), m_page(page),
          m_isFixed(page.layout()->sizeConstraint() == QLayout::SetFixedSize)
    {
        dialog.installEventFilter(this);
        page.installEventFilter(this);
    }

protected:
    bool eventFilter(QObject *object, QEvent *event) override
    {
        if (event->type() == QEvent::Show && object == &m_dialog)
            fit();
        else if (event->type() == QEvent::Resize && object == &m_page && m_isFixed)
            fit();
        return false;
    }

private:
    void fit()
    {
        const QSize room = m_dialog.screen()->availableSize() - QSize(kFrame, kFrame);
        if (m_isFixed)
            m_dialog.setFixedSize(m_page.sizeHint().boundedTo(room));
        else
            m_dialog.resize(m_dialog.size().boundedTo(room));
    }

    QDialog &m_dialog;
    QWidget &m_page;
    bool m_isFixed;
};

} // namespace

PageScroll::PageScroll(QWidget *page)
{
    setObjectName(QStringLiteral("pageScroll"));
    setAccessibleName(QObject::tr("Page"));
    setFocusPolicy(Qt::NoFocus); // the keyboard has the controls to go to
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setWidget(page);
    connect(qApp, &QApplication::focusChanged, this, [this, page](QWidget *, QWidget *now) {
        if (!now || !page->isAncestorOf(now))
            return;
        // What fills half of the view is in sight; to see all of it nothing else need go.
        const QRect place(now->mapTo(viewport(), QPoint()), now->size());
        if ((place & viewport()->rect()).height() * 2 < viewport()->height())
            ensureWidgetVisible(now);
    });
}

void scrollWhereSmall(QDialog &dialog)
{
    auto *page = new QWidget;
    QLayout *layout = dialog.layout();
    const QMargins margins = layout->contentsMargins(); // those of a window are not those of a part
    page->setLayout(layout);                            // which takes all that is laid out along
    layout->setContentsMargins(margins);
    auto *whole = new QVBoxLayout(&dialog);
    whole->setContentsMargins({});
    whole->addWidget(new PageScroll(page));
    new DialogSize(dialog, *page);
}

} // namespace quillmere
