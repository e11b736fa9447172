#include "compiler/Reader.h"

#include <algorithm>
#include <functional>
#include <map>
#include <string_view>

#include "compiler/FieldReader.h"

namespace velmoor::catalogue {
namespace {

void ReadParameter(const Record& record, const std::string& category, const std::string& group,
                   Catalogue& catalogue, Problems& problems) {
  Parameter& parameter = catalogue.parameters.emplace_back();
  parameter.pn = record.name;
  parameter.name = record.value;
  parameter.category = category;
  parameter.group = group;
  parameter.place = record.place;
  const auto choose = [&](Kind kind, const Field& field) {
    if (parameter.kind) problems.Add(field.place, "a second kind");
    parameter.kind = kind;
  };
  const auto readChoice = [&](Kind kind, const Field& field) {
    choose(kind, field);
    const Split split = SplitFirst(field.value);
    parameter.choice = split.first;
    return split.rest;
  };
  ReadFields(
      record,
      {{"decimal",
        [&](const Field& field) {
          choose(Kind::decimal, field);
          parameter.limits = ReadLimits(field, field.value, problems);
        }},
       {"halves",
        [&](const Field& field) {
          choose(Kind::halves, field);
          parameter.limits = ReadLimits(field, field.value, problems);
        }},
       {"list",
        [&](const Field& field) {
          const std::string index = readChoice(Kind::list, field);
          parameter.limits.initial = ReadNumber(field, index, problems);
        }},
       {"digits", [&](const Field& field) { parameter.digits = readChoice(Kind::digits, field); }},
       {"unit", [&](const Field& field) { parameter.unit = field.value; }},
       {"help", [&](const Field& field) { AppendText(parameter.help, field.value); }},
       {"fixed", [&](const Field& field) { parameter.fixed = field.value; }},
       {"hidden", [&](const Field&) { parameter.hidden = true; }},
       {"factory",
        [&](const Field& field) { parameter.factory = ReadNumber(field, field.value, problems); }},
       {"motor",
        [&](const Field& field) {
          const Split split = SplitFirst(field.value);
          parameter.motors.push_back({ReadNumber(field, split.first, problems),
                                      ReadLimits(field, split.rest, problems), field.place});
        }}},
      problems);
}

void ReadParameters(const std::vector<Record>& records, Catalogue& catalogue, Problems& problems) {
  std::string category;
  std::string group;
  for (const Record& record : records) {
    if (record.name == "category") {
      category = record.value;
    } else if (record.name == "group") {
      group = record.value;
    } else {
      ReadParameter(record, category, group, catalogue, problems);
    }
  }
}

void ReadLists(const std::vector<Record>& records, Catalogue& catalogue, Problems& problems) {
  for (const Record& record : records) {
    List& list = catalogue.lists.emplace_back();
    list.name = record.value;
    list.place = record.place;
    ReadFields(record,
               {{"literal", [&](const Field&) { list.literal = true; }},
                {"item", [&](const Field& field) { list.items.push_back(field.value); }}},
               problems);
  }
}

void ReadDigits(const std::vector<Record>& records, Catalogue& catalogue, Problems& problems) {
  constexpr int kAddresses = 16;
  for (const Record& record : records) {
    Digits& digits = catalogue.digits.emplace_back();
    digits.name = record.value;
    digits.place = record.place;
    ReadFields(record,
               {{"digit",
                 [&](const Field& field) {
                   const Split place = SplitFirst(field.value);
                   const Split count = SplitFirst(place.rest);
                   const std::size_t digit = ReadDigitNumber(field, place.first, problems);
                   digits.counts[digit] =
                       static_cast<int>(ReadNumber(field, count.first, problems));
                   digits.names[digit] = count.rest;
                 }},
                {"choices",
                 [&](const Field& field) {
                   const Choices choices = ReadChoices(field, problems);
                   digits.choices[choices.digit] = choices.meanings;
                 }},
                {"address",
                 [&](const Field& field) {
                   const Split place = SplitFirst(field.value);
                   const std::size_t digit = ReadDigitNumber(field, place.first, problems);
                   digits.counts[digit] = kAddresses;
                   digits.names[digit] = place.rest;
                   digits.address = digit;
                 }}},
               problems);
  }
}

void ReadAlarms(const std::vector<Record>& records, Catalogue& catalogue, Problems& problems) {
  for (const Record& record : records) {
    Alarm& alarm = catalogue.alarms.emplace_back();
    alarm.kind = record.name;
    alarm.place = record.place;
    const Split split = SplitFirst(record.value);
    alarm.display = split.first;
    if (record.name == "error") {
      alarm.code = ReadCode(record.place, split.first, problems);
    } else if (!split.rest.empty()) {
      alarm.code = ReadCode(record.place, split.rest, problems);
    }
    ReadFields(record, {{"name", [&](const Field& field) { alarm.name = field.value; }}}, problems);
  }
}

void ReadMachine(const Record& record, Template& project, Problems& problems) {
  project.place = record.place;
  const auto number = [&](std::int64_t Template::*member) {
    return [&project, &problems, member](const Field& field) {
      project.*member = ReadNumber(field, field.value, problems);
    };
  };
  ReadFields(record,
             {{"selections", [&](const Field& field) { project.selections = field.value; }},
              {"measure", [&](const Field& field) { project.measure = field.value; }},
              {"n1", number(&Template::n1)},
              {"n2", number(&Template::n2)},
              {"resolution", number(&Template::resolution)},
              {"gear",
               [&](const Field& field) {
                 const Split terms = SplitFirst(field.value);
                 project.gearB = ReadNumber(field, terms.first, problems);
                 project.gearA = ReadNumber(field, terms.rest, problems);
               }},
              {"factors",
               [&](const Field& field) {
                 const Split distance = SplitFirst(field.value);
                 const Split speed = SplitFirst(distance.rest);
                 project.distance = ReadFactor(field, distance.first, problems);
                 project.speed = ReadFactor(field, speed.first, problems);
                 project.acceleration = ReadFactor(field, speed.rest, problems);
               }}},
             problems);
}

void ReadTemplate(const std::vector<Record>& records, Catalogue& catalogue, Problems& problems) {
  for (const Record& record : records) {
    if (record.name == "machine") {
      ReadMachine(record, catalogue.project, problems);
      continue;
    }
    auto& values = record.name == "misc" ? catalogue.project.settings : catalogue.project.values;
    TemplateValue& value = values.emplace_back();
    value.key = record.value;
    value.place = record.place;
    ReadFields(record, {{"set", [&](const Field& field) { value.value = field.value; }}}, problems);
  }
}

// Texts of one record in another language.
void ReadTranslation(const Record& record, Language& language, Problems& problems) {
  const Split split = SplitFirst(record.value);
  const auto add = [&](const std::string& kind, const std::string& key, const std::string& text,
                       const Place& place) {
    language.texts.push_back({kind, key, text, place});
  };
  int item = 0;
  std::string help;
  if (record.name == "parameter" || record.name == "alarm") {
    add(record.name, split.first, split.rest, record.place);
  }
  ReadFields(
      record,
      {{"unit", [&](const Field& field) { add("unit", split.first, field.value, field.place); }},
       {"help", [&](const Field& field) { AppendText(help, field.value); }},
       {"item",
        [&](const Field& field) {
          add("item", split.first + "." + std::to_string(item++), field.value, field.place);
        }},
       {"digit",
        [&](const Field& field) {
          const Split digit = SplitFirst(field.value);
          add("digit", split.first + "." + digit.first, digit.rest, field.place);
        }},
       {"choices",
        [&](const Field& field) {
          const Choices choices = ReadChoices(field, problems);
          add("choices", split.first + "." + std::to_string(choices.digit), choices.meanings,
              field.place);
        }}},
      problems);
  if (!help.empty()) add("help", split.first, help, record.place);
}

void ReadLanguage(const std::vector<Record>& records, Catalogue& catalogue, Problems& problems) {
  Language& language = catalogue.languages.emplace_back();
  for (const Record& record : records) {
    if (record.name == "language") {
      const Split split = SplitFirst(record.value);
      language.place = record.place;
      language.number =
          ReadNumber({record.name, record.value, record.place}, split.first, problems);
      language.name = split.rest;
    } else {
      ReadTranslation(record, language, problems);
    }
  }
}

struct Subject {
  std::string_view prefix;
  // The records that the file may hold; empty: any.
  std::vector<std::string_view> records;
  void (*read)(const std::vector<Record>&, Catalogue&, Problems&);
};

const std::vector<Subject>& Subjects() {
  static const std::vector<Subject> subjects = {
      {"parameters", {}, ReadParameters},
      {"lists", {"list"}, ReadLists},
      {"digits", {"digits"}, ReadDigits},
      {"alarms", {"alarm", "error", "state"}, ReadAlarms},
      {"template", {"machine", "value", "misc"}, ReadTemplate},
      {"language", {"language", "parameter", "list", "digits", "alarm"}, ReadLanguage},
  };
  return subjects;
}

}  // namespace

Catalogue ReadCatalogue(const std::vector<SourceFile>& files, Problems& problems) {
  Catalogue catalogue;
  for (const SourceFile& file : files) {
    const auto subject = std::ranges::find_if(
        Subjects(), [&](const Subject& entry) { return file.name.starts_with(entry.prefix); });
    if (subject == Subjects().end()) {
      problems.Add({file.name, 1}, "no subject has a file of this name");
      continue;
    }
    std::vector<Record> records = ReadRecords(file.name, file.text, problems);
    std::erase_if(records, [&](const Record& record) {
      const bool unknown =
          !subject->records.empty() &&
          std::ranges::find(subject->records, record.name) == subject->records.end();
      if (unknown) problems.Add(record.place, "unknown record \"" + record.name + "\"");
      return unknown;
    });
    subject->read(records, catalogue, problems);
  }
  std::ranges::stable_sort(catalogue.parameters, {}, &Parameter::pn);
  return catalogue;
}

}  // namespace velmoor::catalogue
