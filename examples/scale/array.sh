#!/bin/sh
# One task of an array that shares a list of jobs: sbatch --array=1-16 array.sh LIST
#
# Works with any system that numbers its tasks from 1; TASK and TASKS stand in for Slurm's own variables. A task that
# is started again does the rest of its part.
#SBATCH --cpus-per-task=4
set -eu
list=$1
task=${TASK:-$SLURM_ARRAY_TASK_ID}
tasks=${TASKS:-$SLURM_ARRAY_TASK_COUNT}
exec "${QUILLPRESS:-quillpress}" --batch "$list" --shard "$task/$tasks" --jobs "${SLURM_CPUS_PER_TASK:-1}" \
  --skip-existing --report "$list.report.$task" --quiet
