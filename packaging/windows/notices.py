"""What the release for Windows says of the code in it that is not ours, from the notices that
scripts/windows-libraries has kept.

    notices.py bill NOTICES     the packages that Qt holds, as SPDX
    notices.py texts NOTICES    everybody's copyright and licence
"""

import json
import pathlib
import re
import sys

# What is in Qt's sources and not in the program: for other systems, for modules and features that the
# build leaves out, or headers and data of the build alone.
LEFT_OUT = {
    "android-gradle-wrapper", "android-native-style", "cocoa-platform-plugin", "forkfd",
    "qeventdispatcher_cf", "xcb-xinput",
    "dejayvu", "vera_font",
    "cycle", "linuxperf", "valgrind",
    "libjpeg",
    "libdbus-1-headers", "opengl-es2-headers", "opengl-headers", "vulkan-xml-spec",
    "VulkanMemoryAllocator",
}

# Qt's names that SPDX does not know.
LICENCES = {None: "NOASSERTION", "ICC License": "NOASSERTION", "FTL or GPL-2.0": "FTL OR GPL-2.0-only"}

PACKAGE = """
PackageName: {name}
SPDXID: SPDXRef-qt-{id}{version}
PackageSupplier: NOASSERTION
PackageDownloadLocation: NOASSERTION
FilesAnalyzed: false
PackageLicenseConcluded: {licence}
PackageLicenseDeclared: {licence}
PackageCopyrightText: NOASSERTION
Relationship: SPDXRef-qt6-base CONTAINS SPDXRef-qt-{id}"""

MINGW = ("/usr/share/doc/gcc-mingw-w64-x86-64-posix-runtime/copyright",
         "/usr/share/doc/mingw-w64-x86-64-dev/copyright")


def held_by_qt(notices):
    """Each as Qt tells of it, with the folder that its licence's file is named from."""
    for path in sorted(notices.glob("qt/src/**/qt_attribution.json")):
        parts = json.loads(path.read_text(encoding="utf-8"), strict=False)
        for part in parts if isinstance(parts, list) else [parts]:
            if part["Id"] not in LEFT_OUT:
                yield path.parent, part


def bill(notices):
    for _, part in held_by_qt(notices):
        licence = part.get("LicenseId")
        licence = LICENCES.get(licence, licence)
        version = part.get("Version")
        print(PACKAGE.format(name=part["Name"], id=re.sub("[^A-Za-z0-9.-]", "-", part["Id"]),
                             version=f"\nPackageVersion: {version}" if version else "",
                             licence=f"({licence})" if re.search(" (AND|OR) ", licence) else licence))


def text(title, *paths, opening=""):
    print(f"\n\n{title}\n{'=' * len(title)}\n{opening}")
    for path in paths:
        print("\n" + path.read_text(encoding="utf-8", errors="replace").strip())


def texts(notices):
    licences = notices / "qt/LICENSES"
    text("Qt: GNU Lesser General Public License", licences / "LGPL-3.0-only.txt")
    text("Qt: GNU General Public License", licences / "GPL-3.0-only.txt")
    for folder, part in held_by_qt(notices):
        files = part.get("LicenseFiles") or [part["LicenseFile"]] if "LicenseFile" in part else []
        title = " ".join(filter(None, ("In Qt:", part["Name"], part.get("Version"))))
        text(title, *(folder / file for file in files),
             opening=f"{part['License']}\n{part.get('Copyright', '')}".strip())
    text("libxml2", notices / "libxml2/Copyright")
    for path in map(pathlib.Path, MINGW):
        text(f"Runtime libraries: {path.parent.name}", path)


if __name__ == "__main__":
    {"bill": bill, "texts": texts}[sys.argv[1]](pathlib.Path(sys.argv[2]))
