#include "project/data/CatalogueLibrary.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "project/data/NibbleDefinitions.h"
#include "project/data/ParameterCatalogue.h"
#include "project/data/Schema.h"
#include "project/data/clsHX7ComboList.h"
#include "project/data/clsHX7Database.h"
#include "support/DataWorld.h"

namespace velmoor {
namespace {

constexpr std::int16_t kGerman = 3;

class CatalogueLibraryTest : public testing::Test {
 protected:
  ParameterDefinition Definition(const std::string& pn) {
    const std::string path = CatalogueLibrary::WorkingCopyPath();
    for (const auto& row : ReadParameterDefinitions(path, GetTableNames(path).ParametersTable)) {
      if (row.user_constant == pn) return row;
    }
    ADD_FAILURE() << pn << " is missing";
    return {};
  }
  ComboLists Lists() {
    clsHX7ComboList lists;
    lists.SetDatabasePath(CatalogueLibrary::WorkingCopyPath());
    EXPECT_TRUE(
        lists.GetComboLists(GetTableNames(CatalogueLibrary::WorkingCopyPath()).DecDataTable));
    return lists.ComboList();
  }
  std::string List(const std::string& pn) {
    return Lists().at(std::stoul(Definition(pn).dec_data_id) - 1);
  }

  DataWorld data_;
};

TEST_F(CatalogueLibraryTest, DefinitionsComeAscendingWithAllTheirFields) {
  const std::string path = data_.MakeCatalogue();
  const auto rows = ReadParameterDefinitions(path, GetTableNames(path).ParametersTable);
  EXPECT_GE(rows.size(), 170U);
  // The template has a record for each.
  const auto pattern = OpenForReading(JoinPath(data_.world.appDirectory, "Velmoor.spt"));
  const auto records = pattern->OpenTable(schema::Parameters::kTable);
  for (const ParameterDefinition& row : rows) {
    EXPECT_TRUE(records->FindFirst(schema::Parameters::kPn, row.user_constant));
  }
  EXPECT_TRUE(std::ranges::is_sorted(rows, {}, &ParameterDefinition::user_constant));

  const ParameterDefinition limit = Definition("Pn81C");
  EXPECT_EQ(limit.parameter_name, "Negative limit");
  EXPECT_EQ(limit.Min, "-99999999");
  EXPECT_EQ(limit.Max, "99999999");
  EXPECT_EQ(limit.initial_value, "-99999999");
  EXPECT_EQ(limit.Unit, "distance");
  EXPECT_EQ(limit.dec_data_id, "0");
  EXPECT_EQ(limit.nibble_data_id, "0");
  EXPECT_EQ(limit.category_name, "RX900");
  EXPECT_EQ(limit.group, "Limits > Position");
  EXPECT_EQ(limit.Size, "4");
  EXPECT_EQ(limit.help, "Smallest position that the axis may take.");

  EXPECT_EQ(Definition("Pn110").initial_value, "0010");
  EXPECT_EQ(Definition("Pn110").Max, "274") << "0112 in hexadecimal";
  EXPECT_EQ(Definition("Pn82E").edit_type, "1001");
}

TEST_F(CatalogueLibraryTest, ListsLieAtTheirKeys) {
  data_.MakeCatalogue();
  EXPECT_EQ(List("Pn801"), "9600|19200|38400");
  EXPECT_EQ(List("Pn823"), "no zero point return|dec and c-phase|dec only|c-phase only");
  EXPECT_EQ(List("Pn80B"), "Normally open|Normally closed|Always Servo On|Always servo off");
  EXPECT_EQ(Definition("Pn80C").dec_data_id, Definition("Pn80D").dec_data_id);
}

TEST_F(CatalogueLibraryTest, DigitsComeFourToADefinitionRightMostFirst) {
  const std::string path = data_.MakeCatalogue();
  const auto definitions = ReadNibbleDefinitions(path, GetTableNames(path).NibbleTable);
  const std::string id = Definition("Pn82E").nibble_data_id;
  const auto found = std::ranges::find(definitions, id, &NibbleDefinition::nibble_data_id);
  ASSERT_NE(found, definitions.end());
  EXPECT_EQ(found->digits[0].use_bit, 6);
  EXPECT_EQ(found->digits[1].use_bit, 2);
  EXPECT_EQ(found->digits[2].use_bit, 5);
  EXPECT_EQ(found->digits[3].use_bit, 3);
  EXPECT_EQ(found->digits[1].digit_name, "Time unit");
  EXPECT_EQ(found->digits[1].choices, "seconds|minutes");
}

TEST_F(CatalogueLibraryTest, LimitsFollowTheMotorAndUnknownSizesFallBack) {
  data_.MakeCatalogue(DataWorld::kEnglish, 3000);
  EXPECT_EQ(Definition("Pn402").Max, "250");
  EXPECT_EQ(Definition("Pn100").initial_value, "30");
  for (const std::int32_t watts : {400, 0, -1, 123456}) {
    data_.MakeCatalogue(DataWorld::kEnglish, watts);
    EXPECT_EQ(Definition("Pn402").Max, "300") << watts;
    EXPECT_EQ(Definition("Pn100").initial_value, "40") << watts;
  }
}

TEST_F(CatalogueLibraryTest, AnotherLanguageTranslatesWhatIsNotLiteral) {
  data_.MakeCatalogue(kGerman);
  EXPECT_EQ(Definition("Pn100").parameter_name, "Verst\xC3\xA4rkung Drehzahlregler");
  EXPECT_EQ(List("Pn819"),
            "Abbremsen und halten|Sofort stoppen und halten|Abbremsen und Regler aus");
  const std::string copy = CatalogueLibrary::WorkingCopyPath();
  const auto machine = FindNibble(ReadNibbleDefinitions(copy, GetTableNames(copy).NibbleTable),
                                  Definition("Pn82E").nibble_data_id)
                           ->digits;
  EXPECT_EQ(machine[1].choices, "Sekunden|Minuten");
  EXPECT_EQ(machine[3].choices, "2048|16384|32768") << "in English where there is no German";
  EXPECT_EQ(List("Pn823"), "no zero point return|dec and c-phase|dec only|c-phase only");
  data_.MakeCatalogue(99);
  EXPECT_EQ(Definition("Pn100").parameter_name, "Speed loop gain");
}

TEST_F(CatalogueLibraryTest, TheCopyGoesWithTheProcessThatMadeIt) {
  const std::string path = data_.MakeCatalogue();
  CatalogueLibrary second;
  EXPECT_EQ(second.McatRemove(), 0);
  EXPECT_TRUE(data_.files.Exists(path)) << "made by another";
  ASSERT_EQ(second.McatCopy(2), 0);
  EXPECT_EQ(data_.library.McatRemove(), 0);
  EXPECT_TRUE(data_.files.Exists(path)) << "replaced by another's meanwhile";
  EXPECT_EQ(second.McatRemove(), 0);
  EXPECT_EQ(data_.folder.Count(), 0);
}

TEST_F(CatalogueLibraryTest, StepsNeedTheOnesBeforeAndKnownModels) {
  EXPECT_EQ(data_.library.McatOpen(), CatalogueLibrary::kWrongOrder);
  ASSERT_EQ(data_.library.McatCopy(2), 0);
  EXPECT_EQ(data_.library.McatUparaCreate(2, 2, 0, 0, 400, 1536, 0, 0, 1),
            CatalogueLibrary::kWrongOrder);
  ASSERT_EQ(data_.library.McatOpen(), 0);
  EXPECT_EQ(data_.library.McatUparaCreate(2, 3, 0, 0, 400, 1536, 0, 0, 1),
            CatalogueLibrary::kUnknownModel);
  EXPECT_EQ(data_.library.McatUparaCreate(2, 2, 0, 0, 400, 1280, 0, 0, 1),
            CatalogueLibrary::kUnknownModel);
  EXPECT_EQ(data_.library.McatClose(), 0);
  EXPECT_EQ(data_.library.McatClose(), CatalogueLibrary::kWrongOrder);
}

// ---- clsHX7Database

TEST_F(CatalogueLibraryTest, DatabaseMakesTheCopyAndRemovesItAtItsEnd) {
  {
    clsHX7Database database(2, "3000");
    EXPECT_TRUE(database.GetParameterDatabase());
    EXPECT_EQ(Definition("Pn402").Max, "250");
  }
  EXPECT_EQ(data_.folder.Count(), 0);
}

TEST_F(CatalogueLibraryTest, DatabaseStopsAtTheFirstFailureAndShowsItsNumber) {
  data_.world.appDirectory = data_.folder.Path().string();
  data_.boxes.Expect("1", BoxAnswer::ok);
  EXPECT_FALSE(clsHX7Database(2, "400").GetParameterDatabase());
  data_.files.WriteDurably(data_.folder.At("IdeInfo.mdb"), std::string(5000, 'x'));
  data_.boxes.Expect("3", BoxAnswer::ok);
  EXPECT_FALSE(clsHX7Database(2, "400").GetParameterDatabase());
  EXPECT_EQ(data_.folder.Count(), 1) << "the copy that was made is removed";
}

// ---- clsHX7ComboList

class ComboListTest : public testing::Test {
 protected:
  ComboLists Read(const std::vector<std::vector<std::string>>& rows) {
    const auto builder = data_.databases.Create(data_.folder.At("lists"), schema::kPassword);
    builder->CreateTable("lists", {{"dec_id", true}, {"dec_data_id", true}, {"dec_name"}});
    for (const auto& row : rows) builder->Insert("lists", row);
    builder->Finish();
    clsHX7ComboList lists;
    lists.SetDatabasePath(data_.folder.At("lists"));
    EXPECT_TRUE(lists.GetComboLists("lists"));
    return lists.ComboList();
  }
  DataWorld data_;
};

TEST_F(ComboListTest, ListsAreJoinedInTheOrderOfTheirKeysAsNumbers) {
  EXPECT_EQ(Read({}), ComboLists{""});
  EXPECT_EQ(Read({{"1", "1", "a"}}), ComboLists{"a"});
  EXPECT_EQ(Read({{"10", "2", "d"}, {"9", "2", "c"}, {"2", "1", "b"}, {"1", "1", "a"}}),
            (ComboLists{"a|b", "c|d"}));
  // A gap shifts every list behind it: intended.
  EXPECT_EQ(Read({{"1", "1", "a"}, {"2", "3", "b"}, {"3", "3", "c"}}), (ComboLists{"a", "b", "c"}));
}

TEST_F(ComboListTest, AFailureIsShown) {
  data_.boxes.Expect("clsComboList.GetComboLists: ", BoxAnswer::ok);
  clsHX7ComboList lists;
  lists.SetDatabasePath(data_.folder.At("missing"));
  EXPECT_FALSE(lists.GetComboLists("lists"));
}

}  // namespace
}  // namespace velmoor
