"""psql as a function, for the suites in Python. Arguments of each: psql, the server's socket, the database."""

import subprocess
import sys


class Session:
    def __init__(self):
        psql, socket, database = sys.argv[1:4]
        self.command = [psql, "-X", "-q", "-At", "-v", "ON_ERROR_STOP=1", "-h", socket, "-U", "postgres", "-d", database]

    def lines(self, script):
        """Runs a script, and gives the lines that it shows."""
        run = subprocess.run(self.command, input=script.encode(), stdout=subprocess.PIPE, check=True)
        return run.stdout.decode().split("\n")[:-1]


def literal(text):
    """A text as SQL."""
    return "'" + text.replace("'", "''") + "'"
