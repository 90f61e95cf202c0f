# What the release has for 64-bit Windows: a .zip to unpack into the game's folder, and a setup with the
# same files. Sourced by scripts/package.
# shellcheck shell=bash
: "${version:?}" "${work:?}" "${source:?}" "${dist:?}" "${SOURCE_DATE_EPOCH:?}"
name=ZebekSuite-$version-windows-x64
release=$work/$name

build_program() {
    ZEBEK_WINDOWS_LIBRARIES=$("$source/scripts/windows-libraries")
    export ZEBEK_WINDOWS_LIBRARIES
    (cd "$source" && cmake --preset windows --log-level=WARNING &&
        cmake --build --preset windows --target ZebekSuite)
    require_no_path "$source/build/windows/bin/ZebekSuite.exe"
    "$source/scripts/check-hardening" "$source/build/windows/bin/ZebekSuite.exe"
}

# The program, and all else in one folder beside it, so that nothing lands between the game's files.
lay_out_release() {
    local manual=$release/ZebekManual notices=$source/packaging/windows/notices.py
    cmake --install "$source/build/windows" --component program --prefix "$release" >/dev/null
    cp --recursive "$work/manual" "$manual"
    cmake --install "$source/build/windows" --component documents --prefix "$manual" >/dev/null
    {
        cat "$ZEBEK_WINDOWS_LIBRARIES/sources"
        sources_of gcc-mingw-w64-x86-64-posix-runtime mingw-w64-x86-64-dev
    } | bill_of_materials "$name" STATIC_LINK >"$manual/ZebekSuite.spdx"
    python3 "$notices" bill "$ZEBEK_WINDOWS_LIBRARIES/notices" >>"$manual/ZebekSuite.spdx"
    python3 "$notices" texts "$ZEBEK_WINDOWS_LIBRARIES/notices" >>"$manual/THIRD-PARTY.txt"
    find "$release" -exec touch --no-dereference --date="@$SOURCE_DATE_EPOCH" {} +
}

pack_zip() {
    rm --force "$dist/$name.zip"
    (cd "$release" && find . -type f -printf '%P\n' | sort | zip -X -9 --quiet -@ "$dist/$name.zip")
}

# Each file by its name and in order: a folder as a whole would be in the order of the disk, and would
# at the end take files with it that are not ours.
setup_files() {
    local file folder
    echo '!macro InstallManual'
    (cd "$release" && find ZebekManual -type f | sort) | while read -r file; do
        folder=$(dirname "$file")
        printf 'SetOutPath "$INSTDIR\\%s"\nFile "%s"\n' "${folder//\//\\}" "$release/$file"
    done
    printf '!macroend\n!macro RemoveManual\n'
    (cd "$release" && find ZebekManual -depth -type f -printf 'Delete "$INSTDIR\\%p"\n' -o \
        -depth -type d -printf 'RMDir "$INSTDIR\\%p"\n') | tr / '\\'
    echo '!macroend'
}

# Beside the text of the last page: the program's sign on its colour, twice as large for sharp screens.
side_picture() {
    convert -size 328x628 gradient:'#1f5f5c-#123238' "$source/src/ui/pictures/icon-256.png" \
        -gravity center -composite -type TrueColor "BMP3:$work/side.bmp"
    touch --date="@$SOURCE_DATE_EPOCH" "$work/side.bmp" # setup keeps the time
}

pack_setup() {
    setup_files >"$work/files.nsh"
    side_picture
    makensis -V2 -WX -DVERSION="$version" -DRELEASE="$release" -DSIZE="$(size_of "$release")" \
        -DFILES="$work/files.nsh" -DPICTURE="$work/side.bmp" \
        -DICON="$source/src/platform/windows/ZebekSuite.ico" \
        -DOUTPUT="$dist/$name-setup.exe" "$source/packaging/windows/setup.nsi"
}

pack_system() {
    build_program
    lay_out_release
    pack_zip
    pack_setup
}
