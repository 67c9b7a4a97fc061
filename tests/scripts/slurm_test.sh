#!/usr/bin/env bash
# slurm_test.sh PROJECT: starts a farm of one machine, lets it export and draw 20 pieces of an
# animation, and compares them with the whole. It needs root, since each job runs as its user.
set -euo pipefail
project=$1
programs=$project/build/linux/bin
work=$(mktemp -d)
chmod 755 "$work"
mkdir "$work/state" "$work/spool" "$work/config"
processes=()

stop() {
    local process
    for process in "${processes[@]}"; do
        kill "$process" 2>/dev/null || true
    done
    wait || true
    if (($1 != 0)); then
        tail -n 20 "$work"/*.log "$work"/pieces/*.log >&2 2>/dev/null || true
    fi
    rm -rf "$work"
}
trap 'stop $?' EXIT

fail() {
    echo "slurm_test: $*" >&2
    exit 1
}

# start LOG COMMAND... starts a service that doesn't go to the background by itself.
start() {
    local log=$work/$1.log
    shift
    "$@" >"$log" 2>&1 &
    processes+=($!)
}

# until_true SECONDS COMMAND... waits until the command succeeds.
until_true() {
    local end=$((SECONDS + $1))
    shift
    until "$@" >/dev/null 2>&1; do
        ((SECONDS < end)) || fail "no success in time: $*"
        sleep 0.2
    done
}

free_ports() {
    python3 - <<'END'
import socket
sockets = [socket.create_server(("127.0.0.1", 0)) for _ in range(2)]
print(*(s.getsockname()[1] for s in sockets))
END
}

read -r controller_port node_port < <(free_ports)
(umask 077 && head -c 128 /dev/urandom >"$work/munge.key")
start munged munged --foreground --force --key-file="$work/munge.key" \
    --socket="$work/munge.socket" --pid-file="$work/munged.pid" --log-file="$work/munge.log" \
    --seed-file="$work/munge.seed" --num-threads=2
until_true 10 munge -n -S "$work/munge.socket"

cpus=$(nproc)
cat >"$work/slurm.conf" <<END
ClusterName=vsq
SlurmctldHost=$(hostname)(127.0.0.1)
SlurmctldPort=$controller_port
SlurmdPort=$node_port
AuthType=auth/munge
AuthInfo=socket=$work/munge.socket
SlurmUser=root
SlurmdUser=root
StateSaveLocation=$work/state
SlurmdSpoolDir=$work/spool
SlurmctldPidFile=$work/slurmctld.pid
SlurmdPidFile=$work/slurmd.pid
ProctrackType=proctrack/linuxproc
TaskPlugin=task/none
JobAcctGatherType=jobacct_gather/none
SelectType=select/cons_tres
SelectTypeParameters=CR_Core
SchedulerParameters=batch_sched_delay=0,sched_min_interval=200000,bf_interval=1
MpiDefault=none
ReturnToService=2
NodeName=farm0 NodeHostname=$(hostname) NodeAddr=127.0.0.1 Port=$node_port CPUs=$cpus State=UNKNOWN
PartitionName=farm Nodes=farm0 Default=YES State=UP MaxTime=INFINITE
END
export SLURM_CONF=$work/slurm.conf
start slurmctld slurmctld -D
start slurmd slurmd -D -N farm0
until_true 30 sh -c 'sinfo -h -o %T | grep -q idle'

# The same resource folder would make the same paths; a piece has one of its own.
whole=$work/whole pieces=$work/pieces pictures=$work/pictures
mkdir -p "$whole" "$whole.resources/textures" "$work/config/quoria"
printf '%s\r\n' 'Windows Registry Editor Version 5.00' '' \
    '[HKEY_LOCAL_MACHINE\SOFTWARE\Quoria\Velmora 11]' "\"ResourceFolder\"=\"$whole.resources\"" \
    "\"BinName\"=\"$programs/vsqexport\"" >"$work/config/quoria/registry.reg"
XDG_CONFIG_HOME=$work/config "$programs/vsqexport" animation demo:studio "$whole/shot.vsq" \
    --frames 0:59 --quiet
small=(--size 64x36 --samples 2)
"$project/standins/renderer/draw_frames.py" "$programs/vsqpicture" "$whole/shot.py" \
    "$work/whole.pictures" "${small[@]}" >"$work/draw.log" 2>&1

VSQ_DRAW="${small[*]}" SBATCH_OPTIONS=--wait "$project/scripts/slurm/submit" demo:studio \
    "$pieces/shot.vsq" "$pictures" 0:59 20 --quiet || fail "a job has failed"

# A piece of three frames begins with a whole scene.
for number in $(seq 0 59); do
    file=shot$(printf %04d "$number").vsq
    sed -i "s#$pieces/shot\\.[0-9]*-of-20\\.resources#$whole.resources#" "$pieces/$file"
    if ((number % 3 != 0 || number == 0)); then
        cmp "$whole/$file" "$pieces/$file" || fail "$file differs"
    else
        "$programs/vsqinfo" "$pieces/$file" >/dev/null || fail "$file is faulty"
    fi
    picture=shot$(printf %05d "$number").png
    if ((number > 0)); then
        cmp "$work/whole.pictures/$picture" "$pictures/$picture" || fail "$picture differs"
    fi
done
[[ $(find "$pictures" -name '*.png' | wc -l) == 59 ]] || fail "there are other pictures"

# The command of the document, as it stands there.
command=$(sed -n 's#^    \(scripts/slurm/submit .*\)#\1#p' "$project/docs/render-farm.md")
mill=$project/build/pieces/mill
rm -rf "$mill"*
(cd "$project" && VSQ_DRAW="${small[*]}" SBATCH_OPTIONS=--wait bash -c "$command") ||
    fail "failed: $command"
[[ $(find "$mill-pictures" -name '*.png' | wc -l) == 99 ]] || fail "other pictures: $command"
rm -rf "$mill"*
echo "20 pieces of 60 frames: the same files and pictures as the whole"
