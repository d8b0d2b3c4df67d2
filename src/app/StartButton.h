#pragma once

#include <QPushButton>

namespace quillmere {

// A large button: icon, caption and shortcut, and a sentence below. It is laid out in the width it is given.
class StartButton : public QPushButton
{
    Q_OBJECT

public:
    StartButton(const QString &caption, const QString &sentence, QWidget *parent = nullptr);

    void setKeys(const QKeySequence &keys) { m_keys = keys.toString(QKeySequence::NativeText); }
    // Pixels that it needs where it is so wide.
    int heightForWidth(int width) const override;
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QFont captionFont() const;
    QRect sentenceRect(int width) const;

    QString m_sentence, m_keys;
};

} // namespace quillmere
