#!/usr/bin/env bash
# Unpacks Debian packages for armhf into a directory, with a package state of its own: the machine does not become a
# multi-architecture one, and nothing is installed. The directory's file "packages" says what is in it.
# Usage: fetch_armhf.sh DIRECTORY PACKAGE...
set -euo pipefail

directory=$1
shift
[[ $(cat "$directory/packages" 2>/dev/null) == "$*" ]] && exit 0

echo "setup: unpacking $* for armhf"
rm -rf "$directory"
mkdir -p build
work=$(mktemp -d "$PWD/build/fetch.XXXXXX")
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
log=$PWD/$directory.log
apt-get -qq update >"$log" 2>&1 || true # not every package source has armhf lists; those that have may do
names=()
for package in "$@"; do
    # The kernel's name has its version in it; this one only depends on it.
    [[ $package != linux-image-armmp ]] || package=$(apt-cache depends "$package" | awk '/Depends:/ { print $2; exit }')
    names+=("$package")
done
(cd "$work/debs" && apt-get -qq download "${names[@]}" >>"$log" 2>&1) || {
    echo "setup: the armhf packages cannot be fetched (apt-get's output is in $log)" >&2
    exit 1
}
for package in "$work"/debs/*.deb; do
    dpkg-deb --extract "$package" "$work/root"
done
if [[ -d $work/root/lib ]]; then # packages from before /lib and /usr/lib became one
    mkdir -p "$work/root/usr/lib"
    cp -al "$work/root/lib/." "$work/root/usr/lib/"
    rm -rf "$work/root/lib"
fi
echo "$*" >"$work/root/packages"
mv "$work/root" "$directory"
