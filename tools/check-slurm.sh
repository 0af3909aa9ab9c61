#!/usr/bin/env bash
# Runs the workflow on a Slurm of one node, which it starts and stops, and compares the results with one
# run of velto scan, byte by byte:
#   tools/check-slurm.sh [BUILD [MODEL]]
# One job is cancelled at its first attempt. Installs Debian's snakemake and slurm-wlm; needs to be root.
set -euo pipefail
cd "$(dirname "$0")/.."
build=$(realpath -m "${1:-build}")
model=$(realpath "${2:-param-human}")
workflow=$PWD/workflow
[ "$(id -u)" -eq 0 ] || { echo "check-slurm: slurmd wants root" >&2; exit 1; }
tools/setup-debian.sh snakemake slurm-wlm munge
tools/build.sh "$build"

work=$(mktemp -d)
chmod 755 "$work"  # munged refuses a socket in a folder that others cannot reach
daemons=()
stop() {
  kill "${daemons[@]}" 2>/dev/null || true
  wait || true
  rm -rf "$work"
}
trap stop EXIT

# ---- A Slurm of its own: nothing of the machine's is used or changed.
read -r node cpus < <(slurmd -C | sed -nE 's/^NodeName=(\S+) CPUs=([0-9]+) .*/\1 \2/p')
port=$((20000 + $$ % 10000))
mkdir "$work/state" "$work/spool"
export SLURM_CONF=$work/slurm.conf
cat >"$SLURM_CONF" <<END
ClusterName=check
SlurmctldHost=$node(127.0.0.1)
SlurmctldPort=$port
SlurmdPort=$((port + 1))
SlurmUser=root
AuthType=auth/munge
AuthInfo=socket=$work/munge.socket
StateSaveLocation=$work/state
SlurmdSpoolDir=$work/spool
SlurmctldPidFile=$work/slurmctld.pid
SlurmdPidFile=$work/slurmd.pid
ProctrackType=proctrack/linuxproc
TaskPlugin=task/none
SelectType=select/cons_tres
SelectTypeParameters=CR_CPU
JobCompType=jobcomp/filetxt
JobCompLoc=$work/jobs.txt
KillWait=2
NodeName=$node NodeAddr=127.0.0.1 CPUs=$cpus
PartitionName=main Nodes=$node Default=YES State=UP
END
head -c 1024 /dev/urandom >"$work/munge.key"
chmod 400 "$work/munge.key"
munged --foreground --force --key-file="$work/munge.key" --socket="$work/munge.socket" \
  --pid-file="$work/munged.pid" --seed-file="$work/munge.seed" >"$work/munged.log" 2>&1 &
daemons+=($!)
slurmctld -D >"$work/slurmctld.log" 2>&1 &
daemons+=($!)
slurmd -D -N "$node" >"$work/slurmd.log" 2>&1 &
daemons+=($!)
for _ in $(seq 60); do
  sinfo -h -o %T 2>/dev/null | grep -qx idle && break
  sleep 1
done
sinfo -h -o %T | grep -qx idle || { tail "$work"/*.log; echo "Slurm does not start" >&2; exit 1; }

# ---- The workflow
for copy in $(seq 40); do
  awk -v copy="$copy" 'NR % 4 == 1 { sub(/^@[^ ]+/, "&." copy) } { print }' examples/reads.fastq
done >"$work/reads.fq"

# The second piece is cancelled, as by a queue, at its first attempt.
cat >"$work/cancelled.sh" <<END
#!/bin/bash
if [[ "\$*" == *pieces/2.reads ]] && mkdir "$work/was-cancelled" 2>/dev/null; then
  scancel \$SLURM_JOB_ID
  sleep 60
fi
exec "$build/velto" "\$@"
END
chmod +x "$work/cancelled.sh"
mkdir "$work/run"
snakemake --snakefile "$workflow/Snakefile" --directory "$work/run" --jobs 4 --latency-wait 30 \
  --cluster "sbatch --parsable --cpus-per-task={threads} --output=$work/job-%j.log" \
  --cluster-status "$workflow/slurm_status.sh" --max-status-checks-per-second 1 --config \
  "reads=$work/reads.fq" "model=$model" "velto=$work/cancelled.sh" pieces=3 threads=1 \
  >"$work/snakemake.log" 2>&1 || { tail -n 50 "$work"/snakemake.log "$work"/job-*.log; exit 1; }

"$build/velto" scan --quiet -d "$model" -o "$work/one.tsv" --gff3 "$work/one.gff3" \
  --cds "$work/one.cds" --protein "$work/one.protein" --bed "$work/one.bed" "$work/reads.fq"
for kind in tsv gff3 cds protein bed; do cmp "$work/one.$kind" "$work/run/found.$kind"; done
[ -d "$work/was-cancelled" ] || { echo "no job was cancelled" >&2; exit 1; }
completed=$(grep -c JobState=COMPLETED "$work/jobs.txt")
cancelled=$(grep -c JobState=CANCELLED "$work/jobs.txt")
[ "$cancelled" -eq 1 ] || { echo "$cancelled cancelled jobs" >&2; exit 1; }
# split, learn, three pieces, five kinds of results, the record.
[ "$completed" -eq 11 ] || { echo "$completed jobs instead of 11" >&2; exit 1; }
echo "$completed jobs of Slurm $(slurmd -V | cut -d' ' -f2) give the bytes of one run; a cancelled one was redone"
