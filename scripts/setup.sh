#!/usr/bin/env bash
# Installs the Debian packages that a build needs and that are not there yet.
# Usage: setup.sh [SET...], by the names of the sets below
set -euo pipefail
cd "$(dirname "$0")/.."

declare -A packages=(
    [base]="g++ cmake ninja-build git libiniparser-dev libcli11-dev nlohmann-json3-dev libncurses-dev libtomlplusplus-dev libeigen3-dev libjs-dygraphs libjs-three libgtest-dev libgmock-dev pkgconf python3"
    [benchmark]="libbenchmark-dev"
    [clang]="clang clang-tidy clang-format"
    [arm]="g++-arm-linux-gnueabihf qemu-user"
    [package]="dpkg-dev file"
    [abi]="abigail-tools python3"
    [docs]="doxygen groff-base"
    [python]="pybind11-dev python3-dev"
    [python-tests]="binutils python3-pytest python3-numpy python3-pandas python3-matplotlib mypy python3-typing-extensions jupyter-nbconvert python3-ipykernel"
    [wheel]="python3-setuptools python3-wheel python3-pip python3-build"
    [ground]="sigrok-cli libxml2-utils prometheus influxdb influxdb-client"
    [campaign]="parallel"
    [view]="libcivetweb-dev chromium chromium-driver python3-selenium fonts-dejavu-core"
    [kaitai]="npm python3-kaitaistruct python3-yaml"
    [rehearsal]="qemu-system-arm libusbredirparser-dev cpio kmod"
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
log=build/setup.log
give_up() {
    echo "setup: $1; please install: ${missing[*]}" >&2
    exit 1
}

as_root=(env DEBIAN_FRONTEND=noninteractive LC_ALL=C.UTF-8)
apt_get() {
    "${as_root[@]}" apt-get -qq -y -o DPkg::Lock::Timeout=120 "$@" </dev/null >>$log 2>&1
}

if [[ ${#missing[@]} -gt 0 ]]; then
    if [[ $(id -u) -ne 0 ]]; then
        command -v sudo >/dev/null || give_up "not root, and there is no sudo"
        as_root=(sudo "${as_root[@]}")
        "${as_root[@]}" true || give_up "sudo does not let $(id -un) install packages"
    fi
    echo "setup: installing ${missing[*]}; a minute or two (apt-get's output is in $log)"
    mkdir -p build
    : >$log
    # apt-get waits for dpkg's lock, but not for that of the package lists. Old lists may do.
    until apt_get update || ! tail -n 5 $log | grep -q 'Could not get lock' || [[ $SECONDS -ge 120 ]]; do
        sleep 2
    done
    if ! apt_get install --no-install-recommends "${missing[@]}"; then
        case $(<$log) in
        *"Could not get lock"* | *"Unable to acquire the dpkg"*) reason="another program holds apt's lock" ;;
        *resolving* | *"onnect to"* | *"onnection "* | *"unreachable"*) reason="the package sources cannot be reached" ;;
        *) reason="apt-get failed" ;;
        esac
        give_up "$reason (its output is in $log)"
    fi
fi

if [[ " $* " == *" arm "* ]]; then
    scripts/sysroot.sh
fi
if [[ " $* " == *" rehearsal "* ]]; then
    scripts/fetch_armhf.sh build/debian-armhf linux-image-armmp busybox-static strace
fi
