#!/usr/bin/env python3
"""Turns what the DLL writes when it registers itself (print_registry_entries) into what other ways to install need.

    describe_classes.py x86|x64 ENTRIES MANIFEST REGISTRY

ENTRIES is the list, made for a DLL at {folder}\\QuorvantisImage.dll. MANIFEST becomes the manifest of a registration-free
assembly; REGISTRY the same list for the Windows Installer, as an include file. A key that this script has no place for
in the manifest is an error: whoever adds one decides what it means without a registry.
"""
import re
import sys
from collections import defaultdict
from xml.sax.saxutils import quoteattr

DLL = "QuorvantisImage.dll"
ASSEMBLY = "QuorvantisImage.Classes"  # not the DLL's own name: the loader would look for the manifest inside the DLL
# Bits of OLEMISC by their names in manifests.
MISC_STATUS = """recomposeonresize onlyiconic insertnotreplace static cantlinkinside canlinkbyole1 islinkobject insideout
    activatewhenvisible renderingisdeviceindependent invisibleatruntime alwaysrun actslikebutton actslikelabel
    nouiactivate alignable simpleframe setclientsitefirst imemode ignoreactivatewhenvisible wantstomenumerge
    supportsmultilevelundo""".split()
# What only those read who search the registry.
REGISTRY_ONLY = re.compile(r"Version|Programmable|Control|MiscStatus|Implemented Categories\\.+")


def read_entries(path):
    with open(path, encoding="utf-8") as lines:
        return [tuple(line.rstrip("\r\n").split("\t")) for line in lines]


def by_object(entries, kind):
    """The values of each CLSID, interface or library: {id: {(subkey, name): value}}."""
    objects = defaultdict(dict)
    for key, name, value in entries:
        root, _, rest = key.partition("\\")
        if root == kind:
            object_id, _, subkey = rest.partition("\\")
            objects[object_id][subkey, name] = value
    return objects


def element(name, attributes, indent):
    return " " * indent + f"<{name} " + " ".join(f"{n}={quoteattr(v)}" for n, v in attributes.items()) + "/>"


def class_element(clsid, values):
    values = dict(values)
    attributes = {"clsid": clsid, "progid": values.pop(("ProgID", "")), "description": values.pop(("", "")),
                  "threadingModel": values.pop(("InprocServer32", "ThreadingModel")), "tlbid": values.pop(("TypeLib", ""))}
    del values["InprocServer32", ""]
    status = int(values.pop(("MiscStatus\\1", ""), "0"))
    if status:
        attributes["miscStatusContent"] = ",".join(n for bit, n in enumerate(MISC_STATUS) if status >> bit & 1)
    for subkey, name in values:
        if name or not REGISTRY_ONLY.fullmatch(subkey):
            raise SystemExit(f"describe_classes: what is CLSID\\{clsid}\\{subkey} {name} in a manifest?")
    return element("comClass", attributes, 8)


def library_element(library_id, values):
    version = next(subkey for subkey, name in values if subkey.count("\\") == 0)
    return element("typelib", {"tlbid": library_id, "version": version, "helpdir": ""}, 8)


def interface_element(interface_id, values):
    return element("comInterfaceExternalProxyStub", {
        "name": values["", ""], "iid": interface_id, "tlbid": values["TypeLib", ""],
        "proxyStubClsid32": values["ProxyStubClsid32", ""]}, 4)


def manifest(entries, architecture):
    # The version of the classes, not of the product: hosts name it, and a newer DLL must do for them.
    classes = [class_element(*item) for item in by_object(entries, "CLSID").items()]
    libraries = [library_element(*item) for item in by_object(entries, "TypeLib").items()]
    interfaces = [interface_element(*item) for item in by_object(entries, "Interface").items()]
    return "\n".join([
        '<?xml version="1.0" encoding="UTF-8" standalone="yes"?>',
        '<assembly xmlns="urn:schemas-microsoft-com:asm.v1" manifestVersion="1.0">',
        f'    <assemblyIdentity type="win32" name="{ASSEMBLY}" version="1.0.0.0" processorArchitecture="{architecture}"/>',
        f'    <file name="{DLL}">', *classes, *libraries, "    </file>", *interfaces, "</assembly>", ""])


def registry(entries):
    lines = ['<?xml version="1.0" encoding="UTF-8"?>', "<Include>"]
    for key, name, value in entries:
        attributes = {"Root": "HKLM", "Key": f"Software\\Classes\\{key}", "Name": name, "Type": "string",
                      # The installer's name of the folder ends in a backslash.
                      "Value": value.replace("{folder}\\", "[INSTALLDIR]").replace("{folder}", "[INSTALLDIR]")}
        lines.append(element("RegistryValue", {n: v for n, v in attributes.items() if n != "Name" or v}, 4))
    return "\n".join([*lines, "</Include>", ""])


def main():
    platform, entries_path, manifest_path, registry_path = sys.argv[1:]
    entries = read_entries(entries_path)
    architecture = {"x86": "x86", "x64": "amd64"}[platform]
    for path, text in ((manifest_path, manifest(entries, architecture)), (registry_path, registry(entries))):
        with open(path, "w", encoding="utf-8") as file:
            file.write(text)


if __name__ == "__main__":
    main()
