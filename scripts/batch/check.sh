#!/usr/bin/env bash
# Tries the recipes: 200 products by GNU parallel and by a Slurm of one node on loopback, a worker killed in the middle
# of each; at the end every picture is right, and a broken product has its note. Needs root for Slurm; installs
# parallel and Slurm where they are missing.
#
#   scripts/batch/check.sh [PROGRAM]     default build/release/src/scopeview
set -euo pipefail
cd "$(dirname "$0")/../.."
export SCOPEVIEW
SCOPEVIEW=$(realpath "${1:-build/release/src/scopeview}")
export SOURCE_DATE_EPOCH=1000000000
for package in parallel slurmctld slurmd munge; do
  dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null | grep -q '^installed' ||
    DEBIAN_FRONTEND=noninteractive apt-get -qq -y --no-install-recommends install "$package" >/dev/null
done
work=$(mktemp -d)
pids=()
cleanup() {
  [[ ${#pids[@]} -eq 0 ]] || kill "${pids[@]}" 2>/dev/null || true
  wait 2>/dev/null || true
  rm -rf "$work"
}
trap cleanup EXIT

# Products that differ in their time, and one that is cut short ahead of what can be drawn.
python3 - "$work" <<'IN'
import os, struct, sys
work = sys.argv[1]
data = bytearray(open("data/sample.nids", "rb").read())
at = data.find(struct.pack(">h", -1))
names = []
for i in range(200):
    struct.pack_into(">I", data, at + 24, 397 * i)
    names.append(os.path.join(work, f"p{i:03d}.nids"))
    open(names[-1], "wb").write(data)
names.append(os.path.join(work, "broken.nids"))
open(names[-1], "wb").write(b"nothing to draw")
open(os.path.join(work, "list"), "w").write("\n".join(names) + "\n")
IN
mkdir "$work/want"
look=(-in nids -mf none -ge 400x300)
while IFS= read -r input; do
  scripts/batch/render_one.sh "$input" "$work/want/$(basename "${input%.*}").png" "${look[@]}" || exit 1
done <"$work/list"
right() {
  [[ $(ls "$work/$1" | wc -l) -eq 201 && -e $work/$1/broken.png.bad ]] || return 1
  local name
  for name in "$work"/want/*.png; do
    cmp -s "$name" "$work/$1/$(basename "$name")" || return 1
  done
}
[[ $(md5sum "$work"/want/*.png | cut -c1-32 | sort -u | wc -l) -eq 200 ]]

# Kills a worker when some pictures are there.
kill_one() {
  local i
  for i in $(seq 500); do
    [[ $(ls "$work/$1" 2>/dev/null | wc -l) -ge 20 ]] && pkill -KILL -o -f "$2" && return 0
    sleep 0.01
  done
  return 1
}

mkdir "$work/parallel"
draw=(parallel -j 2 --joblog "$work/joblog" scripts/batch/render_one.sh "{}" "$work/parallel/{/.}.png" "${look[@]}"
  -me none)
kill_one parallel "render_one.sh $work/" &
killer=$!
"${draw[@]}" <"$work/list" 2>/dev/null || true
wait "$killer"
"${draw[@]}" --resume-failed <"$work/list"
right parallel
echo "check: parallel ok"

host=$(hostname -s)
mkdir "$work/spool" "$work/state"
chmod 711 "$work"
head -c 1024 /dev/urandom >"$work/munge.key"
chmod 400 "$work/munge.key"
munged --force --foreground --key-file="$work/munge.key" --socket="$work/munge.sock" --pid-file="$work/munged.pid" \
  --log-file="$work/munged.log" --seed-file="$work/munge.seed" >/dev/null 2>&1 &
pids+=($!)
cat >"$work/slurm.conf" <<IN
ClusterName=check
SlurmctldHost=$host(127.0.0.1)
SlurmUser=root
AuthType=auth/munge
AuthInfo=socket=$work/munge.sock
CryptoType=crypto/munge
MpiDefault=none
ProctrackType=proctrack/pgid
TaskPlugin=task/none
ReturnToService=2
SlurmctldPort=16817
SlurmdPort=16818
SlurmctldPidFile=$work/slurmctld.pid
SlurmdPidFile=$work/slurmd.pid
SlurmdSpoolDir=$work/spool
StateSaveLocation=$work/state
SlurmctldLogFile=$work/slurmctld.log
SlurmdLogFile=$work/slurmd.log
SchedulerType=sched/builtin
SelectType=select/cons_tres
SelectTypeParameters=CR_Core
NodeName=$host NodeAddr=127.0.0.1 CPUs=$(nproc) State=UNKNOWN
PartitionName=all Nodes=ALL Default=YES State=UP
IN
export SLURM_CONF=$work/slurm.conf
slurmctld -D >/dev/null 2>&1 &
pids+=($!)
sleep 1
slurmd -D >/dev/null 2>&1 &
pids+=($!)
for _ in $(seq 100); do
  sinfo -h -o %t 2>/dev/null | grep -q idle && break
  sleep 0.2
done
sinfo -h -o %t | grep -q idle
mkdir "$work/slurm"
kill_one slurm "slurm_script" &
killer=$!
scripts/batch/slurm_run.sh "$work/list" "$work/slurm" 4 "${look[@]}"
wait "$killer"
right slurm
echo "check: slurm ok"
