#!/usr/bin/env bash
# Starts a simulated unit on a private bus, lets applications talk to it and stops it again.
# Usage: demo.sh DIRECTORY_OF_PROGRAMS
set -euo pipefail

programs=$1
examples=$(dirname "$0")
log=$(dirname "$programs")/demo.log
if [[ ${2:-} != beside_a_unit ]]; then
    : >"$log"
    exec "$examples/../scripts/with_unit.sh" "$programs/zavra-sim" --address 10 --address 11 -- "$0" "$programs" beside_a_unit
fi

# show WHAT FIRST_LINE PROGRAM [ARGUMENT...]: what a program prints from a line on. Before that the library tells how it
# constructs and configures, in a hundred lines and more: these go to the log.
show() {
    printf '\n== %s\n' "$1"
    stdbuf -oL "${@:3}" 2>>"$log" | tee -a "$log" | sed -un "/^$2/,\$p" || {
        echo "demo: ${3##*/} failed; the end of $log says why:" >&2
        tail -n 5 "$log" >&2
        exit 1
    }
}

show "An application meets the unit, reads its telemetry and sets its clock" "Info frame" "$programs/first_contact"
show "The bench tool reads the attitude" epoch_time "$programs/zavractl" telemetry attitude
show "Sensors are configured from an INI file" Measurements "$programs/sensors" "$examples/velm_zavra_dev_init.ini"
show "The orbit module propagates two-line elements" Elements "$programs/orbit" "$examples/iss.tle"
show "The operation modes are started and stopped" "Clock set" "$programs/modes"
show "A satellite tumbles, and its gyroscopes and its magnetometer show it" "Turns with" \
    "$examples/tumble.sh" "$programs"
show "Two units on one bus, in one program" "Two units" "$programs/two_units"
show "Two threads share a unit" "Two threads" "$programs/threads"
show "A program tells causes of failures apart, which it provokes" "Causes" "$programs/causes"
show "The unit notices a request that was damaged on purpose, and names it" "All registers" \
    "$programs/registers" "$examples/zavra_sim_registers.ini"
show "The tumble is caught by the unit's own software, in two hours of simulated time" "  time" \
    "$examples/detumbling.sh" "$programs"

printf '\nThat was all: but for the last plot, through VELM_ZAVRA_API over a bus. Everything that the programs printed is in %s.\n' "$log"
echo "Next: $programs/zavractl --simulate telemetry attitude, or docs/application.md."
