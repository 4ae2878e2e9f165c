#!/usr/bin/env bash
# Runs valgrind's memcheck over whole runs: the small sample, a run that a fault of the solver ends,
# and one that a missing file ends. Exit status 1 for any error, or for memory that is lost where the
# run did not end early.
#
#   tools/valgrind.sh [BUILD]       the build folder, by default build/release
set -euo pipefail
source=$(realpath "$(dirname "${BASH_SOURCE[0]}")/..")
build=$(realpath "${1:-$source/build/release}")
cd "$source"
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
failures=0

check() {  # check WHAT STATUS LEAKS PROGRAM
  local status=0
  (cd "$folder" && valgrind --quiet --error-exitcode=99 --leak-check=full --show-leak-kinds=definite \
    --errors-for-leak-kinds="$3" "$build/bin/$4" >stdout 2>stderr) || status=$?
  if [ "$status" -eq "$2" ]; then
    echo "clean: $1"
  else
    echo "FAULTY: $1, status $status"
    cat "$folder/stderr"
    failures=$((failures + 1))
  fi
}

mkdir "$folder/data"
cp samples/small/data/{Parameters,machines,orders,freightRates}.data "$folder/data"
check "the small sample" 0 definite,possible corvane
echo "solver=Barrier" >>"$folder/data/Parameters.data"
check "the small sample, barrier" 0 definite,possible corvane
# A run that ends early leaves behind what it stood on.
CORVANE_SCRIPTED_LP_SCRIPT='hybbaropt:9=1' check "a solver that fails" 1 none corvane_scripted
rm "$folder/data/orders.data"
check "a file that is missing" 1 none corvane
[ "$failures" -eq 0 ]
