#pragma once

#include <QHash>
#include <QObject>
#include <QString>

class QComboBox;

namespace quillmere {

// Boxes of choices that are there to be read: they open, show as not to be chosen what
// they do not have, and what is chosen there by hand does not stay.
class FixedChoices : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    void add(QComboBox &box);
    // What the boxes show now is what they stay at.
    void note();

private:
    struct Choice
    {
        int index;
        QString text;
    };
    QHash<QComboBox *, Choice> m_choices;
};

} // namespace quillmere
