#!/usr/bin/env bash
# Builds the Debian packages of both architectures into build/packages and tries them.
set -euo pipefail
cd "$(dirname "$0")/.."

for preset in package package-arm; do
    scripts/build.sh "$preset"
done
native=$(dpkg --print-architecture)
sysroot=$PWD/build/sysroot-armhf
tests/consumer/packages.sh build/package "$native" g++ ""
tests/consumer/packages.sh build/package-arm armhf arm-linux-gnueabihf-g++ \
    "-Wl,-rpath-link,$sysroot/usr/lib/arm-linux-gnueabihf" qemu-arm -L "$sysroot"
mkdir -p build/packages
cp build/package/packages/*.deb build/package-arm/packages/*.deb build/packages
ls -l build/packages
