"""The real velmoor on a screen of its own before the real velmoor-simulator, and what a user does
with it: for scripts/journey and scripts/tour."""

import os
import pathlib
import subprocess
import time

from desktop import LIMIT, Failure, unless_it_vanishes, wait_for

ROOT = pathlib.Path(__file__).resolve().parent.parent
PROGRAMS = ROOT / "build/release/bin"


class Simulator:
    """velmoor-simulator behind a link, and its console."""

    def __init__(self, program, link, log, *options):
        self.log = log
        self.process = subprocess.Popen([program, "--link", link, *options], stdin=subprocess.PIPE,
                                        text=True, stdout=open(log, "w"), stderr=subprocess.STDOUT)
        wait_for("the simulator", lambda: os.path.lexists(link))

    def ask(self, command):
        before = len(self.log.read_text())
        self.tell(command)
        wait_for(f"the simulator's answer to {command!r}",
                 lambda: len(self.log.read_text()) > before)
        time.sleep(0.1)
        return self.log.read_text()[before:]

    def tell(self, command):
        """A command that has no answer."""
        self.process.stdin.write(command + "\n")
        self.process.stdin.flush()

    def value(self, parameter):
        """What the amplifier holds, asked as over the line."""
        return self.ask(f"send PRM{parameter}").split("=")[-1].strip().split()[0]

    def close(self):
        self.process.terminate()
        self.process.wait()


class Session:
    """Everything that a session writes is below `folder`. With `bare` it is a first start: no settings,
    and no amplifier but the one that the program offers."""

    def __init__(self, desktop, folder, programs, theme="light", settings="", arguments=(),
                 bare=False, simulated=()):
        self.desktop = desktop
        self.folder = folder
        self.programs = pathlib.Path(programs).resolve()
        self.boxes = 0
        (folder / "config/velmoor").mkdir(parents=True)
        (folder / "runtime").mkdir(mode=0o700)
        self.line = folder / "axis"
        if not bare:
            (folder / "config/velmoor/velmoor.ini").write_text(
                f"[Velmoor]\nCOM1={self.line}\nTheme={theme}\n{settings}")
        self.environment = dict(desktop.environment, XDG_CONFIG_HOME=str(folder / "config"),
                                XDG_STATE_HOME=str(folder / "state"),
                                XDG_RUNTIME_DIR=str(folder / "runtime"),
                                QT_SCALE_FACTOR=f"{desktop.scale:g}",
                                QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1")
        self.simulator = None if bare else Simulator(self.programs / "velmoor-simulator",
                                                     self.line, folder / "console", *simulated)
        try:
            self.velmoor = subprocess.Popen([self.programs / "velmoor", *arguments],
                                            env=self.environment, cwd=folder,
                                            stderr=open(folder / "velmoor.log", "w"))
        except OSError:
            self.end_simulator()
            raise

    def close(self):
        if self.velmoor.poll() is None:
            self.velmoor.kill()
            self.velmoor.wait()
        self.end_simulator()

    def end_simulator(self):
        if self.simulator:
            self.simulator.close()

    # ---- what is on the screen

    def root(self):
        return wait_for("velmoor's controls", lambda: self.desktop.program("velmoor"))

    @unless_it_vanishes
    def find(self, name, role=None, within=None, into_tables=False):
        """A control that is to be seen, by what it is called; None when there is none."""
        if within:
            tops = [within]
        else:
            # Of a window that blocks the others the controls come first.
            tops = sorted(self.root().children(), key=lambda top: not top.has("active"))
        for top in tops:
            if not top.has("showing"):
                continue
            for control in top.all(into_tables):
                if control.name == name and (role is None or control.role == role):
                    return control
        return None

    def control(self, name, role=None, within=None, into_tables=False, limit=LIMIT):
        return wait_for(f"the control {name!r}",
                        lambda: self.find(name, role, within, into_tables), limit)

    def press(self, name, role=None, within=None):
        """A click with the mouse on a control that no key leads to quickly."""
        self.desktop.click(self.control(name, role, within))

    def child(self, title, limit=LIMIT):
        """A window within the main one, once it is there."""
        @unless_it_vanishes
        def probe():
            for top in self.root().children():
                for control in top.all() if top.has("active") else ():
                    if control.role == "frame" and control.name.startswith(title) and \
                            control.accessible != top.accessible:
                        return control
            return None
        found = wait_for(f"the window {title!r}", probe, limit)
        time.sleep(0.3)  # until its grid has the keyboard: of a long one asking takes longer
        return found

    def child_gone(self, title):
        @unless_it_vanishes
        def probe():
            return not any(control.role == "frame" and control.name.startswith(title)
                           for top in self.root().children() for control in top.all())
        wait_for(f"the window {title!r} to close", probe)

    def value_cell(self, table, description):
        """The cell right of the one with that text."""
        @unless_it_vanishes
        def probe():
            grid = self.find(table, "table")
            cells = iter(grid.children() if grid else ())
            return next((next(cells) for cell in cells if cell.name == description), None)
        return wait_for(f"the row {description!r} of {table!r}", probe)

    @unless_it_vanishes
    def focus(self, within=None):
        """The control that has the keyboard; of a table its current cell."""
        tops = [within] if within else [t for t in self.root().children() if t.has("active")]
        for top in tops:
            for control in top.all():
                if control.role == "table":
                    cell = next((c for c in control.children() if c.has("focused")), None)
                    if cell or control.has("focused"):
                        return cell or control
                elif control.has("focused"):
                    return control
        return None

    # ---- what a user does

    def to_main(self):
        """Waits until the main window has the keyboard."""
        return self.desktop.window(f"^Velmoor - {self.project.stem}")

    def menu(self, *letters):
        """Alt and the first letter, then the letters of entries, one by one."""
        self.to_main()
        self.desktop.keys(f"alt+{letters[0]}")
        for letter in letters[1:]:
            time.sleep(0.2)
            self.desktop.keys(letter)
        time.sleep(0.1)

    def box(self, words, answer="Return", limit=LIMIT):
        """A box with those words somewhere comes up; its text is read, then the key is pressed."""
        window = wait_for(f"a box with {words!r}", self.box_in_front, limit)
        self.desktop.settle()
        self.desktop.keys("ctrl+c")
        text = wait_for("the box's text", self.desktop.clipboard)
        if words not in " ".join(text.split()):
            raise Failure(f"a box says {text!r} instead of {words!r}")
        self.boxes += 1
        self.desktop.keys(answer)
        wait_for("the box to close", lambda: window not in self.desktop.windows("^Velmoor$"))
        self.desktop.settle()
        self.desktop.forget_clipboard()

    def box_in_front(self):
        active = self.desktop.active()
        return active if active and active in self.desktop.windows("^Velmoor$") else None

    def cell(self, text, key="Return"):
        """Types into the selected cell and takes the value; the cursor goes down, or right by Tab."""
        self.desktop.type(text)
        self.desktop.keys(key)
        time.sleep(0.1)

    def choose(self, text):
        """Picks an item of the selected cell's list."""
        self.desktop.keys("F2")
        time.sleep(0.3)
        self.cell(text)

    def choose_file(self, title, path):
        self.desktop.window(title)
        self.desktop.keys("ctrl+a")
        self.desktop.type(str(path))
        self.desktop.keys("Return")
        self.desktop.gone(title)
