#!/usr/bin/env bash
# The examples of docs/postgres.md: what psql shows for each block of SQL is the block of text behind it.
#
#   DV_UPDATE=1   writes what psql shows into the page: read the diff then

set -euo pipefail
exec python3 "$(dirname "${BASH_SOURCE[0]}")/manual.py" "$1"
