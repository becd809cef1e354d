#!/usr/bin/env bash
# The build identifier follows the sources, and its header changes only when it does.
# Usage: build_identifier.sh CMAKE SCRIPT
set -euo pipefail
cmake=$1 script=$2
tree=$(mktemp -d)
trap 'rm -rf "$tree"' EXIT
mkdir "$tree/cmake"
cp "$script" "$tree/cmake/"
cd "$tree"

expect() { # PATTERN: what the header has after another build
    "$cmake" -D HEADER="$tree/header" -P cmake/build_identifier.cmake
    grep -qE "$1" header || { echo "not '$1':"; cat header; exit 1; }
}
commit() { git -c user.name=a -c user.email=a@localhost commit -qam "$1"; }

git init -q
expect '^// '
git add cmake
commit first
git tag v1
expect ' "v1"$'
touch -d 2000-01-01 header old
expect ' "v1"$'
[[ ! header -nt old ]]
echo >>cmake/build_identifier.cmake
expect ' "v1-dirty"$'
commit second
git tag v2
expect ' "v2"$'
