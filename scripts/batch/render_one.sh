#!/usr/bin/env bash
# One product to one picture, so that many runs of it on many machines can share a directory:
#
#   render_one.sh INPUT OUTPUT [OPTION...]      OUTPUT ends in .png or .gif; options are scopeview's
#
# A picture that is there is left alone. One that is being drawn has another name until it is whole, so that a run that
# was killed leaves nothing that looks finished. The status tells what a second try can mend:
#   0  the picture is there; or the input can't be drawn (absent, unreadable or broken), which OUTPUT.bad says with the
#      status and name, and no second try would change
#   otherwise that of scopeview -strict: a full disk or anything else that may go away
set -u
program=${SCOPEVIEW:-scopeview}
if [[ $# -lt 2 ]]; then
  sed -n 's/^# \{0,1\}//; 2,4p' "$0" >&2
  exit 2
fi
input=$1
output=$2
shift 2
[[ -e $output || -e $output.bad ]] && exit 0
# Names from a list are files, never commands or streams.
[[ $input == /* ]] || input=./$input
kind=${output##*.}
part=$(dirname -- "$output")/.part.$(hostname).$$.$(basename -- "$output")
trap 'rm -f -- "$part" "$part.bad"' EXIT
# The sign makes it that very file, also where the name fits a convention of other directories.
"$program" -strict -me none -de raster "$@" -ou "$kind:$part" "@$input"
status=$?
case $status in
  0) mv -f -- "$part" "$output" ;;
  6 | 10)
    printf '%s %s\n' "$status" "$input" >"$part.bad" && mv -f -- "$part.bad" "$output.bad"
    ;;
  *) exit "$status" ;;
esac
