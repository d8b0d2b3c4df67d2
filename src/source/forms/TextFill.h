#pragma once

#include <QObject>
#include <QString>
#include <QTimer>

class QPlainTextEdit;

namespace quillmere {

// Fills a text box with a long text piece by piece, between the other events of the window.
class TextFill : public QObject
{
    Q_OBJECT

public:
    explicit TextFill(QPlainTextEdit &box);

    // Begins anew where another text is under way.
    void start(const QString &text);
    // The box keeps the part that it has.
    void stop();
    double milliseconds() const { return m_milliseconds; } // that the newest text has taken so far

signals:
    // The box shows the whole text.
    void filled();

private:
    void addPiece();

    QPlainTextEdit &m_box;
    QTimer m_next;
    QString m_text;
    qsizetype m_done = 0;
    double m_milliseconds = 0;
};

} // namespace quillmere
