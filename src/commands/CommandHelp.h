#pragma once

#include <QCommandLineOption>
#include <QList>
#include <QString>

namespace quillmere {

// What `quillmere COMMAND --help` prints: the command, and those of the options that go with it. Empty where
// there is no such command.
QString helpOf(const QString &command, const QList<QCommandLineOption> &options);

} // namespace quillmere
