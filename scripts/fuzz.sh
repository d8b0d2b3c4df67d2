#!/bin/sh
# fuzz.sh SECONDS [TARGET...]: builds the fuzz targets with clang and runs each of them, or those named, for so many
# seconds, two at a time. Prints a line a target and fails if one of them fails. Corpora are kept in build/fuzz/corpus
# and go on growing, what a target failed on is in build/fuzz/findings.
set -eu
cd "$(dirname "$0")/.."
build=build/fuzz
FUZZ_SECONDS=${1:?"seconds are missing"}
export FUZZ_SECONDS
shift
pattern=
for target; do
    pattern=${pattern:+$pattern|}fuzz_$target
done

mkdir -p "$build"
[ -f "$build/build.ninja" ] || cmake --preset fuzz >"$build/build.log" 2>&1 ||
    { tail -n 30 "$build/build.log" >&2; exit 1; }
cmake --build --preset fuzz >"$build/build.log" 2>&1 || { tail -n 30 "$build/build.log" >&2; exit 1; }

rm -rf "$build/results"
status=0
ctest --test-dir "$build" -j 2 --timeout $((FUZZ_SECONDS + 120)) -R "^(${pattern:-.*})\$" >"$build/ctest.log" 2>&1 ||
    status=$?
cat "$build"/results/* 2>/dev/null || cat "$build/ctest.log"
exit "$status"
