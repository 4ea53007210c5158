#!/usr/bin/python3
"""desktop_start.py [BUILD [RUNS]]: how long the program takes from its start to its first painted window, with the files
in memory and, as root, from the disk; and what it holds when idle, beside two other clients of Debian's packages (remmina,
x2goclient) where they are installed. All on one virtual screen, each start in a new home."""

import contextlib
import os
import pathlib
import re
import shutil
import signal
import statistics
import subprocess
import sys
import tempfile
import time

ROOT = pathlib.Path(__file__).resolve().parents[1]
BUILD = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else ROOT / "build/release"
RUNS = int(sys.argv[2]) if len(sys.argv) > 2 else 10
PATIENCE = 30
IDLE_SECONDS = 4

CLIENTS = {
    "orvane": [str(BUILD.resolve() / "src/orvane")],
    "remmina": ["remmina"],
    "x2goclient": ["x2goclient"],
}


def is_painted(environment):
    """Whether something with more than one colour is on the screen."""
    picture = subprocess.run(["xwd", "-root", "-silent"], env=environment, stdout=subprocess.PIPE).stdout
    header = int.from_bytes(picture[:4], "big") if picture else 0
    pixels = picture[header + 12 * 256:]  # behind the colour map
    return len(set(memoryview(pixels[: len(pixels) // 4 * 4]).cast("I")[::7])) > 8


def family(process):
    """The process and all that it started, by the environment that they have in common."""
    mark = (process / "environ").read_bytes()
    home = re.search(rb"HOME=[^\0]+", mark)[0]
    for entry in pathlib.Path("/proc").glob("[0-9]*"):
        with contextlib.suppress(OSError):
            if home in (entry / "environ").read_bytes():
                yield entry


def memory(process):
    """PSS and RSS in MiB."""
    sums = {"Pss": 0, "Rss": 0}
    for member in family(process):
        with contextlib.suppress(OSError):
            for name, value in re.findall(r"^(Pss|Rss):\s+(\d+) kB", (member / "smaps_rollup").read_text(), re.M):
                sums[name] += int(value)
    return sums["Pss"] / 1024, sums["Rss"] / 1024


def start(command, display, is_cold, is_idle_wanted):
    folder = pathlib.Path(tempfile.mkdtemp(prefix="orvane-bench-"))
    environment = {"PATH": os.environ["PATH"], "HOME": str(folder), "DISPLAY": display, "LANG": "C.UTF-8",
                   "XDG_RUNTIME_DIR": str(folder)}
    os.chmod(folder, 0o700)
    if is_cold:
        os.sync()
        pathlib.Path("/proc/sys/vm/drop_caches").write_text("3")
        # The measuring tool is not what is measured.
        subprocess.run(["xwd", "-root", "-silent"], env=environment, stdout=subprocess.DEVNULL)
    began = time.monotonic()
    process = subprocess.Popen(["dbus-run-session", "--", *command], env=environment, start_new_session=True,
                               stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    try:
        while not is_painted(environment):
            if time.monotonic() - began > PATIENCE or process.poll() is not None:
                return None
        took = time.monotonic() - began
        held = None
        if is_idle_wanted:
            time.sleep(IDLE_SECONDS)
            bus = pathlib.Path(f"/proc/{process.pid}")
            held = memory(bus)
        return took, held
    finally:
        for member in list(family(pathlib.Path(f"/proc/{process.pid}"))) if process.poll() is None else []:
            with contextlib.suppress(OSError):
                os.kill(int(member.name), signal.SIGKILL)
        process.wait()
        shutil.rmtree(folder, ignore_errors=True)


def main():
    read, write = os.pipe()
    server = subprocess.Popen(["Xvfb", "-displayfd", str(write), "-screen", "0", "1280x800x24", "-nolisten", "tcp"],
                              pass_fds=(write,), stderr=subprocess.DEVNULL)
    os.close(write)
    display = ":" + os.fdopen(read).readline().strip()
    can_be_cold = os.access("/proc/sys/vm/drop_caches", os.W_OK)
    try:
        rows = {}
        for name, command in CLIENTS.items():
            if shutil.which(command[0]) is None:
                print(f"{name} is not installed.")
                continue
            start(command, display, False, False)
            warm = [start(command, display, False, False) for _ in range(RUNS)]
            cold = [start(command, display, True, False) for _ in range(RUNS if can_be_cold else 0)]
            held = [start(command, display, False, True) for _ in range(3)]
            if None in warm + cold + held:
                print(f"{name} showed no window.")
                continue
            rows[name] = (statistics.median(took for took, _ in warm) * 1000,
                          statistics.median(took for took, _ in cold) * 1000 if cold else float("nan"),
                          statistics.median(memory[0] for _, memory in held),
                          statistics.median(memory[1] for _, memory in held))
        print(f"{'':12}{'warm ms':>10}{'cold ms':>10}{'PSS MiB':>10}{'RSS MiB':>10}   medians of {RUNS}, memory of 3")
        for name, row in rows.items():
            print(f"{name:12}" + "".join(f"{value:10.0f}" for value in row))
        for name, row in rows.items():
            if name != "orvane" and "orvane" in rows:
                ratios = "".join(f"{ours / theirs:10.2f}" for ours, theirs in zip(rows["orvane"], row))
                print(f"{'/ ' + name:12}{ratios}")
    finally:
        server.terminate()
        server.wait()


if __name__ == "__main__":
    main()
