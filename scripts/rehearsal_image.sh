#!/usr/bin/env bash
# Makes what a virtual target starts with, build/rehearsal/initramfs: the flight build's libraries with zavractl and
# first_contact, the kernel's modules for an I2C bus behind a USB adapter, busybox, strace; and programs of one's own.
# Usage: rehearsal_image.sh [PROGRAM...]
set -euo pipefail
programs=()
[[ $# -eq 0 ]] || readarray -t programs < <(realpath -- "$@")
cd "$(dirname "$0")/.."

debian=build/debian-armhf
sysroot=build/sysroot-armhf/usr/lib/arm-linux-gnueabihf
cross=/usr/arm-linux-gnueabihf/lib
root=build/rehearsal/root

rm -rf build/rehearsal
mkdir -p $root/{bin,dev,proc,sys,run/lock,etc/velm_api_config,lib/arm-linux-gnueabihf,modules}
cp $debian/bin/busybox $debian/usr/bin/strace build/flight/bin/{zavractl,first_contact} "${programs[@]}" $root/bin
cp -P build/flight/lib/lib*.so.* $root/lib/arm-linux-gnueabihf
cp build/flight/lib/libvelm_api_*.so $sysroot/lib{iniparser.so.1,ncursesw.so.6,tinfo.so.6,tomlplusplus.so.3} \
    $cross/lib{c.so.6,m.so.6,gcc_s.so.1,stdc++.so.6} $root/lib/arm-linux-gnueabihf
cp $cross/ld-linux-armhf.so.3 $root/lib
cp examples/velm_zavra_dev_init.ini $root/etc/velm_api_config

cp $debian/boot/vmlinuz-* build/rehearsal/vmlinuz
version=$(basename $debian/usr/lib/modules/*)
PATH=$PATH:/sbin:/usr/sbin
depmod --basedir $debian/usr "$version"
modules=$(modprobe --dirname $debian/usr --set-version "$version" --show-depends --all xhci-pci i2c-dev i2c-tiny-usb |
    awk '$1 == "insmod" && !seen[$2]++ { print $2 }')
# shellcheck disable=SC2086 # a list of files
cp $modules $root/modules

cat >$root/init <<EOF
#!/bin/busybox sh
/bin/busybox --install -s /bin
mount -t devtmpfs dev /dev
mount -t proc proc /proc
mount -t sysfs sys /sys
for module in $(xargs -n 1 basename <<<"$modules" | xargs); do
    insmod /modules/\$module
done
tries=0
until [ -c /dev/i2c-0 ] || [ \$((tries += 1)) -gt 100 ]; do
    sleep 0.1
done
cd /
HOME=/ setsid cttyhack sh
poweroff -f
EOF
chmod +x $root/init
(cd $root && find . -print0 | cpio --quiet --null --create --format=newc --owner=0:0) >build/rehearsal/initramfs
