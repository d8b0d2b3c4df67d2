#include "gallery/SheetText.h"

#include <QUrl>

namespace quillmere {

namespace {

QByteArray escaped(const QString &text)
{
    return text.toHtmlEscaped().toUtf8();
}

QByteArray begin(const QString &title, const QByteArray &pictures, const QByteArray &style)
{
    return "<!DOCTYPE html>\n<html lang=\"en\"><head><meta charset=\"utf-8\">\n"
           "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; img-src " +
           pictures + "; style-src 'unsafe-inline'\">\n<title>" + escaped(title) +
           "</title>\n<style>body{font-family:sans-serif;margin:16px}h1{font-size:1.2em}"
           "figure{margin:0;min-width:0}figcaption{overflow-wrap:anywhere;margin-top:4px}"
           "img{max-width:100%;display:block}" +
           style + "</style></head><body>\n<h1>" + escaped(title) + "</h1>\n";
}

// The address of a file beside the page.
QByteArray address(const QString &file)
{
    return "./" + QUrl::toPercentEncoding(file);
}

QByteArray figure(const QString &file, const QByteArray &caption)
{
    if (file.isEmpty())
        return {};
    return "<figure><img src=\"" + address(file) + "\" alt=\"" + caption + "\"><figcaption>" + caption +
           "</figcaption></figure>\n";
}

} // namespace

QByteArray sheetBegin(const QString &title, int columns)
{
    return begin(title, "data:",
                 ".all{display:grid;gap:12px;grid-template-columns:repeat(" + QByteArray::number(columns) +
                     ",1fr)}figure div{border:2px dashed #b00020;color:#b00020;padding:2em 0;"
                     "text-align:center}") +
           "<div class=\"all\">\n";
}

QByteArray sheetCell(const QString &name, const QByteArray &png, const QString &reason)
{
    QByteArray picture = "<div>" + escaped(reason) + "</div>";
    if (!png.isEmpty())
        picture = "<img alt=\"\" src=\"data:image/png;base64," + png.toBase64() + "\">";
    return "<figure>" + picture + "<figcaption>" + escaped(name) + "</figcaption></figure>\n";
}

QByteArray sheetEnd()
{
    return "</div></body></html>\n";
}

QByteArray comparisonReport(const QString &before, const QString &after,
                            const QList<DifferingWindow> &differing, qsizetype compared)
{
    QByteArray text =
        begin(QStringLiteral("Windows that differ"),
              "'self' file:", ".three{display:grid;gap:12px;grid-template-columns:repeat(3,1fr)}");
    text += "<p>Before: " + escaped(before) + "<br>After: " + escaped(after) + "</p>\n<p>" +
            QByteArray::number(differing.size()) + " of " + QByteArray::number(compared) +
            " windows differ.</p>\n";
    for (const DifferingWindow &window : differing) {
        text += "<h2>" + escaped(window.name) + "</h2>\n<p>" +
                (window.reason.isEmpty() ? QByteArray::number(window.pixels) + " pixels differ"
                                         : escaped(window.reason)) +
                "</p>\n<div class=\"three\">\n" + figure(window.before, "Before") +
                figure(window.after, "After") + figure(window.difference, "Difference") + "</div>\n";
    }
    return text + "</body></html>\n";
}

} // namespace quillmere
