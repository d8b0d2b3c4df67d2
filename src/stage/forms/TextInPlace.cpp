#include "stage/forms/TextInPlace.h"

#include "asking/Talk.h"
#include "browser/forms/WebBrowser.h"
#include "controls/Named.h"
#include "files/RunTimeError.h"
#include "preview/forms/PreviewArea.h"
#include "preview/forms/PreviewFrame.h"
#include "receiver/BlockLook.h"
#include "rows/ToolTip.h"
#include "stage/forms/ReceiverView.h"
#include "stage/forms/Stage.h"

#include <QAction>
#include <QLineEdit>
#include <QShortcut>

#include <algorithm>
#include <utility>

namespace quillmere {

namespace {
constexpr double kSmallest = 11, kLargest = 48; // pixels of letters that one types
constexpr int kAround = 8;                      // pixels that the line needs beside its letters
constexpr int kNarrowest = 120;                 // pixels
} // namespace

TextInPlace::TextInPlace(Stage &stage, PreviewFrame &frame, ReceiverView &view, Talk &talk, QObject *parent)
    : QObject(parent), m_stage(stage), m_frame(frame), m_view(view), m_talk(talk)
{
    connect(&stage, &Stage::selectionChanged, this, &TextInPlace::end);
    connect(&stage, &Stage::textChanged, this, &TextInPlace::end);
    connect(&view, &ReceiverView::switched, this, &TextInPlace::end);
    connect(&frame, &PreviewFrame::viewChanged, this, &TextInPlace::place);
    connect(&stage, &Stage::placesChanged, this, &TextInPlace::place);
}

void TextInPlace::addCommand(const QList<QWidget *> &places)
{
    auto *action = new QAction(tr("Translate in Place"), this);
    action->setObjectName(QStringLiteral("translateInPlace"));
    action->setShortcut(Qt::Key_F4);
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    connect(action, &QAction::triggered, this, [this] { m_talk.run([this] { begin(); }); });
    for (QWidget *place : places)
        place->addAction(action);
}

void TextInPlace::begin()
{
    end();
    const QList<int> selected = m_stage.selection();
    QString why;
    if (!m_view.isOn() || m_view.language().isEmpty())
        why = tr("Choose a language above the picture to translate a text in place.");
    else
        why = selected.isEmpty() ? tr("Select a text to translate it in place.") : beginAt(selected.first());
    if (!why.isEmpty())
        m_talk.say(why);
}

QString TextInPlace::beginAt(int block)
{
    const Outline &outline = m_stage.outline();
    const BlockLook look(outline, outline.blocks()[size_t(block)]);
    m_source = look.written(Kind::String).toString();
    if (m_source.trimmed().isEmpty())
        return tr("This block has no text.");
    m_block = block;
    if (!m_stage.placeOf(block))
        return tr("This block is not drawn.");
    m_language = m_view.language();
    m_before = m_view.shownText(m_source);
    m_size = m_view.font(look.value(Kind::Font).toString()).size.toDouble();
    m_line = named(new QLineEdit(m_before, m_frame.area().viewport()), "txtInPlace",
                   tr("%1 in %2").arg(m_source, m_language));
    m_line->setToolTip(plainToolTip(m_source));
    m_line->setPlaceholderText(m_source);
    m_line->selectAll();
    connect(m_line, &QLineEdit::returnPressed, this, [this] { m_talk.run([this] { take(); }); });
    auto *escape = new QShortcut(Qt::Key_Escape, m_line);
    escape->setContext(Qt::WidgetShortcut);
    connect(escape, &QShortcut::activated, this, &TextInPlace::end);
    place();
    m_line->show();
    m_line->setFocus();
    m_talk.say(tr("Enter puts the text into %1; Esc changes nothing.").arg(m_language));
    return {};
}

// Over the block, as far as that is seen, and large enough to type in.
void TextInPlace::place()
{
    const std::optional<Place> at = m_line ? m_stage.placeOf(m_block) : std::nullopt;
    if (!at)
        return;
    QFont font = m_line->font();
    font.setPixelSize(qRound(std::clamp(m_size * m_frame.zoom(), kSmallest, kLargest)));
    m_line->setFont(font);
    const QRectF box(m_frame.fromPage(at->box.topLeft()), m_frame.fromPage(at->box.bottomRight()));
    const QRect room = m_frame.area().viewport()->rect();
    QRect line = box.translated(m_frame.wb->pos()).toAlignedRect();
    const int high = m_line->fontMetrics().height() + kAround;
    line = QRect(line.left(), line.center().y() - high / 2, std::max(line.width(), kNarrowest), high);
    line.setWidth(std::min(line.width(), room.width()));
    line.moveLeft(std::clamp(line.left(), 0, room.width() - line.width()));
    line.moveTop(std::clamp(line.top(), 0, std::max(0, room.height() - line.height())));
    m_line->setGeometry(line);
}

void TextInPlace::take()
{
    const QString text = m_line->text();
    if (text.contains(u'<') || text.contains(u'>'))
        throw RunTimeError(tr("A language file cannot hold a translation with < or >."));
    if (text == m_before || text.trimmed().isEmpty()) {
        end();
        return;
    }
    const QString source = m_source, language = m_language;
    translate(language, source, text); // where it fails, what was typed stays
    emit translated();
    end();
    m_talk.say(tr("%1: \"%2\" is now \"%3\", not saved yet.").arg(language, source.trimmed(), text));
}

void TextInPlace::end()
{
    QLineEdit *line = std::exchange(m_line, nullptr);
    if (!line)
        return;
    if (line->hasFocus())
        m_frame.wb->setFocus();
    line->hide();
    line->deleteLater(); // it may be its own key that ends it
}

} // namespace quillmere
