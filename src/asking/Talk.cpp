#include "asking/Talk.h"

#include "files/RunTimeError.h"

#include <QObject>

namespace quillmere {

void Talk::run(const std::function<void()> &command)
{
    try {
        command();
    } catch (const Cancelled &) {
        say(QObject::tr("Cancelled."));
    } catch (const RunTimeError &error) {
        tell(QStringLiteral("Quillmere"), error.message(), Icon::Critical);
    }
}

} // namespace quillmere
