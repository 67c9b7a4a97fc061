#!/bin/bash
# picture_commands_test.sh PROGRAMS SOURCES: draws pictures as a user does, from scene files, over the
# live link and by the script of an animation. PROGRAMS is the folder of the programs.
set -u
bin=$1
frames=$2/standins/renderer/draw_frames.py
samples=$2/samples
out=$(mktemp -d)
cd "$out" || exit 1
mkdir -p config/quoria data scenes textures 'Animations/3ds max'
export XDG_CONFIG_HOME=$out/config XDG_DATA_HOME=$out/data VELMORA_SCENES=$out/scenes
{
    printf 'Windows Registry Editor Version 5.00\r\n\r\n[HKEY_LOCAL_MACHINE\SOFTWARE\Quoria\Velmora 11]\r\n'
    printf '"BinName"="%s"\r\n"BinFolder"="%s"\r\n"ResourceFolder"="%s"\r\n' \
        "$bin/velmora-11/velmora" "$bin/velmora-11" "$out"
} >config/quoria/registry.reg
trap '"$bin/velmora-11/velmora" --stop; rm -rf "$out"' EXIT
failures=0

fail() {
    echo "FAILED: $*"
    failures=$((failures + 1))
}

draw() {
    "$bin/vsqpicture" "$@" --size 48x32 --samples 2
}

# Each object has pixels in one of three views, or the program says what it doesn't draw.
for scene in demo:{hierarchy,motion,cameras,lights,materials,smoothing,layers,curves,deforming,hair,changing,studio} \
    "$samples"/*.{gltf,obj,dae}; do
    "$bin/vsqexport" export "$scene" scene.vsq --quiet >/dev/null || fail "$scene"
    draw scene.vsq scene.png 2>notes || fail "$scene: $(<notes)"
    for view in front top iso; do
        "$bin/vsqpicture" scene.vsq ids.png --view $view --ids $view.json --size 480x320 2>>notes || fail "$scene"
    done
    unseen=$(python3 - <<'END'
import json
views = [json.load(open(view + ".json")) for view in ("front", "top", "iso")]
print(sum(not any(view[i]["pixels"] for view in views) for i in range(len(views[0]))))
END
    )
    # The house of the layers is closed, and two things are inside.
    [[ $scene == demo:layers ]] && unseen=$((unseen - 2))
    [[ $unseen == 0 || -s notes ]] || fail "$scene: $unseen objects can't be seen, and nothing is told"
done

# Export and Render give one picture; after an update, a moved node has moved.
"$bin/vsqexport" export demo:motion motion.vsq --quiet
draw motion.vsq export.png
"$bin/vsqexport" render demo:motion --picture render.png --quiet >/dev/null || fail "a picture of a render"
"$bin/vsqpicture" motion.vsq export.png
cmp export.png render.png || fail "Export and Render differ"
printf '%s\n' 'picture early.png' render 'picture a.png' 'move Gate 0 0 40' update 'picture b.png' \
    'hide Gate' update 'picture c.png' render 'picture d.png' |
    "$bin/vsqexport" session demo:motion --quiet >/dev/null 2>errors
[[ $(<errors) == 'vsqexport: line 1: nothing was sent to the renderer yet' ]] || fail "a session: $(<errors)"
cmp -s a.png export.png || fail "the first picture of a session"
cmp -s a.png b.png && fail "the moved node can't be seen"
cmp -s b.png c.png || fail "a hidden node stays until the next render"
cmp -s c.png d.png && fail "after a render the hidden node is still there"

# The script of an animation.
"$bin/vsqexport" animation demo:cameras shot.vsq --frames 0:3 --quiet >/dev/null
"$frames" "$bin/vsqpicture" shot.py pictures --size 48x32 --samples 2 >told 2>notes || fail "frames: $(<notes)"
[[ $(ls pictures | tr '\n' ' ') == 'contact-sheet.png shot00001.png shot00002.png shot00003.png ' ]] ||
    fail "the frames: $(ls pictures)"
grep -q '^3 frames in pictures$' told || fail "what frames tells: $(<told)"
"$bin/vsqpicture" shot0000.vsq shot0001.vsq still.png --size 48x32 --samples 2 --frame 1
cmp -s still.png pictures/shot00001.png || fail "a frame differs from its files"
"$frames" "$bin/vsqpicture" shot.py pictures --camera nobody >told 2>&1
[[ $? == 1 && $(tail -1 told) == "frames: the scene has no camera 'nobody' (it has: "* ]] || fail "$(<told)"
mv shot0000.vsq away.vsq
"$frames" "$bin/vsqpicture" shot.py pictures >told 2>&1
[[ $? == 1 && $(<told) == 'frames: shot0000.vsq: does not exist' ]] || fail "without its first frame: $(<told)"
mv away.vsq shot0000.vsq
# A terminal's Ctrl-C; a script started in the background would ignore it.
python3 - "$frames" "$bin/vsqpicture" <<'END' || fail "Ctrl-C"
import signal, subprocess, sys
run = subprocess.Popen([*sys.argv[1:], "shot.py", "pictures", "--size", "800x600", "--samples", "2000"],
                       stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True,
                       preexec_fn=lambda: signal.signal(signal.SIGINT, signal.default_int_handler))
run.stdout.readline()
run.send_signal(signal.SIGINT)
error = run.communicate()[1]
sys.exit(0 if run.returncode == 130 and error == "frames: cancelled, 0 of 3 frames are drawn\n" else 1)
END

# What can't be done is told in one line.
for wanted in "no/a.png: the picture can't be written|motion.vsq no/a.png" \
    'none.vsq: does not exist|none.vsq a.png' "no camera 'x' (it has: none)|motion.vsq a.png --camera x" \
    "'640' isn't like 640x360|motion.vsq a.png --size 640"; do
    # shellcheck disable=SC2086  # several words
    "$bin/vsqpicture" ${wanted#*|} 2>errors && fail "$wanted"
    grep -qF "${wanted%|*}" errors || fail "$wanted: $(<errors)"
done
exit $((failures > 0))
