#!/usr/bin/env bash
# Checks that a flight build is what it should be, and prints how large its library is.
# Usage: size.sh BUILD_DIRECTORY
set -euo pipefail

tool=arm-linux-gnueabihf
complain() {
    echo "size: $*" >&2
    exit 1
}

for library in "$1"/lib/*.so; do
    headers=$($tool-readelf --arch-specific --dynamic --program-headers "$library")
    for mark in 'Tag_ABI_VFP_args: VFP registers' GNU_RELRO BIND_NOW; do
        grep -q "$mark" <<<"$headers" || complain "$library lacks $mark"
    done
    needs=$($tool-nm -D --undefined-only "$library")
    ! grep -wE 'socket|connect|sendmsg|recvmsg|(secure_)?getenv' <<<"$needs" || complain "$library reaches what flight leaves out"
done

library=$1/lib/libvelm_zavra_api.so
$tool-nm -D "$library" | grep -q __stack_chk_fail || complain "$library has no stack protector"
$tool-size "$library"
echo "Largest symbols, in bytes:"
$tool-nm --demangle --print-size --size-sort --reverse-sort --radix=d "$library" |
    awk 'NR <= 20 { size = $2; $1 = $2 = $3 = ""; printf "%8d  %.160s\n", size, $0 }'
text=$($tool-size "$library" | awk 'NR == 2 { print $1 }')
[[ $text -lt $((145 * 1024)) ]] || complain "text is 145 KB or more"
