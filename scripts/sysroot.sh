#!/usr/bin/env bash
# Unpacks the armhf libraries that a cross build needs into build/sysroot-armhf, with a package state of its own: the
# machine does not become a multi-architecture one, and nothing is installed.
set -euo pipefail
cd "$(dirname "$0")/.."

packages="libiniparser1 libiniparser-dev libcli11-dev libgtest-dev libgmock-dev googletest nlohmann-json3-dev libtomlplusplus3 libtomlplusplus-dev libeigen3-dev libncurses-dev libncurses6 libncursesw6 libtinfo6 pybind11-dev libpython3.11-dev libpython3.11-minimal libpython3.11-stdlib python3.11-minimal libexpat1 zlib1g libffi8"
sysroot=build/sysroot-armhf
[[ $(cat $sysroot/packages 2>/dev/null) == "$packages" ]] && exit 0

echo "setup: unpacking $packages for armhf"
rm -rf $sysroot
mkdir -p build
work=$(mktemp -d "$PWD/build/sysroot.XXXXXX")
trap 'rm -rf "$work"' EXIT
mkdir -p "$work"/{state/lists/partial,cache/archives/partial,debs,root}
touch "$work/state/status"
cat >"$work/apt.conf" <<EOF
APT::Architecture "armhf";
APT::Architectures { "armhf"; };
APT::Sandbox::User "$(id -un)";
Dir::State "$work/state";
Dir::State::status "$work/state/status";
Dir::Cache "$work/cache";
EOF
export APT_CONFIG=$work/apt.conf
log=$PWD/build/sysroot.log
apt-get -qq update >"$log" 2>&1 || true # not every package source has armhf lists; those that have may do
# shellcheck disable=SC2086 # a list of words
(cd "$work/debs" && apt-get -qq download $packages >>"$log" 2>&1) || {
    echo "setup: the armhf packages cannot be fetched (apt-get's output is in $log)" >&2
    exit 1
}
for package in "$work"/debs/*.deb; do
    dpkg-deb --extract "$package" "$work/root"
done
if [[ -d $work/root/lib ]]; then # packages from before /lib and /usr/lib became one
    cp -a "$work/root/lib/." "$work/root/usr/lib/"
    rm -rf "$work/root/lib"
fi
# Links that name a place on the target would lead nowhere here, and static libraries be linked instead.
find "$work/root/usr/lib" -lname '/lib/*' | while read -r link; do
    ln -sf "$(basename "$(readlink "$link")")" "$link"
done
ln -s /usr/arm-linux-gnueabihf/lib "$work/root/lib" # the cross compiler's C and C++ libraries, for the emulator
echo "$packages" >"$work/root/packages"
mv "$work/root" $sysroot
