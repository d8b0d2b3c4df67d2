#pragma once

#include "files/PackedText.h"

#include <QWidget>

namespace quillmere {

// A control that holds a text and shows nothing: others find it by its name and read its property. A text box
// would lay out every line of it.
class TextHolder : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QString plainText READ plainText)

public:
    explicit TextHolder(QWidget *parent = nullptr) : QWidget(parent) { hide(); }

    QString text() const { return m_text.text(); }
    void setText(const PackedText &text) { m_text = text; }
    // As a text box has it: with one line feed a line break.
    QString plainText() const
    {
        return text().replace(QLatin1String("\r\n"), QLatin1String("\n")).replace(u'\r', u'\n');
    }

private:
    PackedText m_text;
};

} // namespace quillmere
