#!/usr/bin/env bash
# headers.sh COMPILER...: each public header must compile alone, as C++11, 14, 17 and 20, without a
# warning.
set -euo pipefail
cd "$(dirname "$0")/../.."
options=(-fsyntax-only -x c++ -Iinclude -Iplatform/pegasus/include -Iplatform/cmap/include
  -Iplatform/trace/include -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wold-style-cast
  -Wnon-virtual-dtor -Woverloaded-virtual -Wundef -Werror)
for compiler; do
  for standard in 11 14 17 20; do
    printf '%s\n' include/MPUEvent/*.h |
      xargs -P "$(nproc)" -n 1 "$compiler" -std=c++"$standard" "${options[@]}"
  done
done
