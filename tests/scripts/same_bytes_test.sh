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

mkdir -p "$out/native_files/Animations" "$out/emulated_files/Animations"

scenes=$("$native" export --help | sed -n 's/^ *\(demo:[a-z-]*\):.*/\1/p')
[ -n "$scenes" ]
for scene in $scenes; do
    (cd "$out/native_files" && "$native" export "$scene" -) | sed 's/(built [^)]*)//' >"$out/native"
    (cd "$out/emulated_files" && "$emulator" "$program" export "$scene" -) | sed 's/(built [^)]*)//' >"$out/emulated"
    cmp "$out/native" "$out/emulated"
    echo "$scene: $(wc -c <"$out/native") bytes, the same"
done
diff -r "$out/native_files" "$out/emulated_files"
[ -n "$(find "$out/native_files" -name '*.qorT')" ]
