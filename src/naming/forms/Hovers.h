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

    // What is wrong with the text at a position, and with what range of it; messages as they are shown.
    struct Fault
    {
        Range range;
        QString message;
    };
    std::function<QList<Fault>(qsizetype position)> problemsAt;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool pointed(QPoint point, QPoint onScreen);
    void asked();
    void show(const Hover &hover, qsizetype position, const QRect &place);
    void hide();
    void sayAnew();
    HoverContents contents();
    bool saysUndefined() const;
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
    QList<Fault> m_problems;
};

} // namespace quillmere
