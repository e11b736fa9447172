// Command lines of a small table, read, refused, explained and completed.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <sstream>

#include "platform/cli/RunProgram.h"

namespace velmoor {
namespace {

using Kind = ValueEntry::Kind;
using Words = std::vector<std::string>;

// With commands.
const ProgramTable kTool{
    .name = "tool",
    .about = "does things",
    .options = {{"port", "where to", {"DEV", Kind::file}},
                {"only", "a part alone", {"LIST", Kind::words, {"index", "zone"}, true}},
                {"count", "how often", {"N"}},
                {"yes", "agree; it's final"}},
    .commands = {{"send", "send a line", {{.value = {"LINE"}}}, {"port", "yes"}},
                 {"set",
                  "assign",
                  {{.value = {"FILE", Kind::file}}, {.value = {"NAME=VALUE"}, .many = true}},
                  {"count", "only"}},
                 {"scan", "look", {}, {"port"}}}};

// Without.
const ProgramTable kPlain{.name = "plain",
                          .about = "opens a file",
                          .options = {{"axis", "an axis", {"H"}, true}, {"paced", "slowly"}},
                          .arguments = {{.value = {"FILE", Kind::file}, .required = false}}};

// ---- reading

struct Understood {
  const ProgramTable* table;
  Words words;
  Words arguments;
  Words options;  // "name=value"
};

TEST(CommandLineTest, IsReadAsTheTableHasIt) {
  const Understood cases[] = {
      {&kTool, {"send", "0PUN", "--port", "x"}, {"send", "0PUN"}, {"port=x"}},
      {&kTool, {"send", "--port=a=b", "0PUN", "--yes"}, {"send", "0PUN"}, {"port=a=b", "yes="}},
      {&kTool, {"send", "--", "--yes"}, {"send", "--yes"}, {}},
      {&kTool,
       {"set", "f", "a=1", "b=-2", "--count", "-400"},
       {"set", "f", "a=1", "b=-2"},
       {"count=-400"}},
      {&kTool, {"set", "f", "--only", "", "a=1"}, {"set", "f", "a=1"}, {"only="}},
      {&kTool, {"send", "set"}, {"send", "set"}, {}},
      {&kTool, {"set", "scan", "send=1"}, {"set", "scan", "send=1"}, {}},
      {&kTool, {"send", "[a,b]"}, {"send", "[a,b]"}, {}},
      {&kPlain, {}, {}, {}},
      {&kPlain, {"my file.spj"}, {"my file.spj"}, {}},
      {&kPlain, {"--", "-x.spj"}, {"-x.spj"}, {}},
      {&kPlain, {"--axis", "1", "--paced", "--axis", "2"}, {}, {"axis=1", "paced=", "axis=2"}},
  };
  for (const Understood& expected : cases) {
    SCOPED_TRACE(testing::PrintToString(expected.words));
    const CommandLine line = ReadLine(*expected.table, expected.words);
    EXPECT_EQ(line.Arguments(), expected.arguments);
    Words options;
    for (const auto& option : line.Options()) options.push_back(option.name + "=" + option.value);
    EXPECT_EQ(options, expected.options);
  }
}

TEST(CommandLineTest, WhatTheTableDoesNotHaveIsRefusedInWords) {
  struct Case {
    const ProgramTable* table;
    Words words;
    const char* refusal;
  };
  const Case cases[] = {
      {&kTool, {}, "A command is missing"},
      {&kTool, {"dance"}, "'dance' is no command"},
      {&kTool, {"--nonsense"}, "Option --nonsense is not known here"},
      {&kTool, {"send", "a", "--nonsense"}, "Option --nonsense is not known here"},
      {&kTool, {"send", "a", "--nonsense=1"}, "Option --nonsense is not known here"},
      {&kTool, {"scan", "--count", "1"}, "Option --count is not known here"},
      {&kTool, {"send", "a", "-y"}, "Option -y is not known here"},
      {&kTool, {"send", "a", "--port"}, "Option --port needs a value"},
      {&kTool, {"send", "--port=", "a"}, "Option --port needs a value"},
      {&kTool, {"send"}, "LINE is missing"},
      {&kTool, {"send", ""}, "LINE is empty"},
      {&kTool, {"send", "a", "b"}, "'b' is one argument too many"},
      {&kTool, {"set", "f"}, "NAME=VALUE is missing"},
      {&kPlain, {"a", "b"}, "'b' is one argument too many"},
      {&kPlain, {""}, "FILE is empty"},
      {&kPlain, {"--pace"}, "Option --pace is not known here"},
  };
  for (const Case& wrong : cases) {
    SCOPED_TRACE(testing::PrintToString(wrong.words));
    std::ostringstream out, err;
    bool ran = false;
    const auto run = [&ran](const CommandLine&) {
      ran = true;
      return kDone;
    };
    EXPECT_EQ(RunProgram(*wrong.table, wrong.words, out, err, run), kWrongUsage);
    EXPECT_EQ(err.str(), std::string(wrong.refusal) + "\n" + wrong.table->name +
                             " --help tells what there is.\n");
    EXPECT_EQ(out.str(), "");
    EXPECT_FALSE(ran);
  }
}

// ---- answers

std::string Answer(const ProgramTable& table, const Words& words) {
  std::ostringstream out, err;
  EXPECT_EQ(RunProgram(table, words, out, err, [](const CommandLine&) { return kFailed; }), kDone)
      << err.str();
  EXPECT_EQ(err.str(), "");
  return out.str();
}

TEST(CommandLineTest, HelpTellsEveryCommandAndOption) {
  const std::string whole = Answer(kTool, {"--help"});
  for (const char* const part : {"tool send LINE", "tool set FILE NAME=VALUE...", "tool scan",
                                 "--port DEV", "--yes", "--help", "--version"}) {
    EXPECT_NE(whole.find(part), std::string::npos) << part;
  }
  const std::string one = Answer(kTool, {"send", "--help"});
  EXPECT_TRUE(one.starts_with("tool send LINE [OPTION...]\n")) << one;
  EXPECT_EQ(one.find("--count"), std::string::npos);
  EXPECT_NE(Answer(kPlain, {"--help"}).find("plain [FILE] [OPTION...]"), std::string::npos);
  EXPECT_TRUE(Answer(kPlain, {"--version"}).starts_with("plain 0."));
}

TEST(CommandLineTest, HelpFitsAScreen) {
  std::istringstream lines(Answer(kTool, {"--help"}));
  for (std::string line; std::getline(lines, line);) EXPECT_LE(line.size(), 92U) << line;
}

// ---- the frame

TEST(CommandLineTest, AFailureIsToldAndHasItsStatus) {
  std::ostringstream out, err;
  const auto fail = [](const CommandLine&) -> int { throw std::runtime_error("one\rtwo"); };
  EXPECT_EQ(RunProgram(kPlain, {}, out, err, fail), kFailed);
  EXPECT_EQ(err.str(), "one\ntwo\n");
}

TEST(CommandLineTest, OutputThatCannotBeWrittenIsAFailure) {
  for (const Words& words : {Words{}, Words{"--help"}}) {
    std::ofstream full("/dev/full");
    std::ostringstream err;
    const auto print = [&full](const CommandLine&) {
      full << "a row\n";
      return kDone;
    };
    EXPECT_EQ(RunProgram(kPlain, words, full, err, print), kFailed);
    EXPECT_EQ(err.str(), "plain: the output cannot be written\n");
  }
}

// ---- the shells, asked as a user's key asks them

// What `command` prints, each line of it; skips where there is no such shell.
class CompletionTest : public testing::TestWithParam<const char*> {
 protected:
  static bool Has(const std::string& shell) {
    return std::system(("command -v " + shell + " >/dev/null").c_str()) == 0;
  }
  static Words LinesOf(const std::string& command) {
    Words lines;
    FILE* const pipe = popen(command.c_str(), "r");
    char line[4096];
    while (fgets(line, sizeof line, pipe) != nullptr) {
      const std::string text = line;
      lines.push_back(text.substr(0, text.find_first_of("\t\n")));
    }
    pclose(pipe);
    return lines;
  }
  std::string Write(const ProgramTable& table, const std::string& shell) const {
    // By test: several of them run at the same time and would find each other's half written file.
    const std::string path = testing::TempDir() + "completion-" +
                             testing::UnitTest::GetInstance()->current_test_info()->name() + "-" +
                             table.name + "." + shell;
    std::ofstream(path) << CompletionScript(table, shell);
    return path;
  }
};

TEST_F(CompletionTest, BashOffersWhatMayStandNext) {
  const std::string script = Write(kTool, "bash");
  // The words so far; the last one is what stands before the cursor.
  const auto replies = [&](const std::string& words) {
    return LinesOf("bash -c 'source " + script + "; compopt() { :; }; COMP_WORDS=(" + words +
                   "); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _tool; printf \"%s\\n\" "
                   "\"${COMPREPLY[@]}\"'");
  };
  EXPECT_EQ(replies("tool s"), (Words{"send", "set", "scan"}));
  EXPECT_EQ(replies("tool send --"), (Words{"--help", "--port", "--yes"}));
  EXPECT_EQ(replies("tool set f --only z"), Words{"zone"});
  EXPECT_EQ(replies("tool set f --only index,z"), Words{"index,zone"});
  EXPECT_EQ(replies("tool scan --port /dev/nul"), Words{"/dev/null"});
}

TEST_F(CompletionTest, FishOffersWhatMayStandNext) {
  if (!Has("fish")) GTEST_SKIP() << "no fish here";
  const std::string script = Write(kTool, "fish");
  const auto replies = [&](const std::string& line) {
    return LinesOf("fish -N -c 'source " + script + "; complete -C \"" + line + "\"'");
  };
  EXPECT_THAT(replies("tool s"), testing::UnorderedElementsAre("send", "set", "scan"));
  EXPECT_THAT(replies("tool send --"),
              testing::UnorderedElementsAre("--help", "--version", "--port", "--yes"));
  EXPECT_THAT(replies("tool set f --only z"), testing::Contains("zone"));
}

TEST_F(CompletionTest, EveryShellTakesTheScript) {
  for (const std::string shell : {"bash", "zsh", "fish"}) {
    if (!Has(shell)) continue;
    for (const ProgramTable* const table : {&kTool, &kPlain}) {
      EXPECT_EQ(std::system((shell + " -n " + Write(*table, shell)).c_str()), 0) << shell;
    }
  }
  EXPECT_THROW((void)CompletionScript(kTool, "tcsh"), UsageError);
}

}  // namespace
}  // namespace velmoor
