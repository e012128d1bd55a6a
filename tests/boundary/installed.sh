#!/usr/bin/env bash
# installed.sh BUILD CXX SCRATCH OPTION...: installs the build into a fresh prefix, moves that away,
# and builds and runs a C++11 program and the example against it, once with find_package (the options
# are cmake's), once with pkg-config.
set -euo pipefail
build=$1 cxx=$2 scratch=$3
shift 3
unset PEGASUS_ROOT PEGASUS_HOME PEGASUS_PLATFORM LD_LIBRARY_PATH # the installed files know
root=$(cd "$(dirname "$0")/../.." && pwd)
rm -rf "$scratch"
mkdir -p "$scratch"

cmake --install "$build" --prefix "$scratch/first" >"$scratch/install.log"
prefix=$scratch/moved
mv "$scratch/first" "$prefix"
libraries=$(dirname "$(find "$prefix" -name 'libMPUEvent.*' -print -quit)")
events=$(sed -n 's/^"events":\([0-9]*\),$/\1/p' "$root/samples/summary/array.json")
# works CONSUMER AGENT: the one checks itself, the other shows each event of the sample log.
works() {
  "$1"
  [ "$("$2" <"$root/samples/array.cmap" | grep -c '^[0-9]')" = "$events" ]
}

cmake -G Ninja -S "$root/tests/consumer" -B "$scratch/cmake" -DCMAKE_CXX_COMPILER="$cxx" \
  -DCMAKE_PREFIX_PATH="$prefix" -DCMAKE_CXX_FLAGS='-Wall -Wextra -Wpedantic -Werror' "$@"
cmake --build "$scratch/cmake"
works "$scratch/cmake/consumer" "$scratch/cmake/agent/agent"

export PKG_CONFIG_PATH=$libraries/pkgconfig
read -ra flags < <(pkg-config --cflags --libs mpuevent)
for sources in tests/consumer examples/agent; do
  "$cxx" -std=c++11 -Wall -Wextra -Wpedantic -Werror "$root/$sources"/*.cpp "${flags[@]}" \
    -Wl,-rpath,"$libraries" -o "$scratch/$(basename "$sources")"
done
works "$scratch/consumer" "$scratch/agent"

if [ -x "$prefix/bin/mpuevent" ]; then
  "$prefix/bin/mpuevent" --version
fi
