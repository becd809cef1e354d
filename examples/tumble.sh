#!/usr/bin/env bash
# Starts a unit in a satellite that tumbles, five times as fast as real time, and shows what its sensors say.
# Usage: tumble.sh DIRECTORY_OF_PROGRAMS [ZAVRA_SIM [EMULATOR...]]
set -euo pipefail

programs=$1
simulator=${2:-$programs/zavra-sim}
emulator=("${@:3}")
examples=$(dirname "$0")
"$examples/../scripts/with_unit.sh" "${emulator[@]}" "$simulator" --satellite "$examples/satellites/3u.toml" --time-factor 5 -- \
    "${emulator[@]}" "$programs/tumble"
