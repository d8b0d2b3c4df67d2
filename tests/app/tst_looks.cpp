#include "Failure.h"
#include "app/WindowFixture.h"

#include "controls/ClearStyle.h"
#include "controls/DrawnIcon.h"
#include "controls/ReadableColours.h"
#include "controls/Scheme.h"

#include <QAction>
#include <QPainter>
#include <QStyleOption>
#include <QToolTip>

using namespace quillmere;

namespace {

// The most that any pixel of what is drawn stands out from its ground.
template <typename Draw>
double contrastOf(const QColor &ground, Draw draw)
{
    QImage image(32, 32, QImage::Format_RGB32);
    image.fill(ground);
    QPainter painter(&image);
    draw(painter);
    painter.end();
    double most = 1;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            most = std::max(most, contrast(image.pixelColor(x, y), ground));
    }
    return most;
}

double contrastOf(QStyle::PrimitiveElement element, const QPalette &palette, QPalette::ColorRole ground)
{
    const ClearStyle style;
    QStyleOptionViewItem box;
    QStyleOptionFocusRect focus;
    QStyleOption &option = element == QStyle::PE_FrameFocusRect ? static_cast<QStyleOption &>(focus) : box;
    option.palette = palette;
    option.rect = QRect(8, 8, 16, 16);
    option.state = QStyle::State_Enabled | QStyle::State_Off;
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
    }
};

WINDOW_TEST_MAIN(TestLooks)
#include "tst_looks.moc"
