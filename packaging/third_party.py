#!/usr/bin/env python3
"""Writes down what is inside the DLLs: a bill of materials (SPDX 2.3, JSON) and the licence texts.

    third_party.py VERSION STAMP SECONDS FILE... -- SBOM LICENCES

STAMP is the record of the third-party build, SECONDS the time to state (since 1970), FILEs what the bill covers, below SBOM's folder; SBOM is
the file to write, LICENCES the folder. The versions and texts are those of the packages that this machine built from. The system's own TLS
(Schannel) and cabinet library serve the DLL on Windows, so no other part is inside.
"""
import hashlib
import json
import os
import shutil
import subprocess
import sys
from datetime import datetime, timezone
from typing import NamedTuple


class Part(NamedTuple):
    name: str
    version: str
    licence: str  # SPDX
    home: str
    source: str  # the distribution's source package
    package: str  # the installed package that has the licence text
    purpose: str


def stamped_version(stamp, name):
    with open(stamp, encoding="utf-8") as lines:
        return next(line.split()[1] for line in lines if line.startswith(name + " "))


def installed_version(package):
    return subprocess.run(["dpkg-query", "-W", "-f", "${Version}", package], check=True, capture_output=True, text=True).stdout


def common_version(*packages):
    """Of packages that are made from one source, one for each platform."""
    versions = {installed_version(package) for package in packages}
    if len(versions) != 1:
        raise SystemExit(f"third_party: the versions of {', '.join(packages)} differ: {', '.join(sorted(versions))}")
    return versions.pop()


def parts(stamp):
    gcc = common_version("gcc-mingw-w64-i686-posix-runtime", "gcc-mingw-w64-x86-64-posix-runtime")
    mingw = common_version("mingw-w64-i686-dev", "mingw-w64-x86-64-dev")
    exception = "GPL-3.0-or-later WITH GCC-exception-3.1"
    return [
        Part("libxml2", stamped_version(stamp, "libxml2"), "MIT", "https://gitlab.gnome.org/GNOME/libxml2", "libxml2",
             "libxml2", "XML documents and XPath"),
        Part("libcurl", stamped_version(stamp, "curl"), "curl", "https://curl.se/", "curl", "libcurl4-openssl-dev",
             "HTTP; its TLS is the system's Schannel"),
        Part("mingw-w64 runtime", mingw, "ZPL-2.1", "https://www.mingw-w64.org/", "mingw-w64", "mingw-w64-i686-dev",
             "start-up code and C library supplements"),
        Part("winpthreads", mingw, "MIT AND BSD-3-Clause", "https://www.mingw-w64.org/", "mingw-w64", "mingw-w64-i686-dev",
             "threads"),
        Part("libstdc++", gcc, exception, "https://gcc.gnu.org/", "gcc-mingw-w64", "g++-mingw-w64-i686-posix",
             "C++ standard library"),
        Part("libgcc", gcc, exception, "https://gcc.gnu.org/", "gcc-mingw-w64", "g++-mingw-w64-i686-posix",
             "the compiler's run-time library"),
    ]


def spdx_id(kind, name):
    return f"SPDXRef-{kind}-" + "".join(c if c.isalnum() else "-" for c in name)


def described_part(part):
    return {
        "SPDXID": spdx_id("Package", part.name), "name": part.name, "versionInfo": part.version, "summary": part.purpose,
        "downloadLocation": part.home, "filesAnalyzed": False, "licenseConcluded": part.licence, "licenseDeclared": part.licence,
        "copyrightText": "NOASSERTION",
        "externalRefs": [{"referenceCategory": "PACKAGE-MANAGER", "referenceType": "purl",
                          "referenceLocator": f"pkg:deb/debian/{part.source}@{part.version.replace('+', '%2B')}?arch=source"}],
    }


def described_file(path, folder):
    with open(path, "rb") as file:
        content = file.read()
    name = os.path.relpath(path, folder)
    return {
        "SPDXID": spdx_id("File", name), "fileName": "./" + name,
        "checksums": [{"algorithm": name, "checksumValue": hashlib.new(name, content).hexdigest()} for name in ("SHA1", "SHA256")],
        "licenseConcluded": "NOASSERTION", "copyrightText": "NOASSERTION",
    }


def bill(version, seconds, files, folder, all_parts):
    product = "SPDXRef-Package-QuorvantisImage"
    described = [described_file(path, folder) for path in files]
    # The name space tells this document from every other one: by the files that it is about.
    digest = hashlib.sha256("".join(f["checksums"][1]["checksumValue"] for f in described).encode()).hexdigest()
    relationships = [("SPDXRef-DOCUMENT", "DESCRIBES", product)]
    relationships += [(product, "CONTAINS", f["SPDXID"]) for f in described]
    relationships += [(f["SPDXID"], "STATIC_LINK", spdx_id("Package", p.name))
                      for f in described if f["fileName"].endswith(".dll") for p in all_parts]
    return {
        "spdxVersion": "SPDX-2.3", "dataLicense": "CC0-1.0", "SPDXID": "SPDXRef-DOCUMENT", "name": f"QuorvantisImage-{version}",
        "documentNamespace": f"urn:quorvantisimage:sbom:{version}:{digest}",
        "creationInfo": {"created": datetime.fromtimestamp(seconds, timezone.utc).strftime("%Y-%m-%dT%H:%M:%SZ"),
                         "creators": ["Tool: QuorvantisImage-package"]},
        "packages": [
            {"SPDXID": product, "name": "QuorvantisImage", "versionInfo": version, "downloadLocation": "NOASSERTION",
             "filesAnalyzed": False, "licenseConcluded": "NOASSERTION", "licenseDeclared": "NOASSERTION",
             "copyrightText": "NOASSERTION"},
            *map(described_part, all_parts)],
        "files": described,
        "relationships": [{"spdxElementId": a, "relationshipType": how, "relatedSpdxElement": b} for a, how, b in relationships],
    }


def copy_licences(folder, all_parts):
    os.makedirs(folder)
    for part in {p.source: p for p in all_parts}.values():
        shutil.copyfile(f"/usr/share/doc/{part.package}/copyright", f"{folder}/{part.source}.txt")
    shutil.copyfile("/usr/share/common-licenses/GPL-3", f"{folder}/GPL-3.txt")


def main():
    end = sys.argv.index("--")
    version, stamp, seconds, *files = sys.argv[1:end]
    sbom, licences = sys.argv[end + 1:]
    all_parts = parts(stamp)
    with open(sbom, "w", encoding="utf-8") as file:
        json.dump(bill(version, int(seconds), files, os.path.dirname(sbom), all_parts), file, indent=2)
        file.write("\n")
    copy_licences(licences, all_parts)


if __name__ == "__main__":
    main()
