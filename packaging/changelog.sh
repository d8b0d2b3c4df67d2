#!/bin/sh
# packaging/changelog.sh CHANGELOG.md: prints the releases in the form in which Debian's packages keep them.
set -eu
LC_ALL=C awk '
function sign(    command, stamp) {
    put()
    if (day == "") return
    command = "date -u -R -d " day
    command | getline stamp
    close(command)
    print "\n -- The Quillmere authors <authors@quillmere.example>  " stamp "\n"
}
# Prints the item that has been read, broken into lines.
function put(    words, number, i, line) {
    number = split(item, words, " ")
    if (number == 0) return
    line = "  *"
    for (i = 1; i <= number; i++) {
        if (length(line) + length(words[i]) > 77) {
            print line
            line = "   "
        }
        line = line " " words[i]
    }
    print line
    item = ""
}
/^## / {
    sign()
    day = substr($3, 2, 10)
    print "quillmere (" $2 ") stable; urgency=medium\n"
    next
}
/^- / { put(); item = substr($0, 3); next }
/^  / { item = item " " $0 }
END { sign() }
' "$1"
