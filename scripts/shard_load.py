"""Spreads the rows of a CSV stream over shards, by a hash of their key.

  shard_load.py --psql PSQL --sockets PATTERN --shards N [--batch ROWS] TABLE KEY [KEY...] <CSV

The rows go out in batches, each of them a transaction of its shard that also notes the batch in TABLE_batches. A batch is
the same rows for the same stream, so a load that was cut short is run again: batches that are noted are left out, and a
row whose key is there is no second one. The last lines tell what is where.
"""

import argparse
import csv
import io
import queue
import subprocess
import sys
import threading
import zlib


class Shard(threading.Thread):
    """Loads the batches of one shard, one after the other, each in a transaction."""

    def __init__(self, number, options, columns):
        super().__init__(daemon=True)
        self.number, self.options, self.columns = number, options, columns
        self.batches, self.fault, self.loaded, self.known = queue.Queue(maxsize=4), None, 0, set()
        table = options.table
        self.known = {int(line) for line in self.psql(f"SELECT batch FROM {table}_batches").split()}

    def psql(self, statements):
        command = [self.options.psql, "-X", "-q", "-A", "-t", "-v", "ON_ERROR_STOP=1", "-U", "postgres",
                   "-h", self.options.sockets % self.number, "-d", "postgres"]
        done = subprocess.run(command, input=statements, text=True, capture_output=True)
        if done.returncode != 0:
            raise RuntimeError(f"shard{self.number}: {done.stderr.strip()}")
        return done.stdout

    def load(self, batch, rows):
        table, columns = self.options.table, ", ".join(self.columns)
        text = io.StringIO()
        csv.writer(text, lineterminator="\n").writerows(rows)
        self.psql(f"BEGIN;\n"
                  f"CREATE TEMP TABLE arrived ON COMMIT DROP AS SELECT {columns} FROM {table} LIMIT 0;\n"
                  f"COPY arrived ({columns}) FROM STDIN (FORMAT csv);\n{text.getvalue()}\\.\n"
                  f"INSERT INTO {table} ({columns}) SELECT {columns} FROM arrived ON CONFLICT DO NOTHING;\n"
                  f"INSERT INTO {table}_batches VALUES ({batch}, {len(rows)});\n"
                  f"COMMIT;\n")
        self.loaded += len(rows)

    def run(self):
        while (item := self.batches.get()) is not None:
            try:
                if self.fault is None:
                    self.load(*item)
            except RuntimeError as fault:
                self.fault = fault


def spread(rows, key_places, shards, size):
    """Hands out rows to the shards, in numbered batches."""
    filled, numbers = [[] for _ in shards], [0] * len(shards)

    def send(i):
        shard, batch = shards[i], numbers[i]
        numbers[i] += 1
        if batch not in shard.known:
            shard.batches.put((batch, filled[i]))
        filled[i] = []

    for row in rows:
        key = "\0".join(row[place] for place in key_places)
        i = zlib.crc32(key.encode()) % len(shards)
        filled[i].append(row)
        if len(filled[i]) == size:
            send(i)
    for i, rest in enumerate(filled):
        if rest:
            send(i)


def report(shards):
    for shard in shards:
        rows, batches = shard.psql(f"SELECT count(*) FROM {shard.options.table};\n"
                                   f"SELECT count(*) FROM {shard.options.table}_batches").split()
        print(f"shard{shard.number}: {shard.loaded} rows loaded now; it has {rows} rows in {batches} batches")


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--psql", required=True)
    parser.add_argument("--sockets", required=True, help="folder of a shard's socket, with %%d for its number")
    parser.add_argument("--shards", type=int, required=True)
    parser.add_argument("--batch", type=int, default=10_000, help="rows of a transaction")
    parser.add_argument("table")
    parser.add_argument("key", nargs="+")
    options = parser.parse_args()
    rows = csv.reader(sys.stdin)
    columns = next(rows)
    shards = [Shard(number, options, columns) for number in range(1, options.shards + 1)]
    for shard in shards:
        shard.start()
    spread(rows, [columns.index(name) for name in options.key], shards, options.batch)
    for shard in shards:
        shard.batches.put(None)
    for shard in shards:
        shard.join()
    faults = [shard.fault for shard in shards if shard.fault]
    for fault in faults:
        print(fault, file=sys.stderr)
    if not faults:
        report(shards)
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
