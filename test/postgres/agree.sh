#!/usr/bin/env bash
# What the manuals and test/sqlite/calls.sql say of SQLite holds here, too, but for what agree.py lists.

source "$(dirname "${BASH_SOURCE[0]}")/../../scripts/common.sh"
source "$ROOT/scripts/cluster.sh"
python3 -B "$ROOT/test/postgres/agree.py" "$cluster_bin/psql" "$cluster_home/check/socket" "$1"
