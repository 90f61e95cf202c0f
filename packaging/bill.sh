# The bill of materials (SPDX) of a release: the program, and Debian's source packages that its
# libraries come from. Sourced by scripts/package.
# shellcheck shell=bash
: "${version:?}" "${commit:?}" "${SOURCE_DATE_EPOCH:?}"

# A library without an entry ends the build, so that none is forgotten. SPDX wants several licences in
# parentheses.
declare -A licences=(
    [gcc-12]="GPL-3.0-or-later WITH GCC-exception-3.1"
    [gcc-14]="GPL-3.0-or-later WITH GCC-exception-3.1"
    [gcc-mingw-w64]="GPL-3.0-or-later WITH GCC-exception-3.1"
    [glibc]="LGPL-2.1-or-later"
    [libxcb]="X11"
    [libxml2]="MIT"
    [mingw-w64]="ZPL-2.1"
    [qt6-base]="(LGPL-3.0-only OR GPL-2.0-only OR GPL-3.0-only)"
    [xcb-util-wm]="X11"
)

bill_of_package() { # NAME VERSION SUPPLIER LICENCE
    cat <<SPDX

PackageName: $1
SPDXID: SPDXRef-$1
PackageVersion: $2
PackageSupplier: Organization: $3
PackageDownloadLocation: NOASSERTION
FilesAnalyzed: false
PackageLicenseConcluded: $4
PackageLicenseDeclared: $4
PackageCopyrightText: NOASSERTION
SPDX
}

# The source package, and its version, of each installed package that is named.
sources_of() { # PACKAGE...
    dpkg-query --show --showformat='${source:Package} ${source:Version}\n' "$@"
}

bill_of_materials() { # NAME RELATION, and the libraries' sources on standard input
    local library version_of_library
    cat <<SPDX
SPDXVersion: SPDX-2.3
DataLicense: CC0-1.0
SPDXID: SPDXRef-DOCUMENT
DocumentName: $1
DocumentNamespace: https://zebek-suite.example/spdx/$1-$commit
Creator: Organization: the Zebek Suite authors
Created: $(date --date="@$SOURCE_DATE_EPOCH" +%Y-%m-%dT%H:%M:%SZ)
SPDX
    bill_of_package ZebekSuite "$version" "the Zebek Suite authors" MIT
    echo "Relationship: SPDXRef-DOCUMENT DESCRIBES SPDXRef-ZebekSuite"
    sort --unique | while read -r library version_of_library; do
        [ -n "${licences[$library]:-}" ] || fail "what is the licence of $library?"
        bill_of_package "$library" "$version_of_library" Debian "${licences[$library]}"
        echo "ExternalRef: PACKAGE-MANAGER purl pkg:deb/debian/$library@${version_of_library//+/%2B}?arch=source"
        echo "Relationship: SPDXRef-ZebekSuite $2 SPDXRef-$library"
    done
}
