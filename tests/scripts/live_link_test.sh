#!/bin/bash
# live_link_test.sh FOLDER [EMULATOR]: tests the headless host's commands over the live link, with
# the host and the stand-in for the renderer in FOLDER. With an emulator these are Windows programs
# and use the emulator's registry.
set -u
bin=$1
emulator=${2-}
samples=$(cd "$(dirname "$0")/../../samples" && pwd)
out=$(mktemp -d)
cd "$out" || exit 1
mkdir -p config/quoria data scenes resources/Animations
export XDG_CONFIG_HOME=$out/config XDG_DATA_HOME=$out/data VELMORA_SCENES=$out/scenes
ending=
drive=
if [[ -n $emulator ]]; then
    export WINEPREFIX=${WINEPREFIX:-$bin/../wineprefix}
    export VELMORA_SCENES=Z:$out/scenes
    ending=.exe
    drive=Z:
fi
failures=0

# run PROGRAM ARGUMENT... prints the program's output after it has ended: under Wine, a renderer
# that it has started keeps its output open.
run() {
    local program=$bin/$1$ending result
    shift
    ${emulator:+"$emulator"} "$program" "$@" >printed
    result=$?
    tr -d '\r' <printed
    return "$result"
}

key='HKEY_LOCAL_MACHINE\SOFTWARE\Quoria\Velmora 11'
register() {
    mkdir -p "$out/resources/textures"
    local file=$out/config/quoria/registry.reg
    printf 'Windows Registry Editor Version 5.00\r\n\r\n[%s]\r\n' "$key" >"$file"
    printf '"BinName"="%s"\r\n"BinFolder"="%s"\r\n"ResourceFolder"="%s"\r\n' \
        "$drive$bin/velmora-11/velmora$ending" "$drive$bin/velmora-11" "$drive$out/resources" >>"$file"
    if [[ -n $emulator ]]; then
        "$emulator" reg import "Z:$file" >/dev/null 2>&1
    fi
}

unregister() {
    rm -f "$out/config/quoria/registry.reg"
    if [[ -n $emulator ]]; then
        "$emulator" reg delete "$key" /f >/dev/null 2>&1
    fi
}

clean_up() {
    run velmora-11/velmora --stop
    unregister
    rm -rf "$out"
}
trap clean_up EXIT

fail() {
    echo "FAILED: $*"
    failures=$((failures + 1))
}

# The name of the scene that the renderer has received last.
last_received() {
    find scenes -name 'scene-*.vsq' -printf '%f\n' | sort -t- -k3n | tail -1
}

# objects FILE: the names of the objects in a scene, in order.
objects() {
    LC_ALL=C sed -n 's/^object "\(.*\)" {$/\1/p' "$1" | tr '\n' ' '
}

# Without a renderer, the commands report that in one line and start nothing.
unregister
run vsqexport render demo:hierarchy >stdout 2>stderr </dev/null &&
    fail "a render without a renderer"
[[ $(<stderr) == *'Could not connect to a existing Velmora instance or launch a new.'* &&
    $(grep -vc '^  failed link-failed (1): Failed to connect' stderr) == 1 && ! -s stdout ]] || fail "the report without a renderer: $(<stderr)"
printf 'render\nnodes\n' | run vsqexport session demo:hierarchy >stdout 2>stderr &&
    fail "a session with a failure in a pipe"
grep -q Counterweight stdout || fail "a session goes on after a failure"

# The link carries the same statements as a file, except for the lines at the head and the flags.
register
started=started
scenes=$(run vsqexport export --help | sed -n 's/^ *\(demo:[a-z-]*\):.*/\1/p')
if [[ -z $emulator ]]; then # the Windows build reads no model files
    scenes+=" $(ls "$samples"/*.gltf "$samples"/*.obj "$samples"/*.dae)"
fi
for scene in $scenes; do
    # Without old mesh files, both exports give theirs the same names.
    rm -rf resources/Animations/*
    run vsqexport export "$scene" sent.vsq --set GeneralCurves=1 >/dev/null 2>&1
    rm -rf resources/Animations/*
    run vsqexport render "$scene" --set GeneralCurves=1 >stdout 2>stderr </dev/null ||
        fail "$scene: $(<stderr)"
    grep -q "^Velmora 11\.0 (process [0-9]*, port [0-9]*), which was $started\$" stdout ||
        fail "$scene: the renderer was not $started: $(<stdout)"
    started=running
    received=scenes/$(last_received)
    [[ $(head -1 "$received") == 'id 1' ]] || fail "$scene: the id"
    tail -n +6 sent.vsq | LC_ALL=C sed '0,/^flags 0$/s//flags 33792/' >wanted
    tail -n +2 "$received" | cmp - wanted || fail "$scene: the received scene differs"
done
[[ $started == running ]] || fail "there are no demo scenes"
grep -v '^report_log' resources/sceneapi.log | head -4 | tr -d '\r' |
    sed -E 's/^velmoralive_loader.cpp:[0-9]+ - ..:..:..\.[0-9]{3} //; s/(0x)?[0-9a-fA-F]{6,}$/P/' >log
[[ $(<log) == "DEBUG4:  $drive$bin/velmora-11
DEBUG4:  initialize shared handle: P
DEBUG4:  Velmora live: P
DEBUG4:  qor_get_query_api -> velmora_live_loader: P" ]] ||
    fail "the log: $(<log)"

# An update sends the objects of the nodes that have changed, and every node's matrix.
printf '%s\n' update update 'hide Floor' 'move Lift 1 2 3' 'rename Gate Door' update \
    'export missing/s.vsq' 'unhide Floor' 'export missing/s.vsq' update 'export sent.vsq' update \
    'move Bolt 0 0 0' render update 'delete Bolt' update 'move Lift 0 0 0' settings update >script
wanted=('1|Lamp Turntable Lift Bolt Gate Floor ' '2|' '3|Lift ' '4|Floor ' '5|'
    '6|Lamp Turntable Lift Bolt Door Floor ' '7|'
    '8|' '9|Lift ')
run velmora-11/velmora --stop
rm -f scenes/*
run vsqexport session demo:motion <script >stdout 2>stderr && fail "a session with two failures"
[[ $(grep -o '^vsqexport: line [0-9]*: ' stderr | tr -dc '0-9\n' | xargs) == '7 9' ]] || fail "failures in lines 7 and 9 were wanted: $(<stderr)"
[[ $(grep -cE '^[A-Za-z]*=[01]' stdout) == 10 ]] || fail "the settings: $(<stdout)"
for entry in "${wanted[@]}"; do
    received=$(echo scenes/scene-*-"${entry%%|*}".vsq)
    [[ -e $received ]] || fail "no scene $received"
    [[ $(objects "$received") == "${entry#*|}" ]] ||
        fail "$received holds: $(objects "$received")"
    matrices=7
    [[ ${entry%%|*} -gt 7 ]] && matrices=6
    [[ $(LC_ALL=C grep -ac '^transform ' "$received") == "$matrices" ]] ||
        fail "$received: the matrices"
    flags=32768 camera=off
    [[ ${entry%%|*} == 6 ]] && flags=33792 camera=on
    [[ $(grep -ao 'import_adjust_[ce].*' "$received") == \
        "import_adjust_camera\" $camera,"$'\nimport_adjust_environment" on,' ]] || fail "$received: adjusts"
    [[ $(LC_ALL=C grep -am1 '^flags ' "$received") == "flags $flags" ]] || fail "$received: flags"
done
[[ $(grep -c '^update: 0 objects, 0 cameras, 7 matrices of nodes sent to Velmora 11' stdout) == 3 ]] ||
    fail "three updates without objects were wanted: $(<stdout)"

# Scenes by layers have one more bit in their flags.
printf 'render\nupdate\n' | run vsqexport session demo:hierarchy --set Layers=1 >stdout 2>stderr ||
    fail "sessions by layers: $(<stderr)"
[[ $(LC_ALL=C grep -ahm1 '^flags ' scenes/scene-*-10.vsq scenes/scene-*-11.vsq) == \
    $'flags 33793\nflags 32769' ]] || fail "the flags of scenes by layers"

# A render has the report, too.
run vsqexport render demo:lights --json >render.json 2>stderr </dev/null || fail "JSON: $(<stderr)"
"${0%/*}/check_report.py" render.json || fail "the JSON of a render: $(<render.json)"
[[ -s stderr ]] && fail "only JSON is printed: $(<stderr)"

# Several hosts send to one renderer at the same time, and each reports on its own scene.
senders=
for scene in hierarchy motion layers cameras; do
    run vsqexport export "demo:$scene" sent.vsq | sed -n 2p >"$scene.wanted"
    # `run` writes a file in the current folder, so each needs its own.
    (cd "$(mktemp -d -p "$out")" && run vsqexport render "demo:$scene" 2>/dev/null </dev/null) |
        sed -n 3p >"$scene.report" &
    senders+=" $!"
done
wait $senders
for wanted in *.wanted; do
    cmp "$wanted" "${wanted%.wanted}.report" || fail "the report on its own scene: $wanted"
done

# If the renderer dies in the middle of a scene, the host reports it.
run velmora-11/velmora --stop
VELMORA_FAULT=die-after=3000 run vsqexport render demo:motion >stdout 2>stderr </dev/null &&
    fail "a render by a renderer that dies"
[[ $(tr -d '\r' <stderr) == 'vsqexport: no running renderer has received the whole scene' ]] ||
    fail "the report on a renderer that dies: $(<stderr)"

exit $((failures > 0))
