#pragma once

#include "app/CellAttempts.h"
#include "app/WindowFixture.h"

#include <QTcpServer>
#include <QTcpSocket>

namespace quillmere {

// Like qWaitFor(), which sleeps between two events; the browser has many.
template <typename Condition>
[[nodiscard]] bool waitFor(Condition condition, int milliseconds)
{
    QEventLoop loop;
    QTimer poll, patience;
    bool holds = condition();
    QObject::connect(&patience, &QTimer::timeout, &loop, &QEventLoop::quit);
    QObject::connect(&poll, &QTimer::timeout, &loop, [&] {
        holds = condition();
        if (holds)
            loop.quit();
    });
    poll.start(20);
    patience.start(milliseconds);
    if (!holds)
        loop.exec();
    return holds;
}

// Everything that must not hear of a page.
class Outside
{
public:
    // Forgets what came, and takes what comes from now on at new ports: a browser that was to fall for an
    // attempt may still be knocking at the old ones.
    void openDoors()
    {
        seen.clear();
        connections = 0;
        m_server = std::make_unique<QTcpServer>();
        m_silent = std::make_unique<QTcpServer>();
        if (!m_server->listen(QHostAddress::LocalHost) || !m_silent->listen(QHostAddress::LocalHost))
            qFatal("There is no port on the loopback");
        QObject::connect(m_silent.get(), &QTcpServer::newConnection, m_silent.get(),
                         [this] { ++connections; });
        QObject::connect(m_server.get(), &QTcpServer::newConnection, m_server.get(), [this] {
            ++connections;
            QTcpSocket *socket = m_server->nextPendingConnection();
            QObject::connect(socket, &QTcpSocket::readyRead, socket, [this, socket] {
                const QByteArray path = socket->readAll().split(' ').value(1).split('?')[0];
                seen.insert(QString::fromLatin1(path.mid(1)));
                socket->write("HTTP/1.1 200 OK\r\nContent-Length: 0\r\nConnection: close\r\n\r\n");
                socket->disconnectFromHost();
            });
        });
    }

    QByteArray markupOf(const Attempt &attempt, const QString &folder) const
    {
        const auto address = [](const QTcpServer &of) -> QByteArray {
            return "127.0.0.1:" + QByteArray::number(of.serverPort());
        };
        QByteArray markup = attempt.markup;
        markup.replace("$S", "document.title+=/,$N,/.source");
        markup.replace("$H", "http://$A/$N");
        markup.replace("$M", QByteArray("mailto:" + address(*m_server) + "/$N"));
        markup.replace("$A", address(*m_server));
        markup.replace("$P", address(*m_silent));
        markup.replace("$G", "id='go' style='position:absolute;left:0;top:0;width:60px;height:40px'>");
        markup.replace("$F", QUrl::fromLocalFile(folder).toEncoded());
        markup.replace("$T", "quillmere:$D/theme");
        markup.replace("$D", folder.toUtf8());
        return markup.replace("$N", attempt.name.toUtf8());
    }
    // A letter to us: the address names the door.
    void mailed(const QString &address)
    {
        const QString door = u"127.0.0.1:%1/"_s.arg(m_server->serverPort());
        if (address.startsWith(door))
            seen.insert(address.mid(door.size()));
    }

    Names seen;
    int connections = 0;

private:
    std::unique_ptr<QTcpServer> m_server, m_silent;
};

// What tests of the cell share: a window on a theme with red things beside it.
class CellTest : public QObject
{
public:
    CellTest()
    {
        // For what must not come through, the loopback is open.
        static constexpr char flags[] = "QTWEBENGINE_CHROMIUM_FLAGS";
        qputenv(flags, qgetenv(flags).replace("~NOTFOUND", "~NOTFOUND , EXCLUDE 127.0.0.1"));
    }

protected:
    // To be called before each row. The rows of one test share a window.
    void begin()
    {
        m_outside.openDoors();
        if (m_test == QTest::currentTestFunction())
            return;
        m_test = QTest::currentTestFunction();
        m_window.reset();
        m_window = std::make_unique<Window>();
        m_wb = m_window->find<WebBrowser>("wb");
        write("secret.html", "<body bgcolor=red>");
        write("theme/theme.xml", "<config><file_image>image.xml</file_image></config>");
        write("theme/image.xml", "<image id=\"up\">../secret.png</image><image id=\"in\">in.png</image>");
        QImage red(40, 30, QImage::Format_RGB32);
        red.fill(Qt::red);
        QVERIFY(red.save(path("secret.png")) && red.save(path("theme/in.png")));
        m_window->openTheme();
        m_window->choose("mnuWwbZ1"); // 100 %: a pixel of the browser is one of the page
    }

    QString path(const char *name) const { return m_window->files.path(QLatin1String(name)); }
    void write(const char *name, const QByteArray &text) const
    {
        m_window->files.write(QLatin1String(name), text);
    }
    void open(const QByteArray &markup) const
    {
        write("theme/w.xml", "<interface>\r\n" + markup);
        m_window->skin->openDocument(path("theme/w.xml"));
    }
    QByteArray widgets(const Attempts &attempts, const Outside &outside) const
    {
        QByteArray text;
        for (qsizetype i = 0; i < attempts.size(); ++i) {
            const QRect at = placeOf(i);
            text += u"<widget class=\"box\" name=\"%1\"><property><rect>[%2,%3,62,42]</rect>"
                    "</property>"_s.arg(attempts[i].name)
                        .arg(at.x())
                        .arg(at.y())
                        .toUtf8();
            text += outside.markupOf(attempts[i], m_window->files.folder());
            text += "</widget>\r\n";
        }
        return text;
    }
    QByteArray widgets(const Attempts &attempts) const { return widgets(attempts, m_outside); }
    bool shows(const char *text) const
    {
        return m_window->js(u"document.body.textContent"_s).toString().contains(QLatin1String(text));
    }
    bool says(const char *text) const { return m_window->said().contains(QLatin1String(text)); }

    std::unique_ptr<Window> m_window;
    WebBrowser *m_wb = nullptr;
    Outside m_outside; // what the cell is told of

private:
    QByteArray m_test;
};

} // namespace quillmere
