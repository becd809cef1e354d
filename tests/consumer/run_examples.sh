#!/usr/bin/env bash
# Runs every example against simulated units on a private bus.
# Usage: run_examples.sh DIRECTORY_OF_PROGRAMS [ZAVRA_SIM [EMULATOR...]]
set -euo pipefail

programs=$1
simulator=${2:-$programs/zavra-sim}
emulator=("${@:3}")
examples=$(dirname "$0")/../../examples
if [[ -z ${ZAVRA_EXAMPLES_RUN:-} ]]; then
    export ZAVRA_EXAMPLES_RUN=1
    exec "$examples/../scripts/with_unit.sh" "${emulator[@]}" "$simulator" --address 10 --address 11 -- "$0" "$@"
fi

example() {
    "${emulator[@]}" "$programs/$1" "${@:2}"
}
example first_contact
example registers "$examples/zavra_sim_registers.ini"
example sensors "$examples/velm_zavra_dev_init.ini"
example orbit "$examples/iss.tle"
example modes
example two_units
example threads
example causes

# A mission of three and a half hours takes fifteen seconds; with a processor that is emulated, a minute.
"$examples/../scripts/with_unit.sh" "${emulator[@]}" "$simulator" --satellite "$examples/satellites/3u.toml" \
    --time-factor $((${#emulator[@]} ? 250 : 1000)) -- \
    "${emulator[@]}" "$programs/first_orbits" "$examples/velm_zavra_dev_init.ini" "$examples/iss.tle"
