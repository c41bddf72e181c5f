#!/usr/bin/env bash
# The frozen vectors, through SQL.

source "$(dirname "${BASH_SOURCE[0]}")/../../scripts/common.sh"
source "$ROOT/scripts/cluster.sh"
python3 -B "$ROOT/test/postgres/vectors.py" "$cluster_bin/psql" "$cluster_home/check/socket" "$1"
