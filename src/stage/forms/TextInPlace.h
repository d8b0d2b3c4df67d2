#pragma once

#include <QObject>
#include <QString>

#include <functional>

class QLineEdit;

namespace quillmere {

class PreviewFrame;
class ReceiverView;
class Stage;
class Talk;

// Translates the text of the selected block where it stands in the receiver's picture: F4 opens a line over
// it, Enter takes what is typed there, Esc does not.
class TextInPlace : public QObject
{
    Q_OBJECT

public:
    TextInPlace(Stage &stage, PreviewFrame &frame, ReceiverView &view, Talk &talk, QObject *parent = nullptr);

    // The key counts while one of these has the keyboard.
    void addCommand(const QList<QWidget *> &places);

    // Puts the translation of a source into the rows of a language.
    std::function<void(const QString &language, const QString &source, const QString &translation)> translate;

signals:
    void translated();

private:
    void begin();
    QString beginAt(int block); // why it cannot, or nothing
    void place();
    void take();
    void end();

    Stage &m_stage;
    PreviewFrame &m_frame;
    ReceiverView &m_view;
    Talk &m_talk;
    QLineEdit *m_line = nullptr; // while there is one
    int m_block = -1;
    QString m_source, m_language, m_before;
    double m_size = 0; // pixels of the page that its letters have
};

} // namespace quillmere
