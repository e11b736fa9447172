#include <gtest/gtest.h>

#include "online/clsHX7Alarm.h"
#include "project/data/Schema.h"
#include "support/DataWorld.h"

namespace velmoor {
namespace {

class AlarmTest : public testing::Test {
 protected:
  void Read(const std::string& path) {
    alarm_.SetDatabasePath(path);
    alarm_.ReadFromDB();
  }
  // Definitions of a test's own: names with their keys, and displays with key and code.
  void ReadRows(const std::vector<std::vector<std::string>>& names,
                const std::vector<std::vector<std::string>>& displays) {
    const std::string path = data_.folder.At("alarms");
    const auto builder = data_.databases.Create(path, schema::kPassword);
    builder->CreateTable("alarmname", {{"alarm_name"}, {"alarm_name_id", true}});
    for (const auto& row : names) builder->Insert("alarmname", row);
    builder->CreateTable("VKLME_RX900_DispAl",
                         {{"alarm_name_id", true}, {"alarm_display"}, {"alarm_code"}});
    for (const auto& row : displays) builder->Insert("VKLME_RX900_DispAl", row);
    builder->Finish();
    Read(path);
  }

  DataWorld data_;
  clsHX7Alarm alarm_;
};

TEST_F(AlarmTest, BeforeReadingEveryLookupIsEmpty) {
  EXPECT_EQ(alarm_.GetAlarmName("A.10"), "");
  EXPECT_EQ(alarm_.GetErrorName("E210"), "");
  EXPECT_EQ(alarm_.GetAlarmCode("A.9F"), "");
  EXPECT_EQ(alarm_.GetAlarmCode("A.10"), "A.10") << "needs no table";
}

TEST_F(AlarmTest, TheCatalogueAnswersInAllForms) {
  Read(data_.MakeCatalogue());
  EXPECT_EQ(alarm_.GetAlarmName("A.10"), "Overcurrent");
  EXPECT_EQ(alarm_.GetAlarmName("RUN"), "Normal operation");
  EXPECT_EQ(alarm_.GetAlarmName("A.FF"), "");
  EXPECT_EQ(alarm_.GetErrorName("E210"), "Command, row or value refused");
  EXPECT_EQ(alarm_.GetErrorName("e210"), "Command, row or value refused");
  EXPECT_EQ(alarm_.GetErrorName("57872"), "") << "hexadecimal, though the table is decimal";
  EXPECT_EQ(alarm_.GetErrorName(""), "");
  EXPECT_EQ(alarm_.GetErrorPanelDisplay("57872"), "E210");
  EXPECT_EQ(alarm_.GetErrorPanelDisplay("E210"), "");
  EXPECT_EQ(alarm_.GetAlarmCode("A.9F"), "E19F");
  EXPECT_EQ(alarm_.GetErrorName(alarm_.GetAlarmCode("A.EF")), "Indexer card fault");
}

TEST_F(AlarmTest, CodesOfDisplays) {
  ReadRows({{"Card", "7"}}, {{"7", "A.E2", "57826"}});
  struct Case {
    const char* display;
    const char* code;
  };
  constexpr Case kCases[] = {
      {"RUN", "RUN"},   {"E210", "E210"}, {"", ""},           {"A.10", "A.10"}, {"A.1045", "A.10"},
      {"A.1x", "A.1x"}, {"A.1X", "A.1X"}, {"A.1xyz", "A.1x"}, {"A.E2", "E1E2"}, {"A.E2zz", "E1E2"},
      {"A.9F", ""},     {"A.zz", "A.zz"}, {"A", "A"},         {"A.", "A."},
  };
  for (const Case& expected : kCases) {
    EXPECT_EQ(alarm_.GetAlarmCode(expected.display), expected.code) << expected.display;
  }
}

TEST_F(AlarmTest, LaterDisplaysReplaceEarlierAndStrangersArePassedOver) {
  ReadRows({{"First", "1"}, {"Again", "1"}, {"Second", "2"}},
           {{"1", "A.01", "57360"}, {"9", "A.09", "57369"}, {"1", "A.02", ""}, {"2", "A.03", "7"}});
  EXPECT_EQ(alarm_.GetAlarmName("A.01"), "");
  EXPECT_EQ(alarm_.GetAlarmName("A.02"), "First") << "the first row of the key";
  EXPECT_EQ(alarm_.GetAlarmID("A.02"), "1");
  EXPECT_EQ(alarm_.GetErrorName("E010"), "") << "the later record has no code";
  EXPECT_EQ(alarm_.GetAlarmName("A.09"), "");
  EXPECT_EQ(alarm_.GetErrorName("0007"), "Second") << "compared as numbers";
}

}  // namespace
}  // namespace velmoor
