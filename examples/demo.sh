#!/usr/bin/env bash
# Starts a simulated unit on a private bus, runs the examples against it and stops it again.
# Usage: demo.sh DIRECTORY_OF_PROGRAMS
set -euo pipefail

programs=$1
here=$(dirname "$0")
[[ ${2:-} == beside_a_unit ]] || exec "$here/../scripts/with_unit.sh" "$programs/zavra-sim" -- "$0" "$programs" beside_a_unit

"$programs/first_contact"
"$programs/registers" "$here/zavra_sim_registers.ini"
"$programs/orbit" "$here/iss.tle"

echo "Shown: an application constructed VELM_ZAVRA_API, reached a unit over a bus, read its telemetry and set its clock."
echo "Shown: the unit named the error of a damaged request, and cleared it."
echo "Shown: the unit took a satellite's elements from a TLE file and told where it is at the time its clock was set to."
