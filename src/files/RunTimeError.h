#pragma once

#include <QString>

#include <stdexcept>

namespace quillmere {

// A core routine that cannot do its work throws this: what, on which file or row, why. The text is for a
// person.
class RunTimeError : public std::runtime_error
{
public:
    explicit RunTimeError(const QString &message)
        : std::runtime_error(message.toStdString()), m_message(message)
    {
    }
    const QString &message() const { return m_message; }

private:
    QString m_message;
};

} // namespace quillmere
