#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Installs BUILD_FOLDER into a fresh prefix, builds the first program of the README outside of the
# tree, through CMake and through pkg-config, and runs both against the installed simulator.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
root=$(cd "$here/../.." && pwd)
build=$(cd "$1" && pwd)
work=$(mktemp -d)
address=127.254.$((RANDOM % 250 + 1)).$((RANDOM % 250 + 1))
server=
cleanup() {
    [ -z "$server" ] || kill "$server" 2>/dev/null || true
    rm -rf "$work"
}
trap cleanup EXIT
fail() {
    echo "consumer: $*" >&2
    exit 1
}

cmake --install "$build" --prefix "$work/prefix" >"$work/install.log" || { cat "$work/install.log"; exit 1; }
for file in bin/tarn-desk bin/tarnctl bin/vesk-sim include/Tarn/Tarn include/Tarn/APIQt include/Tarn/AString; do
    [ -e "$work/prefix/$file" ] || fail "$file is not installed"
done
if [ -e "$build/plugins/designer/tarn_designer.so" ]; then
    find "$work/prefix" -path '*/plugins/designer/tarn_designer.so' | grep -q . || fail "the plugin of the form editor is not installed"
fi
libdir=$(dirname "$(find "$work/prefix" -name 'libTarn.so' -print -quit)")
export LD_LIBRARY_PATH=$libdir

"$root/tests/install/first_program.py" "$root/README.md" >"$work/first.cpp"
mkdir "$work/cmake"
cp "$here/cmake_consumer/CMakeLists.txt" "$work/first.cpp" "$work/cmake"
cmake -S "$work/cmake" -B "$work/cmake/build" -G Ninja -DCMAKE_PREFIX_PATH="$work/prefix" >"$work/configure.log" ||
    { cat "$work/configure.log"; exit 1; }
cmake --build "$work/cmake/build"
PKG_CONFIG_PATH="$libdir/pkgconfig" g++ "$work/first.cpp" -o "$work/by_pkg_config" -fPIC \
    $(PKG_CONFIG_PATH="$libdir/pkgconfig" pkg-config --cflags --libs tarn)

coproc "$work/prefix/bin/vesk-sim" --address "$address" --demo --run-time 120
server=$COPROC_PID
read -r -t 60 line <&"${COPROC[0]}" && [[ $line == "listening on"* ]] || fail "the simulator did not start"
for program in "$work/cmake/build/consumer" "$work/by_pkg_config"; do
    timeout 60 "$program" "$address" >"$work/out.txt" 2>&1 || { cat "$work/out.txt"; fail "$program failed"; }
    grep -q 'channel A: play' "$work/out.txt" || { cat "$work/out.txt"; fail "$program saw no play"; }
done
"$work/prefix/bin/tarnctl" --server "$address" --json call sync >"$work/out.txt" || fail "tarnctl failed"
grep -qx '{"reply":"ok"}' "$work/out.txt" || { cat "$work/out.txt"; fail "tarnctl printed something else"; }
echo "consumer: installed tree works through CMake and pkg-config"
