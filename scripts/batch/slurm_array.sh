#!/usr/bin/env bash
#SBATCH --job-name=scopeview
#SBATCH --ntasks=1
#SBATCH --requeue
# One task of an array job: every n-th line of LIST, n being the number of tasks.
#
#   sbatch --array=0-15 slurm_array.sh HERE LIST OUTDIR [OPTION...]     HERE: the directory of render_one.sh
#
# Submitted again, it draws what is missing; slurm_run.sh does so by itself.
set -u
here=$1
list=$2
outdir=$3
shift 3
number=$((SLURM_ARRAY_TASK_ID - SLURM_ARRAY_TASK_MIN))
failed=0
while IFS= read -r input; do
  name=$(basename -- "$input")
  "$here/render_one.sh" "$input" "$outdir/${name%.*}.png" "$@" </dev/null || failed=1
done < <(awk -v n="$SLURM_ARRAY_TASK_COUNT" -v i="$number" 'NR % n == i % n' "$list")
exit "$failed"
