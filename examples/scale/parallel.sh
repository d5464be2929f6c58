#!/bin/sh
# Converts the jobs of a list on several machines with GNU parallel: parallel.sh LIST [HOSTS]
#
# HOSTS is what parallel's --sshlogin takes, as in "4/one,8/two"; ":" is this machine. Jobs are sent to the machine
# that converts them, and their PDFs come back. What has been done stands in LIST.done: the same command again does
# the rest, jobs that failed included.
set -eu
list=$1
hosts=${2:-:}
program=${QUILLPRESS:-quillpress}
code=0
parallel --sshlogin "$hosts" --transferfile {} --return {.}.pdf --cleanup \
  --joblog "$list.done" --resume-failed "$program --quiet {} -o {.}.pdf" < "$list" || code=$?
exit "$code"
