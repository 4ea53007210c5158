"""A private desktop for one run of the program: X server, window manager, session bus, keyring, accessibility, demo broker.

Everything lives in a folder of its own, and every process ends with it, whatever happens. The windows are found through
the accessibility bus, as a screen reader finds them, and used by the X server's keyboard and mouse, as a person does."""

import contextlib
import os
import pathlib
import re
import shutil
import signal
import socket
import subprocess
import sys
import tempfile
import threading
import time

PATIENCE = 30  # seconds until what must happen counts as failed; nothing takes this long

BUS_CONFIGURATION = """<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <listen>unix:tmpdir={folder}</listen>
  <servicedir>{folder}/services</servicedir>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/><allow eavesdrop="true"/><allow own="*"/>
  </policy>
</busconfig>
"""


def eventually(condition, what, patience=PATIENCE):
    """Waits until the condition gives something true, and returns that."""
    end = time.monotonic() + patience
    while True:
        result = condition()
        if result:
            return result
        if time.monotonic() > end:
            raise AssertionError(f"never: {what}")
        time.sleep(0.02)


class Desktop:
    """To be used once in a process, as the accessibility library keeps its bus."""

    def __init__(self, build, size="1280x800", tray=True, keyring=True, language="en_US.UTF-8", scale="1"):
        self.build = pathlib.Path(build).resolve()
        self.size, self.has_tray, self.has_keyring = size, tray, keyring
        self.language, self.scale = language, scale
        self.stack = contextlib.ExitStack()

    def __enter__(self):
        try:
            self._start()
        except BaseException:
            self.stack.close()
            raise
        return self

    def __exit__(self, *exception):
        if exception[0] is not None:
            with contextlib.suppress(Exception):
                self._tell_of_failure()
        self.stack.close()

    def _tell_of_failure(self):
        if kept := os.environ.get("ORVANE_GUI_FAILURES"):
            pathlib.Path(kept).mkdir(parents=True, exist_ok=True)
            self.screenshot(pathlib.Path(kept) / f"{int(time.time())}.png")
        print("on the screen:", *self.names(), sep="\n  ", file=sys.stderr)
        for log in sorted(self.folder.glob("*.log")):
            print(f"--- {log.name}\n{log.read_text(errors='replace')[-3000:]}", file=sys.stderr)

    def _start(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="orvane-gui-"))
        self.stack.callback(shutil.rmtree, self.folder, ignore_errors=True)
        self.stack.callback(self._end_strays)
        for name in ("home", "run", "services"):
            (self.folder / name).mkdir(mode=0o700)
        kept = ("PATH", "LD_LIBRARY_PATH", "ASAN_OPTIONS", "TSAN_OPTIONS", "UBSAN_OPTIONS")
        self.environment = {name: os.environ[name] for name in kept if name in os.environ} | {
            "HOME": str(self.folder / "home"),
            "XDG_RUNTIME_DIR": str(self.folder / "run"),
            "LANG": self.language,
            "QT_SCALE_FACTOR": self.scale,
            "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1",
            "ORVANE_DEMO_REGISTRY": self.folder.name,
            "NO_AT_BRIDGE": "0",
        }
        self._start_x()
        self._start_bus()
        self.run_beside("openbox", "openbox")
        if self.has_keyring:
            self._start_keyring()
        if self.has_tray:
            self.tray = self.run_beside("tray", sys.executable, pathlib.Path(__file__).with_name("tray.py"))
            eventually(lambda: (self.folder / "tray.log").read_text().startswith("ready"), "a status area")
        os.environ.update(self.environment)
        import gi

        gi.require_version("Atspi", "2.0")
        from gi.repository import Atspi

        self.atspi = Atspi
        Atspi.init()

    def _start_x(self):
        read, write = os.pipe()
        self.run_beside("x", "Xvfb", "-displayfd", str(write), "-screen", "0", f"{self.size}x24", "-nolisten", "tcp",
                        pass_fds=(write,))
        os.close(write)
        with os.fdopen(read) as pipe:
            self.environment["DISPLAY"] = ":" + pipe.readline().strip()

    def _start_bus(self):
        shutil.copy("/usr/share/dbus-1/services/org.a11y.Bus.service", self.folder / "services")
        configuration = self.folder / "bus.conf"
        configuration.write_text(BUS_CONFIGURATION.format(folder=self.folder))
        bus = self.run_beside("bus", "dbus-daemon", "--nofork", "--print-address", f"--config-file={configuration}")
        del bus
        log = self.folder / "bus.log"
        address = eventually(lambda: re.match(r"(unix:\S+)\n", log.read_text()), "a session bus")
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = address[1]

    def _start_keyring(self):
        # The end of the line is the keyring's password.
        subprocess.run(["gnome-keyring-daemon", "--unlock", "--components=secrets", "--daemonize"], input=b"\n",
                       env=self.environment, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=True)

    def run_beside(self, name, *command, **options):
        """Starts a process that ends with the desktop; its output goes to NAME.log."""
        with open(self.folder / f"{name}.log", "ab") as log:
            process = subprocess.Popen([str(word) for word in command], env=options.pop("env", self.environment),
                                       stdin=subprocess.DEVNULL, stdout=log, stderr=subprocess.STDOUT, **options)
        self.stack.callback(self._end, process)
        return process

    @staticmethod
    def _end(process):
        if process.poll() is None:
            process.terminate()
            try:
                process.wait(5)
            except subprocess.TimeoutExpired:
                process.kill()
                process.wait()

    def processes(self):
        """The processes of this desktop, with their command lines."""
        mark = f"HOME={self.folder}/home".encode()
        for entry in pathlib.Path("/proc").glob("[0-9]*"):
            with contextlib.suppress(OSError):
                if int(entry.name) != os.getpid() and mark in (entry / "environ").read_bytes().split(b"\0"):
                    yield int(entry.name), (entry / "cmdline").read_bytes().decode(errors="replace").split("\0")[:-1]

    def _end_strays(self):
        for process, _ in self.processes():
            with contextlib.suppress(OSError):
                os.kill(process, signal.SIGKILL)

    # The programs.

    def start(self, *arguments, **environment):
        self.program = self.run_beside("orvane", self.build / "src/orvane", *arguments,
                                       env=self.environment | environment)
        return self.program

    def run_again(self, *arguments):
        """A second start, which hands over to the first one."""
        return subprocess.run([self.build / "src/orvane", *arguments], env=self.environment, timeout=PATIENCE).returncode

    def start_broker(self, farm=None):
        """The address of a demo broker."""
        options = ["--farm", farm] if farm else []
        name = f"broker-{pathlib.Path(farm).stem}" if farm else "broker"
        log = self.folder / f"{name}.log"
        self.run_beside(name, self.build / "tools/demo-broker/demo-broker", "--http", "--quiet", *options)
        port = eventually(lambda: re.search(r"port: (\d+)\n", log.read_text()), "a demo broker")[1]
        return f"http://127.0.0.1:{port}"

    def start_deaf_broker(self):
        """The address of a server that takes connections, and never answers."""
        server = self.stack.enter_context(socket.create_server(("127.0.0.1", 0)))
        return f"http://127.0.0.1:{server.getsockname()[1]}"

    def sessions(self):
        """The command lines of the session programs that run."""
        return [command for _, command in self.processes() if "--ovl" in command]

    # The screen.

    def applications(self):
        root = self.atspi.get_desktop(0)
        for index in range(root.get_child_count()):
            child = root.get_child_at_index(index)
            if child is not None and child.get_process_id() == self.program.pid:
                yield child

    def everything(self):
        """What is showing, each before what it holds. A catalogue of thousands is not walked whole."""
        waiting = list(self.applications())
        while waiting:
            thing = waiting.pop(0)
            try:
                states = thing.get_state_set()
                count = min(thing.get_child_count(), 60)
                waiting = [child for child in map(thing.get_child_at_index, range(count)) if child] + waiting
                if states.contains(self.atspi.StateType.SHOWING):
                    yield thing
            except self._gone:
                continue

    @property
    def _gone(self):
        from gi.repository import GLib

        return (GLib.Error, AttributeError, TypeError)

    def find_all(self, role, name):
        pattern = re.compile(name)
        for thing in self.everything():
            with contextlib.suppress(*self._gone):
                if (role is None or thing.get_role_name() == role) and pattern.fullmatch(thing.get_name() or ""):
                    yield thing

    def find(self, role, name, patience=PATIENCE):
        """The first thing of this role whose name fits the regular expression as a whole."""
        return eventually(lambda: next(self.find_all(role, name), None), f"{role} {name!r}", patience)

    def wait_gone(self, role, name):
        eventually(lambda: next(self.find_all(role, name), None) is None, f"{role} {name!r} is gone")

    def find_enabled(self, role, name):
        def enabled():
            return next((thing for thing in self.find_all(role, name) if self.has_state(thing, "ENABLED")), None)

        return eventually(enabled, f"enabled {role} {name!r}")

    def has_state(self, thing, state):
        try:
            return thing.get_state_set().contains(getattr(self.atspi.StateType, state))
        except self._gone:
            return False

    def names(self):
        lines = []
        for thing in self.everything():
            with contextlib.suppress(*self._gone):
                if thing.get_name():
                    lines.append(f"{thing.get_role_name()}: {thing.get_name()}")
        return lines

    def text_of(self, thing):
        """What a field holds; nothing for what has no text."""
        if "Text" not in thing.get_interfaces():
            return ""
        return self.atspi.Text.get_text(thing, 0, -1)

    def place_of(self, thing):
        """Its rectangle on the screen, once that stays as it is: panels slide."""
        def settled():
            before = thing.get_extents(self.atspi.CoordType.SCREEN)
            time.sleep(0.05)
            after = thing.get_extents(self.atspi.CoordType.SCREEN)
            same = (before.x, before.y, before.width, before.height) == (after.x, after.y, after.width, after.height)
            # The toolkit tells places without its scale.
            for side in ("x", "y", "width", "height"):
                setattr(after, side, round(getattr(after, side) * float(self.scale)))
            return after if same and after.width > 0 else None

        return eventually(settled, "a place that stays")

    # The hands.

    def xdotool(self, *words):
        subprocess.run(["xdotool", *map(str, words)], env=self.environment, check=True, timeout=PATIENCE)

    def click(self, role, name, count=1, button=1):
        thing = self.find_enabled(role, name)
        if self.has_state(thing, "FOCUSABLE"):
            thing.grab_focus()  # what may take the focus is scrolled into view by it
        place = self.place_of(thing)
        self.xdotool("mousemove", place.x + place.width // 2, place.y + place.height // 2,
                     "click", "--repeat", count, "--delay", 50, button)

    def press(self, *keys):
        for key in keys:
            self.xdotool("key", key)

    def type(self, text):
        self.xdotool("type", "--delay", "8", text)

    def fill(self, name, text, role=None):
        """Clicks into the field, and types in place of what is there."""
        role = role or "text"
        self.click(role, name)
        eventually(lambda: any(self.has_state(field, "FOCUSED") for field in self.find_all(role, name)),
                   f"the focus in {name!r}")
        self.press("ctrl+a")
        self.type(text)

    def screenshot(self, file):
        subprocess.run(["import", "-window", "root", str(file)], env=self.environment, check=True)

    def pixel(self, x, y):
        words = ["convert", f"x:root[1x1+{x}+{y}]", "-depth", "8", "rgb:-"]
        return tuple(subprocess.run(words, env=self.environment, stdout=subprocess.PIPE, check=True).stdout)

    # Whole stretches of a day.

    def connect(self, address):
        """From the first page to the applications, behind the tutorial."""
        self.fill("E-mail or web address", address)
        self.press("Return")
        self.log_in("HAFENWERK\\demo", "demo")
        self.click("push button", "Skip")
        self.find_enabled("push button", "Log out")

    def log_in(self, user, password):
        self.fill("User name", user)
        self.fill("Password", password, role="password text")
        self.press("Return")
