#include "browser/GraphicsCard.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

using namespace quillmere;
using namespace Qt::StringLiterals;

class TestGraphicsCard : public QObject
{
    Q_OBJECT

private slots:
    void devices_data()
    {
        QTest::addColumn<QString>("node");
        QTest::addColumn<bool>("isCard");
        const std::pair<const char *, bool> nodes[] = {
            {"dri/card0", true}, {"dri/renderD128", true}, {"nvidia0", true}, {"dxg", true},
            {"dri/", false},     {"dri/by-path/x", false}, {"fb0", false},    {"null", false},
        };
        for (const auto &[node, isCard] : nodes)
            QTest::addRow("%s", node) << QString::fromLatin1(node) << isCard;
    }
    void devices()
    {
#ifndef Q_OS_LINUX
        QSKIP("only Linux lists its devices in a folder");
#endif
        QFETCH(const QString, node);
        const QTemporaryDir folder;
        const QString path = folder.filePath(node);
        QVERIFY(QDir().mkpath(path.left(path.lastIndexOf(u'/'))));
        QFile file(path);
        QVERIFY(node.endsWith(u'/') || file.open(QIODevice::WriteOnly));
        QTEST(hasGraphicsCard(folder.path()), "isCard");
        QVERIFY(!hasGraphicsCard(folder.filePath(u"missing"_s)));
    }

    void renderers()
    {
        for (const char *name : {"llvmpipe (LLVM 15.0.6, 256 bits)", "softpipe", "Software Rasterizer",
                                 "virgl (LLVMPIPE (LLVM 15.0.6, 256 bits))"})
            QVERIFY2(drawsWithProcessor(name), name);
        for (const char *name : {"Mesa Intel(R) UHD Graphics 620 (KBL GT2)", "AMD Radeon (radeonsi, LLVM 15)",
                                 "SVGA3D; build: RELEASE;  LLVM;", ""})
            QVERIFY2(!drawsWithProcessor(name), name);
    }
};

QTEST_GUILESS_MAIN(TestGraphicsCard)
#include "tst_graphicscard.moc"
