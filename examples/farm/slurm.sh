#!/bin/sh
# Renders a sequence as a Slurm array job. The array's steps are the chunks: 20 frames a task here.
#
#   sbatch --array=1-240:20 examples/farm/slurm.sh 'in.%04d.exr' 'out.%04d.exr' --lut look.cube
#
# The log of each task lies beside, as tintwell-JOB_FRAME.log. What a task has finished stays when it is
# interrupted, and is not rendered again when Slurm starts it anew.
#SBATCH --job-name=tintwell
#SBATCH --requeue
#SBATCH --open-mode=append
#SBATCH --output=tintwell-%A_%a.log
#SBATCH --signal=B:TERM@60

first=$SLURM_ARRAY_TASK_ID
last=$((first + ${SLURM_ARRAY_TASK_STEP:-1} - 1))

# In the background, so that a signal reaches this script: it passes it on, and waits for the frames in
# flight.
"${TINTWELL_HOST:-tintwell-host}" render "$@" --frames "$first-$last" --skip-existing &
trap 'kill -TERM $!' TERM
wait $!
status=$?
[ $status -ne 143 ] || { wait $!; status=$?; }

# 75: the disk is full or the file server is gone, and another try may help. Anything else would fail
# again.
if [ $status -eq 75 ] && [ "${SLURM_RESTART_COUNT:-0}" -lt 5 ]; then
    scontrol requeue "$SLURM_JOB_ID"
fi
exit $status
