"""The example for many files, with a scheduler and two workers in processes of their own."""

import contextlib
import csv
import pathlib
import subprocess
import sys

import pytest

pytest.importorskip("distributed")
PROGRAM = pathlib.Path(__file__).parents[2] / "examples" / "python" / "read_folder.py"


@contextlib.contextmanager
def process(name, *arguments):
    command = [sys.executable, "-m", f"distributed.cli.dask_{name}", *arguments, "--no-dashboard"]
    with subprocess.Popen(command, stderr=subprocess.DEVNULL) as started:
        try:
            yield
        finally:
            started.terminate()


@pytest.fixture
def scheduler(tmp_path):
    file = str(tmp_path / "scheduler.json")
    address = ("--scheduler-file", file)
    here = (*address, "--host", "127.0.0.1")
    worker = (*here, "--nthreads", "1", "--no-nanny", "--local-directory", str(tmp_path))
    with process("scheduler", *here, "--port", "0"):
        with process("worker", *worker), process("worker", *worker):
            from distributed import Client

            with Client(scheduler_file=file, set_as_default=False, timeout=60) as client:
                client.wait_for_workers(2, timeout=60)
                yield client.scheduler.address


def test_a_table_of_a_folder(scheduler, tmp_path):
    folder = tmp_path / "texts"
    folder.mkdir()
    for i in range(20):
        text = f"Sample: s{i}\n  Volume = {i}.5 [ml]\n  Note = \xff\nEND\n"
        (folder / f"{i:02}.kdx").write_bytes(text.encode("latin1"))
    (folder / "wrong.kdx").write_text("Sample: s\n  gain -> 1\nEND\n")
    (folder / "gone.kdx").symlink_to("nowhere")
    command = [sys.executable, PROGRAM, "--scheduler", scheduler, "--batch", "3", folder]
    run = subprocess.run(command, capture_output=True, text=True, errors="surrogateescape")
    found = sorted(line for line in run.stderr.splitlines() if line.startswith(str(folder)))
    assert found[0] == f"{folder}/gone.kdx:1:1: No such file or directory"
    assert found[1].startswith(f"{folder}/wrong.kdx:2:8: ") and run.returncode == 1
    rows = sorted(csv.reader(run.stdout.splitlines()))
    assert rows[1] == [f"{folder}/00.kdx", "/Sample:s0", "Volume", "0.5 [ml]", "0.5", "ml"]
    assert rows[0][3:] == ["\udcff", "", ""] and len(rows) == 41
