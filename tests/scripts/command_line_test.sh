#!/bin/bash
# command_line_test.sh VSQEXPORT VSQINFO SAMPLES MODELS: runs the programs as a user does, and
# checks their exit codes, both outputs and the files that they leave. MODELS is assimp's folder of
# models.
set -u
vsqexport=$1
vsqinfo=$2
samples=$3
models=$4
out=$(mktemp -d)
trap 'chmod -R u+w "$out"; rm -rf "$out"' EXIT
cd "$out" || exit 1
# Drawn pictures go to a folder of this test. There is no renderer in it.
export XDG_CONFIG_HOME=$out/config XDG_DATA_HOME=$out/data
mkdir -p textures config/quoria
printf '%s\r\n' 'Windows Registry Editor Version 5.00' '' \
    '[HKEY_LOCAL_MACHINE\SOFTWARE\Quoria\Velmora 11]' "\"ResourceFolder\"=\"$out\"" \
    >config/quoria/registry.reg
failures=0

# expect CODE LINES PATTERN COMMAND... runs a command and checks its exit code, its number of lines
# on standard error, and that these match the pattern. The list of what was lost or changed goes to
# the file `list`.
expect() {
    local code=$1 lines=$2 pattern=$3 got
    shift 3
    "$@" >stdout 2>all </dev/null
    got=$?
    grep -aE '^  (failed|lost|changed|chosen) ' all >list
    grep -avE '^  (failed|lost|changed|chosen) ' all >stderr
    if [[ $got != "$code" || $(wc -l <stderr) != "$lines" || ! $(cat stderr) =~ $pattern ]]; then
        echo "FAILED: $*: exit $got (wanted $code), $lines lines matching '$pattern' wanted of:"
        cat stderr
        failures=$((failures + 1))
    fi
}

# check TEXT COMMAND... reports TEXT unless the command succeeds.
check() {
    local text=$1
    shift
    if ! "$@"; then
        echo "FAILED: $text"
        failures=$((failures + 1))
    fi
}

# Every sample can be exported and read back, and gets a summary. There are samples of each format.
for sample in "$samples"/*.gltf "$samples"/*.dae "$samples"/*.obj; do
    expect 0 0 '' "$vsqexport" export "$sample" sample.vsq
    check "$sample: a summary of two lines" test "$(wc -l <stdout)" = 2
    expect 0 0 '' "$vsqinfo" sample.vsq
done

# Help and version.
for words in 'help export' 'export --help'; do
    # shellcheck disable=SC2086  # several words
    expect 0 0 '' "$vsqexport" $words
    check "$words: the keys of settings" grep -q -- '--set KEY=VALUE.* HairAndFur, .* Layers$' stdout
    check "$words: the usage" grep -q '^Usage: vsqexport export ' stdout
done
expect 2 1 "no command is named 'nope'" "$vsqexport" help nope
for words in help --help; do
    expect 0 0 '' "$vsqexport" $words
    check "$words: the commands" grep -q '^  session ' stdout
done

# Standard output gets only the scene.
expect 0 0 '' "$vsqexport" export demo:hierarchy file.vsq
expect 0 0 '' "$vsqexport" export demo:hierarchy -
check "the same scene in a file and on standard output" cmp file.vsq stdout
expect 0 0 '' "$vsqexport" export demo:hierarchy $'\xce\xa9 \xf0\x9f\x98\x80.vsq'
check "a path with national characters" cmp file.vsq $'\xce\xa9 \xf0\x9f\x98\x80.vsq'

# The same holds if standard output is a file or a pipe, and for other devices and pipes, whether
# the reader or the writer of a pipe comes first.
expect 0 0 '' "$vsqexport" export demo:hierarchy /dev/stdout
check "the device of standard output" cmp file.vsq stdout
check "standard output as a pipe" cmp file.vsq \
    <("$vsqexport" export demo:hierarchy /dev/stdout </dev/null)
expect 0 0 '' "$vsqexport" export demo:hierarchy /dev/null
mkfifo pipe
for reader in {1..12}; do
    if ((reader % 2)); then
        cat pipe >read &
        expect 0 0 '' "$vsqexport" export demo:hierarchy pipe
    else
        "$vsqexport" export demo:hierarchy pipe &
        cat pipe >read
    fi
    check "the other end of the pipe" wait $!
    check "reader $reader of a pipe" cmp file.vsq read
done

# Animations, and targets that they refuse.
expect 0 0 '' "$vsqexport" animation demo:motion film.vsq --frames 2:4
check "the files of an animation" test "$(echo film*)" = \
    'film.py film0000.vsq film0001.vsq film0002.vsq'
check "a summary of three lines" test "$(wc -l <stdout)" = 3
expect 2 1 "'film.max'" "$vsqexport" animation demo:motion film.max
expect 1 1 'no folder' "$vsqexport" animation demo:motion nowhere/film.vsq
mkdir reel.py
expect 1 1 'reel.py: the script was not written' "$vsqexport" animation demo:motion reel.vsq \
    --frames 0:0
model=$models/glTF2/glTF-Sample-Models/AnimatedMorphCube-glTF/AnimatedMorphCube.gltf
if [[ -e $model ]]; then
    expect 0 0 '' "$vsqexport" animation "$model" cube.vsq
    last=$(sed -n 's/^    end = //p' cube.py)
    check "a file for each frame of a model" test "$(ls cube*.vsq | wc -l)" = $((last + 1))
    for frame in cube*.vsq; do
        expect 0 0 '' "$vsqinfo" "$frame"
    done
else
    echo "SKIPPED: there is no $model"
fi

# The report: on the screen, in a file, as an exit status, as JSON.
expect 0 0 '' "$vsqexport" export demo:lights l.vsq --report l.json
check "the list, worst first" grep -q '^  lost light-kind-unknown (3): Room/Stage spot, class' list
check "what was chosen comes last" test "$(sed 's/^  //; s/ .*//' list | uniq | tr '\n' ' ')" = \
    'lost changed '
expect 3 0 '' "$vsqexport" export demo:lights l.vsq --strict --quiet
check "a quiet command" test ! -s list -a ! -s stdout
expect 0 0 '' "$vsqexport" export demo:curves l.vsq --strict
expect 0 0 '' "$vsqexport" export demo:lights l.vsq --json
check "only JSON is printed" test ! -s list
cp stdout export.json
expect 0 0 '' "$vsqexport" animation demo:lights film.vsq --frames 0:1 --json
cp stdout animation.json
expect 2 1 'standard output' "$vsqexport" export demo:lights - --json
expect 1 1 'no/l.json: the report cannot be written' "$vsqexport" export demo:lights kept.vsq \
    --report no/l.json
ln kept.vsq linked.vsq
for file in "$PWD/kept.vsq" linked.vsq; do
    expect 2 1 'would replace' "$vsqexport" export demo:lights kept.vsq --report "$file"
done
for file in kept.py kept0012.vsq; do
    expect 2 1 'would replace' "$vsqexport" animation demo:lights kept.vsq --report $file
done
expect 2 1 'takes a file' "$vsqexport" render demo:lights --report -
check "the scene stays" "$vsqinfo" kept.vsq >/dev/null
# A command that never gets to the export has a report as well, with the error in one line.
expect 1 1 '^vsqexport: no.x0aone/k.vsq: ' "$vsqexport" export demo:lights $'no\none/k.vsq' --json
cp stdout unwritten.json
expect 1 1 'none.obj' "$vsqexport" render none.obj --json --report unread.json
cp stdout unsent.json
check "the error is noted" grep -q '"export-failed"' unread.json
"$vsqexport" session demo:lights --json <<<'export s.vsq' >session.json 2>all
check "a session with JSON is silent" test ! -s all
"$vsqexport" session demo:lights --json --report r.vsq <<<$'export r.vsq\nrender' >refused.json 2>all
check "a session keeps its scene" grep -q 'r.vsq: the report would replace' all
"$vsqexport" session demo:lights --strict --report s.json <<<$'hide Sky\nexport s.vsq' >all 2>&1
check "a strict session" test $? = 3
printf 'newmtl m\xc5\xa1\nmap_Kd gone.png\n' >gone.mtl
printf 'o \xff"\\\x1b\nmtllib gone.mtl\nv 0 0 0\nv 1 0 0\nv 0 1 0\nvt 0 0\nusemtl m\xc5\xa1\nf 1/1 2/1 3/1\n' >gone.obj
expect 3 1 'warning: .*gone.png is not found' "$vsqexport" export gone.obj s.vsq --strict \
    --report gone.json
printf 'v 0 0 0\nv 1e6 0 0\nv 0 1 0\nf 1 2 3\n' >large.obj
expect 0 1 'large.obj: the scene is 2.54e\+04 m large' "$vsqexport" export large.obj large.vsq
expect 0 0 '' "$vsqexport" export large.obj large.vsq --scale 0.01 --up z
check "the model is scaled" grep -q '^transform 0.01 0 0 0 0 0.01 0 0 0 0 0.01 0 ' large.vsq
expect 0 1 '23.976 frames a second become 24' "$vsqexport" export demo:motion rate.vsq --fps 23.976 \
    --report rate.json
check "the changed rate is noted" grep -q '"import-frame-rate"' rate.json
expect 2 1 '--up: w' "$vsqexport" export large.obj large.vsq --up w
expect 2 1 '--scale are for model files' "$vsqexport" export demo:lights large.vsq --scale 2
expect 1 1 "no animation 'x'" "$vsqexport" export large.obj large.vsq --animation x
check "the importer's warning has a code" grep -q '"import-texture"' gone.json
check "the importer's codes are those of the document" diff \
    <(grep -rhoE '"import-[a-z-]+"' "$samples/../tools/vsqexport" | tr -d '"' | sort -u) \
    <(grep -oE '^\| `import-[a-z-]+' "$samples/../docs/report.md" | cut -c4- | sort)
check "the user guide names each code" diff /dev/null <(grep -oE '^\| `[a-z]+-[a-z-]+`' \
    "$samples/../docs/report.md" | cut -c3- |
    while read -r code; do grep -qF "$code" "$samples/../docs/user-guide.md" || echo "$code"; done)
check "a hidden node is noted" grep -q '"node-hidden"' s.json
for file in l export animation session s gone unwritten unread unsent refused; do
    check "$file.json is JSON" python3 -m json.tool $file.json >/dev/null
    check "$file.json has the schema" "${0%/*}/check_report.py" $file.json
done
rm -rf textures
expect 1 1 'map-not-written: .*textures/Tiles_diffuse.png.*and 9 more' \
    "$vsqexport" export demo:materials m.vsq
check "the summary is printed all the same" grep -q '10 textures' stdout
mkdir textures

# vsqinfo takes several files and standard input, and fails if one has an error. Only a finding
# that is no error, or none, lets it succeed.
mkdir -p "Animations/3ds max"
for demo in hierarchy motion cameras lights materials smoothing layers curves deforming hair changing studio; do
    expect 0 0 '' "$vsqexport" export demo:$demo demo.vsq
    expect 0 0 '' "$vsqinfo" demo.vsq
done
rm -r Animations
printf 'xX\377 "' >none.vsq
sed 's/^flags 0$/flag 9/; s/^version 9/version 0/' l.vsq >wrong.vsq
expect 1 2 'none.vsq: offset 0: .*gone.vsq: does not exist' "$vsqinfo" l.vsq none.vsq gone.vsq
check "a title for each file" test "$(grep -c '^\(l\|none\|gone\).vsq$' stdout)" = 3
expect 1 0 '' "$vsqinfo" wrong.vsq
check "errors come first" grep -q -m1 '^error version-range: line 7, offset' stdout
check "then warnings, the first few of each" grep -q '^warning statement-misspelt: [0-9]* more$' stdout
expect 1 2 '' "$vsqinfo" --json l.vsq wrong.vsq none.vsq gone.vsq
cp stdout checks.json
"$vsqinfo" --json - <l.vsq >piped.json
check "standard input" test $? = 0
for file in checks piped; do
    check "$file.json is JSON" python3 -m json.tool $file.json >/dev/null
    check "$file.json has the schema" "${0%/*}/check_report.py" $file.json
done
rm none.vsq

# A pipe has no length, so the count of an array in it can't be checked in advance.
expect 0 0 '' "$vsqinfo" <(cat l.vsq)
array=$(grep -abo -m1 '"triangles" \[' l.vsq)
expect 1 1 'the file ends' "$vsqinfo" <(head -c $((${array%%:*} + 25)) l.vsq)

# A mesh file is recognised by its contents.
printf 'qorT\3\0\0\0' >mesh.vsq
expect 1 1 'mesh.vsq: offset 8: the file ends' "$vsqinfo" mesh.vsq

# Settings and options reach the export.
expect 0 0 '' "$vsqexport" export demo:hierarchy options.vsq --set Layers=1 --unit mm --fps 25 \
    --frames 0:10
check "the unit" grep -q '"meter_scale" 1000,' options.vsq
check "a setting" grep -q '^flags 1$' options.vsq

# Failures are reported in one line and leave no file.
echo 'no model' >broken.gltf
expect 1 1 'missing.glb' "$vsqexport" export missing.glb none.vsq
expect 1 1 'broken.gltf' "$vsqexport" export broken.gltf none.vsq
expect 1 1 "$samples" "$vsqexport" export "$samples" none.vsq
expect 1 1 "'none' \(known: hierarchy" "$vsqexport" export demo:none none.vsq
expect 1 1 'it is a folder' "$vsqexport" export demo:hierarchy .
expect 2 1 "'Nothing'" "$vsqexport" export demo:hierarchy none.vsq --set Nothing=1
expect 2 1 "'maybe'" "$vsqexport" export demo:hierarchy none.vsq --set Bones=maybe
expect 2 1 "'furlong'" "$vsqexport" export demo:hierarchy none.vsq --unit furlong
expect 2 1 "'9:1'" "$vsqexport" export demo:hierarchy none.vsq --frames 9:1
expect 2 1 '--fps' "$vsqexport" export demo:hierarchy none.vsq --fps 0
expect 2 1 '--bogus' "$vsqexport" export demo:hierarchy none.vsq --bogus
expect 2 1 'OUT' "$vsqexport" export demo:hierarchy
expect 2 1 'subcommand' "$vsqexport"
check "no file is left" test ! -e none.vsq

# Some targets can't be written.
expect 1 2 'No space left on device.*could not close file' "$vsqexport" export demo:hierarchy \
    /dev/full
# limited KILOBYTES COMMAND... limits the size of each file, as a full disk does.
limited() {
    (trap '' XFSZ && ulimit -f "$1" && shift && "$@")
}
mkdir Animations

# A scene can be moved with all its files, and knows which mesh files it has made.
expect 0 0 '' "$vsqexport" export demo:deforming d.vsq
expect 0 0 '' "$vsqexport" export demo:materials m.vsq
expect 0 0 '' "$vsqexport" collect d.vsq m.vsq collected
mv collected moved
expect 0 0 '' "$vsqinfo" moved/d.vsq moved/m.vsq
check "no file is missing" bash -c '! grep -E "missing|lost" stdout'
check "all files are named without a folder" bash -c '! grep -aE "^\"(file|texture)\" .*/" moved/*.vsq'
check "a mesh file is copied" cmp Animations/*/Flag_Stripes.qorT moved/Flag_Stripes.qorT
expect 1 1 'moved/d.vsq: it is there already' "$vsqexport" collect d.vsq moved
mv textures/Stripes_diffuse.png kept.png
expect 1 1 'd.vsq: .*Stripes_diffuse.png. can.t be opened' "$vsqexport" collect d.vsq moved --force
mv kept.png textures/Stripes_diffuse.png
expect 1 1 'it is in that folder already' "$vsqexport" collect d.vsq . --force
expect 1 1 'Stripes_diffuse.png: it is in that folder already' "$vsqexport" collect d.vsq textures --force
expect 2 1 'one or more scenes and a folder' "$vsqexport" collect d.vsq
meshes() {
    (cd Animations/* && ls *.qorT)
}
check "three mesh files" test "$(meshes | wc -l)" = 3
meshes >first
expect 0 0 '' "$vsqexport" export demo:deforming d.vsq
check "an export adds mesh files" test "$(meshes | wc -l)" = 6
echo x >>Animations/*/Flag_Stripes.qorT
expect 0 0 '' "$vsqexport" export demo:deforming d.vsq --clean
check "those of earlier exports are removed, but not what has changed since" \
    test "$(meshes | comm -12 - first)" = Flag_Stripes.qorT
check "those of the last one are there" test "$(meshes | wc -l)" = 4
# A name that has become free belongs to the scene that takes it, and nothing else is removed.
rm Animations/*/* .d.vsq.meshes
expect 0 0 '' "$vsqexport" export demo:deforming d.vsq
cp -p Animations/*/Crate_Wood.qorT elsewhere.qorT
sed -i "s| [^ ]*Animations/3ds max/Crate_Wood.*| $PWD/elsewhere.qorT|" .d.vsq.meshes
rm Animations/*/*
expect 0 0 '' "$vsqexport" export demo:deforming other.vsq
expect 0 0 '' "$vsqexport" export demo:deforming d.vsq --clean
expect 0 0 '' "$vsqinfo" other.vsq # its mesh files stay
check "a file outside of the resource folder stays" test -e elsewhere.qorT
expect 0 0 '' "$vsqinfo" d.vsq
rm -r Animations/*

expect 1 3 'Failed writing tag data.*Flag_Stripes.qorT: offset 65536: the file ends' \
    limited 64 "$vsqexport" export demo:deforming full.vsq --frames 0:40
expect 1 2 'File too large.*full0000.vsq: could not close file' \
    limited 2 "$vsqexport" animation demo:motion full.vsq
if [[ $EUID != 0 ]]; then
    mkdir locked
    chmod a-w locked
    expect 1 1 'Permission denied' "$vsqexport" export demo:hierarchy locked/s.vsq
fi
printf 'o m\nv 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n' >model.obj
expect 1 1 'it is the scene to be exported' "$vsqexport" export model.obj model.obj
check "the model is as it was" test "$(head -c 3 model.obj)" = 'o m'

exit $((failures > 0))
