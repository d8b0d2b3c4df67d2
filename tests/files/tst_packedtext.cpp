#include "TextTable.h"
#include "files/PackedText.h"

#include <QTest>
#include <QThreadPool>

using namespace quillmere;

class TestPackedText : public QObject
{
    Q_OBJECT

private slots:
    void givesBackWhatItGot_data()
    {
        const QString large = QStringLiteral("<rect>1,2,3,4</rect>\r\n").repeated(100'000);
        const QString planes = large + u"\u00e9\u0645\u20ac\U0001f600\ufffd" + QChar(0);
        const QString seam = u"x" + QStringLiteral("\U0001f600").repeated(1 << 21);
        const QString half = large + QChar(0xd83d);
        textTable({"text"}, {{u"none", u""},
                             {u"small", u"text"},
                             {u"large", large},
                             {u"all planes", planes},
                             {u"pairs where it is cut", seam},
                             {u"half a pair", half}});
    }

    // At once, while it is being packed, and afterwards.
    void givesBackWhatItGot()
    {
        QFETCH(const QString, text);
        const PackedText kept(text);
        PackedText copy = kept;
        QVERIFY(kept.text() == text && copy == text);
        QThreadPool::globalInstance()->waitForDone();
        QVERIFY(kept.text() == text && copy == text);
        QVERIFY(PackedText(text, PackedText::Packing::Now) == text);
        QCOMPARE(kept.size(), text.size());
        QVERIFY(!(kept == QString(text.size(), u'x')) || text.isEmpty());
        copy = PackedText(text + u'x');
        copy = {};
        QVERIFY(copy == QString());
    }
};

QTEST_GUILESS_MAIN(TestPackedText)
#include "tst_packedtext.moc"
