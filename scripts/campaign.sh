#!/usr/bin/env bash
# Runs a campaign on all cores of this computer, with a progress bar. What was interrupted goes on where it was; seeds that
# failed are run again.
# Usage: campaign.sh ZAVRA_SIM DIRECTORY FIRST_SEED LAST_SEED OPTIONS_OF_ZAVRA_SIM...
set -euo pipefail

program=$1 directory=$2 first=$3 last=$4
shift 4
mkdir -p "$directory"
progress=()
[[ ! -t 2 ]] || progress=(--bar)
status=0
seq "$first" "$last" |
    parallel --will-cite "${progress[@]}" --joblog "$directory/jobs.log" --resume-failed \
        "$(printf '%q ' "$program" "$@")--seed {} 2>>$(printf %q "$directory/messages.log")" \
        >>"$directory/results.jsonl" || status=$?
if [[ $status -ne 0 ]]; then
    echo "campaign: not all seeds have a result; $directory/messages.log says why. Run it again to repeat those." >&2
    exit 1
fi
