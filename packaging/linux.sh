# What the release has for Linux: the folder as .tar.gz, and the .deb. Sourced by scripts/package.
# shellcheck shell=bash
: "${version:?}" "${work:?}" "${source:?}" "${dist:?}" "${SOURCE_DATE_EPOCH:?}"
name=ZebekSuite-$version-linux-amd64

build_program() {
    (cd "$source" && cmake --preset release --log-level=WARNING && cmake --build --preset release --target ZebekSuite)
    strip "$source/build/bin/ZebekSuite.exe"
    require_no_path "$source/build/bin/ZebekSuite.exe"
    "$source/scripts/check-hardening" "$source/build/bin/ZebekSuite.exe"
}

# The packages that the program's libraries come from, with the versions that they must have.
needed_packages() {
    mkdir --parents "$work/debian"
    touch "$work/debian/control"
    (cd "$work" && dpkg-shlibdeps -O source/build/bin/ZebekSuite.exe) | sed 's/^shlibs:Depends=//'
}

pack_folder() {
    local folder=$work/$name
    cmake --install "$source/build" --prefix "$folder" >/dev/null
    cp "$work/ZebekSuite.spdx" "$folder"
    cp --recursive "$work/manual" "$folder/ZebekManual"
    tar --create --directory="$work" --sort=name --owner=0 --group=0 --numeric-owner \
        --mtime="@$SOURCE_DATE_EPOCH" "$name" | gzip -n9 >"$dist/$name.tar.gz"
}

debian_changelog() {
    printf 'zebek-suite (%s) unstable; urgency=medium\n\n  * See CHANGELOG.md.\n\n -- %s  %s\n' "$version" \
        "$(sed -n 's/^Maintainer: //p' "$source/packaging/debian/control.in")" \
        "$(date --rfc-email --date="@$SOURCE_DATE_EPOCH")"
}

pack_debian() { # NEEDED_PACKAGES
    local root=$work/deb documents=$work/deb/usr/share/doc/zebek-suite
    cmake --install "$source/build" --component program --prefix "$root/usr/lib/zebek-suite" >/dev/null
    cmake --install "$source/build" --component documents --prefix "$documents" >/dev/null
    mkdir --parents "$root/usr/sbin" "$root/DEBIAN"
    ln --symbolic ../lib/zebek-suite/zebek-suite-install "$root/usr/sbin/zebek-suite-install"
    cp --recursive "$work/ZebekSuite.spdx" "$work/manual" "$documents"
    mv "$documents/LICENSE" "$documents/copyright" # as Debian names it
    ln --symbolic copyright "$documents/LICENSE"
    debian_changelog | gzip -n9 >"$documents/changelog.gz"
    cp "$source"/packaging/debian/{postinst,prerm} "$root/DEBIAN"
    (cd "$root" && find usr -type f -print0 | sort --zero-terminated | xargs --null md5sum >DEBIAN/md5sums)
    sed -e "s/@VERSION@/$version/" -e "s/@DEPENDS@/$1/" \
        -e "s/@SIZE@/$(size_of "$root/usr")/" \
        "$source/packaging/debian/control.in" >"$root/DEBIAN/control"
    dpkg-deb --root-owner-group --threads-max=1 --build "$root" "$dist/zebek-suite_${version}_amd64.deb"
}

pack_system() {
    local needed
    build_program
    needed=$(needed_packages)
    # Of each "name (>= version)" the name.
    tr ',' '\n' <<<"$needed" | awk '{print $1}' | while read -r package; do sources_of "$package"; done |
        bill_of_materials "$name" DYNAMIC_LINK >"$work/ZebekSuite.spdx"
    pack_folder
    pack_debian "$needed"
}
