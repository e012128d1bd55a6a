#!/usr/bin/env bash
# installed.sh BUILD CXX SCRATCH OPTION...: installs the build into a fresh prefix, moves that away,
# and builds and runs a C++11 program against it, once with find_package (the options are cmake's),
# once with pkg-config.
set -euo pipefail
build=$1 cxx=$2 scratch=$3
shift 3
unset PEGASUS_ROOT PEGASUS_HOME PEGASUS_PLATFORM LD_LIBRARY_PATH # the installed files know
sources=$(cd "$(dirname "$0")/../consumer" && pwd)
rm -rf "$scratch"
mkdir -p "$scratch"

cmake --install "$build" --prefix "$scratch/first" >"$scratch/install.log"
prefix=$scratch/moved
mv "$scratch/first" "$prefix"
libraries=$(dirname "$(find "$prefix" -name libMPUEvent.so)")

cmake -G Ninja -S "$sources" -B "$scratch/cmake" -DCMAKE_CXX_COMPILER="$cxx" \
  -DCMAKE_PREFIX_PATH="$prefix" -DCMAKE_CXX_FLAGS='-Wall -Wextra -Wpedantic -Werror' "$@"
cmake --build "$scratch/cmake"
"$scratch/cmake/consumer"

export PKG_CONFIG_PATH=$libraries/pkgconfig
read -ra flags < <(pkg-config --cflags --libs mpuevent)
"$cxx" -std=c++11 -Wall -Wextra -Wpedantic -Werror "$sources"/*.cpp "${flags[@]}" \
  -Wl,-rpath,"$libraries" -o "$scratch/consumer"
"$scratch/consumer"

if [ -x "$prefix/bin/mpuevent" ]; then
  "$prefix/bin/mpuevent" --version
fi
