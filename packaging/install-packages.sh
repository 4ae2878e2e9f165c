#!/usr/bin/env bash
# install-packages.sh PURPOSE ...: installs what is missing of the packages that
# debian-packages.txt lists for these purposes. Touches nothing, and needs no rights, when all are
# there; otherwise it needs root, or sudo without a password.
set -euo pipefail
list="$(dirname "${BASH_SOURCE[0]}")/debian-packages.txt"

if ! command -v dpkg-query >/dev/null; then
  echo "This is not a Debian system: make sure that what $list names is here." >&2
  exit 0
fi

missing=()
while read -r purpose package; do
  for wanted in "$@"; do
    if [ "$purpose" = "$wanted" ] &&
        ! dpkg-query -W -f='${db:Status-Status}\n' "$package" 2>/dev/null | grep -qx installed; then
      missing+=("$package")
    fi
  done
done < "$list"
[ ${#missing[@]} -gt 0 ] || exit 0

as_root=()
if [ "$(id -u)" -ne 0 ]; then
  if command -v sudo >/dev/null && sudo -n true 2>/dev/null; then
    as_root=(sudo -n)
  else
    echo "These packages are missing, and installing them needs root:" >&2
    echo "  apt-get install ${missing[*]}" >&2
    exit 1
  fi
fi

echo "Installing: ${missing[*]}"
apt=("${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -o DPkg::Lock::Timeout=300 -qq)
"${apt[@]}" update
"${apt[@]}" install -y --no-install-recommends "${missing[@]}" >/dev/null
