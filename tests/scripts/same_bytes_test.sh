#!/bin/sh
# same_bytes_test.sh NATIVE EMULATOR PROGRAM: both programs must write the same bytes for each demo
# scene, the time of their build aside, and the same libraries of deforming meshes beside it.
set -eu
native=$1
emulator=$2
program=$3
out=$(mktemp -d)
trap 'rm -rf "$out"' EXIT
# No renderer is registered for either of them, so that both name drawn textures alike.
export XDG_CONFIG_HOME="$out/config"

mkdir -p "$out/native/Animations" "$out/emulated/Animations"

# export_in FOLDER COMMAND... lets the program of that command write $scene in that folder.
export_in() {
    cd "$out/$1"
    shift
    "$@" export "$scene" - >../whole
    [ -s ../whole ]
    sed 's/(built [^)]*)//' ../whole >"$scene.vsq"
}

scenes=$("$native" export --help | sed -n 's/^ *\(demo:[a-z-]*\):.*/\1/p')
[ -n "$scenes" ]
for scene in $scenes; do
    export_in native "$native"
    export_in emulated "$emulator" "$program"
done
diff -r "$out/native" "$out/emulated"
[ -n "$(find "$out/native" -name '*.qorT')" ]
