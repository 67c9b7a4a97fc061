#!/bin/bash
# batch_test.sh VSQEXPORT VSQINFO FOLDER: exports many scenes at once, and checks the lines, the exit
# status, the report and the files, also after Ctrl-C. FOLDER is the one of this script.
set -u
vsqexport=$1
vsqinfo=$2
scripts=$3
top=$(mktemp -d)
trap 'rm -rf "$top"' EXIT
cd "$top" || exit 1
export XDG_CONFIG_HOME=$top/config TMPDIR=$top/tmp
mkdir -p tmp 'in/ä/deep' in/other
failures=0

check() {
    local text=$1
    shift
    "$@" || { echo "FAILED: $text" >&2 && failures=$((failures + 1)); }
}

# batch CODE SUMMARY ARGUMENT...: a batch to the folder `out`, with its report.
batch() {
    local code=$1 summary=$2
    shift 2
    "$vsqexport" export --to out --report out.json "$@" >lines 2>errors </dev/null
    check "$*: exit status $? instead of $code" test $? = "$code"
    check "$*: the summary '$(tail -1 lines)'" grep -qE "^[0-9]+ files? in [0-9.]+ s: $summary\$" lines
    check "$*: the report" "$scripts/check_report.py" out.json
    check "$*: something is left" test -z "$(ls tmp; find out -name '.*' ! -name '*.meshes')"
}

triangle() {
    printf 'o m\nv 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n' >"$1"
}

# Names: folders stay, and files that would get one name are told apart.
for model in in/a.obj in/A.OBJ in/b.c.obj in/ä/deep/-t.obj in/other/a.obj one.obj; do
    triangle "$model"
done
triangle in/a.ply # not such a file
printf 'solid s\nfacet normal 0 0 1\nouter loop\nvertex 0 0 0\nvertex 1 0 0\nvertex 0 1 0\nendloop\nendfacet\nendsolid\n' \
    >in/ä/deep/-t.stl
echo text >in/readme.txt
mkdir in/empty in/bad
: >in/bad/empty.obj
triangle ./-dash.obj
batch 0 '1 whole' -- -dash.obj
rm -r out
batch 1 '7 whole, 2 failed' in/ one.obj in/a.obj in/other/../b.c.obj one.obj
check "the names" diff - <(cd out && find . -type f -o -type d -empty | LC_ALL=C sort) <<'END'
./A.OBJ.vsq
./a.obj-2.vsq
./b.c.vsq
./one.vsq
./other/a.vsq
./ä/deep/-t.obj.vsq
./ä/deep/-t.stl.vsq
END
check "the failures" test "$(sed 's/^[^a-z]*//; s/Inv.*//' errors | LC_ALL=C sort)" = \
    $'failed    in/a.ply: \nfailed    in/bad/empty.obj: the file is empty'
"$vsqexport" export --to out one.obj --json >printed.json 2>&1
check "the printed report" "$scripts/check_report.py" printed.json

# Each process draws and writes into its own folder, with the user's settings, and the options go to
# each. What is lost counts with --strict alone.
mkdir -p config/quoria/plugcfg
printf '[Export]\nLayers=1\n' >config/quoria/plugcfg/velmoraexport7.ini
"$vsqexport" settings Layers=1 >settings
demos=(demo:materials demo:deforming demo:lights)
batch 0 '1 whole, 2 lossy' "${demos[@]}" --unit mm --set Bones=1 --set cameras=1 --jobs 1
check "the settings" test "$(grep -c '^flags 1$' out/lights.vsq)" -gt 0
check "the options" grep -q '"meter_scale" 1000,' out/lights.vsq
check "the scenes" "$vsqinfo" out/{materials,deforming,lights}.vsq >all
check "where the files are" test "$(cd out && echo *.resources *.resources/*/ *.resources/*/*/)" = \
    'deforming.resources materials.resources deforming.resources/Animations/ deforming.resources/textures/ materials.resources/textures/ deforming.resources/Animations/3ds max/'
batch 3 '1 whole, 2 lossy' "${demos[@]}" --strict

cp "$scripts/../../samples/flag.gltf" 'Ω.gltf'
batch 0 '1 whole' 'Ω.gltf' # its picture is inside the model
check "its picture is found" test "$("$vsqinfo" out/Ω.vsq | grep -c texture-missing)" = 0

# A scene is only replaced by a whole one, and other files only with --force.
echo mine >out/one.vsq
batch 1 '1 failed' one.obj
check "a file of somebody else" test "$(<out/one.vsq)" = mine
batch 0 '1 whole' one.obj --force
check "it is replaced" "$vsqinfo" out/one.vsq >all

# Ctrl-C, other signals, and no end: the earlier scene and its files stay, and nothing else.
slow=("$vsqexport" export --to out --report out.json demo:deforming demo:changing demo:lights demo:motion
    --jobs 2 --frames 0:90000)
rm -r out && batch 0 '2 whole, 2 lossy' "${slow[@]:6:4}"
before=$(find out; cat out/*.vsq | md5sum)
for signal in INT TERM HUP; do
    "${slow[@]}" >lines 2>errors &
    sleep 0.4
    if [[ $signal == HUP ]]; then # this one doesn't hear the first
        read -r child <"/proc/$!/task/$!/children"
        kill -STOP "${child%% *}"
        kill -$signal $!
        sleep 0.4
    fi
    SECONDS=0
    kill -$signal $!
    wait $!
    check "$signal: exit status" test $? = 130
    check "$signal: it ends at once" test $SECONDS -lt 4
    check "$signal: the summary" grep -q ': 4 cancelled$' lines
    check "$signal: the report" "$scripts/check_report.py" out.json
    check "$signal: the files" test "$before" = "$(find out; cat out/*.vsq | md5sum)"
    check "$signal: something is left: $(ls tmp)" test -z "$(ls tmp)"
done
batch 1 '1 failed' demo:deforming --frames 0:90000 --timeout 0.4
check "no end" grep -q 'demo:deforming: no end in 0.4 seconds' errors
check "no end: the files" test "$before" = "$(find out; cat out/*.vsq | md5sum)"
"$vsqexport" export --to out demo:changing demo:lights --jobs 1 --frames 0:90000 >lines 2>errors &
for _ in {1..200}; do
    [[ -n $(find out -name '.changing.*.part.vsq') ]] && break
    sleep 0.02
done
read -r child <"/proc/$!/task/$!/children"
kill -KILL "$child"
wait $!
check "a crash: exit status" test $? = 1
check "a crash" grep -q 'demo:changing: crashed with signal 9' errors
check "a crash: the others" grep -q ': 1 lossy, 1 failed$' lines
check "a crash: something is left" test -z "$(find out -name '*.part*')"

# What can't begin.
while IFS='|' read -r code pattern arguments; do
    eval "\"\$vsqexport\" export $arguments" >lines 2>errors </dev/null
    check "$arguments: exit status $? instead of $code" test $? = "$code"
    check "$arguments: $(<errors)" grep -q -e "$pattern" errors
done <<'END'
1|in/empty: holds no model files|in/empty --to out
1|one.obj/x: cannot be made|one.obj --to one.obj/x
1|: the path of a resource folder can|one.obj --to out/$(printf '%0120d/' 1 2)
1|no/r.json: the report cannot be written|one.obj --to out --report no/r.json
2|would replace the scene|one.obj --to out --report out/one.vsq
2|needs --to|one.obj out.vsq in
2|--jobs|one.obj --to out --jobs 0
END
exit $((failures > 0))
