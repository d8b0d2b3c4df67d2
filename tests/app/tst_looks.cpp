#include "Failure.h"
#include "app/WindowFixture.h"

#include "controls/ClearStyle.h"
#include "controls/DrawnIcon.h"
#include "controls/ReadableColours.h"
#include "controls/Scheme.h"
#include "stage/forms/StageOverlay.h"

#include <QAction>
#include <QPainter>
#include <QStyleOption>
#include <QTextBlock>
#include <QToolTip>

using namespace quillmere;

namespace {

constexpr double kMostContrast = 21; // of white on black

// The most that any pixel stands out from the ground.
double mostIn(const QImage &image, const QColor &ground)
{
    double most = 1;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            most = std::max(most, contrast(image.pixelColor(x, y), ground));
    }
    return most;
}

// The same of what is drawn on it.
template <typename Draw>
double contrastOf(const QColor &ground, Draw draw)
{
    QImage image(32, 32, QImage::Format_RGB32);
    image.fill(ground);
    QPainter painter(&image);
    draw(painter);
    painter.end();
    return mostIn(image, ground);
}

double contrastOf(QStyle::PrimitiveElement element, const QPalette &palette, QPalette::ColorRole ground,
                  QStyle::StateFlag state = QStyle::State_Off)
{
    const ClearStyle style;
    QStyleOptionViewItem box;
    QStyleOptionFocusRect focus;
    QStyleOption &option = element == QStyle::PE_FrameFocusRect ? static_cast<QStyleOption &>(focus) : box;
    option.palette = palette;
    option.rect = QRect(8, 8, 16, 16);
    option.state = QStyle::State_Enabled | state;
    focus.backgroundColor = palette.color(ground);
    return contrastOf(palette.color(ground),
                      [&](QPainter &painter) { style.drawPrimitive(element, &option, &painter, nullptr); });
}

} // namespace

class TestLooks : public QObject
{
    Q_OBJECT

private slots:
    void textIsRead_data()
    {
        QTest::addColumn<Scheme>("scheme");
        QTest::newRow("light") << Scheme::Light;
        QTest::newRow("dark") << Scheme::Dark;
    }

    void textIsRead()
    {
        QFETCH(const Scheme, scheme);
        const QPalette own = paletteOf(scheme), notice = noticeColours(own);
        using P = QPalette;
        const struct
        {
            P::ColorRole text, ground;
        } pairs[] = {{P::WindowText, P::Window},
                     {P::Text, P::Base},
                     {P::Text, P::AlternateBase},
                     {P::ButtonText, P::Button},
                     {P::HighlightedText, P::Highlight},
                     {P::ToolTipText, P::ToolTipBase},
                     {P::PlaceholderText, P::Base},
                     {P::PlaceholderText, P::AlternateBase},
                     {P::Link, P::Base},
                     {P::Link, P::Window},
                     {P::LinkVisited, P::Base}};
        for (const auto group : {P::Active, P::Inactive}) {
            for (const auto &[text, ground] : pairs) {
                const double ratio = contrast(own.color(group, text), own.color(group, ground));
                QVERIFY2(ratio >= 4.5, qPrintable(u"%1 on %2: %3"_s.arg(text).arg(ground).arg(ratio)));
            }
        }
        QVERIFY(contrast(notice.color(P::WindowText), notice.color(P::Window)) >= 4.5);
        QVERIFY(contrast(notice.color(P::Window), own.color(P::Window)) >= 1.15); // no second status line
        for (const auto element : {QStyle::PE_IndicatorCheckBox, QStyle::PE_IndicatorRadioButton,
                                   QStyle::PE_IndicatorItemViewItemCheck})
            QVERIFY2(contrastOf(element, own, P::Base) >= 3, qPrintable(QString::number(element)));
        for (const auto ground : {P::Window, P::Base, P::Highlight})
            QVERIFY2(contrastOf(QStyle::PE_FrameFocusRect, own, ground) >= 3,
                     qPrintable(QString::number(ground)));
    }

    void buttonsThatAreOn()
    {
        for (const Scheme scheme : {Scheme::Light, Scheme::Dark}) {
            const QPalette own = paletteOf(scheme);
            const double ratio =
                contrastOf(QStyle::PE_PanelButtonCommand, own, QPalette::Window, QStyle::State_On);
            QVERIFY2(ratio >= 3, qPrintable(QString::number(ratio)));
        }
    }

    // Each kind of text in the source, on the line of the caret and on every other ground that is put behind
    // it.
    void sourceIsRead()
    {
        Window window;
        SourceBox *source = window.source();
        source->setText(u"<widget class=\"box\">text</widget> <!-- note -->"_s);
        window.turnTo(8);
        window.choose("mnuFind");
        QTest::keyClicks(window.find<QLineEdit>("txtFind"), u"note"_s);
        for (const char *scheme : {"mnuLight", "mnuDark"}) {
            window.choose(scheme);
            const bool dark = scheme == QByteArrayView("mnuDark");
            QTRY_COMPARE(isDark(source->palette()), dark);
            const QColor base = source->palette().color(QPalette::Base);
            source->setTextCursor(QTextCursor(source->document())); // beside a bracket
            const QList<QTextEdit::ExtraSelection> marks = source->extraSelections();
            QCOMPARE(marks.size(), 3);
            QList<QPair<QColor, QColor>> pairs; // text, ground
            const QColor line = marks.first().format.background().color();
            const QColor ofCaret = mixed(line, base, line.alphaF());
            for (const auto &mark : marks.sliced(1)) {
                const QColor ground = mark.format.background().color();
                pairs.append({mark.format.foreground().color(), mixed(ground, ofCaret, ground.alphaF())});
            }
            QTextCursor at(source->document());
            at.setPosition(int(source->text().indexOf(u"note")));
            const QPoint found = source->cursorRect(at).topLeft() + QPoint(3, 2); // above the letters
            const QColor ofFound = source->viewport()->grab().toImage().pixelColor(found);
            QVERIFY(contrast(ofFound, ofCaret) > 1.1);
            for (const auto &format : source->document()->firstBlock().layout()->formats()) {
                for (const QColor &ground : {base, ofCaret, ofFound})
                    pairs.append({format.format.foreground().color(), ground});
            }
            QVERIFY(pairs.size() > 24);
            for (const auto &[text, ground] : pairs)
                QVERIFY2(contrast(text, ground) >= 4.5,
                         qPrintable(u"%1 on %2"_s.arg(text.name(), ground.name())));
        }
    }

    // Outlines, handles and guides lie on pictures of any colour: either they or their edges are seen.
    void pictureMarksAreSeen()
    {
        const Window window;
        auto *overlay = window.find<StageOverlay>("stageOverlay");
        Sketch selected, handles, hovered, guides, band;
        handles.selected = selected.selected = {QRectF(40, 40, 60, 60)};
        handles.hasHandles = true;
        hovered.hovered = selected.selected.first();
        band.band = selected.selected.first();
        guides.guides = {{QLineF(20, 50, 100, 50), -1, {}}};
        const QRect part = overlay->onGlass(QRectF(20, 20, 100, 100)).toAlignedRect();
        QVERIFY(overlay->rect().contains(part));
        for (const Sketch &sketch : {selected, handles, hovered, guides, band}) {
            overlay->draw(sketch);
            for (int grey = 0; grey < 256; grey += 15) {
                const QColor ground(grey, grey, grey);
                QImage image(part.size(), QImage::Format_RGB32);
                image.fill(ground);
                overlay->render(&image, {}, part, {});
                // Between two of the line, its edges and the ground: the lightest and the darkest.
                const double ratio = mostIn(image, Qt::black) * mostIn(image, Qt::white) / kMostContrast;
                QVERIFY2(ratio >= 3, qPrintable(u"%1 on %2"_s.arg(ratio).arg(ground.name())));
            }
        }
    }

    void isChosenAndKept()
    {
        Window window;
        const QPalette desktop = QApplication::palette();
        const auto dims = [&] {
            ListView *list = window.find<ListView>("lvTheme");
            return contrast(list->palette().color(QPalette::Text), list->palette().color(QPalette::Base));
        };
        window.choose("mnuDark");
        QVERIFY(isDark(QApplication::palette()));
        QTRY_VERIFY(isDark(window.source()->palette()));
        QVERIFY(isDark(QToolTip::palette()));
        QVERIFY(dims() >= 4.5);
        QAction *save = window.find<QAction>("mnuSave");
        const QColor ground = QApplication::palette().color(QPalette::Window);
        const double drawn = contrastOf(
            ground, [save](QPainter &painter) { painter.drawPixmap(8, 8, save->icon().pixmap(16, 16)); });
        QVERIFY2(drawn >= 4.5, qPrintable(QString::number(drawn)));

        window.start();
        QVERIFY(isDark(QApplication::palette()));
        QVERIFY(window.find<QAction>("mnuDark")->isChecked());
        window.choose("mnuLight");
        QVERIFY(!isDark(QApplication::palette()));
        QVERIFY(qobject_cast<ClearStyle *>(QApplication::style()));
        window.choose("mnuAsDesktop");
        QCOMPARE(QApplication::palette().color(QPalette::Window), desktop.color(QPalette::Window));
        QVERIFY(QApplication::palette().resolveMask() != paletteOf(Scheme::Dark).resolveMask());
        const QPalette mended = QApplication::palette();
        QVERIFY(contrast(mended.color(QPalette::HighlightedText), mended.color(QPalette::Highlight)) >= 4.5);
    }
};

WINDOW_TEST_MAIN(TestLooks)
#include "tst_looks.moc"
