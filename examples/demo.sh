#!/usr/bin/env bash
# Starts a simulated unit on a private bus, runs the examples against it and stops it again.
# Usage: demo.sh DIRECTORY_OF_PROGRAMS
set -euo pipefail

programs=$1
examples=$(dirname "$0")
[[ ${2:-} == beside_a_unit ]] ||
    exec "$examples/../scripts/with_unit.sh" "$programs/zavra-sim" -- "$0" "$programs" beside_a_unit

"$programs/first_contact"
"$programs/registers" "$examples/zavra_sim_registers.ini"
"$programs/sensors" "$examples/velm_zavra_dev_init.ini"
"$programs/orbit" "$examples/iss.tle"
"$programs/modes"

echo "Shown: telemetry, a clock set, an error named and cleared, sensors configured from a file, an orbit propagated from a TLE and" \
    "every operation mode, all through VELM_ZAVRA_API over a bus."
