"""The part of scripts/journey with the amplifier: connecting, transfers, motion, tuning, and the report
of what came of it, each with one mistake that is put right."""

import re
import time

from desktop import Failure, wait_for


class OnlineSteps:
    """For an Engineer of scripts/journey."""

    def communications(self):
        self.menu("t", "c")
        window = self.desktop.window("^Communications Settings")
        self.picture("communications", window)
        self.desktop.keys("alt+p", "Down", "alt+c")  # COM2, where nothing is
        self.box("Error establishing communications with hardware! "
                 "Please recheck connections and settings before retrying!")
        self.desktop.window("^Communications Settings")
        self.desktop.keys("alt+p", "Up", "alt+c")
        self.box("Settings changed and communications established successfully!")
        self.desktop.gone("^Communications Settings")

    def download(self):
        self.menu("t", "d", "a")
        self.box("All parameter and table data will be downloaded to the controller.")
        self.box("Download All complete!", limit=60)
        for parameter, value in (("202", "00016384"), ("80E", "00000001"), ("823", "00000001"),
                                 ("825", "00000480"), ("81B", "00500000"), ("800", "00000001")):
            self.expect(f"Pn{parameter} in the amplifier", self.simulator.value(parameter), value)
        self.picture("main-window")

    def axis(self, name):
        """A value of the axis, or the words behind "servo", as the simulator's console tells."""
        state = self.simulator.ask("state")
        return re.search(rf"^{name} (\S+)", state, re.MULTILINE).group(1).rstrip(",")

    def test_run(self):
        self.menu("t", "t")
        window = self.desktop.window("^Test Run")
        self.desktop.keys("alt+p", "ctrl+a")
        self.desktop.type("fast")
        self.desktop.keys("Tab")
        self.box("Non-numeric value entered! Previous value will be restored.")
        self.desktop.keys("alt+p", "ctrl+a")
        self.desktop.type("120")
        self.desktop.keys("Tab", "alt+s")
        self.box("Are you sure you want to enable the servo system?", "alt+y")
        wait_for("the servo", lambda: self.axis("servo") == "on")
        before = int(self.axis("PUN"))
        self.desktop.hold(self.control("Clockwise"))
        wait_for("the motor to turn", lambda: abs(int(self.axis("PUN")) - before) > 1000)
        self.picture("test-run", window)
        self.desktop.let_go()
        wait_for("the motor to stop", lambda: "stands" in self.simulator.ask("state"))
        self.desktop.keys("alt+x")
        self.desktop.gone("^Test Run")
        self.expect("the servo behind the test run", self.axis("servo"), "off")

    def monitoring(self):
        self.simulator.ask("send SVON")
        self.simulator.ask("send START")
        child = self.open_child("Monitoring", "t", "n")
        for name in ("Current Position:", "Current Motor Position:", "Motor Speed:",
                     "Machine Units"):
            self.press(name, within=child)
        self.simulator.tell("forget")
        self.press("Begin Monitor", within=child)
        wait_for("the values to be read",
                 lambda: int((re.search(r"^NFB (\d+)", self.simulator.ask("counts"), re.MULTILINE)
                              or [0, 0])[1]) >= 8)
        # The other tools on the line are refused meanwhile.
        self.menu("t", "e")
        self.box("Terminal Emulator can only be used when Monitoring is closed.")
        self.menu("t", "a")
        self.box("Product Information can only be viewed when "
                 "Monitoring and Terminal Emulator are closed.")
        wait_for("the programme's end", lambda: "program" not in self.simulator.ask("state"))
        self.control("77.500", within=child)
        self.picture("monitoring")
        self.press("Stop Monitor", within=child)
        self.press("Exit", within=child)
        self.child_gone("Monitoring")
        self.expect("the position behind the programme", self.axis("PUN"), "77500")

    def product_information(self):
        self.menu("t", "a")
        self.desktop.window("^Product Information")
        self.control("VKLM-04AE")
        self.desktop.keys("alt+x")
        self.desktop.gone("^Product Information")

    def home_position(self):
        self.menu("t", "h")
        self.desktop.window("^Home Position")
        for text, words in (("far", "Offset value must be numeric!"),
                            ("100000", "Offset value out of range!")):
            self.desktop.keys("ctrl+a")
            self.cell(text)
            self.box(words)
            self.desktop.window("^Home Position")
        self.desktop.keys("ctrl+a")
        self.cell("2.5")
        self.box("Caution! This action will set the home offset position! Do you wish to proceed?",
                 "alt+y")
        self.desktop.gone("^Home Position")
        self.expect("Pn81D in the amplifier", self.simulator.value("81D"), "00002500")

    def inertia_ratio(self):
        self.simulator.tell("set INERTIA 180")
        self.menu("t", "r")
        self.desktop.window("^Inertia Ratio")
        self.control("180")
        self.simulator.tell("fault device-error TUNESTORE")
        self.press("Store the identified ratio")
        self.box("Inertia Ratio failed to set!")
        self.desktop.window("^Inertia Ratio")
        self.press("Store the identified ratio")
        self.box("Inertia Ratio was set successfully!")
        self.desktop.keys("alt+x")
        self.desktop.gone("^Inertia Ratio")
        self.expect("Pn103 in the amplifier", self.simulator.value("103"), "00000180")

    def compare(self):
        """The amplifier holds another inertia ratio than the project now."""
        self.menu("t", "w")
        window = self.desktop.window("^Project and Hardware", 30)
        self.control("Values of both sides", "table")
        self.control("180", into_tables=True)
        self.desktop.keys("Escape")
        self.desktop.gone("^Project and Hardware")

    def tuning(self):
        self.menu("t", "g")
        window = self.desktop.window("^Gain Tuning")
        self.cell("0")  # speed loop gain
        self.box("The value 0 is out of the allowable range! Value must range from 1 to 2000.")
        self.desktop.window("^Gain Tuning")
        self.cell("60")  # the grid has the keyboard again
        self.put("Parameters", "Inertia ratio", "180")
        self.picture("tuning", window)
        self.desktop.keys("alt+d")
        self.box("Existing gain tuning parameters in hardware will be overwritten!")
        self.box("Download Tuning Parameters complete!", limit=30)
        self.expect("Pn100 in the amplifier", self.simulator.value("100"), "00000060")
        self.desktop.keys("alt+o")
        self.desktop.gone("^Gain Tuning")

    def editor(self):
        self.menu("t", "p")
        window = self.desktop.window("^Parameter Editor")
        self.picture("editor", window)
        self.cell("00G0")
        self.box("The value 00G0 contains non-hexadecimal characters! Please modify!")
        self.desktop.window("^Parameter Editor")
        self.expect("Pn000", self.value_cell("Parameters", "Direction and axis").name, "0000")
        self.desktop.keys("alt+i")
        self.desktop.type("Pn821")
        self.control("In Position Window (mm)", into_tables=True)
        self.press("OK")
        self.desktop.gone("^Parameter Editor")

    def terminal(self):
        self.menu("t", "e")
        self.box("Careless usage of Terminal Emulator may result in bodily harm")
        child = self.child("Terminal Emulator")
        for line in ("0PRM81B", "PRM81B", "0ALM"):
            self.desktop.type(line)
            self.desktop.keys("Return")
            time.sleep(0.4)
        self.picture("terminal", child=child)
        self.press("View", "menu item", child)
        self.desktop.keys("o")
        self.desktop.window("^Terminal Options")
        self.desktop.keys("Escape")
        self.desktop.gone("^Terminal Options")
        self.child("Terminal Emulator")
        self.desktop.type("EXIT")
        self.desktop.keys("Return")
        self.box("Do you wish to save session log before exiting?", "alt+y")
        log = self.folder / "session.log"
        self.choose_file("^Save Log As$", log)
        lines = wait_for("the log", lambda: log.exists() and log.read_text().splitlines())
        self.expect("the log", lines[:7], ["0PRM81B", "> 0PN81B=00500000", "PRM81B",
                                           "> *** ERROR WITH AXIS ADDRESS! ***",
                                           "> The address of the axis comes first: 0PRM81B", "0ALM",
                                           "> 0ALM INPOS"])

    def report(self):
        self.to_main()
        self.desktop.keys("ctrl+p")
        window = self.desktop.window("^Print Project")
        for name in ("Preview...", "Save as PDF..."):
            if self.control(name).has("sensitive"):
                raise Failure(f"{name} is offered, though nothing is ticked")
        self.desktop.keys("alt+a")
        time.sleep(0.4)  # the button that was pressed by its letter is down for a moment
        self.picture("print", window)
        self.desktop.keys("alt+d")
        self.choose_existing_file("^Save as PDF$", self.project)
        self.box("The report would overwrite the project!")
        pages = self.preview()
        self.desktop.keys("alt+d")
        document = self.folder / "line1.pdf"
        self.choose_file("^Save as PDF$", document)
        content = wait_for("the document", lambda: document.exists() and document.read_bytes())
        self.expect("the document's first bytes", content[:5], b"%PDF-")
        self.expect("the pages of document and preview",
                    len(re.findall(rb"/Type /Page\b", content)), pages)
        self.desktop.window("^Print Project")
        self.desktop.keys("Escape")
        self.desktop.gone("^Print Project")

    def choose_existing_file(self, title, path):
        dialog = self.desktop.window(title)
        self.desktop.keys("ctrl+a")
        self.desktop.type(str(path))
        self.desktop.keys("Return")
        wait_for("the question whether to replace", lambda: self.desktop.active() != dialog)
        self.desktop.settle()
        self.desktop.keys("alt+y")
        self.desktop.gone(title)

    def preview(self):
        """How many pages it tells."""
        self.desktop.window("^Print Project")
        self.desktop.keys("alt+v")
        self.desktop.window("^Print Preview")
        page = self.control("Page", "text")
        label = next(c for c in self.root().all() if re.fullmatch(r"of \d+", c.name))
        pages = int(label.name.split()[1])
        if pages < 11:
            raise Failure(f"the document has {pages} pages, fewer than sections")
        for text, wanted in ((str(pages + 1), "1"), ("2", "2")):
            self.desktop.click(page)
            self.desktop.keys("ctrl+a")
            self.cell(text)
            wait_for(f"the page {wanted} behind {text}", lambda: page.text == wanted)
        self.desktop.keys("Escape")
        self.desktop.gone("^Print Preview")
        self.desktop.window("^Print Project")
        return pages
