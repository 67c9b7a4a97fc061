#!/bin/bash
# linux_package_test.sh CPACK BUILD VERSION: makes the packages for Linux, unpacks each into an empty
# folder, and lets two users work with it at the same time.
set -u
out=$(mktemp -d)
trap 'rm -rf "$out"' EXIT
cd "$out" || exit 1
failures=0
fail() {
    echo "FAILED: $*"
    failures=$((failures + 1))
}

"$1" --config "$2/CPackConfig.cmake" -G 'TGZ;DEB' -B packages >log 2>&1 || fail "$(<log)"
mkdir tar deb
tar xf packages/VSQExport-"$3"-Linux-*.tar.gz -C tar --strip-components 1 || fail 'the archive'
dpkg-deb -x packages/vsqexport_"$3"_*.deb deb || fail 'the Debian package'
depends=$(dpkg-deb -f packages/*.deb Depends)
for package in python3 libassimp libedit libembree libtinyxml; do
    [[ $depends == *$package* ]] || fail "the package depends on $depends"
done
for program in deb/usr/lib/vsqexport/{vsqexport,VSQExportR2023.dle}; do
    [[ $(objdump -p "$program" | awk '$1 ~ /R(UN)?PATH/ { print $2 }') == "\$ORIGIN" ]] || fail "$program: its library path"
done
checkout=${2%/build/*}
known=(-e "$checkout/build/")
for folder in platform importers model plugins standins tools; do
    known+=(-e "$checkout/$folder/")
done
grep -rlF "${known[@]}" deb tar && fail 'these files know the folder of the build'

# work PREFIX USER: what a user does. Prints what went wrong.
work() {
    local sample=$1/share/vsqexport/samples/desk-lamp.gltf
    export HOME=$out/$2 PATH=$1/bin:/usr/bin:/bin
    unset XDG_CONFIG_HOME XDG_DATA_HOME XDG_STATE_HOME VELMORA_SCENES PYTHONDONTWRITEBYTECODE
    mkdir "$HOME" && cd "$HOME" || echo "no home"
    vsqexport settings Layers=1 >settings || echo settings
    vsqexport export "$sample" lamp.vsq >told || echo export
    vsqinfo lamp.vsq >told || echo vsqinfo
    vsqpicture lamp.vsq lamp.png --size 48x32 --samples 1 || echo vsqpicture
    printf '%s\n' render 'hide Shade' update 'picture sent.png' | vsqexport session "$sample" --set Layers=0 >told 2>&1 ||
        echo "a command of the session"
    [[ $(grep -c 'sent to Velmora 11' told) == 2 && -s sent.png ]] || echo "session: $(<told)"
    [[ $(find .local/share/quoria/scenes -name '*.vsq' | wc -l) == 2 ]] || echo "the user's scenes"
    vsqexport animation demo:motion shot.vsq --frames 0:2 --quiet || echo animation
    vsqframes shot.py frames --size 48x32 --samples 1 >told 2>&1 || echo "vsqframes: $(<told)"
    for program in vsqexport vsqinfo vsqpicture velmora; do
        [[ $("$program" --version) == "$program ${version?}" ]] || echo "$program --version"
    done
    [[ $(velmora --stop) == 'stopped Velmora 11.0 (process '* ]] || echo "the user's renderer"
    [[ $(velmora --stop) == 'no renderer is running' ]] || echo "a renderer that goes on"
    [[ $(vsqexport settings Layers=1) == "$(<settings)" ]] || echo "the user's settings"
}
export version=$3
for prefix in "$out/tar" "$out/deb/usr"; do
    chmod -R a-w "$prefix"
    find "$prefix" -printf '%p %s %T@\n' | sort >before
    rm -rf ann bob
    (work "$prefix" ann) >ann.txt 2>&1 &
    (work "$prefix" bob) >bob.txt 2>&1
    wait
    [[ -s ann.txt || -s bob.txt ]] && fail "$prefix: $(cat ann.txt bob.txt)"
    find "$prefix" -printf '%p %s %T@\n' | sort | diff before - || fail "$prefix: the installed files have changed"
    chmod -R u+w "$prefix"
done
exit $((failures > 0))
