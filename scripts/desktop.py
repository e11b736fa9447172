"""A screen of its own with a window manager, a user at it with keys and mouse, and what the program
there tells of its controls (accessibility): for scripts that drive the real windows.

Needs Xvfb, openbox, xdotool, xclip, dbus-daemon, AT-SPI with its Python bindings, for pictures
ImageMagick.
"""

import functools
import os
import shutil
import signal
import subprocess
import sys
import time

LIMIT = 15.0  # seconds that anything may take to appear
LOOK = 0.05
NEEDED = ("Xvfb", "openbox", "xdotool", "xclip", "dbus-daemon", "/usr/libexec/at-spi-bus-launcher")


class Failure(Exception):
    pass


def missing():
    """What has to be installed still, for the eyes of the user."""
    names = [name for name in NEEDED if not shutil.which(name)]
    try:
        import gi
        gi.require_version("Atspi", "2.0")
    except (ImportError, ValueError):
        names.append("the Python bindings of AT-SPI")
    return names


def end_in_order():
    """A script that is told to end stops its programs first."""
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(1))


def wait_for(what, probe, limit=LIMIT):
    """Calls probe until it gives something true, and gives that."""
    end = time.monotonic() + limit
    while True:
        found = probe()
        if found:
            return found
        if time.monotonic() > end:
            raise Failure(f"waited {limit:.0f} s in vain for {what}")
        time.sleep(LOOK)


def unless_it_vanishes(look):
    """What goes away while it is looked at was not to be found."""
    @functools.wraps(look)
    def looked(*arguments, **options):
        from gi.repository import GLib
        try:
            return look(*arguments, **options)
        except GLib.Error:
            return None
    return looked


class Control:
    """One control as the program describes it to a screen reader."""

    def __init__(self, accessible, scale):
        self.accessible = accessible
        self.scale = scale

    @property
    def name(self):
        return self.accessible.get_name() or ""

    @property
    def role(self):
        return self.accessible.get_role_name()

    def has(self, state):
        from gi.repository import Atspi
        return self.accessible.get_state_set().contains(getattr(Atspi.StateType, state.upper()))

    @property
    def text(self):
        """What stands in a line of text or a cell; of other controls the name."""
        from gi.repository import Atspi
        line = self.accessible.get_text_iface()
        return Atspi.Text.get_text(line, 0, -1) if line else self.name

    @property
    def place(self):
        """x, y, width and height in the pixels of the screen."""
        from gi.repository import Atspi
        at = self.accessible.get_extents(Atspi.CoordType.SCREEN)
        return tuple(round(value * self.scale) for value in (at.x, at.y, at.width, at.height))

    def children(self):
        for index in range(self.accessible.get_child_count()):
            child = self.accessible.get_child_at_index(index)
            if child:
                yield Control(child, self.scale)

    def all(self, into_tables=False):
        """What is to be seen within this control, outer ones first; closed menus and lists hold
        nothing to be seen."""
        waiting = [self]
        while waiting:
            control = waiting.pop(0)
            yield control
            if control.role in ("combo box", "popup menu"):
                continue
            if control.role == "table" and not into_tables:
                continue
            waiting += [child for child in control.children() if child.has("showing")]


class Desktop:
    def __init__(self, size, scale=1.0):
        self.size = size
        self.scale = scale
        self.processes = []
        try:
            self.open(size)
        except BaseException:
            self.close()
            raise

    def open(self, size):
        """The server stays when a client leaves, and repeats no key that is let go of late."""
        read, write = os.pipe()
        self.start(["Xvfb", "-displayfd", str(write), "-screen", "0", f"{size[0]}x{size[1]}x24",
                    "-nolisten", "tcp", "-noreset", "-r"], None, pass_fds=[write])
        os.close(write)
        with os.fdopen(read) as numbers:
            number = numbers.readline().strip()
        if not number:
            raise Failure("Xvfb does not start")
        self.environment = dict(os.environ, DISPLAY=f":{number}")
        for name in ("WAYLAND_DISPLAY", "AT_SPI_BUS_ADDRESS"):
            self.environment.pop(name, None)
        self.start_bus()
        self.start(["openbox"], self.environment)
        wait_for("the window manager",
                 lambda: self.run("xdotool", "get_num_desktops").returncode == 0)

    def start(self, words, environment, **options):
        options.setdefault("stdout", subprocess.DEVNULL)
        process = subprocess.Popen(words, env=environment, stderr=subprocess.DEVNULL, **options)
        self.processes.append(process)
        return process

    def start_bus(self):
        """A message bus of this screen's own: the user's is left alone."""
        bus = self.start(["dbus-daemon", "--session", "--nofork", "--nopidfile",
                          "--print-address=1"], self.environment, stdout=subprocess.PIPE, text=True)
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = bus.stdout.readline().strip()
        self.start(["/usr/libexec/at-spi-bus-launcher", "--launch-immediately"], self.environment)
        # The library looks for the bus where this process has it.
        for name in ("DBUS_SESSION_BUS_ADDRESS", "DISPLAY"):
            os.environ[name] = self.environment[name]
        os.environ.pop("AT_SPI_BUS_ADDRESS", None)

    def run(self, *words, **options):
        return subprocess.run(words, env=self.environment, capture_output=True, text=True,
                              timeout=LIMIT, **options)

    def close(self):
        for process in reversed(self.processes):
            process.terminate()
            process.wait()

    # ---- windows

    def windows(self, title):
        """The visible windows with that title, a regular expression."""
        return self.run("xdotool", "search", "--onlyvisible", "--name", title).stdout.split()

    def active(self):
        return self.run("xdotool", "getactivewindow").stdout.strip()

    def window(self, title, limit=LIMIT):
        """Waits until such a window has the keyboard."""
        def probe():
            active = self.active()
            return active if active and active in self.windows(title) else None
        found = wait_for(f"the window {title!r}", probe, limit)
        self.settle()
        return found

    def gone(self, title):
        wait_for(f"the window {title!r} to close", lambda: not self.windows(title))

    def settle(self):
        """A key that comes before a window has its focus is lost; no event tells."""
        time.sleep(0.15)

    # ---- keys and mouse

    def keys(self, *names):
        self.run("xdotool", "key", "--clearmodifiers", "--delay", "40", *names)
        time.sleep(0.03)

    def type(self, text):
        self.run("xdotool", "type", "--delay", "4", "--", text)

    def point(self, control):
        left, top, width, height = control.place
        self.run("xdotool", "mousemove", str(left + width // 2), str(top + height // 2))

    def click(self, control):
        self.point(control)
        self.run("xdotool", "click", "1")
        time.sleep(0.08)

    def hold(self, control):
        self.point(control)
        self.run("xdotool", "mousedown", "1")

    def let_go(self):
        self.run("xdotool", "mouseup", "1")

    # ---- controls

    @unless_it_vanishes
    def program(self, name):
        """The program of that name as the root of its controls; None while it is not there."""
        import gi
        gi.require_version("Atspi", "2.0")
        from gi.repository import Atspi
        screen = Atspi.get_desktop(0)
        for index in range(screen.get_child_count()):
            program = screen.get_child_at_index(index)
            if program and program.get_name() == name:
                # What was true a moment ago may be wrong by now.
                program.set_cache_mask(Atspi.Cache.NONE)
                return Control(program, self.scale)
        return None

    # ---- pictures and the clipboard

    def picture(self, path, window="root", place=None, part=None):
        """Of a window, or of a place on the screen; `part` is cut out of it, as ImageMagick
        writes it."""
        time.sleep(0.3)
        self.run("import", "-window", window, str(path))
        crops = []
        if place:
            crops += ["-crop", "{2}x{3}+{0}+{1}".format(*place), "+repage"]
        if part:
            crops += ["-crop", part, "+repage"]
        # The windows have few colours: a palette makes the file a fifth.
        self.run("convert", str(path), *crops, "-strip", "+dither", "-colors", "256", "-define",
                 "png:compression-level=9", f"PNG8:{path}")

    def clipboard(self):
        return self.run("xclip", "-o", "-selection", "clipboard").stdout

    def forget_clipboard(self):
        subprocess.run(["xclip", "-selection", "clipboard", "-i"], input=b"",
                       env=self.environment, stdout=subprocess.DEVNULL,
                       stderr=subprocess.DEVNULL, timeout=LIMIT)
