"""What the built shared library is made of: its size with and without the generated tables, its relocations."""

import re
import subprocess


def _text_size(path):
    """Code, constants and unwind tables: what is mapped and never written."""
    lines = subprocess.run(["size", path], check=True, capture_output=True, text=True).stdout.splitlines()
    return int(lines[1].split()[0])


def properties(build):
    library = build / "lib" / "libdvtypes.so"
    if not library.exists():
        return {}
    tables = sum(_text_size(path) for path in build.glob("src/**/tzgen/tables/*.o"))
    kinds = subprocess.run(["readelf", "-rW", library], check=True, capture_output=True, text=True).stdout
    found = re.findall(r"^[0-9a-f]+ +[0-9a-f]+ (R_\w+)", kinds, re.MULTILINE)
    relative, by_call = (sum(kind.endswith(end) for kind in found) for end in ("_RELATIVE", "_JUMP_SLOT"))
    return {
        "text_without_tables": (_text_size(library) - tables, "code and constants without the generated tables, bytes"),
        "tables": (tables, "generated tables, bytes"),
        "relocations_relative": (relative, "relocations by the load address alone"),
        "relocations_symbolic": (len(found) - relative - by_call, "relocations by the name of a symbol, while loading"),
        "relocations_call": (by_call, "relocations by name, of functions, when first called"),
    }
