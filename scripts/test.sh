#!/usr/bin/env bash
# Configures, builds and tests each of the presets named.
set -euo pipefail
cd "$(dirname "$0")/.."

for preset in "$@"; do
    echo "== $preset"
    cmake --preset "$preset" --log-level=WARNING
    cmake --build --preset "$preset"
    ctest --preset "$preset"
done
