#pragma once

#include "naming/Hover.h"
#include "naming/forms/FontSample.h"
#include "naming/forms/Pictures.h"

#include <functional>

namespace quillmere {

class HoverBox;
struct HoverContents;
class LiveIndex;
class NameFacts;
class SourceBox;

// Says what stands in the source where the mouse rests, and on Ctrl+F1 where the caret is.
class Hovers : public QObject
{
    Q_OBJECT

public:
    Hovers(SourceBox &source, LiveIndex &live, NameFacts &facts, QObject *parent = nullptr);

    // What is wrong with the text at a position; messages as they are shown.
    std::function<QStringList(qsizetype position)> problemsAt;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool pointed(QPoint point, QPoint onScreen);
    void asked();
    void show(const Hover &hover, qsizetype position, const QRect &at);
    void hide();
    void sayAnew();
    HoverContents contents();
    void sayImage(HoverContents &contents);
    void sayColour(HoverContents &contents) const;
    void sayFont(HoverContents &contents);
    void sayString(HoverContents &contents);
    void sayBlock(HoverContents &contents) const;

    SourceBox &m_source;
    LiveIndex &m_live;
    NameFacts &m_facts;
    HoverBox *m_box;
    Pictures m_pictures;
    FontSample m_sample;
    Hover m_hover;
    QStringList m_problems;
};

} // namespace quillmere
