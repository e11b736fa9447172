#include "windows/EditHistory.h"

#include <gtest/gtest.h>

namespace velmoor {
namespace {

using Rows = EditHistory::Rows;
using Texts = std::vector<EditHistory::Assignment>;

TEST(EditHistory, AStepIsWhateverDiffersHoweverManyCells) {
  EditHistory history;
  history.Reset({{"a", "b"}, {"c", "d"}});
  EXPECT_TRUE(history.Record({{"a", "B"}, {"C", "d"}}));
  EXPECT_FALSE(history.Record({{"a", "B"}, {"C", "d"}}));
  EXPECT_EQ(history.Undo(), (Texts{{0, 1, "b"}, {1, 0, "c"}}));
  EXPECT_FALSE(history.CanUndo());
  EXPECT_EQ(history.Now(), (Rows{{"a", "b"}, {"c", "d"}}));
  EXPECT_EQ(history.Redo(), (Texts{{0, 1, "B"}, {1, 0, "C"}}));
  EXPECT_TRUE(history.Redo().empty());
}

TEST(EditHistory, AnEditAfterAnUndoForgetsWhatWasUndone) {
  EditHistory history;
  history.Reset({{"1"}});
  history.Record({{"2"}});
  history.Record({{"3"}});
  (void)history.Undo();
  history.Record({{"4"}});
  EXPECT_FALSE(history.CanRedo());
  EXPECT_EQ(history.Undo(), (Texts{{0, 0, "2"}}));
  EXPECT_EQ(history.Undo(), (Texts{{0, 0, "1"}}));
}

TEST(EditHistory, OldStepsAreForgottenBeyondTheLimit) {
  EditHistory history;
  history.Reset({{"0"}});
  for (std::size_t i = 1; i <= EditHistory::kMostSteps + 3; ++i) {
    history.Record({{std::to_string(i)}});
  }
  std::string oldest;
  while (history.CanUndo()) oldest = history.Undo().front().text;
  EXPECT_EQ(oldest, "3");
}

TEST(EditHistory, AResetTakesTheTextsAsTheNewGround) {
  EditHistory history;
  history.Reset({{"1"}});
  history.Record({{"2"}});
  history.Reset({{"9"}});
  EXPECT_FALSE(history.CanUndo());
  history.Record({{"8"}});
  EXPECT_EQ(history.Undo(), (Texts{{0, 0, "9"}}));
}

}  // namespace
}  // namespace velmoor
