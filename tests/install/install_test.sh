#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# Installs a build, moves what was installed, and builds an example against it: once through CMake,
# once through pkg-config.
# Usage: install_test.sh BUILD_DIRECTORY EXAMPLES_DIRECTORY
set -eu
build=$1
examples=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
expected="80 pixels differ"

must_print() {
  printed=$("$@")
  [ "$printed" = "$expected" ] || { echo "$1 printed '$printed', not '$expected'" >&2; exit 1; }
}

cmake --install "$build" --prefix "$work/installed" >/dev/null
mv "$work/installed" "$work/moved"
# Out of the source tree, whose headers must not be found by accident.
cp -r "$examples" "$work/examples"

cmake -S "$work/examples" -B "$work/build" -DCMAKE_PREFIX_PATH="$work/moved" >/dev/null
cmake --build "$work/build" --target example_inspect >/dev/null
must_print "$work/build/example_inspect"

pc=$(find "$work/moved" -name lxpic.pc)
PKG_CONFIG_PATH=$(dirname "$pc")
export PKG_CONFIG_PATH
# shellcheck disable=SC2046  # the flags are words
c++ -std=c++17 "$work/examples/inspect.cpp" -o "$work/inspect" $(pkg-config --cflags --libs lxpic)
LD_LIBRARY_PATH=$(pkg-config --variable=libdir lxpic) must_print "$work/inspect"

if [ -e "$work/moved/bin/lxpic" ]; then
  "$work/moved/bin/lxpic" list >/dev/null
fi
