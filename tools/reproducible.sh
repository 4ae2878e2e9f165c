#!/usr/bin/env bash
# Whether the program gives the same bytes whoever compiles it and wherever it runs: builds it with
# GCC and Clang at -O0, -O2 and -O3, runs every sample with each, and compares the import files and
# the logs (without their times) with those of the first build; then the first build again in other
# locales, one with a decimal comma among them, which is made for the purpose where localedef is there.
#
#   tools/reproducible.sh [FOLDER]      builds and runs in FOLDER, by default build/reproducible
#
# Takes some minutes. Exit status 1 when anything differs.
set -euo pipefail
source=$(realpath "$(dirname "${BASH_SOURCE[0]}")/..")
work=${1:-$source/build/reproducible}
mkdir -p "$work"
work=$(realpath "$work")
samples=(small three_mills)
failures=0

run() {  # run PROGRAM SAMPLE FOLDER [VAR=VALUE ...]
  local program=$1 sample=$2 folder=$3
  shift 3
  rm -rf "$folder"
  mkdir -p "$folder/data"
  cp "$source/samples/$sample/data/"{Parameters,machines,orders,freightRates}.data "$folder/data"
  (cd "$folder" && env "$@" "$program" >stdout 2>stderr)
  sed -Ei 's|[0-9]{4}/[0-9]{2}/[0-9]{2} [0-9:]{8} \*|TIME *|' "$folder/data/corvane.log"
}

compare() {  # compare WHAT REFERENCE FOLDER
  if diff -rq "$2" "$3"; then
    echo "same: $1"
  else
    echo "DIFFERS: $1"
    failures=$((failures + 1))
  fi
}

first=
for compiler in g++ clang++; do
  for level in -O0 -O2 -O3; do
    name=$compiler$level
    cmake -G Ninja -S "$source" -B "$work/$name" -DCMAKE_BUILD_TYPE=None \
      -DCMAKE_CXX_COMPILER="$compiler" -DCMAKE_CXX_FLAGS="$level" -DCORVANE_BUILD_TESTS=OFF >/dev/null
    cmake --build "$work/$name" --target corvane >/dev/null
    first=${first:-$name}
    for sample in "${samples[@]}"; do
      run "$work/$name/bin/corvane" "$sample" "$work/runs/$name-$sample"
      compare "$name, $sample" "$work/runs/$first-$sample" "$work/runs/$name-$sample"
    done
  done
done

locales=(LC_ALL=C LC_ALL=C.UTF-8 LC_ALL=POSIX LC_ALL=nowhere)
mkdir -p "$work/locales"
if localedef -i de_DE -f UTF-8 "$work/locales/de_DE.UTF-8" 2>/dev/null; then
  decimal_comma="LOCPATH=$work/locales LC_ALL=de_DE.UTF-8"
  locales+=("$decimal_comma")
  read -ra variables <<<"$decimal_comma"
  # A process of its own: the shell has read its locale already.
  if [ "$(env "${variables[@]}" locale decimal_point)" = , ]; then
    echo "a decimal comma is in use"
  else
    echo "NO decimal comma in the locale made for it"
    failures=$((failures + 1))
  fi
else
  echo "no decimal comma: de_DE cannot be made here (package locales)"
fi
for setting in "${locales[@]}"; do
  for sample in "${samples[@]}"; do
    read -ra variables <<<"$setting"
    run "$work/$first/bin/corvane" "$sample" "$work/runs/locale-$sample" "${variables[@]}"
    compare "$setting, $sample" "$work/runs/$first-$sample" "$work/runs/locale-$sample"
  done
done

run "$work/$first/bin/corvane" three_mills "$work/runs/seed"
sed -i 's/^rand num gen seed=.*/rand num gen seed=4711/' "$work/runs/seed/data/Parameters.data"
(cd "$work/runs/seed" && rm data/corvane.log && "$work/$first/bin/corvane" >/dev/null)
if cmp -s "$work/runs/seed/data/CV.imp" "$work/runs/$first-three_mills/data/CV.imp"; then
  echo "DIFFERS NOT: another seed"
  failures=$((failures + 1))
else
  echo "another seed gives another file"
fi

echo "$failures differences"
[ "$failures" -eq 0 ]
