// Which picture of a numbered sequence shows for a number: gaps, ends, and names that
// belong to no sequence.
#include <gtest/gtest.h>

#include "effect/input/FileSequence.h"

namespace {

using Effect::FileSequence;

TEST(FileSequence, GapsShowTheNumberBelowAndTheEndsHold) {
  const FileSequence sequence(L"/p/shot3.png", {L"/p/shot3.png", L"/p/shot4.png", L"/p/shot7.png", L"/p/shot5.jpg",
                                                L"/p/take6.png", L"/p/shot.png"});
  EXPECT_EQ(sequence.pick(6), L"/p/shot4.png");
  EXPECT_EQ(sequence.pick(7), L"/p/shot7.png");
  EXPECT_EQ(sequence.pick(1), L"/p/shot3.png");  // below the lowest: the lowest
  EXPECT_EQ(sequence.pick(8), L"/p/shot3.png");  // above the highest: the item's own file
}

TEST(FileSequence, LeadingZerosCountAndANameWithoutDigitsHasNoSequence) {
  const FileSequence padded(L"/p/f0010.png", {L"/p/f0009.png", L"/p/f0010.png", L"/p/f0011.png"});
  EXPECT_EQ(padded.pick(9), L"/p/f0009.png");
  const FileSequence plain(L"/p/still.png", {L"/p/still.png", L"/p/still2.png"});
  EXPECT_TRUE(plain.empty());
  EXPECT_EQ(plain.pick(2), L"/p/still.png");
}

}  // namespace
