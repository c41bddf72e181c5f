"""Measures queries over shards: time, the coordinator's own processor time, and bytes on the wire (see scripts/bench-shards).

  measure.py PSQL HOME SHARDS ROUNDS

Prints a line an operation: its name, shards, milliseconds, milliseconds of the coordinator's processor, bytes from the shards.
"""

import os
import select
import socket
import statistics
import subprocess
import sys
import threading

QUERIES = [
    ("filter", "SELECT count(*) FROM sales WHERE amount BETWEEN number '5000' AND number '5001'"),
    ("sum by 12 groups", "SELECT section, dv_sum_merge(s) FROM (SELECT section, dv_sum_state(amount) AS s FROM sales "
                         "GROUP BY shard, section) AS p GROUP BY section"),
    ("sum by 1,000 groups", "SELECT g, dv_sum_merge(s) FROM (SELECT customer % 1000 AS g, dv_sum_state(amount) AS s "
                            "FROM sales GROUP BY shard, customer % 1000) AS p GROUP BY g"),
    ("sum by 20,000 groups", "SELECT customer, dv_sum_merge(s) FROM (SELECT customer, dv_sum_state(amount) AS s "
                             "FROM sales GROUP BY shard, customer) AS p GROUP BY customer"),
    ("the same by rows", "SELECT customer, sum(amount) FROM sales GROUP BY customer"),
    ("sort, first 100", "SELECT id, amount FROM sales ORDER BY amount DESC, id LIMIT 100"),
]


class Relay(threading.Thread):
    """Passes what comes to a shard's second socket on to its own, and counts the bytes that come back."""

    def __init__(self, folder, target):
        super().__init__(daemon=True)
        os.makedirs(folder, exist_ok=True)
        os.chmod(folder, 0o755)
        self.target, self.bytes = target, 0
        self.listener = socket.socket(socket.AF_UNIX)
        path = folder + "/.s.PGSQL.5432"
        if os.path.exists(path):
            os.unlink(path)
        self.listener.bind(path)
        os.chmod(path, 0o777)
        self.listener.listen()

    def run(self):
        while True:
            client, _ = self.listener.accept()
            threading.Thread(target=self.pass_on, args=(client,), daemon=True).start()

    def pass_on(self, client):
        server = socket.socket(socket.AF_UNIX)
        server.connect(self.target)
        while True:
            for source in select.select([client, server], [], [])[0]:
                data = source.recv(1 << 16)
                if not data:
                    client.close()
                    server.close()
                    return
                if source is server:
                    self.bytes += len(data)
                (client if source is server else server).sendall(data)


def psql(options, statements):
    program, home = options
    command = [program, "-X", "-q", "-A", "-t", "-v", "ON_ERROR_STOP=1", "-U", "postgres", "-d", "postgres",
               "-h", home + "/coordinator/socket"]
    return subprocess.run(command, input=statements, text=True, check=True, stdout=subprocess.PIPE).stdout


def timed(options, query, rounds):
    """Medians of time and of the coordinator's processor time, in milliseconds."""
    processor = "SELECT '@' || split_part(pg_read_file('/proc/self/schedstat'), ' ', 1);\n"
    lines = psql(options, "\\timing on\n" + query + ";\n" + (processor + query + ";\n" + processor) * rounds).splitlines()
    marks = [i for i, line in enumerate(lines) if line.startswith("@")]
    times, used = [], []
    for first, second in zip(marks[::2], marks[1::2]):
        times.append(next(float(line.split()[1]) for line in reversed(lines[first + 2:second]) if line.startswith("Time: ")))
        used.append((int(lines[second][1:]) - int(lines[first][1:])) / 1e6)
    return statistics.median(times), statistics.median(used)


def redirect(options, shards, folder):
    home = options[1]
    psql(options, "".join(f"ALTER SERVER shard{i} OPTIONS (SET host '{home}/{folder % i}');\n" for i in shards))


def main():
    program, home, count, rounds = sys.argv[1], sys.argv[2], int(sys.argv[3]), int(sys.argv[4])
    options, shards = (program, home), range(1, count + 1)
    relays = [Relay(f"{home}/relay{i}", f"{home}/shard{i}/socket/.s.PGSQL.5432") for i in shards]
    for relay in relays:
        relay.start()
    for name, query in QUERIES:
        time, processor = timed(options, query, rounds)
        redirect(options, shards, "relay%d")
        for relay in relays:
            relay.bytes = 0
        psql(options, query)
        redirect(options, shards, "shard%d/socket")
        print(f"{name}|{count}|{time:.1f}|{processor:.1f}|{sum(relay.bytes for relay in relays)}", flush=True)


if __name__ == "__main__":
    main()
