#!/usr/bin/env bash
# Fuzzes what reads texts and files from outside. Usage: tools/fuzz/run.sh [SECONDS] [dialect|template|sheet]…
#   600 seconds for each of the three when not said. Needs clang-14 and libclang-rt-14-dev.
# Inputs that found new ways are merged into tests/fuzz/corpus, the smallest ones only; one that ended the program is left
# there as crash-*: mend the program, keep the file, and every test run tries it again.
set -euo pipefail
top=$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/../..
top=$(readlink -f "$top")
. "$top/tools/checkout.sh"
seconds=600
case ${1:-} in
  -h | --help) sed -n '2,/^[^#]/{s/^# \{0,1\}//p}' "$0"; exit 0 ;;
  [0-9]*) seconds=$1; shift ;;
esac
targets=("$@")
[ ${#targets[@]} -gt 0 ] || targets=(dialect template sheet)

"$top/tools/setup.sh" build fuzz
# Qt and fontconfig keep what they have loaded; leaks of our own are the business of ./test --asan.
export ASAN_OPTIONS=detect_leaks=0
failed=0
for target in "${targets[@]}"; do
  (renice -n 19 -p "$BASHPID" >/dev/null; build fuzz "fuzz_$target") >&2
  work=$top/build/fuzz/work-$target
  kept=$top/tests/fuzz/corpus/$target
  mkdir -p "$work" "$kept"
  # The statements of the program are the best beginning for the dialect, its templates for templates.
  case $target in
    dialect)
      i=0
      cat "$top"/tests/jet/corpus/*.sql | grep -v -e '^--' -e '^ *$' | while IFS= read -r line; do
        printf '%s' "$line" >"$work/seed-$((i += 1))"
      done
      ;;
    template) for file in "$top"/report/*.fr3; do [ ! -e "$file" ] || cp "$file" "$work/"; done ;;
  esac
  dictionary=$top/tools/fuzz/$target.dict
  echo "== $target: $seconds seconds" >&2
  nice -n 19 "$top/build/fuzz/tools/fuzz/fuzz_$target" -max_total_time="$seconds" -timeout=20 -rss_limit_mb=2048 \
    -max_len=4096 -artifact_prefix="$kept/" -print_final_stats=1 ${JXC_FUZZ_OPTIONS:-} \
    $([ ! -e "$dictionary" ] || echo "-dict=$dictionary") "$work" "$kept" 2>&1 | grep -v -e '^#' -e NEW_FUNC || failed=1
  # What is kept stays small: the shortest inputs, by coverage, at most so many bytes.
  merged=$(mktemp -d)
  nice -n 19 "$top/build/fuzz/tools/fuzz/fuzz_$target" -merge=1 -max_len=512 "$merged" "$kept" "$work" >/dev/null 2>&1 || true
  find "$kept" -type f ! -name 'crash-*' ! -name 'timeout-*' ! -name 'seed-*' -delete
  find "$merged" -type f -size -2 -printf '%s %p\n' | sort -n | head -150 | while read -r _ file; do cp "$file" "$kept/"; done
  rm -rf "$merged"
done
exit $failed
