"""What the figures were measured with: the machine, the compiler, the peers."""

import os
import platform
import re
import subprocess
from pathlib import Path

_PEERS = {  # name: the Debian package that holds its code
    "glibc": "libc6",
    "Boost": "libboost-dev",
    "libdfp": "libdfp1",
    "Intel decimal library": "libintelrdfpmath-dev",
    "fmt": "libfmt-dev",
    "Abseil": "libabsl20220623",
    "cctz": "libcctz2",
    "date": "libhowardhinnant-date-dev",
    "ICU": "libicu72",
    "SQLite": "libsqlite3-0",
    "Google Benchmark": "libbenchmark-dev",
}


def _output(*command):
    try:
        return subprocess.run(command, check=True, capture_output=True, text=True).stdout.strip()
    except (OSError, subprocess.CalledProcessError):
        return ""


def _processor():
    model = re.search(r"^model name\s*: (.*)", Path("/proc/cpuinfo").read_text(), re.MULTILINE)
    memory = re.search(r"^MemTotal: *(\d+)", Path("/proc/meminfo").read_text(), re.MULTILINE)
    return (f"{model[1] if model else platform.machine()}, {len(os.sched_getaffinity(0))} processors, "
            f"{round(int(memory[1]) / 2**20)} GiB")


def _system():
    return f"{platform.freedesktop_os_release().get('PRETTY_NAME', '')}, Linux {platform.release()}"


def _compiler(build):
    cache = (build / "CMakeCache.txt").read_text()
    path = re.search(r"^CMAKE_CXX_COMPILER:\w+=(.*)", cache, re.MULTILINE)
    return _output(path[1], "--version").split("\n")[0] + ", release build"


def _versions():
    for name, package in _PEERS.items():
        version = _output("dpkg-query", "-W", "-f", "${Version}", package)
        if version:
            yield f"{name} {version}"


def facts(build):
    """(name, text) of each."""
    return [("Machine", _processor()), ("System", _system()), ("Compiler", _compiler(build)),
            ("Peers", ", ".join(_versions()))]
