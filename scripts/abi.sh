#!/usr/bin/env bash
# Compares what applications on the target depend on (symbols, layouts) with the record, or writes the record.
# Usage: abi.sh abi | abi-record
set -euo pipefail
cd "$(dirname "$0")/.."

record=tests/data/abi-armhf.txt
cmake --preset arm --log-level=WARNING
cmake --build --preset arm --target velm_zavra_api -- --quiet
abidw --no-show-locs build/arm/lib/libvelm_zavra_api.so.1 | scripts/abi_record.py >build/arm/abi.txt
if [[ $1 == abi-record ]]; then
    cp build/arm/abi.txt $record
elif diff -u $record build/arm/abi.txt; then
    echo "The binary interface is the recorded one."
else
    echo "The binary interface has changed. Where that is wanted: make abi-record, and think of the version." >&2
    exit 1
fi
