#!/usr/bin/env bash
# All that a change has to pass: builds, tests, format, layers, clang-tidy, fuzzing.
#
#   scripts/test.sh            everything
#   scripts/test.sh --quick    without clang-tidy
#   scripts/test.sh --changed  clang-tidy only on sources that differ, or include a file that
#                              differs, from the last commit
#
# A stage that fails doesn't keep later ones from running; the times and results stand at the end.
# Tests that draw on a display start an Xvfb each, on a free display of their own.
set -euo pipefail
cd "$(dirname "$0")/.."

quick=false
changed=false
for arg in "$@"; do
  case $arg in
    --quick) quick=true ;;
    --changed) changed=true ;;
    *)
      echo "usage: scripts/test.sh [--quick] [--changed]" >&2
      exit 2
      ;;
  esac
done

jobs=$(nproc)
fuzz_jobs=2
fuzz_seconds=10
summary=()
failed=false
stage_rc=0

# Runs a stage, notes its time, and goes on whatever its result is.
stage() {
  local name=$1 start=$SECONDS rc=0
  shift
  echo "== $name"
  # Not in a condition, where the shell would go on after a failing command.
  set +e
  (set -e; "$@")
  rc=$?
  set -e
  local result=ok
  [[ $rc -eq 0 ]] || result=FAILED
  [[ $rc -eq 0 ]] || failed=true
  stage_rc=$rc
  summary+=("$(printf '%-16s %4d s  %s' "$name" $((SECONDS - start)) "$result")")
}

# A stage that makes no sense if the one before it failed: old programs would be tested.
then_stage() {
  if [[ $stage_rc -eq 0 ]]; then
    stage "$@"
  else
    summary+=("$(printf '%-16s         skipped' "$1")")
  fi
}

build() {
  cmake --preset "$1" >"build/$1.configure.log" 2>&1 || {
    cat "build/$1.configure.log"
    return 1
  }
  ninja -C "build/$1" -j "$jobs" --quiet
}

run_tests() { ctest --preset "$1" -j "$jobs" --output-on-failure; }

sources() { git ls-files --cached --others --exclude-standard -- '*.h' '*.cpp'; }

check_format() {
  local source rc=0
  while read -r source; do
    [[ -e $source ]] || continue
    clang-format "$source" | cmp -s - "$source" || {
      echo "clang-format -i $source"
      rc=1
    }
  done < <(sources)
  return $rc
}

check_layers() {
  python3 tools/check_layers_test.py
  python3 tools/check_layers.py
}

# The sources that differ from the last commit, or include a file that does.
changed_sources() {
  local differ
  differ=$(git status --porcelain --untracked-files=all | cut -c4- | sed 's/.* -> //')
  if grep -qx '.clang-tidy' <<<"$differ"; then
    sources | grep '\.cpp$'
    return
  fi
  # Of each object, ninja lists the source and what it includes.
  ninja -C build/release -t deps | awk -v root="$PWD/" -v differ="$differ" '
    BEGIN { n = split(differ, names, "\n"); for (i = 1; i <= n; i++) wanted[root names[i]] = 1 }
    /^[^ ]/ { source = "" }
    /^ / { if (source == "") source = $1; if ($1 in wanted) hit[source] = 1 }
    END { for (s in hit) print substr(s, length(root) + 1) }'
}

# clang-tidy reads the commands of the release build.
run_tidy() {
  local pattern="^$PWD/(lib|src|tests|bench)/"
  if $changed; then
    pattern=$(changed_sources | sed 's/[.]/\\./g' | paste -sd '|')
    [[ -n $pattern ]] || return 0
    pattern="^$PWD/($pattern)\$"
  fi
  if ! run-clang-tidy -p build/release -j "$jobs" -quiet "$pattern" >build/tidy.log 2>&1; then
    grep -v -e '^clang-tidy' -e 'warnings generated' -e 'treated as error' build/tidy.log
    return 1
  fi
}

fuzz_one() {
  local target=$1 name=${1%Fuzz} log=build/fuzz/$1.log
  local seeds=()
  mkdir -p "build/fuzz/corpus/$name" build/fuzz/artifacts
  [[ -d fuzz/corpus/$name ]] && seeds=("fuzz/corpus/$name")
  # What is found new goes to the build tree; the seeds of the source tree are only read.
  if timeout -k 5 $((fuzz_seconds * 6)) "build/fuzz/fuzz/$target" -max_total_time="$fuzz_seconds" \
    -timeout=5 -rss_limit_mb=2048 -close_fd_mask=3 -artifact_prefix="build/fuzz/artifacts/$target-" \
    "build/fuzz/corpus/$name" "${seeds[@]}" >"$log" 2>&1; then
    echo "$target: $(grep -a '^Done ' "$log" | tail -1)"
  else
    tail -60 "$log"
    echo "$target: FAILED, see $log"
    return 1
  fi
}

# All targets, at most fuzz_jobs at once.
run_fuzz() {
  local source rc=0 running=0
  for source in fuzz/*Fuzz.cpp; do
    [[ -e $source ]] || continue
    if [[ $running -ge $fuzz_jobs ]]; then
      wait -n || rc=1
      running=$((running - 1))
    fi
    fuzz_one "$(basename "$source" .cpp)" &
    running=$((running + 1))
  done
  while [[ $running -gt 0 ]]; do
    wait -n || rc=1
    running=$((running - 1))
  done
  return $rc
}

stage "setup" scripts/setup.sh
mkdir -p build
for preset in release asan; do
  stage "build $preset" build "$preset"
  then_stage "test $preset" run_tests "$preset"
done
stage "format" check_format
stage "layers" check_layers
if ! $quick; then stage "clang-tidy" run_tidy; fi
stage "build fuzz" build fuzz
then_stage "fuzz" run_fuzz

echo
printf '%s\n' "${summary[@]}"
echo "total            $(printf '%4d' $SECONDS) s"
if $failed; then exit 1; fi
