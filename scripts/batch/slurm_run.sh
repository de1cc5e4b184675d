#!/usr/bin/env bash
# Draws all products of a list as a Slurm array job, and what failed or was lost with a worker once more:
#
#   slurm_run.sh LIST OUTDIR TASKS [OPTION...]      options are scopeview's
#
# LIST has a product a line; pictures are OUTDIR/NAME.png. OUTDIR is seen by all nodes. The status is 0 when each
# product has its picture, or its NAME.png.bad.
set -u
list=$1
outdir=$2
tasks=$3
shift 3
here=$(cd "$(dirname "$0")" && pwd)
mkdir -p "$outdir"
missing() {
  while IFS= read -r input; do
    name=$(basename -- "$input")
    picture=$outdir/${name%.*}.png
    [[ -e $picture || -e $picture.bad ]] || echo "$input"
  done <"$list"
}
for round in 1 2 3; do
  [[ -z $(missing) ]] && exit 0
  sbatch --wait --array="0-$((tasks - 1))" --output="$outdir/.slurm-%A-%a.log" "$here/slurm_array.sh" "$here" "$list" \
    "$outdir" "$@" >/dev/null || echo "slurm_run: round $round left pictures undrawn" >&2
done
[[ -z $(missing) ]]
