# Shared by the scripts: where the project is, and how missing Debian packages are installed.
# Sourced, not run.

set -euo pipefail
ROOT=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
export ROOT
cd "$ROOT"

say() { printf '\n== %s\n' "$*"; }

as_root() {
    if [ "$(id -u)" = 0 ]; then "$@"; else sudo "$@"; fi
}

# need_packages NAME...: installs those that are not installed.
need_packages() {
    local missing=() name
    for name in "$@"; do
        dpkg-query -W -f '${Status}' "$name" 2>/dev/null | grep -q 'ok installed' || missing+=("$name")
    done
    [ ${#missing[@]} -eq 0 ] && return
    say "Installing ${missing[*]}"
    as_root apt-get update -qq
    as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
}

# configure_bench [OPTION...]: the folder of the benchmarks, of scripts/bench and of scripts/counts.
configure_bench() {
    cmake -S . -B build/bench -G Ninja -DCMAKE_BUILD_TYPE=Release -DDV_WERROR=ON -DDV_BUILD_BENCH=ON \
        -DDV_BUILD_TESTS=OFF "$@" >/dev/null
}
