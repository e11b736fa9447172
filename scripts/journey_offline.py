"""The part of scripts/journey in which the project is written: the machine, the parameter windows and
the tables, each with one mistake that is put right."""

import time

from desktop import wait_for


class OfflineSteps:
    """For an Engineer of scripts/journey."""

    MACHINE = "Values of the mechanical system"

    def machine(self):
        self.menu("t", "m")
        window = self.desktop.window("^Mechanical System")
        self.put(self.MACHINE, "Lead", "10")
        self.put(self.MACHINE, "N2", "2")
        self.put(self.MACHINE, "Resolution", "9")
        self.box("out of range")
        self.expect("the resolution", self.value_cell(self.MACHINE, "Resolution").name, "3")
        self.picture("machine", window)
        self.press("OK")
        self.box("Electronic gear ratio has been changed!")
        self.desktop.gone("^Mechanical System")

    def interface(self):
        self.open_child("Interface", "t", "i", "i")
        self.choose("RS485")
        self.box("Existing version functions only with RS422 + Echoback (RS232 + Echoback)! "
                 "Value has been restored!")
        self.expect("the protocol", self.value_cell("Parameters", "Serial protocol").name,
                    "RS422 + Echoback (RS232 + Echoback)")
        self.close_child("Interface")

    def flexible_io(self):
        # Its values are all chosen from lists: there is no wrong one.
        self.open_child("Flexible", "t", "i", "f")
        self.desktop.click(self.value_cell("Parameters", "/DEC Input"))
        time.sleep(0.3)
        self.cell("Normally closed")
        self.close_child("Flexible")

    def homing(self):
        self.open_child("Homing", "t", "i", "h")
        self.cell("far")
        self.box("Value must be a float number in the range from -99999.999 and 99999.999. "
                 "Previous value has been restored!")
        self.desktop.keys("Escape", "Down")  # what was typed stays until it is given up
        self.choose("dec and c-phase")
        self.desktop.keys("Down", "Down")
        self.cell("8")  # approach speed
        self.expect("the approach speed",
                    self.value_cell("Parameters", "Homing approach speed (mm/sec)").name, "8.000")
        self.close_child("Homing")

    def over_travel(self):
        child = self.open_child("Over Travel", "t", "i", "o")
        self.desktop.keys("Down", "Down", "Down", "Down")
        self.cell("100000")  # positive limit
        self.box("The value 100000 is out of the allowable range! Value must range from -99999.999 to")
        self.cell("500")
        self.picture("over-travel", child=child)
        self.close_child("Over Travel")

    STEPS_OF_TABLE = (("pick", None, "120", None, None, "1", "place"),
                      ("place", "I+12.5", "80", "ANNNN", "T250", "3", "END"))

    def index_table(self):
        child = self.open_child("Index Table", "t", "i", "t")
        for step in self.STEPS_OF_TABLE:  # the labels first: Next is a list of them
            self.cell(step[0])
        self.desktop.keys("Up", "Up")
        for number, step in enumerate(self.STEPS_OF_TABLE):
            label, position, speed, outputs, event, loop, following = step
            for column, text in enumerate((position, speed, None, None, outputs, event, loop,
                                           following)):
                self.desktop.keys("Right")
                if number == 0 and column in self.CELL_DIALOGS:
                    self.CELL_DIALOGS[column](self)
                if number == 0 and column == 1:
                    self.cell("fast")
                    self.box("Speed value must be numeric! Previous value has been restored!")
                    self.child("Index Table")
                if column == 7:
                    self.choose(text)
                elif text:
                    self.cell(text, "Tab")
                    self.desktop.keys("Left")
            self.desktop.keys("Home", "Down", "Right")
        self.desktop.keys("alt+a")
        time.sleep(0.4)
        self.picture("index-table")
        self.desktop.keys("alt+o")
        self.child_gone("Index Table")

    def ask_position(self):
        self.desktop.keys("F9")
        self.desktop.window("^Position$")
        self.desktop.keys("alt+a", "alt+d", "ctrl+a")
        self.cell("far")
        self.box("numeric")
        self.desktop.window("^Position$")
        self.desktop.keys("alt+d", "ctrl+a")
        self.cell("40")
        self.desktop.gone("^Position$")
        self.child("Index Table")

    def ask_outputs(self):
        self.desktop.keys("F9")
        self.desktop.window("^Outputs$")
        for output in range(5):
            self.desktop.keys(f"alt+{output}")
            self.desktop.type("N")
        self.desktop.keys("alt+o")
        self.desktop.gone("^Outputs$")
        self.child("Index Table")

    def ask_event(self):
        self.desktop.keys("F9")
        self.desktop.window("^Event$")
        self.desktop.keys("alt+i", "alt+m", "ctrl+a")
        self.cell("-5")
        self.box("range")
        self.desktop.window("^Event$")
        self.desktop.keys("alt+m", "ctrl+a")
        self.cell("100")
        self.desktop.gone("^Event$")
        self.child("Index Table")

    CELL_DIALOGS = {0: ask_position, 4: ask_outputs, 5: ask_event}  # by column behind the label

    def zone_table(self):
        child = self.open_child("Zone Table", "t", "i", "z")
        for row in (("35", "45"), ("45", "110.5")):
            for text in row:
                self.cell(text, "Tab")
        self.cell("far")
        self.box("must be numeric! Previous value has been restored!")
        self.desktop.keys("Escape")
        self.picture("zone-table", child=child)
        self.close_child("Zone Table")

    def jog_table(self):
        child = self.open_child("Jog Table", "t", "i", "j")
        for text in ("1", "5", "20", "50"):
            self.cell(text)
        self.cell("-5")
        self.box("is out of range!")
        self.desktop.keys("Escape")
        self.picture("jog-table", child=child)
        self.close_child("Jog Table")

    def save(self):
        self.to_main()
        self.desktop.keys("ctrl+s")
        wait_for("the project to be saved", lambda: self.shown("index")[1].startswith("1,pick"))
        self.expect("the steps", self.shown("index")[1:3],
                    ["1,pick,A+40.000,120.000,-,1.000,NNNNN,IT100,1,place",
                     "2,place,I+12.500,80.000,-,1.000,ANNNN,T250,3,END"])
        self.expect("zones", self.shown("zone")[1:4], ["0,35.000,45.000", "1,45.000,110.500", "2,,"])
        self.expect("jog", self.shown("jog")[1:5], ["0,1.000", "1,5.000", "2,20.000", "3,50.000"])
        self.expect_lines("system", "measure,10,mm", "n2,2,", "resolution,3,", "A,10000,",
                          "B,16384,")

    def rescale(self):
        """A change that would rescale the tables is looked at, and given up."""
        self.menu("t", "m")
        self.desktop.window("^Mechanical System")
        self.put(self.MACHINE, "Resolution", "2")
        self.desktop.keys("alt+a")
        self.desktop.window("^What the Change Rescales")
        self.desktop.keys("Escape")
        self.box("Commit data change has been canceled.")
        self.desktop.window("^Mechanical System")
        self.desktop.keys("Escape")
        self.box("Modified values will be lost if changes are cancelled! "
                 "Do you wish to discard changes?", "alt+y")
        self.desktop.gone("^Mechanical System")
