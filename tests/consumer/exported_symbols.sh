#!/usr/bin/env bash
# The library exports the public classes and nothing else.
# Usage: exported_symbols.sh NM LIBRARY
set -euo pipefail

symbols=$("$1" -D -C --defined-only "$2" | sed -E 's/^[0-9a-f]* +. //; s/@@.*//')
public='(VELM_ZAVRA_API|VELM_ZAVRA_API_Exception|VELM_ZAVRA_REGISTER_MAP|ZAVRA_100|ZAVRA_100_Exception)'
if grep -vE "^($public::|(vtable|typeinfo|typeinfo name) for $public\$|VELM_ZAVRA_1\$)" <<<"$symbols"; then
    echo "are exported, but not part of a public class" >&2
    exit 1
fi
for symbol in 'VELM_ZAVRA_API::VELM_ZAVRA_API()' 'typeinfo for VELM_ZAVRA_API_Exception' 'ZAVRA_100::Check_Command_Errors()'; do
    grep -qxF "$symbol" <<<"$symbols" || { echo "$symbol is not exported" >&2; exit 1; }
done
