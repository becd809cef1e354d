#!/usr/bin/env bash
# A satellite's tumble is caught: two hours after its release, in three seconds, a bar of the body rate every four minutes.
# Usage: detumbling.sh DIRECTORY_OF_PROGRAMS
set -euo pipefail

examples=$(dirname "$0")
"$1/zavra-sim" --satellite "$examples/satellites/3u.toml" --scenario "$examples/flights/detumbling.toml" --run 2h \
    --record - --record-interval 4min | awk -F, '
    NR == 1 { for (i = 1; i <= NF; i++) column[$i] = i; print "  time   body rate"; next }
    {
        square = 0
        for (name in column) if (name ~ /^angular_velocity_._radps$/) square += $column[name] ^ 2
        rate = sqrt(square) * 57.29578
        bar = sprintf("%*s", 4 * rate, "")
        gsub(/ /, "#", bar)
        printf "%3d min %6.2f deg/s  %s\n", $column["time_s"] / 60, rate, bar
        fflush()
        system("sleep 0.1")
    }'
