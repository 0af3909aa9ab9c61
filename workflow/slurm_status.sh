#!/usr/bin/env bash
# Tells Snakemake (--cluster-status) how a job of Slurm stands: running, success or failed. A job that
# was cancelled, ran out of time or lost its node ends without a word to Snakemake otherwise.
set -uo pipefail
state=$(scontrol --oneliner show job "$1" 2>/dev/null | grep -oE 'JobState=[A-Z_]+' | cut -d= -f2)
# Jobs that Slurm's controller has forgotten stand in its accounting, where a site keeps one.
[ -n "$state" ] || state=$(sacct -nXP -j "$1" -o State 2>/dev/null | head -n 1 | cut -d' ' -f1)
case $state in
  COMPLETED) echo success ;;
  BOOT_FAIL | CANCELLED | DEADLINE | FAILED | NODE_FAIL | OUT_OF_MEMORY | PREEMPTED | TIMEOUT) echo failed ;;
  *) echo running ;;
esac
