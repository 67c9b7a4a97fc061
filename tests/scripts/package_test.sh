#!/bin/sh
# package_test.sh CMAKE CPACK BUILD: checks the contents of the package that a user unpacks.
set -eu
cmake=$1
cpack=$2
build=$3
out=$(mktemp -d)
trap 'rm -rf "$out"' EXIT

"$cpack" --config "$build/CPackConfig.cmake" -G ZIP -B "$out" >"$out/log" 2>&1 || {
    cat "$out/log"
    exit 1
}
cd "$out"
"$cmake" -E tar tf VSQExport-*.zip | grep -v '/$' | LC_ALL=C sort >listed
cat >wanted <<'END'
VSQExport.bundle/Contents/VSQExportR2023.dle
VSQExport.bundle/Contents/help/index.html
VSQExport.bundle/PackageContents.xml
END
diff wanted listed

# The host finds the plug-in and the help page through the description.
"$cmake" -E tar xf VSQExport-*.zip
for entry in ModuleName HelpFile; do
    file=$(sed -n "s|.*$entry=\"\./\([^\"]*\)\".*|\1|p" VSQExport.bundle/PackageContents.xml)
    [ -s "VSQExport.bundle/$file" ] || { echo "$entry names no file: $file"; exit 1; }
done
