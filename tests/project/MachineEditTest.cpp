#include "mechanics/MachineEdit.h"

#include "support/ProjectWorld.h"

namespace velmoor {
namespace {

class MachineUnderEdit : public ProjectWorld {
 protected:
  void SetUp() override {
    OpenNew("a.spj");
    edit.emplace(project().Parameters());
  }
  void Accept(const std::string& name, const std::string& text) {
    const MachineCheck check = edit->SetValue(name, text);
    EXPECT_TRUE(check.Accepted()) << name << "=" << text << ": " << check.words;
  }
  void Refuse(const std::string& name, const std::string& text, MachineCheck::Kind kind,
              const std::string& words) {
    const std::string before = edit->Value(name.c_str());
    const MachineCheck check = edit->SetValue(name, text);
    EXPECT_EQ(check.kind, kind) << name << "=" << text;
    EXPECT_EQ(check.words, words) << name << "=" << text;
    EXPECT_EQ(edit->Value(name.c_str()), before) << name;
  }

  std::optional<MachineEdit> edit;
};

using Kind = MachineCheck::Kind;

TEST_F(MachineUnderEdit, AWiderLeadMovesTheGearRatioAndNothingElseOfTheProject) {
  Accept("Pn82F.0", "10");
  EXPECT_EQ(edit->Value("Pn203"), "10000");
  EXPECT_EQ(edit->Value("Pn202"), "8192");
  EXPECT_EQ(edit->Value("Pn830"), "92616192");
  EXPECT_TRUE(edit->EGRDirty());
  EXPECT_FALSE(edit->ResolutionDirty());
  EXPECT_EQ(edit->CommitQuestion().substr(0, 41), "Electronic gear ratio has been changed!\r\r");
  EXPECT_EQ(project().MechanicalSystem().A_Value(), 5000) << "the machine changes at the commit";
}

TEST_F(MachineUnderEdit, RefusalsKeepTheOldValueOrAskForIt) {
  Refuse("Pn82B", "1.5", Kind::restore,
         "Value must be an integer!\rPrevious value will be restored!");
  Refuse("Pn82B", "0", Kind::ask,
         "The value 0 is out of the allowable range!\rValue must range from 1 to 32767.\rRestore "
         "previous value?");
  Refuse("Pn82F.0", "-5", Kind::restore,
         "Please enter a positive float value.\rPrevious value will be restored!");
  Refuse("Pn821", "x", Kind::restore, "Value must be numeric!\rPrevious value will be restored!");
  Refuse("Pn203", "7", Kind::restore,
         "The value Pn203 follows from the others!\rPrevious value will be restored!");
  EXPECT_FALSE(edit->IsDirty());
  EXPECT_FALSE(edit->EGRDirty());
}

TEST_F(MachineUnderEdit, AMachineThatIsNoneAsAWholeAsksAndKeepsOrTakesBackTheEdit) {
  const struct {
    const char* name;
    const char* text;
    const char* words;
  } kCases[] = {
      {"Pn82D", "6",
       "Selected resolution is out of range for described system.\rResolution for described system "
       "must be within the range from 2 to 5.\rRestore previous value?"},
      {"Pn82F.0", "1e-9",
       "A is less than 1.  A must be within the range from 1 to 65535.\rRestore previous value?"},
      {"Pn82E.0", "deg", "Selected system cannot have rotary units!\rRestore previous value?"}};
  for (const auto& entry : kCases) {
    SCOPED_TRACE(entry.name);
    const std::string before = edit->Value(entry.name);
    const MachineCheck check = edit->SetValue(entry.name, entry.text);
    EXPECT_EQ(check.kind, Kind::whole);
    EXPECT_EQ(check.words, entry.words);
    EXPECT_FALSE(edit->Figures().valid);
    EXPECT_TRUE(edit->SetValue("Pn82B", "2").Accepted()) << "asked once, not at each further cell";
    EXPECT_TRUE(edit->SetValue("Pn82B", "1").Accepted());
    edit.emplace(project().Parameters());
    (void)edit->SetValue(entry.name, entry.text);
    edit->TakeBack();
    EXPECT_EQ(edit->Value(entry.name), before);
    EXPECT_FALSE(edit->IsDirty());
  }
}

TEST_F(MachineUnderEdit, GoingThereAndBackIsNoChange) {
  for (const auto& [name, there, back] :
       {std::tuple{"Pn82D", "2", "3"}, {"Pn82F.0", "10", "5"}, {"Pn82E.1", "minutes", "seconds"}}) {
    const std::string speed = edit->Value("Pn81E");
    Accept(name, there);
    EXPECT_TRUE(edit->IsDirty()) << name;
    Accept(name, back);
    EXPECT_FALSE(edit->IsDirty()) << name;
    EXPECT_EQ(edit->CommitQuestion(), "") << name;
    EXPECT_EQ(edit->Value("Pn81E"), speed);
  }
}

TEST_F(MachineUnderEdit, ShownLimitsAreAcceptedInEveryUnit) {
  for (const char* const time : {"seconds", "minutes"}) {
    for (int digits = 2; digits <= 5; ++digits) {
      edit.emplace(project().Parameters());
      Accept("Pn82E.1", time);
      Accept("Pn82D", std::to_string(digits));
      for (const char* const name : {"Pn81E", "Pn81F", "Pn820", "Pn821", "Pn822"}) {
        Accept(name, edit->MinimumText(MachineEdit::FindRow(name)));
        Accept(name, edit->MaximumText(MachineEdit::FindRow(name)));
      }
      (void)edit->NewlyCorrected();
      EXPECT_EQ(edit->NewlyCorrected(), "") << "named once";
    }
  }
}

TEST_F(MachineUnderEdit, ResolutionAloneInformsAndReformats) {
  const std::string window = edit->Value("Pn821");
  Accept("Pn82D", "2");
  EXPECT_EQ(edit->Value("Pn821").size() + 1, window.size());
  EXPECT_EQ(edit->CommitQuestion(), "");
  EXPECT_EQ(edit->CommitInformation().substr(0, 40), "Programming resolution has been changed!");
  EXPECT_EQ(edit->Value("Pn82F.0"), "5.00");
  EXPECT_EQ(edit->Value("Pn203"), "500");
}

TEST_F(MachineUnderEdit, ResolutionAndSystemAskBeforeTheTablesAreLost) {
  ASSERT_TRUE(edit->SetSystem(4).Accepted());
  EXPECT_EQ(edit->CommitQuestion(), "") << "another system with the same ratio commits silently";
  Accept("Pn82D", "2");
  EXPECT_EQ(edit->CommitQuestion().substr(0, 64),
            "Programming resolution and mechanical system have been changed!\r");
}

TEST_F(MachineUnderEdit, ARotaryTableNeedsRotaryUnitsAndMovesTheTravelLimits) {
  ASSERT_TRUE(edit->SetSystem(3).Accepted());
  EXPECT_EQ(edit->Figures().reason, "Selected system cannot have linear units!");
  Accept("Pn82E.0", "deg");
  EXPECT_TRUE(edit->Figures().valid);
  Accept("Pn82F.0", "360");
  EXPECT_EQ(edit->Value("Pn82E"), "0304");
  EXPECT_EQ(edit->Text(MachineEdit::FindRow("Pn81E"), Column::unit), "deg/sec");
  ASSERT_TRUE(project().MechanicalSystem().Accept(*edit));
  EXPECT_EQ(project().Editor().GetParameterValue("Pn82E"), "") << "hidden from the editor";
  const clsHX7OverTravel& travel = project().OverTravel();
  EXPECT_EQ(travel.Text(travel.FindRow("Pn81A"), Column::value), "Rotary(Shortest Path)");
  EXPECT_EQ(travel.Text(travel.FindRow("Pn81B"), Column::value), "359.999");
  EXPECT_EQ(travel.Text(travel.FindRow("Pn81C"), Column::value), "0.000");
}

TEST_F(MachineUnderEdit, AnEncoderThatPushesTheResolutionOutOfItsRangeTakesTheHighLimit) {
  ASSERT_TRUE(edit->SetEncoder(0).Accepted());
  EXPECT_FALSE(edit->IsDirty()) << "the same encoder is no change";
  Accept("Pn82D", "2");
  // 8192 / 500 = 16.4 becomes 131072 / 500 = 262: above 100, so 3 digits or more.
  ASSERT_TRUE(edit->SetEncoder(2).Accepted());
  EXPECT_EQ(edit->Value("Pn82D"), "6");
  EXPECT_EQ(edit->Value("Pn82E.3"), "32768");
}

TEST_F(MachineUnderEdit, ValuesOutsideTheNewUnitsAreCorrectedAndNamed) {
  // 1666666 mm/s fit 99999999 counts; the same number of mm a minute does too, but not the reverse.
  Accept("Pn82E.1", "minutes");
  Accept("Pn81E", "90000000");
  Accept("Pn82E.1", "seconds");
  const std::string words = edit->NewlyCorrected();
  EXPECT_EQ(words,
            "The following properties were out of range and have been corrected:\rDefault "
            "Speed\r\rPlease check values before proceeding.");
  EXPECT_EQ(edit->NewlyCorrected(), "");
}

TEST_F(MachineUnderEdit, ACommitCarriesItsChecksumAndReadsBackFromTheAmplifier) {
  Accept("Pn82F.0", "12.7");
  Accept("Pn82B", "2");
  ASSERT_TRUE(project().MechanicalSystem().Accept(*edit));
  session.GoOnline();
  ASSERT_TRUE(project().DownloadAll());
  ASSERT_EQ(session.Helix7()->GoOnlineAfterRestart(), kSuccess);
  OpenNew("fresh.spj");
  ASSERT_TRUE(project().UploadParts({Tool::mechanicalSystem}) && project().CommitUpload());
  EXPECT_TRUE(world.boxes.shown.empty());
  EXPECT_EQ(project().MechanicalSystem().Description().machine.length, 12.7F);
  EXPECT_EQ(project().MechanicalSystem().Description().machine.n1, 2);
  EXPECT_EQ(project().MechanicalSystem().A_Value(), 25400);
}

}  // namespace
}  // namespace velmoor
