"""Runs the examples of docs/postgres.md in one database, in their order (see manual.sh)."""

import difflib
import os
import pathlib
import re
import subprocess
import sys

PAGE = pathlib.Path(__file__).resolve().parents[2] / "docs/postgres.md"
EXAMPLE = re.compile(r"^```sql\n(.*?)^```\n```text\n(.*?)^```\n", re.MULTILINE | re.DOTALL)


def shown(database, statements):
    cluster = os.environ["cluster_home"] + "/check/socket"
    command = [os.environ["cluster_bin"] + "/psql", "-X", "-q", "-h", cluster, "-U", "postgres", "-d", database]
    done = subprocess.run(command, input=statements, text=True, stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
    return re.sub(r"^psql:<stdin>:\d+: ", "", done.stdout, flags=re.MULTILINE)


def main(database):
    page, faults, run = PAGE.read_text(), 0, 0

    def replace(match):
        nonlocal faults, run
        run += 1
        result = shown(database, match[1])
        if result != match[2]:
            faults += 1
            print("".join(difflib.unified_diff(match[2].splitlines(True), result.splitlines(True), "page", "psql")))
        return f"```sql\n{match[1]}```\n```text\n{result}```\n"

    updated = EXAMPLE.sub(replace, page)
    unrun = page.count("```sql\n") - run
    if os.environ.get("DV_UPDATE"):
        PAGE.write_text(updated)
        return 0
    if unrun:
        print(f"{unrun} blocks of SQL in {PAGE.name} have no block of text behind them")
    return 1 if faults or unrun or not run else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1]))
