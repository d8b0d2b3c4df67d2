#pragma once

#include <QElapsedTimer>
#include <QString>

#include <functional>

namespace quillmere {

// Lives as long as a scan of the windows: shows the wait cursor and says now and then how far the scan is.
class BusyHint
{
public:
    explicit BusyHint(std::function<void(const QString &)> say);
    ~BusyHint();
    Q_DISABLE_COPY_MOVE(BusyHint)

    void operator()(int done, int all);

private:
    std::function<void(const QString &)> m_say;
    QElapsedTimer m_sinceSaid;
};

} // namespace quillmere
