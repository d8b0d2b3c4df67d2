#include "naming/forms/Hovers.h"

#include "checks/NameRules.h"
#include "files/Paths.h"
#include "naming/forms/HoverBox.h"
#include "naming/forms/NameFacts.h"
#include "naming/forms/PlaceRows.h"
#include "source/forms/SourceBox.h"
#include "theme/forms/LiveIndex.h"

#include <QCursor>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QLocale>
#include <QScrollBar>

#include <algorithm>

namespace quillmere {

namespace {

constexpr QSize kPointer(12, 20); // pixels that the pointer of the mouse hides

QString captionOf(NameKind kind)
{
    switch (kind) {
    case NameKind::Image:
        return Hovers::tr("Image");
    case NameKind::Colour:
        return Hovers::tr("Colour");
    case NameKind::Font:
        return Hovers::tr("Font");
    default:
        return Hovers::tr("String");
    }
}

QString notDefined(NameKind kind)
{
    switch (kind) {
    case NameKind::Image:
        return Hovers::tr("There is no such image.");
    case NameKind::Colour:
        return Hovers::tr("This is neither a colour of the catalogue nor a code.");
    case NameKind::Font:
        return Hovers::tr("There is no such font.");
    default:
        return Hovers::tr("No language has this string.");
    }
}

} // namespace

Hovers::Hovers(SourceBox &source, LiveIndex &live, NameFacts &facts, QObject *parent)
    : QObject(parent), m_source(source), m_live(live), m_facts(facts), m_box(new HoverBox(&source)),
      m_pictures(QSize(HoverBox::kPicture, HoverBox::kPicture))
{
    m_box->hide();
    m_source.viewport()->setMouseTracking(true); // to know when it leaves the name
    m_source.viewport()->installEventFilter(this);
    m_source.installEventFilter(this);
    connect(&m_pictures, &Pictures::arrived, this, &Hovers::sayAnew);
    connect(&m_sample, &FontSample::arrived, this, &Hovers::sayAnew);
    connect(&m_facts, &NameFacts::translationsArrived, this, &Hovers::sayAnew);
    connect(&m_source, &SourceBox::changed, this, &Hovers::hide);
    connect(m_source.verticalScrollBar(), &QScrollBar::valueChanged, this, &Hovers::hide);
    connect(m_source.horizontalScrollBar(), &QScrollBar::valueChanged, this, &Hovers::hide);
}

bool Hovers::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::ToolTip: {
        const auto *help = static_cast<QHelpEvent *>(event);
        if (watched == m_source.viewport() && pointed(help->pos(), help->globalPos()))
            return true;
        break;
    }
    case QEvent::MouseMove:
        if (m_box->isVisible() && !m_hover.range.holds(m_source.positionAt(
                                      static_cast<QMouseEvent *>(event)->position().toPoint())))
            hide();
        break;
    case QEvent::KeyPress: {
        const auto *key = static_cast<QKeyEvent *>(event);
        if (key->key() == Qt::Key_F1 && key->modifiers() == Qt::ControlModifier) {
            asked();
            return true;
        }
        const bool closes = key->key() == Qt::Key_Escape && m_box->isVisible();
        hide();
        return closes;
    }
    case QEvent::Leave:
        if (!m_box->geometry().contains(QCursor::pos())) // it may have come up there
            hide();
        break;
    case QEvent::MouseButtonPress:
    case QEvent::Wheel:
    case QEvent::FocusOut:
    case QEvent::Hide:
        hide();
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

bool Hovers::pointed(QPoint point, QPoint onScreen)
{
    const qsizetype position = m_source.positionAt(point);
    if (position < 0)
        return false;
    show(hoverAt(m_live.outline(), position, m_live.index()), position, {onScreen, kPointer});
    return m_box->isVisible();
}

void Hovers::asked()
{
    const qsizetype caret = m_source.selectionStart();
    QRect place = m_source.placeOf(caret);
    place.moveTopLeft(m_source.viewport()->mapToGlobal(place.topLeft()));
    show(hoverAtCaret(m_live.outline(), caret, m_live.index()), caret, place);
}

void Hovers::show(const Hover &hover, qsizetype position, const QRect &place)
{
    m_hover = hover;
    // A caret behind the last letter is still at the name.
    const qsizetype at = hover.of == Hover::Of::Name ? hover.range.start : position;
    m_problems = problemsAt ? problemsAt(at) : QList<Fault>();
    if (hover.of == Hover::Of::Nothing && m_problems.isEmpty()) {
        hide();
        return;
    }
    if (hover.of == Hover::Of::Nothing)
        m_hover.range = {qint32(position), qint32(position + 1)};
    m_pictures.setThemeFolder(m_facts.themeFolder());
    m_pictures.lookAgain();
    m_box->showAt(contents(), place);
}

void Hovers::hide()
{
    m_box->hide();
}

void Hovers::sayAnew()
{
    if (m_box->isVisible())
        m_box->say(contents());
}

HoverContents Hovers::contents()
{
    HoverContents said;
    if (m_hover.of == Hover::Of::Block) {
        sayBlock(said);
    } else if (m_hover.of == Hover::Of::Name) {
        said.title = captionOf(m_hover.kind) + u' ' + m_hover.name;
        if (!m_hover.isDefined) {
            if (!saysUndefined())
                said.lines.append(notDefined(m_hover.kind));
        } else if (m_hover.kind == NameKind::Image) {
            sayImage(said);
        } else if (m_hover.kind == NameKind::Colour) {
            sayColour(said);
        } else if (m_hover.kind == NameKind::Font) {
            sayFont(said);
        } else {
            sayString(said);
        }
    } else {
        said.title = tr("Problem");
    }
    for (const Fault &fault : m_problems)
        said.lines.append(fault.message);
    if (!m_hover.nearest.isEmpty())
        said.lines.append(tr("Nearest: %1").arg(m_hover.nearest.join(QLatin1String(", "))));
    return said;
}

// Whether a problem says that the name is not defined. That of a string is about a language that lacks it,
// and another may have it.
bool Hovers::saysUndefined() const
{
    return m_hover.kind != NameKind::String &&
           std::any_of(m_problems.begin(), m_problems.end(),
                       [this](const Fault &fault) { return fault.range == m_hover.range; });
}

void Hovers::sayImage(HoverContents &said)
{
    const QString path = m_facts.pathOf(m_hover.name);
    const ShownPicture picture = m_pictures.find(path);
    said.picture = picture.image;
    said.isPicture = true;
    if (picture.size.isValid())
        said.lines.append(tr("%1 × %2 pixels, %3 bytes")
                              .arg(picture.size.width())
                              .arg(picture.size.height())
                              .arg(QLocale().toString(picture.bytes)));
    if (!picture.why.isEmpty())
        said.lines.append(picture.why);
    said.lines.append(shownPath(path, m_facts.themeFolder()));
}

void Hovers::sayColour(HoverContents &said) const
{
    const QString code = m_facts.codeOf(m_hover.name);
    if (const auto channels = channelsOf(code)) {
        said.colour = QColor(channels->red, channels->green, channels->blue);
        said.lines.append(code);
    }
    if (isKeyColour(m_hover.name))
        said.lines.append(tr("What is behind it shows through."));
}

void Hovers::sayFont(HoverContents &said)
{
    const std::optional<NameFacts::Font> font = m_facts.font(m_hover.name);
    if (!font)
        return;
    said.lines.append(tr("%1 pixels, %2").arg(font->size, font->style));
    said.lines.append(shownPath(font->path, m_facts.themeFolder()));
    const FontSample::Drawn drawn =
        m_sample.draw({font->path, m_facts.themeFolder(), font->size.toInt(),
                       m_box->palette().color(QPalette::ToolTipText), m_box->devicePixelRatioF()});
    said.picture = drawn.line;
    if (!drawn.why.isEmpty())
        said.lines.append(drawn.why);
}

void Hovers::sayString(HoverContents &said)
{
    for (const Translations::Said &each : m_facts.translations().of(m_hover.name))
        said.lines.append(
            tr("%1: %2").arg(each.language, each.text.isEmpty() ? tr("(not translated)") : each.text));
}

void Hovers::sayBlock(HoverContents &said) const
{
    said.title = m_hover.name.isEmpty() ? tr("Block without a name") : tr("Block %1").arg(m_hover.name);
    if (!m_hover.className.isEmpty())
        said.lines.append(tr("Class: %1").arg(m_hover.className));
    const auto say = [&](const QString &what, const Box &box) {
        said.lines.append(what.arg(box.x).arg(box.y).arg(box.w).arg(box.h));
    };
    if (m_hover.rect)
        say(tr("Rect: %1, %2, %3 × %4"), *m_hover.rect);
    else
        said.lines.append(tr("No rect that can be read."));
    if (m_hover.place)
        say(tr("On the screen: %1, %2, %3 × %4"), *m_hover.place);
}

} // namespace quillmere
