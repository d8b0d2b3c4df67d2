#!/bin/bash
# package.sh CHECKOUT BUILD: makes a package of what is built, takes it apart, and looks at it and at the program in it.
set -eu
checkout=$1 build=$2
for tool in appstreamcli cpack desktop-file-validate dpkg-shlibdeps file lintian man; do
    command -v $tool >/dev/null || { echo "$tool is not installed"; exit 77; }
done
[ "$(id -u)" -ne 0 ] || export QTWEBENGINE_DISABLE_SANDBOX=1

failures=0
# expect WHAT COMMAND...: tells what the command printed where it fails.
expect() {
    local what=$1 said
    shift
    said=$("$@" 2>&1) && return
    echo "FAIL: $what"
    [ -z "$said" ] || sed 's/^/    /' <<<"$said"
    failures=$((failures + 1))
}

# A name with a blank, and rights that keep others out: neither may get into the package.
folder="$build/package test"
rm -rf "$folder"
umask 077
package=$("$checkout/scripts/package.sh" --built "$build" "$folder" | tail -n 1)
umask 022
root=$folder/root
dpkg-deb -x "$package" "$root"
share=$root/usr/share
quillmere=$root/usr/bin/quillmere
export HOME=$folder/home XDG_DATA_HOME= XDG_CONFIG_HOME= QT_QPA_PLATFORM=offscreen

# What it is called is the same everywhere.
version=$("$quillmere" --version)
version=${version#quillmere }
expect "the version of the package" test "$(dpkg-deb -f "$package" Version)" = "$version"
expect "the first heading of CHANGELOG.md" \
    test "$(sed -n 's/^## \([^ ]*\) .*/\1/p' "$checkout/CHANGELOG.md" | head -n 1)" = "$version"
expect "the first release of the metadata" \
    test "$(sed -n 's/.*<release version="\([^"]*\)".*/\1/p' "$share"/metainfo/*.xml | head -n 1)" = "$version"
expect "the version of the manual" grep -q "^\.TH .*\"Quillmere $version\"" <(zcat "$share/man/man1/quillmere.1.gz")

# What others say of it.
expect "desktop entry" desktop-file-validate "$share/applications/quillmere.desktop"
expect "metadata" appstreamcli validate --no-net "$share"/metainfo/*.xml
expect "lintian" lintian --allow-root --fail-on error "$package"
warnings=$(MANWIDTH=80 man --warnings -l "$share/man/man1/quillmere.1.gz" 2>&1 >/dev/null || true)
expect "manual: $warnings" test -z "$warnings"
expect "links that lead nowhere" test -z "$(find "$root" -xtype l ! -path '*/aurora/theme/font/*')"
for font in DejaVuSans DejaVuSans-Bold; do
    link=$(readlink -m "$share/quillmere/examples/aurora/theme/font/$font.ttf")
    expect "the font $font of the example" test "$link" = "$(realpath "$share")/fonts/truetype/dejavu/$font.ttf"
done
expect "rights" test -z "$(dpkg-deb -c "$package" | 
    grep -Ev '^(drwxr-xr-x|-rw-r--r--|lrwxrwxrwx) root/root |^-rwxr-xr-x root/root .* \./usr/bin/quillmere$')"

# The guide leads to nothing that is not there.
guide=$share/quillmere/guide
for link in $(grep -oEh '\]\([^):#]+' "$guide"/*.md | cut -c 3-); do
    expect "$link of the guide" test -e "$guide/$link"
done

# Manual and completion know what the program knows, no more and no less.
# offers WORD...: what bash offers for the last of the words, a line each.
offers() {
    bash -c 'complete() { :; }; . "$0"; COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); _quillmere
        [ ${#COMPREPLY[@]} -eq 0 ] || printf "%s\n" "${COMPREPLY[@]}"' \
        "$share/bash-completion/completions/quillmere" "$@"
}
help=$("$quillmere" --help)
commands=$(grep -Eo '^  quillmere [a-z]+ ' <<<"$help" | cut -d ' ' -f 4)
known=$(sort -u <(grep -Eo -- '^ +(-., )?--[a-z-]+' <<<"$help" | grep -Eo -- '--[a-z-]+') <(echo "$commands"))
expect "the help is read" test "$(wc -l <<<"$known")" -gt 15
manual=$(MANWIDTH=80 man -l "$share/man/man1/quillmere.1.gz" | col -b | sed -n '/^COMMANDS/,/^EXIT STATUS/p' |
    grep -Eo '^       (-., )?(--)?[a-z-]+( |$)' | grep -Eo -- '(--)?[a-z-]{3,}' | sort -u)
expect "commands and options in the manual" diff <(echo "$known") <(echo "$manual")
mkdir "$folder/empty"
cd "$folder/empty" # where no folder is offered beside the commands
offered=$(for command in "" $commands; do offers quillmere $command --; done; offers quillmere "")
expect "commands and options in the completion" diff <(echo "$known") <(sort -u <<<"$offered")
for command in $commands; do
    expect "options in the help of $command" diff \
        <("$quillmere" "$command" --help | grep -Eo -- '^ +(-., )?--[a-z-]+' | grep -Eo -- '--[a-z-]+' |
            grep -vx -- --help | sort) <(offers quillmere "$command" -- | sort)
done
expect "options of a command" test "$(offers quillmere check mytheme --f)" = "--format
--fail-on"
expect "values of an option" test "$(offers quillmere render --size 1024x576 mytheme --view r)" = receiver

# The program works from where the package puts it. The fonts belong to another package.
theme=$share/quillmere/examples/aurora/theme
mkdir -p "$share/fonts/truetype"
ln -s /usr/share/fonts/truetype/dejavu "$share/fonts/truetype/dejavu"
report=$("$quillmere" check "$theme" || true)
expect "the fonts of the example are found" test -z "$(grep missing-font-file <<<"$report")"
expect "the example is checked" grep -q '^3 errors' <<<"$report"
expect "a window is drawn" "$quillmere" render "$theme" wnd_main_menu --out "$folder/pictures"
expect "a picture of it" test "$(stat -c %s "$folder/pictures/wnd_main_menu.png")" -gt 50000

[ $failures -eq 0 ] || exit 1
rm -rf "$folder"
