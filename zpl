#!/bin/sh
# The command line of ZplHost: builds what is out of date, then runs it. See ./zpl --help.
set -eu
here=$(dirname "$0")
stamp=$here/build/zpl.stamp
# A source newer than the last good build (or no build yet) calls for one; else the program starts at once.
if [ ! -e "$stamp" ] || [ -n "$(find "$here" -path "$here/build" -prune -o -path "$here/.git" -prune -o -path "$here/tests" -prune \
        -o -newer "$stamp" \( -name '*.cpp' -o -name '*.h' -o -name CMakeLists.txt -o -name '*.cmake' -o -name CMakePresets.json \
        -o -name packages.txt \) -print -quit)" ]; then
    mkdir -p "$here/build"
    touch "$stamp.new"
    "$here/tools/prepare" zpl
    mv "$stamp.new" "$stamp"
fi
exec "$here/build/release/bin/zpl" "$@"
