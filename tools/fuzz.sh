#!/usr/bin/env bash
# Builds the fuzz targets and runs each for a time, from its kept corpus.
#
#   tools/fuzz.sh [SECONDS [TARGET ...]]     default: 3600 seconds, every target
#
# What the fuzzer collects stays in build/fuzzing/found/<target> and is taken up by the next call; an
# input that is a finding lies beside it as <target>.finding-*. Ends with the executions,
# the coverage and the findings of each target; exit status 1 when there are findings.
#
#   tools/fuzz.sh --keep                     merges what was collected into tests/fuzz/corpus,
#                                            as few inputs as reach the same edges of the code
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

build=build/fuzzing
corpus=$PWD/tests/fuzz/corpus
limits=(-max_len=4096 -timeout=20 -rss_limit_mb=2048)

cmake --preset fuzzing >/dev/null
cmake --build --preset fuzzing | tail -n 1

targets_of_corpus() {
  for folder in "$corpus"/*/; do basename "$folder"; done
}

if [ "${1:-}" = --keep ]; then
  for target in $(targets_of_corpus); do
    [ -d "$build/found/$target" ] || continue
    kept=$(mktemp -d)
    # How often an edge is taken would keep thousands of inputs: the fuzzer's affair, not the tests'.
    "$build/bin/fuzz_$target" -set_cover_merge=1 -use_counters=0 "${limits[@]}" "$kept" "$corpus/$target" \
      "$build/found/$target" 2>&1 | grep -a 'MERGE-OUTER: .* new files'
    # Inputs with a name of their own stay; those of the fuzzer have the hash of their bytes.
    find "$corpus/$target" -type f -regextype posix-egrep -regex '.*/[0-9a-f]{40}' -delete
    for input in "$kept"/*; do
      hash=$(sha1sum <"$input" | cut -d' ' -f1)
      grep -qxF "$hash" <(sha1sum "$corpus/$target"/* | cut -d' ' -f1) || cp "$input" "$corpus/$target/$hash"
    done
    rm -r "$kept"
  done
  exit
fi

seconds=${1:-3600}
shift || true
targets=("$@")
[ $# -gt 0 ] || mapfile -t targets < <(targets_of_corpus)

findings=0
for target in "${targets[@]}"; do
  found=$build/found/$target
  log=$build/found/$target.log
  mkdir -p "$found"
  dictionary=()
  [ ! -f "tests/fuzz/$target.dict" ] || dictionary=("-dict=tests/fuzz/$target.dict")
  "$build/bin/fuzz_$target" "-max_total_time=$seconds" "${limits[@]}" "${dictionary[@]}" \
    "-artifact_prefix=$found.finding-" -print_final_stats=1 "$found" "$corpus/$target" \
    >"$log" 2>&1 || true
  executions=$(sed -nE 's/^stat::number_of_executed_units: *([0-9]+)$/\1/p' "$log")
  coverage=$(grep -aoE 'cov: [0-9]+ ft: [0-9]+' "$log" | tail -n 1 || true)
  inputs=$(find "$build/found" -maxdepth 1 -name "$target.finding-*" | wc -l)
  findings=$((findings + inputs))
  echo "$target: ${executions:-0} executions, ${coverage:-no coverage}, $inputs findings"
done
[ "$findings" -eq 0 ]
