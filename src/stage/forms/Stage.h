#pragma once

#include "outline/Outline.h"
#include "source/TextChanges.h"
#include "source/forms/SourceBox.h"
#include "stage/FollowedBlocks.h"
#include "stage/Hits.h"
#include "stage/RectChanges.h"

#include <QObject>
#include <QTimer>

#include <functional>
#include <optional>

class QTextDocument;

namespace quillmere {

class LiveIndex;
class PreviewFrame;
class SourceTab;

// What those who work in the picture share: the blocks that are selected, where each block is in the picture,
// and the one way in which the picture changes the text. Blocks are rows of the block list; all that comes
// from a text is of one revision of it, and what is of an older one is dropped.
class Stage : public QObject
{
    Q_OBJECT

public:
    Stage(SourceTab &tab, PreviewFrame &frame, LiveIndex &index, QObject *parent = nullptr);

    // Of the text in the source box as it stands now.
    const Outline &outline() const;
    qint64 revision() const;
    // True for a large text that is not outlined yet: who would only follow what is typed waits for a pause.
    bool isOutlineSlow() const;
    // True where it also is being made beside the window's thread; then outlined() tells.
    bool isOutlineLate() const;

    // The block selected first comes first; it is the one that others are aligned to.
    const QList<int> &selection();
    // Who selected, so that nobody is told what they said themselves.
    enum class By { Picture, List, Source, Dialog, Text };
    void select(const QList<int> &blocks, By by);

    // Where the blocks are, in the order of the document, while the browser has the page of this very text;
    // nullptr otherwise, and until the browser has answered. placesChanged() tells when that changes. Asking
    // is what makes the browser be asked.
    const QList<Place> *places();
    std::optional<Place> placeOf(int block);
    // Who knows from the text alone where the page has its blocks is asked instead of the browser; it answers
    // nothing for pages of which it does not.
    void setPlaces(std::function<std::optional<QList<Place>>(const Outline &)> known)
    {
        m_known = std::move(known);
    }

    // Writes into the source box, as one step that can be undone. Afterwards these rows are selected. False,
    // and nothing is written, where the changes are of another revision.
    bool write(const QList<TextChange> &changes, qint64 revision, const QList<int> &selected,
               SourceBox::Step step = SourceBox::Step::Own);
    // Draws the page of the text with these rects and leaves the text as it is. One page is under way at a
    // time, and of those asked for meanwhile only the newest is drawn. False as above.
    bool tryOut(const QList<BlockBox> &boxes, qint64 revision);
    // Draws the page of the text again, where another has been tried out.
    void endTrying();
    bool isTrying() const { return m_trying; }

signals:
    void outlined();
    void selectionChanged(quillmere::Stage::By by);
    void placesChanged();
    // The text is another one than before; gestures of the one before are over.
    void textChanged();

private:
    void onPageReady();
    void onWritten();
    void onOutlined();
    void onTextChanged();
    void followText();
    void take(const QList<int> &blocks);
    void askPlaces();
    bool havePlacesOfText();
    void tellPlaces();
    void askForSelected();
    void drawNext();
    bool step(const QList<TextChange> &changes);
    bool beginSteps(const QList<BlockBox> &boxes);
    void pageGoes(qint64 revision);

    SourceTab &m_tab;
    PreviewFrame &m_frame;
    LiveIndex &m_index;
    QList<int> m_selection;
    FollowedBlocks m_followed;
    const QTextDocument *m_document = nullptr;
    QList<Place> m_places;
    std::function<std::optional<QList<Place>>(const Outline &)> m_known;
    qint64 m_placesOf = -1; // revisions; -1 for none
    qint64 m_pageOf = -1;   // of the page that is in the browser, or on its way there
    bool m_pageThere = false;
    QTimer m_painted; // it is likely painted by then; asking before would put that off
    bool m_asked = false, m_wanted = false;
    bool m_trying = false, m_drawing = false;
    std::optional<QList<BlockBox>> m_next; // to be tried out
    // How what is tried out gets into the picture: whole pages, or, where that is sure, the numbers alone.
    enum class Way { Unknown, Steps, Pages } m_way = Way::Unknown;
    QList<Range> m_numbers; // those that change from step to step
};

} // namespace quillmere
