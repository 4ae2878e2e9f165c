#!/usr/bin/env bash
# Builds the Debian package, as somebody whose files nobody else may read would, and tries it: looked
# at by lintian; unpacked into a folder, from where the programs must run as they stand; and, as root,
# installed, run on the small sample by a user without rights and removed, with nothing left behind.
#
#   packaging/test-package.sh [BUILD_FOLDER]     (a finished build; without one it makes its own)
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

build=$(realpath -m "${1:-build/package}")
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
chmod 755 "$scratch"

fail() {
  echo "$*"
  exit 1
}

as_user() {  # as_user COMMAND ...: without the rights of root, which would hide closed folders
  if [ "$(id -u)" -eq 0 ]; then
    setpriv --reuid=nobody --regid=nogroup --clear-groups -- "$@"
  else
    "$@"
  fi
}

run_small_sample() {  # run_small_sample PREFIX NAME: runs the copy of the program below PREFIX
  local prefix=$1 mill=$scratch/$2
  mkdir "$mill"
  chmod 777 "$mill"
  as_user cp -r "$prefix/share/corvane/samples/small/." "$mill"
  (cd "$mill" && as_user env -u LD_LIBRARY_PATH "$prefix/bin/corvane")
  grep -q '^\*\*\*\* End Corvane\.' "$mill/data/corvane.log"
  [ "$(tail -n 1 "$mill/data/CV.imp")" = "# End of Corvane. import file." ]
}

# Every program answers, has its manual page, and is built to be hard to abuse.
look_at_programs() {  # look_at_programs PREFIX
  local prefix=$1 program name headers
  for program in "$prefix"/bin/corvane*; do
    name=$(basename "$program")
    [ "$name" = corvane ] || as_user "$program" --version
    [ -f "$prefix/share/man/man1/$name.1.gz" ] || fail "$name has no manual page"
    headers=$(readelf -dlW "$program")
    # An empty element of the path would be the current folder.
    ! grep -E '(RUNPATH|RPATH).*(\[:|::|:\])' <<<"$headers" || fail "$name searches the current folder"
    grep -q GNU_RELRO <<<"$headers" && grep -q BIND_NOW <<<"$headers" || fail "$name: no full RELRO"
    grep -q __stack_chk_fail <<<"$(nm -D "$program")" || fail "$name: no stack protector"
  done
}

if [ $# -eq 0 ]; then
  cmake -G Ninja -S . -B "$build" -DCMAKE_BUILD_TYPE=Release -DCORVANE_BUILD_TESTS=OFF \
    -DCORVANE_IN_BATCHES=ON
  cmake --build "$build"
fi
rm -f "$build"/corvane_*.deb
(umask 077 && cd "$build" && cpack)
package=$(echo "$build"/corvane_*.deb)
dpkg-deb --info "$package"
dpkg-deb --contents "$package"

echo "== lintian"
lintian --allow-root --fail-on error,warning "$package"

echo "== installed by cmake"
(umask 077 && cmake --install "$build" --prefix "$scratch/by cmake" >/dev/null)
run_small_sample "$scratch/by cmake" installed_by_cmake
look_at_programs "$scratch/by cmake"

echo "== unpacked into a folder"
dpkg-deb -x "$package" "$scratch/tree"
run_small_sample "$scratch/tree/usr" unpacked
look_at_programs "$scratch/tree/usr"

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
[ -z "$left" ] || fail "left behind: $left"
cmp "$scratch/unpacked/data/CV.imp" "$scratch/installed/data/CV.imp"
echo "nothing is left behind"
