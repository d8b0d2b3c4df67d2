#include "stage/forms/Stage.h"

#include "browser/forms/WebBrowser.h"
#include "preview/forms/PreviewFrame.h"
#include "stage/BlockPlaces.h"
#include "stage/RectChanges.h"
#include "theme/forms/LiveIndex.h"
#include "widgets/forms/SourceTab.h"

#include <QPointer>

#include <algorithm>
#include <utility>

namespace quillmere {

namespace {
constexpr int kLarge = 300'000; // units of a text whose outline takes longer than a frame
constexpr int kPainting = 40;   // ms from a page that is written to one that is on the screen
} // namespace

Stage::Stage(SourceTab &tab, PreviewFrame &frame, LiveIndex &index, QObject *parent)
    : QObject(parent), m_tab(tab), m_frame(frame), m_index(index)
{
    connect(&tab, &SourceTab::pageReady, this, &Stage::onPageReady);
    connect(tab.txtSnippet, &SourceBox::changed, this, &Stage::onTextChanged);
    connect(frame.wb, &WebBrowser::written, this, &Stage::onWritten);
    connect(&index, &LiveIndex::outlined, this, &Stage::onOutlined);
    connect(frame.wb, &WebBrowser::failed, this, [this] { m_drawing = false; });
    m_painted.setSingleShot(true);
    m_painted.setInterval(kPainting);
    connect(&m_painted, &QTimer::timeout, this, &Stage::askForSelected);
}

const Outline &Stage::outline() const
{
    return m_index.outline();
}

qint64 Stage::revision() const
{
    return m_tab.txtSnippet->revision();
}

const QList<int> &Stage::selection()
{
    followText();
    return m_selection;
}

void Stage::select(const QList<int> &blocks, By by)
{
    QList<int> next;
    const int count = int(outline().blocks().size());
    for (const int block : blocks) {
        if (block >= 0 && block < count && !next.contains(block))
            next.append(block);
    }
    followText();
    if (next == m_selection)
        return;
    take(next);
    emit selectionChanged(by);
}

// The rows of an older text are no rows of this one.
void Stage::followText()
{
    if (m_selection.isEmpty())
        return;
    const bool isSameText = m_document == m_tab.txtSnippet->document();
    const QList<int> now = isSameText ? m_followed.rows(outline()) : QList<int>();
    if (now == m_selection)
        return;
    take(now);
    emit selectionChanged(By::Text);
}

void Stage::take(const QList<int> &blocks)
{
    m_selection = blocks;
    m_followed.set(blocks, outline());
    m_document = m_tab.txtSnippet->document();
}

bool Stage::isOutlineSlow() const
{
    return m_tab.txtSnippet->document()->characterCount() > kLarge && !m_index.isOutlined();
}

bool Stage::isOutlineLate() const
{
    return isOutlineSlow() && m_index.isOutlineComing();
}

void Stage::onOutlined()
{
    askForSelected();
    emit outlined();
}

void Stage::askForSelected()
{
    if (!m_trying && !isOutlineSlow() && (m_wanted || !selection().isEmpty()))
        askPlaces();
}

const QList<Place> *Stage::places()
{
    if (m_placesOf == revision() && !m_trying)
        return &m_places;
    m_wanted = true;
    askPlaces();
    return nullptr;
}

std::optional<Place> Stage::placeOf(int block)
{
    const QList<Place> *known = places();
    if (!known)
        return {};
    const auto found = std::lower_bound(known->begin(), known->end(), block,
                                        [](const Place &place, int row) { return place.block < row; });
    return found != known->end() && found->block == block ? std::optional(*found) : std::nullopt;
}

void Stage::askPlaces()
{
    m_painted.stop();
    if (m_asked || !m_pageThere || m_pageOf != revision())
        return;
    m_asked = true;
    m_frame.wb->findPlaces([self = QPointer(this), of = m_pageOf](const QList<PagePlace> &divs) {
        if (!self)
            return;
        self->m_asked = false;
        if (of != self->m_pageOf || of != self->revision() || !self->m_pageThere)
            return; // the page that came in between asks again
        self->m_places = placesOfBlocks(self->outline(), divs);
        self->m_placesOf = of;
        self->m_wanted = false;
        emit self->placesChanged();
    });
}

bool Stage::write(const QList<TextChange> &changes, qint64 revision, const QList<int> &selected,
                  SourceBox::Step step)
{
    if (revision != this->revision())
        return false;
    const QList<int> next = selected; // it may be the present selection itself
    if (changes.isEmpty()) {
        endTrying();
    } else {
        SourceBox &source = *m_tab.txtSnippet;
        source.rewrite(withChanges(source.text(), changes), SourceBox::Keyboard::Stays, step);
        // The rows before say nothing of those after.
        if (!std::exchange(m_selection, {}).isEmpty() && next.isEmpty())
            emit selectionChanged(By::Picture);
    }
    select(next, By::Picture);
    return true;
}

bool Stage::tryOut(const QList<TextChange> &changes, qint64 revision)
{
    if (revision != this->revision())
        return false;
    m_trying = true;
    m_next = withChanges(m_tab.txtSnippet->text(), changes);
    if (!m_drawing)
        drawNext();
    return true;
}

void Stage::drawNext()
{
    if (!m_next)
        return;
    m_drawing = true;
    m_tab.tryOut(*std::exchange(m_next, {}));
}

void Stage::endTrying()
{
    if (!std::exchange(m_trying, false))
        return;
    m_next.reset();
    m_tab.tryOut(m_tab.txtSnippet->text());
}

void Stage::onPageReady()
{
    m_pageOf = m_tab.pageRevision();
    m_pageThere = false;
    m_placesOf = -1;
}

void Stage::onWritten()
{
    m_pageThere = true;
    m_drawing = false;
    if (m_trying) {
        drawNext();
        return;
    }
    m_painted.start();
}

// The page of the new text is drawn by whoever draws pages.
void Stage::onTextChanged()
{
    m_trying = m_drawing = false;
    m_next.reset();
    emit textChanged();
}

} // namespace quillmere
