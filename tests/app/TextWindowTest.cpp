// Projects as text, and two projects side by side, from the menu to the file.
#include <algorithm>

#include "AppSession.h"
#include "project/ProjectCompare.h"
#include "project/ProjectText.h"

namespace velmoor {
namespace {

using headless::HeadlessForm;

class TextWindow : public AppSession {
 protected:
  void SetUp() override {
    path = data.MakeProject("line1.spj");
    ASSERT_TRUE(Start(path));
    data.boxes.shown.clear();
  }
  std::string Write(const std::string& name, const std::string& text) {
    const std::string at = data.folder.At(name);
    data.files.WriteDurably(at, text);
    return at;
  }
  void Import(const std::string& text) {
    data.dialogs.answers.push_back(Write("in.toml", text));
    Main().Choose("mnuFileImportText");
  }
  std::string ValueOf(const std::string& strPn) {
    return Project().EditorService().GetParameterValue(strPn);
  }
  // Opens the comparison with that file, and acts in it.
  void Compare(const std::string& other, std::function<void(HeadlessForm&)> inside) {
    data.dialogs.answers.push_back(other);
    data.forms.OnShow("frmCompare", [inside](HeadlessForm& form) {
      inside(form);
      form.Press("cmdCancel");
    });
    Main().Choose("mnuFileCompare");
  }
  static Texts RowOf(HeadlessForm& form, int row) {
    Texts cells;
    const GridSource& source = *form.grid("vsFG").Source();
    for (int column = 0; column < source.Columns(); ++column) {
      cells.push_back(source.Text(row, column));
    }
    return cells;
  }
  static int RowsOf(HeadlessForm& form) { return form.grid("vsFG").Source()->Rows() - 1; }
};

TEST_F(TextWindow, GoesOutAndComesBackThroughTheMenu) {
  Import("[parameters]\nPn100 = 61\n");
  EXPECT_EQ(ValueOf("Pn100"), "61");
  EXPECT_TRUE(Project().NeedsSaving());
  EXPECT_EQ(Boxes(), Texts{"'in.toml' was taken into the project.\rTo download: All parameters"});
  for (const bool everything : {false, true}) {
    const std::string target = data.folder.At("out.toml");
    data.dialogs.answers.push_back(target);
    data.boxes.Expect("The project is written as text", BoxAnswer::ok,
                      [&] { data.boxes.tick->on = everything; });
    Main().Choose("mnuFileExportText");
    EXPECT_EQ(data.files.ReadAll(target),
              ExportText(Project(), everything ? TextScope::everything : TextScope::changed));
  }
  data.boxes.shown.clear();
  data.dialogs.answers.push_back(path);
  data.boxes.Expect("The project is written as text", BoxAnswer::ok);
  Main().Choose("mnuFileExportText");
  EXPECT_EQ(Boxes().back(), "The text would replace the project!");
}

TEST_F(TextWindow, IsRefusedWithFileAndLineAndChangesNothing) {
  data.forms.OnShow("frmResults", [](HeadlessForm& form) {
    EXPECT_EQ(RowOf(form, 1), Texts{"in.toml:3: Pn101 takes a whole number"});
    EXPECT_EQ(RowsOf(form), 2);
    EXPECT_TRUE(RowOf(form, 2).front().starts_with("in.toml:4: 'Pn999'")) << RowOf(form, 2).front();
    form.Press("cmdCancel");
  });
  Import("[parameters]\nPn100 = 61\nPn101 = \"x\"\nPn999 = 1\n");
  EXPECT_EQ(ValueOf("Pn100"), "40");
  EXPECT_FALSE(Project().NeedsSaving());
  EXPECT_EQ(Boxes(), Texts{});
}

// The same rows as between two files, and what is taken is typed, marked and given back.
TEST_F(TextWindow, StandsBesideTheProjectWhichTakesItsValues) {
  const std::string other = Write("other.toml",
                                  "[parameters]\nPn100 = 70\nPn81B = 12.5\n"
                                  "[jog]\n2 = { speed = 5.000 }\n");
  Compare(other, [this](HeadlessForm& form) {
    ASSERT_EQ(RowsOf(form), 3);
    EXPECT_EQ(RowOf(form, 1).front(), "Jog Table");
    int row = 1;
    while (RowOf(form, row)[1] != "Pn100") ++row;
    EXPECT_EQ(RowOf(form, row),
              (Texts{"Parameters", "Pn100", "ControllerValue", "40", "70", "Take"}));
    form.grid("vsFG").GoTo(row, 0);
    form.Press("cmdTake");
    EXPECT_EQ(ValueOf("Pn100"), "70");
    EXPECT_EQ(RowOf(form, row).at(3), "70");
    EXPECT_EQ(RowOf(form, row).back(), "Take Back");
    form.Press("cmdTake");
    EXPECT_EQ(ValueOf("Pn100"), "40");
    EXPECT_EQ(RowOf(form, row).back(), "Take");
    form.grid("vsFG").Select({1, 0, 3, 0});
    form.Press("cmdTake");
    EXPECT_EQ(form.label("lblSummary").Text(), "Values that differ.  none");
    form.Check("chkEqual", true);
    EXPECT_GT(RowsOf(form), 150);
  });
  EXPECT_EQ(ValueOf("Pn100"), "70");
  EXPECT_EQ(Project().Jog().Text(3, clsHX7Jog::speed), "5.000");
  EXPECT_EQ(Project().Jog().DirtyCell(3), "1");
  EXPECT_TRUE(Project().NeedsSaving());
  data.boxes.Expect("has not been saved yet.", BoxAnswer::no);
  Main().Choose("mnuFileClose");
  data.boxes.shown.clear();
}

// A machine is one; a value that nobody can type stays where it is.
TEST_F(TextWindow, TakesAMachineWholeAndRefusesWhatCannotBeTyped) {
  const std::string machine = Write("machine.toml", "[machine]\nmeasure = 5\nn1 = 2\nn2 = 3\n");
  Compare(machine, [](HeadlessForm& form) {
    int row = 1;
    while (RowOf(form, row).front() != "Mechanical System Parameters" && row < RowsOf(form)) ++row;
    form.grid("vsFG").GoTo(row, 0);
    form.Press("cmdTake");
  });
  EXPECT_EQ(Project().MechanicalSystem().Description().machine.n1, 2);
  data.boxes.shown.clear();
  data.dialogs.answers = {Write("bad.toml", "[parameters]\nPn100 = 3000\n")};
  data.forms.OnShow("frmResults", [](HeadlessForm& form) {
    EXPECT_TRUE(RowOf(form, 1).front().starts_with("bad.toml:2: ")) << RowOf(form, 1).front();
    form.Press("cmdCancel");
  });
  Main().Choose("mnuFileCompare");
  data.dialogs.answers = {Write("found.toml", "[as-found.parameters]\nPn100 = \"3000\"\n")};
  data.forms.OnShow("frmCompare", [](HeadlessForm& form) {
    int row = 1;
    while (RowOf(form, row)[1] != "Pn100") ++row;
    form.grid("vsFG").GoTo(row, 0);
    form.Press("cmdTake");
    form.Press("cmdCancel");
  });
  Main().Choose("mnuFileCompare");
  ASSERT_EQ(data.boxes.shown.size(), 1u);
  EXPECT_TRUE(data.boxes.shown[0].text.starts_with("The value cannot be taken!\rPn100: "))
      << data.boxes.shown[0].text;
  EXPECT_EQ(ValueOf("Pn100"), "40");
}

// Without a project two files are looked at, and nothing is taken.
TEST_F(TextWindow, ComparesTwoFilesWhereNoProjectIsOpen) {
  Main().Choose("mnuFileClose");
  data.dialogs.answers.push_back(data.MakeProject("a.spj"));
  Compare(Write("b.toml", "[parameters]\nPn100 = 70\n"), [](HeadlessForm& form) {
    EXPECT_EQ(RowOf(form, 0), (Texts{"Tool", "Row", "Item", "a.spj", "b.toml"}));
    EXPECT_EQ(RowOf(form, 1), (Texts{"Parameters", "Pn100", "ControllerValue", "40", "70"}));
    EXPECT_FALSE(form.button("cmdTake").Visible());
  });
  EXPECT_EQ(Boxes(), Texts{});
}

}  // namespace
}  // namespace velmoor
