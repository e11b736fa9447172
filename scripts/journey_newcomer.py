"""The second part of scripts/journey: somebody who has never seen the program, has no guide and no
amplifier, and goes by what stands on the screen, from the first start without a file to a project
that is delivered to the simulated amplifier, watched and printed.

At every step: nothing is cut, the window is nowhere empty, and a cause has one box."""

import time

from desktop import Failure, unless_it_vanishes, wait_for
from session import Session

ROAD = "The road of the module"
READ = ("push button", "label", "text", "combo box", "check box", "radio button", "table",
        "toggle button")


class Newcomer(Session):
    def __init__(self, options, folder, desktop):
        self.project = folder / "first.spj"
        self.pictures = options.screenshots if desktop.scale == 1 else None
        super().__init__(desktop, folder, options.programs, bare=True)

    # ---- what is tested

    def look(self, top=None):
        """Nothing that is shown reaches out of its window, or of the screen."""
        for window in [top] if top else [t for t in self.root().children() if t.has("active")]:
            self.look_for_cuts(window)
            if top is None and window.name.startswith("Velmoor"):
                self.look_for_emptiness(window)

    @unless_it_vanishes
    def look_for_cuts(self, window):
        left, top, width, height = window.place
        right, bottom = min(left + width, self.desktop.size[0]), min(top + height, self.desktop.size[1])
        waiting = [window]
        while waiting:
            control = waiting.pop(0)
            if control.role in ("scroll pane", "table", "combo box", "popup menu", "menu bar"):
                continue
            if control.role in READ:
                x, y, w, h = control.place
                if w > 0 and (x < left - 1 or y < top - 1 or x + w > right + 1 or y + h > bottom + 1):
                    raise Failure(f"{control.role} {control.name!r} at {control.place} is cut by "
                                  f"{window.name!r} at {window.place}")
            waiting += [child for child in control.children() if child.has("showing")]

    def look_for_emptiness(self, window):
        """A page or a tool's window fills the main window."""
        @unless_it_vanishes
        def filled():
            return any(control.name in (ROAD, "Recent projects", "First steps") or
                       (control.role == "frame" and control.accessible != window.accessible)
                       for control in window.all())
        wait_for("something in the empty main window", filled)

    def box(self, words, answer="Return", limit=15.0):
        """One box for one cause: none comes straight behind another."""
        super().box(words, answer, limit)
        time.sleep(0.4)
        if self.box_in_front():
            raise Failure(f"behind the box {words!r} another one has come")

    def question(self, words):
        """What is agreed to here may be over at once, and tell so."""
        super().box(words)

    def picture(self, name):
        if self.pictures:
            self.desktop.settle()
            self.desktop.picture(self.pictures / f"newcomer-{name}.png")

    # ---- what stands on the screen

    @unless_it_vanishes
    def rows(self):
        """The road as it is told: number, step, purpose, state and what comes next."""
        table = self.find(ROAD, "table")
        cells = [cell for cell in table.children() if cell.role == "table cell"] if table else []
        return [cells[i:i + 5] for i in range(0, len(cells) - 4, 5)]

    def row(self, title):
        def probe():
            return next((row for row in self.rows() or () if row[1].name == title), None)
        return wait_for(f"the step {title!r} on the road", probe)

    def state(self, title, beginning):
        wait_for(f"{title!r} to be {beginning!r}",
                 lambda: self.row(title)[3].name.startswith(beginning))

    def take(self, title):
        """What the row offers as the next thing."""
        self.look()
        self.desktop.click(self.row(title)[4])
        time.sleep(0.3)

    def dialog(self, title):
        self.desktop.window(title)
        top = wait_for("the window's controls", lambda: next(
            (top for top in self.root().children() if top.has("active")), None))
        self.look(top)

    def put(self, table, description, text):
        self.desktop.click(self.value_cell(table, description))
        self.cell(text)

    def open_tool(self, step, title):
        self.take(step)
        child = self.child(title)
        self.look()
        return child

    # ---- the way

    def first_start(self):
        self.desktop.window("^Open Project$")
        self.desktop.keys("Escape")
        self.desktop.window("^Velmoor$")
        self.control("First steps")
        self.look()
        self.picture("start")

    def simulated_amplifier(self):
        self.press("Try the Simulated Amplifier...")
        self.box("communications established successfully!")
        self.choose_file("^New Project$", self.project)
        self.to_main()
        self.press("Indexer Setup")
        self.row("Index table")
        self.look()
        self.picture("road")

    def machine(self):
        self.take("Machine")
        self.dialog("^Mechanical System")
        self.put("Values of the mechanical system", "Lead", "10")
        self.put("Values of the mechanical system", "N2", "2")
        self.press("OK")
        self.box("Electronic gear ratio has been changed!")
        self.desktop.gone("^Mechanical System")
        self.state("Machine", "To download")

    def limits(self):
        child = self.open_tool("Limits", "Over Travel")
        self.put("Parameters", "Positive limit (mm)", "500")
        self.press("OK", within=child)
        self.child_gone("Over Travel")
        self.state("Limits", "To download")

    def inputs_and_homing(self):
        for step, title in (("Inputs and outputs", "Flexible"), ("Interface", "Interface"),
                            ("Homing", "Homing")):
            child = self.open_tool(step, title)
            self.press("OK", within=child)
            self.child_gone(title)

    def index_table(self):
        child = self.open_tool("Index table", "Index Table")
        for label in ("pick", "place"):  # the labels first: Next is a list of them
            self.cell(label)
        self.desktop.keys("Up", "Up")
        for texts, following in ((("A+40", "120", "ANNNN", "IT100", "1"), "place"),
                                 (("A+10", "80", "NNNNN", "IT250", "1"), "END")):
            self.desktop.keys("Right")
            for column, text in enumerate(texts):
                if column == 2:  # distance and speed of a registration stay as they are
                    self.desktop.keys("Right", "Right")
                self.cell(text, "Tab")
            self.choose(following)
            self.desktop.keys("Home", "Down", "Right")
        self.look()
        self.picture("index-table")
        self.press("OK", within=child)
        self.child_gone("Index Table")
        self.state("Index table", "To download")

    def zones_and_jog(self):
        child = self.open_tool("Zone table", "Zone Table")
        for text in ("35", "45"):
            self.cell(text, "Tab")
        self.press("OK", within=child)
        self.child_gone("Zone Table")
        child = self.open_tool("Jog table", "Jog Table")
        self.cell("5")
        self.press("OK", within=child)
        self.child_gone("Jog Table")

    def save(self):
        self.to_main()
        self.desktop.keys("ctrl+s")
        wait_for("the project to be saved", lambda: not self.desktop.windows(r"^Velmoor - .*\*"))

    def download(self):
        self.state("Connect", "Online")
        self.take("Download")
        self.question("will be downloaded to the controller.")
        self.box("complete!", limit=120)
        for step in ("Machine", "Limits", "Index table", "Zone table", "Jog table"):
            self.state(step, "Delivered")
        self.look()
        self.picture("delivered")

    def test_run(self):
        self.take("Test run")
        self.dialog("^Test Run")
        self.press("Enable Servo")
        self.box("Are you sure you want to enable the servo system?", "alt+y")
        button = self.control("Clockwise")
        wait_for("the button that moves", lambda: button.has("sensitive"))
        self.desktop.hold(button)
        time.sleep(1)
        self.picture("test-run")
        self.desktop.let_go()
        self.press("Exit")
        self.desktop.gone("^Test Run")

    def tune(self):
        self.take("Tune")
        self.dialog("^Gain Tuning")
        self.put("Parameters", "Speed loop gain", "60")
        self.press("Download")
        self.question("Existing gain tuning parameters in hardware will be overwritten!")
        self.box("complete!", limit=30)
        self.press("OK")
        self.desktop.gone("^Gain Tuning")
        self.state("Tune", "Delivered")

    def watch(self):
        child = self.open_tool("Watch", "Monitoring")
        for name in ("Current Position:", "Motor Speed:"):
            self.press(name, within=child)
        self.press("Begin Monitor", within=child)
        wait_for("live values", lambda: self.find("Stop Monitor", within=child).has("sensitive"))
        time.sleep(2)
        self.look()
        self.picture("watch")
        self.press("Stop Monitor", within=child)
        self.press("Exit", within=child)
        self.child_gone("Monitoring")

    def print_it(self):
        self.to_main()
        self.desktop.keys("ctrl+p")
        self.dialog("^Print Project")
        self.press("All")
        self.press("Save as PDF...")
        document = self.folder / "first.pdf"
        self.choose_file("^Save as PDF$", document)
        wait_for("the document", lambda: document.exists() and document.read_bytes()[:5] == b"%PDF-")
        self.desktop.window("^Print Project")
        self.desktop.keys("Escape")
        self.desktop.gone("^Print Project")

    def end(self):
        self.save()
        self.desktop.keys("ctrl+q")
        status = self.velmoor.wait(15)
        if status != 0:
            raise Failure(f"velmoor's exit status is {status}")

    STEPS = ("first_start", "simulated_amplifier", "machine", "limits", "inputs_and_homing",
             "index_table", "zones_and_jog", "save", "download", "test_run", "tune", "watch",
             "print_it", "end")
