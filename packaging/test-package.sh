#!/usr/bin/env bash
# Builds the Debian package and tries it: unpacked into a folder, from where the program must run as
# it stands; and, as root, installed, run on the small sample and removed, with nothing left behind.
#
#   packaging/test-package.sh [BUILD_FOLDER]     (a finished build; without one it makes its own)
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

build=$(realpath -m "${1:-build/package}")
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

run_small_sample() {  # run_small_sample PREFIX NAME: runs the copy of the program below PREFIX
  local prefix=$1 mill=$scratch/$2
  cp -r "$prefix/share/corvane/samples/small" "$mill"
  (cd "$mill" && env -u LD_LIBRARY_PATH "$prefix/bin/corvane")
  grep -q '^\*\*\*\* End Corvane\.' "$mill/data/corvane.log"
  [ "$(tail -n 1 "$mill/data/CV.imp")" = "# End of Corvane. import file." ]
}

if [ $# -eq 0 ]; then
  cmake -G Ninja -S . -B "$build" -DCMAKE_BUILD_TYPE=Release -DCORVANE_BUILD_TESTS=OFF
  cmake --build "$build"
fi
rm -f "$build"/corvane_*.deb
(cd "$build" && cpack)
package=$(echo "$build"/corvane_*.deb)
dpkg-deb --info "$package"
dpkg-deb --contents "$package"

echo "== unpacked into a folder"
dpkg-deb -x "$package" "$scratch/tree"
run_small_sample "$scratch/tree/usr" unpacked

if [ "$(id -u)" -ne 0 ]; then
  echo "not root: the package was not installed"
  exit 0
fi
if dpkg-query -W -f='${db:Status-Status}' corvane 2>/dev/null | grep -qx installed; then
  echo "corvane is installed here already: it is left as it is"
  exit 0
fi

echo "== installed"
apt-get -o DPkg::Lock::Timeout=300 install -y --no-install-recommends "$package"
run_small_sample /usr installed
man -w corvane 2>/dev/null || echo "no manual pages on this machine"

echo "== removed"
apt-get -o DPkg::Lock::Timeout=300 purge -y corvane
left=$(dpkg-deb --fsys-tarfile "$package" | tar -t | grep -v '/$' |
  while read -r file; do [ ! -e "/${file#./}" ] || echo "$file"; done)
for folder in /usr/lib/corvane /usr/share/corvane /usr/share/doc/corvane; do
  [ ! -e $folder ] || left+=" $folder"
done
[ -z "$left" ] || { echo "left behind: $left"; exit 1; }
cmp "$scratch/unpacked/data/CV.imp" "$scratch/installed/data/CV.imp"
echo "nothing is left behind"
