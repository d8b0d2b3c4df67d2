#!/bin/sh
# scripts/package.sh: builds Quillmere and makes a Debian package of it; the last line printed is where that lies.
# scripts/package.sh --built BUILD FOLDER: packs what is built in BUILD already, in a hurry, and puts the package into FOLDER.
set -eu
program=package
preset=release
case "$# ${1:-}" in
    "0 ") compression=xz ;;
    "3 --built") built=$(realpath "$2") folder=$(realpath -m "$3") compression=gzip ;;
    *) echo "usage: scripts/package.sh [--built BUILD FOLDER]" >&2; exit 2 ;;
esac
cd "$(dirname "$0")/.."
. scripts/prepare.sh
packages="$packages dpkg-dev file gzip" # which find out what the program needs

if [ $# -eq 0 ]; then
    install_packages
    build_program quillmere
    built=$PWD/$build folder=$PWD/build/package
fi

# Nothing of who packs gets into the package.
umask 022
mkdir -p "$folder"
log=$folder/package.log
if ! (cd "$built" && cpack -G DEB -D CPACK_DEBIAN_COMPRESSION_TYPE=$compression -B "$folder") >"$log" 2>&1; then
    cat "$log" >&2
    fail "the package could not be made"
fi
rm -rf "$folder/_CPack_Packages"
ls "$folder"/quillmere_*.deb
