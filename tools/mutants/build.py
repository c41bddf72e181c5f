"""Compiles and links what one planted fault changes, beside a build of the sources as they are.

The build is made once, by ninja, of a copy of the sources. A workshop then takes the commands of that build, runs those
that a changed file needs, on a copy of src/ of its own, and writes what they make into a folder of its own. Objects
and programs that a fault does not change are those of the build.
"""

import filecmp
import json
import os
import shlex
import shutil
import subprocess
from pathlib import Path

LIBRARIES = ("lib/libdvbase.so", "lib/libdvtypes.so")
EXTENSION = "lib/dvsqlite.so"
TESTS = {name: f"bin/{name}" for name in ("vectors_test", "dvtypes_test", "dvsqlite_test")}
_SUPPORT = "lib/libdvtest_support.a"


class CompilerRefuses(Exception):
    """The changed source does not compile. `is_noticed`: a static_assert failed."""

    def __init__(self, message):
        super().__init__(message)
        self.is_noticed = "static assertion failed" in message or "condition for static assertion" in message


def copy_sources(root, folder):
    """Makes `folder` the same as the project's files that git knows or would add; only files that differ are written."""
    listing = ["git", "ls-files", "-z", "--cached", "--others", "--exclude-standard"]
    names = subprocess.run(listing, cwd=root, check=True, capture_output=True).stdout.decode().split("\0")
    wanted = {name for name in names if name and (root / name).is_file()}
    for path in [p for p in folder.rglob("*") if p.is_file() and str(p.relative_to(folder)) not in wanted]:
        path.unlink()
    for name in wanted:
        target = folder / name
        if not target.exists() or not filecmp.cmp(root / name, target, shallow=False):
            target.parent.mkdir(parents=True, exist_ok=True)
            shutil.copy(root / name, target)


class Build:
    """The build of the sources as they are."""

    def __init__(self, root, folder):
        self.root, self.source, self.folder = root, folder / "source", folder / "build"
        self._commands = {}  # by object: how it is compiled
        self._links = {}  # by file: how it is linked
        self.users = {}  # by file below source/: the objects that it is compiled into

    def make(self):
        linker = "-fuse-ld=lld " if shutil.which("ld.lld") else ""
        flags = "-O1 -w " + f"-ffile-prefix-map={self.source}/="
        options = {
            "CMAKE_BUILD_TYPE": "Mutants", "CMAKE_CXX_FLAGS_MUTANTS": flags, "CMAKE_C_FLAGS_MUTANTS": flags,
            "CMAKE_LINK_DEPENDS_NO_SHARED": "ON", "DV_BUILD_BENCH": "OFF", "DV_BUILD_TESTS": "ON",
            "DV_BUILD_SQLITE": "ON", "DV_TZDATA_2011": self.root.parent / "shared" / "tz" / "tzdata-2011.zi",
            **{f"CMAKE_{kind}_LINKER_FLAGS": linker + "-Wl,--enable-new-dtags" for kind in ("EXE", "SHARED", "MODULE")},
        }
        configure = ["cmake", "-S", self.source, "-B", self.folder, "-G", "Ninja"]
        subprocess.run(configure + [f"-D{k}={v}" for k, v in options.items()], check=True, stdout=subprocess.DEVNULL)
        subprocess.run(["cmake", "--build", self.folder, "--target", "dvtypes", *TESTS], check=True)
        self._read_commands()

    def _ninja(self, *arguments):
        done = subprocess.run(["ninja", "-C", self.folder, *arguments], check=True, capture_output=True, text=True)
        return done.stdout.splitlines()

    def _read_commands(self):
        for entry in json.loads((self.folder / "compile_commands.json").read_text()):
            words = shlex.split(entry["command"])
            if Path(words[0]).name == "ccache":
                del words[0]
            self._commands[words[words.index("-o") + 1]] = words
        for name in (*LIBRARIES, EXTENSION, *TESTS.values(), _SUPPORT):
            path = os.path.relpath((self.folder / name).resolve(), self.folder)
            line = [line for line in self._ninja("-t", "commands", path) if path in line][-1]
            steps = line.split(" && ")
            self._links[name] = shlex.split(next(step for step in steps if path in step and ".o " in step + " "))
        for line in self._ninja("-t", "deps"):
            if not line.startswith(" "):
                unit = line.split(":")[0]
            elif line.strip():
                path = os.path.relpath(self.folder / line.strip(), self.source)
                self.users.setdefault(path, []).append(unit)

    def compile_command(self, unit):
        return self._commands[unit]

    def link_command(self, name):
        return self._links[name]

    def objects(self, name):
        found = [word for word in self._links[name] if word.endswith(".o")]
        return found + (self.objects(_SUPPORT) if name in TESTS.values() else [])


class Workshop:
    """Where one worker plants its faults: a copy of src/, the objects that differ from the build's, what is linked."""

    def __init__(self, build, folder):
        self.build, self.folder = build, folder
        self._made = {}  # by object: its changed form, or None where it is the same as the build's
        shutil.rmtree(folder, ignore_errors=True)
        (folder / "run").mkdir(parents=True)
        shutil.copytree(build.source / "src", folder / "src")

    def plant(self, fault, source):
        self._clear()
        (self.folder / "src" / fault.path).write_text(fault.planted_in(source))

    def restore(self, fault, source):
        (self.folder / "src" / fault.path).write_text(source)
        self._clear()

    def _clear(self):
        self._made = {}
        for name in ("objects", "lib", "bin"):
            shutil.rmtree(self.folder / name, ignore_errors=True)

    def _run(self, words, timeout=600):
        done = subprocess.run(words, cwd=self.build.folder, capture_output=True, text=True, timeout=timeout)
        if done.returncode != 0:
            raise CompilerRefuses(done.stderr)

    def _compile(self, unit):
        if unit in self._made:
            return
        made = self.folder / "objects" / unit
        made.parent.mkdir(parents=True, exist_ok=True)
        ours, theirs = f"{self.folder}/src/", f"{self.build.source}/src/"
        words = [word.replace(theirs, ours) for word in self.build.compile_command(unit)]
        words[words.index("-o") + 1] = str(made)
        words.insert(1, f"-ffile-prefix-map={self.folder}/=")
        self._run(words)
        same = filecmp.cmp(made, self.build.folder / unit, shallow=False)
        self._made[unit] = None if same else made

    def rebuild(self, path, names):
        """Makes anew those of the linked files `names` that the changed src/`path` changes; returns them."""
        users = set(self.build.users.get(f"src/{path}", ()))
        changed = []
        for name in names:
            units = [unit for unit in self.build.objects(name) if unit in users]
            for unit in units:
                self._compile(unit)
            if any(self._made[unit] for unit in units):
                self._link(name)
                changed.append(name)
        return changed

    def _link(self, name):
        made = self.folder / name
        made.parent.mkdir(parents=True, exist_ok=True)
        words = [str(self._made.get(word) or word) for word in self.build.link_command(name)]
        words[words.index("-o") + 1] = str(made)
        if name in TESTS.values():  # ahead of the archive, which is searched for the rest
            place = next(i for i, word in enumerate(words) if word.endswith(_SUPPORT))
            words[place:place] = [str(self._made[u]) for u in self.build.objects(_SUPPORT) if self._made.get(u)]
        self._run(words)
        if name in LIBRARIES:
            (made.parent / (made.name + ".1")).symlink_to(made.name)

    def program(self, name):
        ours = self.folder / TESTS[name]
        return ours if ours.exists() else self.build.folder / TESTS[name]

    def environment(self):
        libraries = f"{self.folder / 'lib'}:{self.build.folder / 'lib'}"
        extension = self.folder / EXTENSION
        found = {"LD_LIBRARY_PATH": libraries, "TMPDIR": str(self.folder / "run")}
        if extension.exists():
            found["DV_SQLITE_EXTENSION"] = str(extension)
        return found
