#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# Compiles each public header alone, with each language version that users may have: with the
# compiler of the build, and with the other one where it is installed, as it must be in CI.
# Usage: compile_headers.sh INCLUDE_DIRECTORY COMPILER
set -u
include=$1
failed=0
for compiler in "$2" clang++; do
  if ! command -v "$compiler" >/dev/null; then
    echo "$compiler is not there" >&2
    [ "$compiler" = clang++ ] && [ -z "${CI:-}" ] || failed=1
    continue
  fi
  for standard in c++17 c++20; do
    find "$include/lxpic" -name '*.h' | sort | while read -r header; do
      printf '#include "%s"\n' "${header#"$include"/}" |
        "$compiler" -std=$standard -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror \
          -fsyntax-only -I "$include" -x c++ - ||
        { echo "$header: $compiler $standard" >&2; exit 1; }
    done || failed=1
  done
done
exit $failed
