#pragma once

#include "files/Progress.h"

#include <QPlainTextEdit>
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
    // Is never shown. The first view that a document gets lays out each of its lines, of which a person sees
    // some hundred: this is the first, and has got it while it was empty.
    std::unique_ptr<QPlainTextEdit> firstView = {};
};

// Cancelled comes through.
ReadyText makeReady(const QString &text, const Progress &progress = {});

// A text with one line feed a line break, as the document counts.
QString withLineFeeds(const QString &text);

} // namespace quillmere
