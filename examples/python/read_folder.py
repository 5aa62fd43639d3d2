#!/usr/bin/env python3
"""Reads a folder of KDX files into one table, on as many machines as a Dask scheduler has.

    read_folder.py --scheduler tcp://HOST:8786 FOLDER > table.csv

One task reads a batch of files. The table has a line for each parameter, in no particular order:
file, path, name, value, and number and unit where the value is a number. What cannot be read goes
to the standard error, as FILE:LINE:COLUMN: MESSAGE, and makes the exit status 1. All machines must
see the folder under the same name. Without --scheduler, the cores of this machine do the work.
"""

import argparse
import csv
import pathlib
import sys

import kdx
from distributed import Client, as_completed

COLUMNS = ("file", "path", "name", "value", "number", "unit")


def rows_of(file):
    with open(file, "rb") as text:
        objects = kdx.load(text)
    for path, parameters in objects.items():
        for name, value in parameters.items():
            yield (file, path, name, value, *(kdx.number(value) or ("", "")))


def read_batch(files):
    """The rows of the files, and what failed as (file, line, column, message)."""
    rows, failures = [], []
    for file in files:
        try:
            rows += rows_of(file)
        except kdx.KDXDecodeError as error:
            failures.append((file, error.lineno, error.colno, error.msg))
        except OSError as error:
            failures.append((file, 1, 1, error.strerror))
    return rows, failures


def write_table(client, files, size):
    """Writes the table as the batches come in.

    @return whether all files could be read.
    """
    sys.stdout.reconfigure(errors="surrogateescape", newline="")
    table = csv.writer(sys.stdout)
    table.writerow(COLUMNS)
    batches = [files[begin : begin + size] for begin in range(0, len(files), size)]
    failed = False
    for done, (rows, failures) in as_completed(client.map(read_batch, batches), with_results=True):
        table.writerows(rows)
        for file, line, column, message in failures:
            print(f"{file}:{line}:{column}: {message}", file=sys.stderr)
        failed = failed or bool(failures)
        done.release()  # the workers need not keep what is written
    return not failed


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("folder", type=pathlib.Path)
    parser.add_argument("--scheduler", help="its address")
    parser.add_argument("--batch", type=int, default=100, help="files a task")
    arguments = parser.parse_args()
    files = sorted(map(str, arguments.folder.rglob("*.kdx")))
    with Client(arguments.scheduler) as client:
        return 0 if write_table(client, files, arguments.batch) else 1


if __name__ == "__main__":
    sys.exit(main())
