#!/bin/bash
# scripts/pictures.sh [NAME...]: takes the pictures of README and guide anew, all or those named, from the program that is
# built in build/release, on a virtual screen of its own. The table at the end says how each comes about.
set -eu
program=pictures
preset=release
cd "$(dirname "$0")/.."
. scripts/prepare.sh

fail_without() {
    for tool in Xvfb:xvfb xdotool:xdotool import:imagemagick openbox:openbox; do
        command -v "${tool%:*}" >/dev/null || missing="${missing:-} ${tool#*:}"
    done
    [ -z "${missing:-}" ] || fail "missing packages:$missing"
    [ -x "$build/quillmere" ] || fail "build/release/quillmere is not built; ./run builds it"
}
fail_without
allow_root

pictures=$PWD/docs/pictures
quillmere=$PWD/$build/quillmere
wanted=" $* "
work=/tmp/designer # the pictures show this name
mkdir "$work" 2>/dev/null || fail "$work is there already"
screen=
running=
finish() {
    [ -z "$running" ] || kill "$running" 2>/dev/null || true
    [ -z "$screen" ] || kill "$screen" 2>/dev/null || true
    rm -rf "$work"
}
trap finish EXIT

# Starts a screen of this size, and ends the one before.
start_screen() {
    [ -z "$screen" ] || { kill "$screen"; wait "$screen" 2>/dev/null || true; }
    exec 5<>"$(fifo)"
    Xvfb -displayfd 5 -screen 0 "${1}x24" -nolisten tcp 5>&5 >/dev/null 2>&1 &
    screen=$!
    read -r -t 20 -u 5 display || fail "the virtual screen did not start"
    exec 5>&-
    export DISPLAY=:$display
    openbox --sm-disable >/dev/null 2>&1 &
    until xdotool get_desktop >/dev/null 2>&1; do sleep 0.2; done
}
fifo() {
    rm -f "$work/fifo"
    mkfifo "$work/fifo"
    echo "$work/fifo"
}

# Waits until the screen has not changed for a moment; a caret that blinks may keep it from that.
settle() {
    local before=- now i
    for ((i = 0; i < 6; i++)); do
        sleep 0.5
        now=$(import -silent -window root rgb:- | md5sum)
        [ "$now" != "$before" ] || return 0
        before=$now
    done
}

# A writable copy of the example with its fonts, in a home of its own, with work of some days in it.
make_theme() {
    rm -rf "$work/aurora" "$work/home"
    mkdir "$work/aurora"
    cp -R examples/aurora/theme "$work/aurora/theme"
    chmod -R u+w "$work/aurora/theme"
    cp /usr/share/fonts/truetype/dejavu/DejaVuSans.ttf /usr/share/fonts/truetype/dejavu/DejaVuSans-Bold.ttf \
        "$work/aurora/theme/font/" || fail "missing package: fonts-dejavu-core"
    mkdir -p "$work/home/.config/Quillmere"
}

# act ACTION: see the table.
act() {
    local what=${1%%:*} of=${1#*:}
    case $what in
        key) xdotool key --clearmodifiers "$of" ;;
        text) xdotool type --delay 30 "${of//_/ }" ;;
        word) xdotool type --delay 30 "$of" ;;
        go) act key:ctrl+p; settle; act "word:$of"; settle; act key:Return ;;
        do) act key:ctrl+p; settle; act key:greater; act "word:$of"; settle; act key:Return ;;
        at) xdotool mousemove ${of/,/ } ;;
        click) xdotool mousemove ${of/,/ } click 1 ;;
        double) xdotool mousemove ${of/,/ } click --repeat 2 --delay 60 1 ;;
        add) xdotool mousemove ${of/,/ } keydown ctrl click 1 keyup ctrl ;;
        menu) xdotool mousemove ${of/,/ } click 3 ;;
        press) xdotool mousemove ${of/,/ } mousedown 1 ;;
        by) for _ in 1 2 3 4; do xdotool mousemove_relative -- ${of/,/ }; sleep 0.2; done ;;
        roll) xdotool click --repeat 5 "$of" ;;
        drop) xdotool mouseup 1 ;;
        wait) sleep "$of" ;;
        *) fail "no action \"$1\"" ;;
    esac
    settle
}

is_wanted() {
    [[ $wanted = "  " || $wanted = *" $1 "* ]] || return
    echo "pictures: $1"
}

# picture NAME SIZE PART ACTION...: see the table.
picture() {
    local name=$1 size=$2 part=$3 action
    shift 3
    is_wanted "$name" || return 0
    make_theme
    if declare -F "prepare_$name" >/dev/null; then "prepare_$name"; fi
    start_screen "$size"
    xdotool mousemove --sync 0 0
    HOME=$work/home XDG_DATA_HOME= XDG_CONFIG_HOME= QT_QPA_PLATFORM=xcb "$quillmere" "$work/aurora/theme" >"$work/log" 2>&1 &
    running=$!
    until xdotool search --onlyvisible --class quillmere >/dev/null 2>&1; do
        kill -0 "$running" 2>/dev/null || { cat "$work/log" >&2; fail "$name: the program does not start"; }
        sleep 0.3
    done
    sleep 3
    xdotool mousemove 0 0
    settle
    for action in "$@"; do act "$action"; done
    case $part in
        all) import -silent -window root "$work/$name.png" ;;
        window) import -silent -frame -window "$(xdotool getactivewindow)" "$work/$name.png" ;;
        *) import -silent -window root -crop "$part" +repage "$work/$name.png" ;;
    esac
    kill -0 "$running" 2>/dev/null || { cat "$work/log" >&2; fail "$name: the program has ended"; }
    kill "$running"
    wait "$running" 2>/dev/null || true
    running=
    keep "$name"
}

# drawing NAME COMMAND...: a picture that the program itself draws to OUT.
drawing() {
    local name=$1
    shift
    is_wanted "$name" || return 0
    make_theme
    QT_QPA_PLATFORM=offscreen HOME=$work/home "$quillmere" "${@/OUT/$work/$name.png}" >"$work/log" 2>&1 || true
    [ -s "$work/$name.png" ] || { cat "$work/log" >&2; fail "$name: nothing was drawn"; }
    keep "$name" -resize 1280x
}

# As few bytes as show the same; no date goes in.
keep() {
    local name=$1
    shift
    convert "$work/$name.png" "$@" -strip -define png:exclude-chunks=date,time -define png:compression-level=9 "$pictures/$name.png"
}

prepare_restore() {
    local versions=$work/home/.local/share/Quillmere/backup$work/aurora/theme number=0 file when
    while read -r file when; do
        number=$((number + 1))
        mkdir -p "$versions/${file%/*}"
        sed 's/Good evening/Good night/; s/\[64,32,480,48\]/[64,40,480,48]/' "$work/aurora/theme/$file" \
            >"$versions/$file.$(printf '%010d' $number)-$when-000Z"
    done <<'END'
color/color.xml 20261119-203010
widget/wnd_volume.xml 20261120-091101
widget/wnd_main_menu.xml 20261120-181233
widget/wnd_main_menu.xml 20261121-090412
widget/wnd_epg.xml 20261121-101544
END
}
prepare_grid() {
    printf '[images]\ngrid=true\n' >"$work/home/.config/Quillmere/quillmere.conf"
}
prepare_dark() {
    printf '[window]\nscheme=dark\n' >"$work/home/.config/Quillmere/quillmere.conf"
}
prepare_import() {
    HOME=$work/home "$quillmere" export "$work/aurora/theme" German --out "$work/German.po" >/dev/null
    sed -i 's/Programmführer/TV-Programm/; s/msgstr "Favoriten"/msgstr "Lieblingssender"/; s/msgstr "Suche"/msgstr "Finden"/
            s/msgstr "Optionen"/msgstr "<b>Optionen<\/b>"/; s/Einschlaftimer/Schlummertimer/' "$work/German.po"
}
prepare_check() {
    sed -i 's/<img>bg_dim</<img>bg_din</' "$work/aurora/theme/widget/wnd_settings.xml"
}

# The table. A line is a picture: its name, the size of the screen, the part of it that is kept (all, the active window, or
# WIDTHxHEIGHT+X+Y), and what is done before:
#
#   key:KEY        presses a key, as xdotool names it        word:TEXT      types a text without blanks
#   go:NAME        goes there by Ctrl+P                      text:TEXT      types a text, a blank for each _
#   do:COMMAND     chooses a command by Ctrl+P               wait:SECONDS   waits
#   click:X,Y      clicks there                              double:X,Y     clicks there twice
#   menu:X,Y       clicks there with the right button        add:X,Y        clicks there with Ctrl
#   press:X,Y      presses the left button there             by:X,Y         moves the mouse by four times that
#   drop:          lets go of the button                     at:X,Y         moves the mouse there
#   roll:4         turns the wheel up, 5 down, 6 left and 7 right
#
# The theme is a fresh copy of the example each time; prepare_NAME, where there is such a function, changes it before.

picture overview 1280x800 all click:600,200
picture quickopen 1280x800 all go:wnd_main_menu key:ctrl+p word:info
picture dark 1280x800 all go:wnd_channel_list go:detailtitle
picture widgets 1280x800 all go:wnd_main_menu click:84,60
picture editor 1440x760 all go:wnd_epg go:epg_clock key:Home press:1307,108 by:-6,3
picture receiver 1440x760 all go:wnd_channel_list key:ctrl+r click:1173,52 word:Germ key:Return click:390,60
picture rulers 1280x800 806x400+474+60 go:wnd_channel_list click:1157,757 key:ctrl+0 at:796,342 roll:4 roll:6 click:796,342 press:482,300 by:40,0 drop:
picture view 1280x800 all go:wnd_installation go:scan_percent key:Home key:alt+v
picture completion 1280x800 640x770+0+0 go:wnd_volume click:390,60 key:ctrl+f word:video_sample key:Return key:Escape word:icon
picture hover 1280x800 640x770+0+0 go:wnd_volume click:390,60 key:ctrl+f word:video_sample key:Return key:Escape key:ctrl+F1
picture select 1280x800 all go:wnd_channel_list click:390,60 click:950,354 menu:950,354
picture guides 1440x900 830x300+593+62 go:wnd_epg go:epg_clock key:Home press:1307,108 by:-6,3
picture arrange 1280x800 800x620+0+0 go:wnd_channel_list click:390,60 click:606,179 add:606,218 add:606,257 key:alt+r
picture restore 1280x800 window do:Restore key:Down key:Down
picture images 1280x800 all go:video_sample
picture grid 1280x800 474x770+0+0 go:button_200x48
picture colours 1280x800 all go:slategray key:Return
picture languages 1280x800 all go:German key:Return click:100,470
picture properties 1280x800 all go:wnd_main_menu click:390,60 double:553,100
picture replace 1280x800 window go:wnd_main_menu key:ctrl+h word:slategray key:Tab word:dimgray key:alt+a
picture uses 1280x800 window go:slategray key:shift+F12
picture rename 1280x800 window go:bg_aurora key:F2 key:ctrl+a word:bg_night
picture search 1280x800 window key:ctrl+shift+f word:slategray key:Return
picture import 1280x800 window go:German key:Return do:Import word:/tmp/designer/German.po key:Return
picture check 1280x800 all go:wnd_settings click:438,60 click:200,246 key:alt+Return
drawing sheet sheet /tmp/designer/aurora/theme --out OUT
