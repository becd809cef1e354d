#!/usr/bin/env bash
# Starts a simulated unit on a private bus, runs the example against it and stops it again.
# Usage: demo.sh DIRECTORY_OF_PROGRAMS
set -euo pipefail

programs=$1
VELM_I2C_BUS_DIR=$(mktemp -d)
export VELM_I2C_BUS_DIR

simulator=
finish() {
    [[ -z $simulator ]] || { kill "$simulator" && wait "$simulator"; } 2>/dev/null || true
    rm -rf "$VELM_I2C_BUS_DIR"
}
trap finish EXIT

"$programs/zavra-sim" --bus-dir "$VELM_I2C_BUS_DIR" &
simulator=$!
for _ in {1..100}; do
    [[ -S $VELM_I2C_BUS_DIR/i2c-0 ]] && break
    kill -0 "$simulator" 2>/dev/null || { echo "demo: the simulated unit did not start" >&2; exit 1; }
    sleep 0.05
done

"$programs/first_contact"
"$programs/registers" "$(dirname "$0")/zavra_sim_registers.ini"

kill "$simulator"
wait "$simulator"
simulator=
echo "Shown: an application constructed VELM_ZAVRA_API, reached a unit over a bus, read its telemetry and set its clock."
echo "Shown: the unit named the error of a damaged request, and cleared it."
