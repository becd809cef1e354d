#!/usr/bin/env bash
# A virtual 32-bit ARM computer with Debian's kernel and a shell at the terminal. Its I2C bus is the simulated unit's whose
# USB adapter is at a socket; whether that is there before or comes later, goes and comes again does not matter.
# Usage: rehearsal_machine.sh SOCKET
set -euo pipefail

image=$(dirname "$0")/../build/rehearsal
exec qemu-system-arm -M virt,highmem=off -cpu cortex-a15 -m 256 -nodefaults -display none -no-reboot -serial mon:stdio \
    -kernel "$image/vmlinuz" -initrd "$image/initramfs" -append "console=ttyAMA0 quiet loglevel=0" \
    -device qemu-xhci -chardev "socket,id=adapter,path=$1,reconnect=1" -device usb-redir,chardev=adapter
