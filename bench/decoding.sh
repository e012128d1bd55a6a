#!/usr/bin/env bash
# decoding.sh BENCH_DECODE: runs it and writes a line a class: name, ns an event, ns of its floor, the
# one as a multiple of the other, allocations an event, MB of texts a second.
#
# Decoding and floors take turns in random order, and of each the median of what it took counts: what
# else the machine does hits both alike.
set -euo pipefail
"$1" --benchmark_min_time=0.02 --benchmark_repetitions=15 --benchmark_enable_random_interleaving=true \
  --benchmark_report_aggregates_only=true --benchmark_format=csv 2>/dev/null | tr -d '"' |
  awk -F, '
    /^name,/ { for (i = 1; i <= NF; ++i) column[$i] = i }
    /_median,/ { split($1, part, /[\/]|_median/); time[part[1], part[2]] = $column["cpu_time"] }
    /^decode\/.*_median,/ { names[++n] = part[2]; blocks[n] = $column["allocations"]
      speed[n] = $column["outputMB"] }
    END { for (i = 1; i <= n; ++i) { name = names[i]; decode = time["decode", name]
      floor = time["floor", name]
      printf "%s %.0f %.0f %.2f %.1f %.0f\n", name, decode, floor, decode / floor, blocks[i], speed[i] }
      exit n == 0 }' | sort
