#include "preview/forms/LateRender.h"

#include <QElapsedTimer>

#include <utility>

namespace quillmere {

namespace {

constexpr qsizetype kMostKept = 1'500'000; // units; of a longer text the browser takes seconds for its page

// Nobody waits where another thread is drawing with what is kept.
WidgetPage drawn(const RenderInput &input)
{
    if (input.kept) {
        if (const std::unique_lock mine(input.kept->mutex, std::try_to_lock); mine) {
            if (input.markup.size() <= kMostKept)
                return input.kept->drawing.draw(input.markup, input.GetImg, input.fonts);
            input.kept->drawing = {};
        }
    }
    return drawWidgets(input.markup, input.GetImg, input.fonts);
}

} // namespace

Rendered renderPage(const RenderInput &input, PackedText::Packing packing)
{
    QElapsedTimer clock;
    clock.start();
    WidgetPage widgets = drawn(input);
    Rendered rendered;
    rendered.markup = input.markup;
    rendered.page = input.makePage
                        ? input.makePage(input.markup, input.options, widgets.blocks)
                        : BuildPreviewPage(widgets.html, input.options, input.fontSize, widgets.blocks);
    rendered.blocks = std::move(widgets.blocks);
    rendered.html = PackedText(std::exchange(widgets.html, {}), packing);
    rendered.milliseconds = double(clock.nsecsElapsed()) / 1e6;
    return rendered;
}

LateRender::LateRender(QObject *parent) : QObject(parent), m_worker(this)
{
    m_worker.setMaxThreadCount(1);
}

LateRender::~LateRender()
{
    giveUp();
    m_worker.waitForDone();
}

void LateRender::giveUp()
{
    if (m_givenUp)
        *m_givenUp = true;
    m_givenUp.reset();
    m_next.reset();
    m_worker.clear();
}

void LateRender::start(const RenderInput &input)
{
    m_next = input;
    if (!isBusy())
        makeNext();
}

void LateRender::makeNext()
{
    const auto givenUp = std::make_shared<std::atomic_bool>(false);
    m_givenUp = givenUp;
    RenderInput own = *std::exchange(m_next, {});
    own.GetImg = [GetImg = std::move(own.GetImg), givenUp](const QString &id) {
        if (*givenUp)
            throw Cancelled();
        return GetImg(id);
    };
    m_worker.start([this, own = std::move(own), givenUp] {
        try {
            const auto tell = [this, rendered = renderPage(own, PackedText::Packing::Now), givenUp] {
                if (!*givenUp)
                    hand(rendered);
            };
            QMetaObject::invokeMethod(this, tell, Qt::QueuedConnection);
        } catch (const Cancelled &) {
            // Nobody waits for it.
        }
    });
}

void LateRender::hand(const Rendered &rendered)
{
    m_givenUp.reset();
    if (m_next)
        makeNext();
    emit done(rendered);
}

} // namespace quillmere
