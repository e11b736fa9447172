// A database file of a test, and what may be done to it.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <string>

#include "platform/sqlcipher/Engine.h"
#include "platform/sqlcipher/SqlcipherDatabases.h"
#include "support/TemporaryFolder.h"

namespace velmoor::sqlcipher {

namespace fs = std::filesystem;
using Kind = DatabaseError::Kind;

inline constexpr std::string_view kPassword = "nurvex";

class DatabaseFile : public testing::Test {
 protected:
  void MakeFile(int rows = 3) {
    const auto builder = databases_.Create(path_, kPassword);
    builder->CreateTable("tblParameters", {{"pn"}, {"value"}, {"order", true}});
    for (int i = 0; i < rows; ++i) {
      builder->Insert("tblParameters", {"Pn80" + std::to_string(i), "000" + std::to_string(i),
                                        std::to_string(rows * 10 - i)});
    }
    builder->Finish();
  }

  std::string ValueOf(std::string_view pn) {
    const auto database = databases_.Open(path_, kPassword, DatabaseAccess::readOnly);
    const auto rows = database->OpenTable("tblParameters");
    return rows->FindFirst("pn", pn) ? rows->Text("value") : "(no row)";
  }

  static void Write(RowSet& rows, std::string_view pn, std::string_view value) {
    ASSERT_TRUE(rows.FindFirst("pn", pn));
    rows.Edit();
    rows.Set("value", value);
    rows.Update();
  }

  Kind FailureOf(const std::function<void()>& work) {
    try {
      work();
    } catch (const DatabaseError& error) {
      EXPECT_NE(std::string(error.what()).find("line1.spj"), std::string::npos) << error.what();
      return error.kind();
    }
    ADD_FAILURE() << "nothing was refused";
    return Kind::other;
  }
  Kind OpenFailure(std::string_view password = kPassword) {
    SqlcipherDatabases fresh;
    return FailureOf([&] { fresh.Open(path_, password, DatabaseAccess::readOnly); });
  }

  void Overwrite(std::streamoff place, const std::string& bytes) {
    std::fstream file(path_, std::ios::in | std::ios::out | std::ios::binary);
    file.seekp(place);
    file << bytes;
  }

  TemporaryFolder folder_;
  const std::string path_ = folder_.At("line1.spj");
  SqlcipherDatabases databases_;
};

}  // namespace velmoor::sqlcipher
