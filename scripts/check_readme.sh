#!/usr/bin/env bash
# Types the examples of README.md: installs the release build to a place of its own, and runs every
# command of the block, the one with a window on an Xvfb. Each has to end with status 0, without an
# error, and to leave its picture.
set -euo pipefail
cd "$(dirname "$0")/.."
[[ -d build/release ]] || cmake --preset release >/dev/null
cmake --build build/release --target scopeview docs >/dev/null
work=$(mktemp -d)
xvfb=
trap '[[ -z $xvfb ]] || kill "$xvfb"; rm -rf "$work"' EXIT
cmake --install build/release --prefix "$work/prefix" >/dev/null
mkdir "$work/tree"
for part in data tools README.md; do ln -s "$PWD/$part" "$work/tree/"; done
mkdir "$work/tree/build"
export PATH="$work/prefix/bin:$PATH" zqvdefault=
unset DISPLAY zqvdefault

exec 3<>"$work/display"
Xvfb -displayfd 3 -screen 0 1024x768x24 >/dev/null 2>&1 &
xvfb=$!
for ((i = 0; i < 100 && ! $(wc -l <"$work/display"); i++)); do sleep 0.1; done
display=:$(cat "$work/display")

# Return is sent to the window until the program ends.
in_window() {
  DISPLAY=$display timeout 60 bash -euc "$1" &
  local job=$! id
  for ((i = 0; i < 100; i++)); do
    kill -0 "$job" 2>/dev/null || break
    id=$(DISPLAY=$display xdotool search --class Zqv 2>/dev/null | head -1) || true
    [[ -z $id ]] || DISPLAY=$display xdotool windowfocus "$id" key Return 2>/dev/null || true
    sleep 0.2
  done
  wait "$job"
}

count=0
failed=false
cd "$work/tree"
while IFS= read -r command; do
  count=$((count + 1))
  echo "== $command"
  if [[ $command == scopeview* && $command != *" -de "* ]]; then
    in_window "$command" >"$work/out" 2>"$work/err" || failed=true
  else
    bash -euc "$command" >"$work/out" 2>"$work/err" || failed=true
  fi
  cat "$work/err"
  [[ ! -s $work/err ]] || failed=true
done < <(sed -n '/^```sh$/,/^```$/p' README.md | grep -v -e '^```' -e '^#' -e '^$')

made=(build/examples/{squall,storms,sample,sample_rain}.png build/examples/vel.ps)
for picture in "${made[@]}"; do
  [[ -s $picture ]] || { echo "check_readme: no $picture" >&2; failed=true; }
done
[[ ! -e build/examples/failed ]] || { cat build/examples/failed; failed=true; }
if $failed || [[ $count -ne 6 ]]; then
  echo "check_readme: FAILED after $count commands" >&2
  exit 1
fi
echo "check_readme: all $count commands worked"
