#pragma once

#include "app/frmSkin.h"
#include "asking/Prompts.h"
#include "browser/forms/WebBrowser.h"
#include "files/Files.h"

#include <QApplication>
#include <QTemporaryDir>

#include <algorithm>

namespace quillmere {

// To be called before there is an application. Nothing of the person's is read or written.
inline void prepareBench(const QTemporaryDir &folder)
{
    qputenv("XDG_CONFIG_HOME", folder.path().toUtf8());
    qputenv("XDG_DATA_HOME", folder.path().toUtf8());
    qputenv("XDG_CACHE_HOME", folder.path().toUtf8());
    QCoreApplication::setOrganizationName(QStringLiteral("Quillmere"));
    QCoreApplication::setApplicationName(QStringLiteral("quillmere-bench"));
    WebBrowser::prepare();
}

// The main window, which asks nothing and keeps its files in the folder.
class BenchWindow
{
public:
    explicit BenchWindow(const QTemporaryDir &folder)
    {
        m_files.backups().setFolder(folder.filePath(QStringLiteral("backup")));
        m_files.setRecoveryFolder(folder.filePath(QStringLiteral("recovery")));
        m_files.setProgramFolder(folder.path());
        m_skin = std::make_unique<frmSkin>(m_files, &m_prompts);
        m_skin->resize(1400, 900);
        m_skin->show();
        m_skin->activateWindow();
    }

    frmSkin &skin() const { return *m_skin; }
    template <typename Kind>
    Kind *find(const char *name) const
    {
        return m_skin->findChild<Kind *>(QLatin1String(name));
    }

private:
    class NoPrompts : public Prompts
    {
    public:
        bool ask(const QString &, const QString &) override { return true; }
        void tell(const QString &, const QString &, Icon) override {}
        std::optional<QString> input(const QString &, const QString &, const QString &) override
        {
            return {};
        }
        std::optional<QString> chooseFile(FileFor, const QString &, const QString &, const QString &) override
        {
            return {};
        }
    };

    Files m_files;
    NoPrompts m_prompts;
    std::unique_ptr<frmSkin> m_skin;
};

// A window of so many blocks, each with an image of this name and the block's number; without a name, of
// none.
inline QString windowOf(int blocks, const QString &image)
{
    QString text = QStringLiteral("<interface>\r\n<widget class=\"window\" name=\"screen\"><property>"
                                  "<rect>[0,0,1280,720]</rect></property><children>\r\n");
    for (int block = 0; block < blocks; ++block)
        text += QStringLiteral("    <widget class=\"text\" name=\"block_%1\">\r\n        <property>\r\n"
                               "            <rect>[%2,%3,120,40]</rect>\r\n"
                               "            <string>text %1</string>\r\n            <img>%4</img>\r\n"
                               "        </property>\r\n    </widget>\r\n")
                    .arg(block)
                    .arg(block % 40 * 30)
                    .arg(block / 40 % 40 * 17)
                    .arg(image.isEmpty() ? image : image + u'_' + QString::number(block));
    return text + QStringLiteral("</children></widget>\r\n</interface>\r\n");
}

inline QString spread(QList<double> milliseconds)
{
    std::ranges::sort(milliseconds);
    return QStringLiteral("p50 %1 ms, p95 %2 ms")
        .arg(milliseconds[milliseconds.size() / 2], 6, 'f', 1)
        .arg(milliseconds[milliseconds.size() * 95 / 100], 6, 'f', 1);
}

} // namespace quillmere
