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
# All that is needed, before the first file is written anew.
for needed in scenario_runner corvane corvane_scripted; do
  [ -x "$build/bin/$needed" ] || {
    echo "no $needed in $build/bin; build it first:" >&2
    echo "  cmake --build $build --target scenario_runner corvane corvane_scripted check_import" >&2
    exit 2
  }
done
for claim in "$@"; do
  [ -d "$here/$claim/data" ] || { echo "no scenario $claim" >&2; exit 2; }
done
checker="$build/bin/check_import"
[ -x "$checker" ] || checker=""
for claim in "$@"; do
  program=corvane_scripted
  [ ! -e "$here/$claim/program" ] || program=corvane
  "$build/bin/scenario_runner" "$here/$claim" "$build/tests/scenarios/$claim" \
    "$build/bin/$program" "$checker" --approve
  echo "approved $claim"
done
