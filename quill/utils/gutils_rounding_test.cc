// Tests of currency rounding.
#include <gtest/gtest.h>

#include "quill/utils/rounding.h"

namespace quill::Gutils {
namespace {

Currency Raw(int64_t r) { return Currency::FromRaw(r); }
Currency Units(int64_t u) { return Currency::FromInt(u); }

// Edge case: CRound(2.345) gives 2.34 and CRound(2.355) gives 2.36.
TEST(CRound, ExamplesFromCallers) {
  EXPECT_EQ(CRound(Raw(23450)), Raw(23400));
  EXPECT_EQ(CRound(Raw(23550)), Raw(23600));
}

// Deliberate: exact halves go to the even cent: 1.005 -> 1.00, 1.015 -> 1.02.
TEST(CRound, ExactHalvesGoToEven) {
  EXPECT_EQ(CRound(Raw(10050)), Raw(10000));
  EXPECT_EQ(CRound(Raw(10150)), Raw(10200));
  EXPECT_EQ(CRound(Raw(10250)), Raw(10200));
  EXPECT_EQ(CRound(Raw(-10050)), Raw(-10000));
  EXPECT_EQ(CRound(Raw(-10150)), Raw(-10200));
}

TEST(CRound, NonHalvesRoundToNearest) {
  EXPECT_EQ(CRound(Raw(10049)), Raw(10000));
  EXPECT_EQ(CRound(Raw(10051)), Raw(10100));
  EXPECT_EQ(CRound(Raw(12345678)), Raw(12345700));
  EXPECT_EQ(CRound(Raw(0)), Raw(0));
  EXPECT_EQ(CRound(Units(7)), Units(7));
}

// Edge case: RoundTo(25, 10) gives 20 (half to even); 35 gives 40.
TEST(RoundTo, NearestMultipleHalvesToEven) {
  EXPECT_EQ(RoundTo(Units(25), 10), Units(20));
  EXPECT_EQ(RoundTo(Units(35), 10), Units(40));
  EXPECT_EQ(RoundTo(Units(26), 10), Units(30));
  EXPECT_EQ(RoundTo(Units(-25), 10), Units(-20));
  EXPECT_EQ(RoundTo(Raw(249999), 10), Units(20));
  EXPECT_EQ(RoundTo(Units(7), 5), Units(5));
}

// Edge case: RoundToL(29, 10) gives 20; negatives move towards zero.
TEST(RoundToL, TowardsZero) {
  EXPECT_EQ(RoundToL(Units(29), 10), Units(20));
  EXPECT_EQ(RoundToL(Units(-29), 10), Units(-20));
  EXPECT_EQ(RoundToL(Units(30), 10), Units(30));
  EXPECT_EQ(RoundToL(Raw(99999), 10), Units(0));
}

// Edge case: RoundToM(21, 10) gives 30.
TEST(RoundToM, NextStepAbove) {
  EXPECT_EQ(RoundToM(Units(21), 10), Units(30));
  EXPECT_EQ(RoundToM(Units(29), 10), Units(30));
}

// Deliberate: RoundToM always moves one step up from the truncated multiple,
// even from an exact multiple, and towards zero for negatives.
TEST(RoundToM, AlwaysOneStepUp) {
  EXPECT_EQ(RoundToM(Units(20), 10), Units(30));
  EXPECT_EQ(RoundToM(Units(0), 10), Units(10));
  EXPECT_EQ(RoundToM(Units(-15), 10), Units(0));
  EXPECT_EQ(RoundToM(Units(-20), 10), Units(-10));
}

// A negative step mirrors the multiples.
TEST(RoundTo, NegativeStep) {
  EXPECT_EQ(RoundTo(Units(26), -10), Units(30));
  EXPECT_EQ(RoundToL(Units(29), -10), Units(20));
}

}  // namespace
}  // namespace quill::Gutils
