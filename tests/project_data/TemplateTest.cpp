// The built template, read as the tools read a project.
#include <gtest/gtest.h>

#include "platform/Rx900Utils.h"
#include "project/data/ParameterCatalogue.h"
#include "project/data/Schema.h"
#include "support/DataWorld.h"

namespace velmoor {
namespace {

class TemplateTest : public testing::Test {
 protected:
  TemplateTest() : database_(OpenForReading(data_.MakeProject("line1.spj"))) {}

  std::string Parameter(std::string_view pn, std::string_view column) {
    const auto rows = database_->OpenTable(schema::Parameters::kTable);
    return rows->FindFirst("pn", pn) ? rows->Text(column) : "(none)";
  }

  DataWorld data_;
  std::unique_ptr<Database> database_;
};

TEST_F(TemplateTest, ValuesAreShownInUnitsAndKeptInCounts) {
  struct Case {
    const char* pn;
    const char* value;
    const char* controller;
  };
  constexpr Case kCases[] = {
      {"Pn000", "0000", "0000"},
      {"Pn103", "0", "0"},
      {"Pn202", "8192", "8192"},
      {"Pn203", "5000", "5000"},
      {"Pn800", "RS422 + Echoback (RS232 + Echoback)", "1"},
      {"Pn81B", "99999.999", "99999999"},
      {"Pn81C", "-99999.999", "-99999999"},
      {"Pn81E", "50.000", "3000"},
      {"Pn81F", "1000.000", "60"},
      {"Pn823", "no zero point return", "0"},
      {"Pn82D", "3", "3"},
      {"Pn82E", "0001", "0001"},
      {"Pn82F", "00000010", "00000010"},
      {"Pn830", "84227584", "84227584"},
      {"Pn834", "Normally open", "0"},
  };
  for (const Case& expected : kCases) {
    EXPECT_EQ(Parameter(expected.pn, "value"), expected.value) << expected.pn;
    EXPECT_EQ(Parameter(expected.pn, "ControllerValue"), expected.controller) << expected.pn;
    EXPECT_EQ(Parameter(expected.pn, "Dirty"), "0") << expected.pn;
  }
  const StandardRx900Utils utils;
  EXPECT_EQ(Parameter("Pn829", "value") + Parameter("Pn82A", "value"),
            utils.MechSystemChecksum(1, 1, 3, 5.0F, "0001"));
  EXPECT_EQ(Parameter("Pn82F", "Description"), "Machine measure, first half");
}

TEST_F(TemplateTest, HoldsEveryParameterOfTheCatalogueAndNoEmptyValue) {
  const std::string catalogue = data_.MakeCatalogue();
  for (const auto& row :
       ReadParameterDefinitions(catalogue, GetTableNames(catalogue).ParametersTable)) {
    const std::string value = Parameter(row.user_constant, "value");
    EXPECT_NE(value, "") << row.user_constant;
    EXPECT_NE(value, "(none)") << row.user_constant;
  }
}

TEST_F(TemplateTest, TablesAreBlankWithTheirNumbersAndBits) {
  const auto steps = database_->OpenTable("tblPosition", "ID");
  std::size_t count = 0;
  for (; !steps->AtEnd(); steps->MoveNext(), ++count) {
    EXPECT_EQ(steps->Text("ID"), std::to_string(count + 1));
    EXPECT_EQ(steps->Text("Index"), std::to_string(count));
    EXPECT_EQ(steps->Text("Label") + steps->Text("ControllerNext"), "");
    EXPECT_EQ(steps->Text("Dirty"), "0");
  }
  EXPECT_EQ(count, 128U);

  const auto zones = database_->OpenTable("tblZone", "Zone");
  ASSERT_TRUE(zones->FindFirst("Zone", "18"));
  EXPECT_EQ(zones->Text("POut0") + zones->Text("POut1") + zones->Text("POut2") +
                zones->Text("POut3") + zones->Text("POut4"),
            "01001");
  EXPECT_TRUE(zones->FindFirst("Zone", "31"));
  EXPECT_FALSE(zones->FindFirst("Zone", "32"));

  const auto jogs = database_->OpenTable("tblJog", "Jog");
  ASSERT_TRUE(jogs->FindFirst("Jog", "13"));
  EXPECT_EQ(jogs->Text("Jog0") + jogs->Text("Jog1") + jogs->Text("Jog2") + jogs->Text("Jog3"),
            "1011");
  EXPECT_TRUE(jogs->FindFirst("Jog", "15"));
  EXPECT_FALSE(jogs->FindFirst("Jog", "16"));

  const auto settings = database_->OpenTable("tblMisc");
  ASSERT_TRUE(settings->FindFirst("PropertyName", "testrunspeed"));
  EXPECT_EQ(settings->Text("value"), "10");
  ASSERT_TRUE(settings->FindFirst("PropertyName", "homing offset"));
  EXPECT_EQ(settings->Text("value"), "0");
}

}  // namespace
}  // namespace velmoor
