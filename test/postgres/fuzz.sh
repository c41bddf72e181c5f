#!/usr/bin/env bash
# Random and mutated texts and bytes.

source "$(dirname "${BASH_SOURCE[0]}")/../../scripts/common.sh"
source "$ROOT/scripts/cluster.sh"
python3 -B "$ROOT/test/postgres/fuzz.py" "$cluster_bin/psql" "$cluster_home/check/socket" "$1" "$cluster_home/fuzz"
