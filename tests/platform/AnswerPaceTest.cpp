#include "platform/AnswerPace.h"

#include <gtest/gtest.h>

namespace velmoor {
namespace {

void Exchange(AnswerPace& pace, std::string_view command, std::string_view answer) {
  pace.LineWritten(command);
  pace.LineReceived(command);
  pace.LineReceived(answer);
}

TEST(AnswerPace, ExpectsAnAcknowledgeOfAnUnknownLine) {
  AnswerPace pace;
  pace.LineWritten("0PUN");
  EXPECT_EQ(pace.QuietCharacters(""), 0u);
  EXPECT_EQ(pace.QuietCharacters("0"), 2u) << "it may be an answer without an echo";
  EXPECT_EQ(pace.QuietCharacters("0OK"), 0u);
  EXPECT_EQ(pace.QuietCharacters("0PUN="), 0u) << "longer than expected";
}

TEST(AnswerPace, SleepsThroughTheEchoAndTheShortestAnswerSoFar) {
  AnswerPace pace;
  Exchange(pace, "0POST1", "0POST1=I+00000100");
  Exchange(pace, "0POST2", "0POST2=-");
  Exchange(pace, "0POST3", "0POST3=I+00000100");
  pace.LineWritten("0POST44");
  // The rest of the echo with its CR LF, and 9 characters, as the row has two digits, and CR but
  // the last.
  EXPECT_EQ(pace.QuietCharacters("0P"), 5u + 2u + 9u);
  pace.LineReceived("0POST44");
  EXPECT_EQ(pace.QuietCharacters("0P"), 7u);
  EXPECT_EQ(pace.QuietCharacters("0POST44=-"), 0u);
  EXPECT_EQ(pace.QuietCharacters("0POST44=I+"), 0u) << "longer than expected";
}

TEST(AnswerPace, WritesAndReadsOfAWordAreDifferentKinds) {
  AnswerPace pace;
  Exchange(pace, "0PRM81D", "0Pn81D=00000000");
  Exchange(pace, "0PRM81D=5", "0OK");
  pace.LineWritten("0PRM82A");
  pace.LineReceived("0PRM82A");
  EXPECT_EQ(pace.QuietCharacters("0Pn8"), 0u) << "Pn82A is another kind than Pn81D";
  Exchange(pace, "0PRM81D", "0Pn81D=00000000");
  pace.LineWritten("0PRM83D");
  pace.LineReceived("0PRM83D");
  EXPECT_EQ(pace.QuietCharacters("0Pn8"), 11u);
}

// What has no wire, or one that is faster, is never slept for.
TEST(AnswerPace, SleepsThroughTheLineItselfWhereAnswersBeginBehindIt) {
  AnswerPace pace;
  pace.LineWritten("0PUN");
  EXPECT_EQ(pace.OwnCharacters(), 0u) << "nothing is known yet";
  pace.AnswerBegan(6.3);
  pace.LineReceived("0PUN");
  pace.LineWritten("0TREF");
  EXPECT_EQ(pace.OwnCharacters(), 6u);
  pace.LineReceived("0TREF");
  EXPECT_EQ(pace.OwnCharacters(), 0u) << "its echo is in";
  pace.LineWritten("0PUN");
  pace.AnswerBegan(0.2);
  pace.LineWritten("0PUN");
  EXPECT_EQ(pace.OwnCharacters(), 0u);
}

TEST(AnswerPace, NoticesThatTheEchoIsGone) {
  AnswerPace pace;
  Exchange(pace, "0SVON", "0OK");
  pace.LineWritten("0SVON");
  pace.LineReceived("0OK");
  pace.LineWritten("0SVON");
  EXPECT_EQ(pace.QuietCharacters("0"), 2u);
}

}  // namespace
}  // namespace velmoor
