#!/usr/bin/env bash
# Configures and builds a preset. Where standard output is no terminal, a line every few seconds says how far the build is.
# Usage: build.sh PRESET [TARGET...]
set -euo pipefail
cd "$(dirname "$0")/.."

build=(cmake --build --preset "$1")
[[ $# -eq 1 ]] || build+=(--target "${@:2}")
export NINJA_STATUS='[%f/%t] '

cmake --preset "$1" --log-level=WARNING >/dev/null
if [[ -t 1 ]]; then
    exec "${build[@]}"
fi
next=0
"${build[@]}" 2>&1 | while IFS= read -r line; do
    if [[ $line =~ ^\[([0-9]+)/([0-9]+)\]\  ]]; then
        [[ $SECONDS -ge $next || ${BASH_REMATCH[1]} == "${BASH_REMATCH[2]}" ]] || continue
        next=$((SECONDS + 5))
    fi
    printf '%s\n' "$line"
done
