#!/usr/bin/env bash
# Installs the Debian packages that a build needs and that are not there yet.
# Usage: setup.sh [base] [benchmark] [clang] [arm] [package] [abi]
set -euo pipefail
cd "$(dirname "$0")/.."

declare -A packages=(
    [base]="g++ cmake ninja-build git libiniparser-dev libcli11-dev nlohmann-json3-dev libncurses-dev libtomlplusplus-dev libgtest-dev libgmock-dev pkgconf"
    [benchmark]="libbenchmark-dev"
    [clang]="clang clang-tidy clang-format"
    [arm]="g++-arm-linux-gnueabihf qemu-user"
    [package]="dpkg-dev file"
    [abi]="abigail-tools python3"
)

wanted=()
for set in "${@:-base}"; do
    if [[ -z ${packages[$set]:-} ]]; then
        echo "setup: there is no package set '$set' (there are: ${!packages[*]})" >&2
        exit 2
    fi
    read -ra names <<<"${packages[$set]}"
    wanted+=("${names[@]}")
done

missing=()
for package in "${wanted[@]}"; do
    [[ $(dpkg-query --show --showformat='${db:Status-Status}' "$package" 2>/dev/null) == installed ]] || missing+=("$package")
done
if [[ ${#missing[@]} -gt 0 ]]; then
    as_root=()
    if [[ $(id -u) -ne 0 ]]; then
        command -v sudo >/dev/null || { echo "setup: not root and no sudo; please install: ${missing[*]}" >&2; exit 1; }
        as_root=(sudo)
    fi
    echo "setup: installing ${missing[*]}"
    export DEBIAN_FRONTEND=noninteractive
    "${as_root[@]}" apt-get update -q
    "${as_root[@]}" apt-get install -y -q --no-install-recommends "${missing[@]}"
fi

if [[ " $* " == *" arm "* ]]; then
    scripts/sysroot.sh
fi
