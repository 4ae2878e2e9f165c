#!/bin/sh
# Writes the expected files of scenarios anew, from what the program does now. Look at the
# difference that git shows before you commit it.
#
#   tests/scenarios/approve.sh BUILD_FOLDER [CLAIM ...]      (all scenarios when none is named)
set -eu
here=$(cd "$(dirname "$0")" && pwd)
[ $# -ge 1 ] || { sed -n '2,5s/^# \{0,1\}//p' "$0"; exit 2; }
build=$(cd "$1" && pwd)
shift
if [ $# -eq 0 ]; then
  for data in "$here"/*/data; do
    set -- "$@" "$(basename "$(dirname "$data")")"
  done
fi
checker="$build/bin/check_import"
[ -x "$checker" ] || checker=""
for claim in "$@"; do
  [ -d "$here/$claim/data" ] || { echo "no scenario $claim" >&2; exit 2; }
  program=corvane_scripted
  [ ! -e "$here/$claim/program" ] || program=corvane
  "$build/bin/scenario_runner" "$here/$claim" "$build/tests/scenarios/$claim" \
    "$build/bin/$program" "$checker" --approve
  echo "approved $claim"
done
