// The tables of the catalogue file, "IdeInfo.mdb", from which a working copy is made: every
// language and every motor size. Written by the catalogue's compiler and read by CatalogueLibrary
// alone.
#pragma once

#include <string_view>

namespace velmoor::catalogue_source {

// The language in which every text exists.
inline constexpr int kEnglish = 2;

// One row a parameter; limits and initial values of the standard motor.
struct Parameters {
  static constexpr std::string_view kTable = "source_parameters";
  static constexpr std::string_view kPn = "pn";
  static constexpr std::string_view kMin = "minimum";
  static constexpr std::string_view kMax = "maximum";
  static constexpr std::string_view kInitial = "initial";
  static constexpr std::string_view kList = "list";      // key of the list, 0: none
  static constexpr std::string_view kDigits = "digits";  // key of the digit definition, 0: none
  static constexpr std::string_view kEditType = "edit_type";
  static constexpr std::string_view kFixed = "fixed";
  static constexpr std::string_view kCategory = "category";
  static constexpr std::string_view kGroup = "parameter_group";  // "Gains > First set"
  static constexpr std::string_view kSize = "size";
};

// Limits and initial values that hold for one size of motor instead.
struct MotorLimits {
  static constexpr std::string_view kTable = "source_motor_limits";
  static constexpr std::string_view kPn = "pn";
  static constexpr std::string_view kWatts = "watts";
  static constexpr std::string_view kMin = "minimum";
  static constexpr std::string_view kMax = "maximum";
  static constexpr std::string_view kInitial = "initial";
};

struct Digits {
  static constexpr std::string_view kTable = "source_digits";
  static constexpr std::string_view kKey = "key";      // of the definition
  static constexpr std::string_view kDigit = "digit";  // 0 to 3
  static constexpr std::string_view kCount = "count";
};

struct Items {
  static constexpr std::string_view kTable = "source_items";
  static constexpr std::string_view kKey = "key";    // of the item, rising over all lists
  static constexpr std::string_view kList = "list";  // of the list, from 1
};

struct Alarms {
  static constexpr std::string_view kTable = "source_alarms";
  static constexpr std::string_view kKey = "key";
  static constexpr std::string_view kDisplay = "display";
  static constexpr std::string_view kCode = "code";  // decimal; empty: none
};

// Every text, by language, kind and key.
struct Texts {
  static constexpr std::string_view kTable = "source_texts";
  static constexpr std::string_view kLanguage = "language";
  static constexpr std::string_view kKind = "kind";
  static constexpr std::string_view kKey = "key";
  static constexpr std::string_view kText = "text";

  static constexpr std::string_view kParameterName = "parameter";  // by pn
  static constexpr std::string_view kUnit = "unit";                // by pn
  static constexpr std::string_view kHelp = "help";                // by pn
  static constexpr std::string_view kItem = "item";                // by the item's key
  static constexpr std::string_view kDigitName = "digit";          // "3.0": definition 3, digit 0
  static constexpr std::string_view kChoices = "choices";          // by the same, joined by "|"
  static constexpr std::string_view kAlarmName = "alarm";          // by the alarm's key
};

}  // namespace velmoor::catalogue_source
