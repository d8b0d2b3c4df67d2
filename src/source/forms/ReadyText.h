#pragma once

#include "files/Progress.h"

#include <QString>
#include <QTextDocument>

#include <memory>

namespace quillmere {

class HeldText;

// A text and the document that shows it, made before it is shown, since making a large one takes seconds.
struct ReadyText
{
    QString text;
    std::unique_ptr<QTextDocument> document;
    HeldText *held = nullptr; // the document's own
};

// Cancelled comes through.
ReadyText makeReady(const QString &text, const Progress &progress = {});

// A text with one line feed a line break, as the document counts.
QString withLineFeeds(const QString &text);

} // namespace quillmere
