#!/bin/sh
# same_bytes_test.sh NATIVE COMMAND...: both must write the same bytes for each demo scene, except for
# their build time, and the same libraries of deforming meshes.
set -eu
native=$1
shift
out=$(mktemp -d)
trap 'rm -rf "$out"' EXIT
# No renderer is registered for either program, so that both give baked textures the same names.
export XDG_CONFIG_HOME="$out/config"

mkdir -p "$out/native/Animations" "$out/other/Animations"

# export_in FOLDER COMMAND... runs the command in a folder, to export $scene there.
export_in() {
    cd "$out/$1"
    shift
    "$@" export "$scene" - >../whole || [ $? = 1 ]  # drawn pictures have no folder here
    [ -s ../whole ]
    sed 's/(built [^)]*)//' ../whole >"$scene.vsq"
}

scenes=$("$native" export --help | sed -n 's/^ *\(demo:[a-z-]*\):.*/\1/p')
[ -n "$scenes" ]
for scene in $scenes; do
    export_in native "$native"
    export_in other "$@"
done
diff -r "$out/native" "$out/other"
[ -n "$(find "$out/native" -name '*.qorT')" ]
