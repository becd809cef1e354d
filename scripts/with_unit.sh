#!/usr/bin/env bash
# Runs a command beside a simulated unit, which has a bus of its own: VELM_I2C_BUS_DIR is set for the command.
# Usage: with_unit.sh ZAVRA_SIM [ARGUMENT...] -- COMMAND [ARGUMENT...]
set -euo pipefail

simulator_command=()
while [[ $# -gt 0 && $1 != -- ]]; do
    simulator_command+=("$1")
    shift
done
[[ $# -ge 2 ]] || { echo "usage: with_unit.sh ZAVRA_SIM [ARGUMENT...] -- COMMAND [ARGUMENT...]" >&2; exit 2; }
shift

VELM_I2C_BUS_DIR=$(mktemp -d)
export VELM_I2C_BUS_DIR
simulator=
finish() {
    [[ -z $simulator ]] || { kill "$simulator" && wait "$simulator"; } 2>/dev/null || true
    rm -rf "$VELM_I2C_BUS_DIR"
}
trap finish EXIT

# What it prints is how to reach it, which does not concern anybody here.
"${simulator_command[@]}" --bus-dir "$VELM_I2C_BUS_DIR" >/dev/null &
simulator=$!
until [[ -S $VELM_I2C_BUS_DIR/i2c-0 ]]; do
    kill -0 "$simulator" 2>/dev/null && [[ $SECONDS -lt 60 ]] || { echo "the simulated unit did not start" >&2; exit 1; }
    sleep 0.05
done

"$@"

kill "$simulator"
wait "$simulator"
simulator=
