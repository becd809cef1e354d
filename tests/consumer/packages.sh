#!/usr/bin/env bash
# The Debian packages are complete: unpacked into an empty tree, an application builds and runs with what is there.
# Usage: packages.sh BUILD_DIRECTORY ARCHITECTURE COMPILER LINKER_FLAGS [EMULATOR...]
set -euo pipefail
here=$(dirname "$0")
packages=$1/packages architecture=$2 compiler=$3 linker_flags=$4
emulator=("${@:5}")

# A shared library that the package does not have must come from one it depends on: libfoo.so.1 from libfoo1.
check_dependencies() {
    local file soname
    for file in "$1"/usr/bin/* "$1"/usr/lib/*/*.so* "$1"/usr/lib/python3/dist-packages/*/*.so; do
        [[ -f $file && ! -L $file ]] || continue
        for soname in $(readelf --dynamic "$file" | sed -n 's/.*(NEEDED).*\[\(.*\)\]/\1/p'); do
            case $soname in
            libvelm_* | libm.so.* | ld-linux*) continue ;; # our own, and libc's
            esac
            [[ $2 == *"$(sed 's/\.so\.//; s/_/-/g' <<<"$soname")"* ]] || { echo "$file needs $soname" >&2; return 1; }
        done
    done
}

tree=$(mktemp -d)
trap 'rm -rf "$tree"' EXIT
for name in libvelm-zavra1 libvelm-zavra-dev velm-zavra-tools libvelm-zavra-simulator-dev python3-velm-zavra; do
    package=("$packages/${name}"_*_"$architecture.deb")
    echo "== ${package[0]##*/}"
    dpkg-deb --field "${package[0]}" Architecture Depends
    dpkg-deb --contents "${package[0]}" | awk '!/\/$/ { print "  " $6 }'
    [[ $(dpkg-deb --field "${package[0]}" Architecture) == "$architecture" ]]
    dpkg-deb --extract "${package[0]}" "$tree/$name"
    (cd "$tree/$name/usr/share/doc/$name" && gunzip --test changelog.gz && grep -q Apache-2.0 copyright)
    check_dependencies "$tree/$name" "$(dpkg-deb --field "${package[0]}" Depends)"
    cp -a "$tree/$name/usr" "$tree"
done

control=$(dpkg-deb --ctrl-tarfile "$packages"/libvelm-zavra1_*_"$architecture.deb" | tar --list)
grep -q triggers <<<"$control" && grep -q postinst <<<"$control"
(cd "$tree/usr" && ls lib/udev/rules.d/*i2c.rules share/man/man1/zavra{ctl,-sim}.1 share/velm_zavra/*.ini >/dev/null)

libraries=$("$compiler" -print-multiarch)
# shellcheck disable=SC2086 # a list of words
"$here/compile.sh" "$tree/usr" "lib/$libraries" application "$compiler" "$here/application/main.cpp" "$tree/consumer" \
    $linker_flags
export LD_LIBRARY_PATH=$tree/usr/lib/$libraries
"$here/../../scripts/with_unit.sh" "${emulator[@]}" "$tree/usr/bin/zavra-sim" -- "${emulator[@]}" "$tree/consumer"
echo "The $architecture packages work."
