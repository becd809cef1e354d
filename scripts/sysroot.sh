#!/usr/bin/env bash
# Unpacks the armhf libraries that a cross build needs into build/sysroot-armhf.
set -euo pipefail
cd "$(dirname "$0")/.."

packages="libiniparser1 libiniparser-dev libcli11-dev libgtest-dev libgmock-dev googletest nlohmann-json3-dev libtomlplusplus3 libtomlplusplus-dev libeigen3-dev libncurses-dev libncurses6 libncursesw6 libtinfo6 pybind11-dev libpython3.11-dev libpython3.11-minimal libpython3.11-stdlib python3.11-minimal libexpat1 zlib1g libffi8"
sysroot=build/sysroot-armhf

# shellcheck disable=SC2086 # a list of words
scripts/fetch_armhf.sh $sysroot $packages
# Links that name a place on the target would lead nowhere here, and static libraries be linked instead.
find $sysroot/usr/lib -lname '/lib/*' | while read -r link; do
    ln -sf "$(basename "$(readlink "$link")")" "$link"
done
ln -sfn /usr/arm-linux-gnueabihf/lib $sysroot/lib # the cross compiler's C and C++ libraries, for the emulator
