#!/usr/bin/env bash
# superproject.sh CXX SCRATCH OPTION...: a project with CMAP and trace libraries of its own builds
# libMPUEvent within, without any package that tool and tests need, and installs it; programs are
# built against what it installed.
set -euo pipefail
cxx=$1 scratch=$2
shift 2
here=$(cd "$(dirname "$0")" && pwd)
rm -rf "$scratch"
without=()
for package in CLI11 GTest Threads benchmark; do
  without+=("-DCMAKE_DISABLE_FIND_PACKAGE_$package=ON")
done

cmake -G Ninja -S "$here/../superproject" -B "$scratch/build" -DCMAKE_CXX_COMPILER="$cxx" \
  -DCMAKE_BUILD_TYPE=None "${without[@]}" "$@"
cmake --build "$scratch/build"
"$scratch/build/agent"

"$here/installed.sh" "$scratch/build" "$cxx" "$scratch/installed"
