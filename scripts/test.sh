#!/usr/bin/env bash
# Configures, builds and tests each of the presets named.
set -euo pipefail
cd "$(dirname "$0")/.."

for preset in "$@"; do
    echo "== $preset"
    scripts/build.sh "$preset"
    ctest --preset "$preset"
done
