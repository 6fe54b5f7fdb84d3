#include "radio/request_queue.h"

#include <gtest/gtest.h>

#include "radio/cat_radio.h"

namespace tavlorin {
namespace {

using Codes = std::vector<uint32_t>;

class RequestQueueTest : public ::testing::Test {
 protected:
  void Add(uint32_t code, uint32_t value = 0, bool atFront = false) {
    auto r = std::make_unique<RadioRequest>();
    r->code = code;
    r->radio = &radio_;
    r->value1 = value;
    queue_.Add(std::move(r), atFront);
  }

  CatRadio radio_;
  RequestQueue queue_;
};

TEST_F(RequestQueueTest, PollsNeverPileUp) {
  for (uint32_t code : {1000u, 1001u, 1002u, 1003u, 1004u, 1005u, 1007u}) {
    Add(code);
    Add(1009);
    Add(code);
  }
  // Each poll kind waits once, moved to the back where it was last queued.
  EXPECT_EQ(queue_.Codes(), (Codes{1009, 1000, 1009, 1001, 1009, 1002, 1009, 1003, 1009, 1004, 1009,
                                   1005, 1009, 1007}));
}

TEST_F(RequestQueueTest, TenQuickTuningsLeaveOneAtTheFront) {
  Add(1000);
  Add(1004);
  for (uint32_t hz = 1; hz <= 10; ++hz) {
    Add(1011, 14000000 + hz);
  }
  EXPECT_EQ(queue_.Codes(), (Codes{1011, 1000, 1004}));
  EXPECT_EQ(queue_.at(0).value1, 14000010u) << "the latest tuning wins";
}

TEST_F(RequestQueueTest, TuningOnlySupersedesTuningAtTheFront) {
  Add(1011, 1);
  Add(1013);  // a drop-down choice goes in front of the tuning
  Add(1011, 2);
  EXPECT_EQ(queue_.Codes(), (Codes{1011, 1013, 1011}));
  Add(1012, 5);
  Add(1012, 6);
  EXPECT_EQ(queue_.Codes(), (Codes{1012, 1011, 1013, 1011}));
  EXPECT_EQ(queue_.at(0).value1, 6u);
}

TEST_F(RequestQueueTest, ASliderDragLeavesOnlyItsLastValue) {
  Add(1000);
  Add(1003);
  Add(1004);
  for (uint32_t v = 1; v <= 50; ++v) {
    Add(1014, v);
  }
  ASSERT_EQ(queue_.Codes(), (Codes{1014}));
  EXPECT_EQ(queue_.at(0).value1, 50u);
}

TEST_F(RequestQueueTest, PlacementByCode) {
  struct Case {
    uint32_t code;
    bool atFront;
    Codes expected;
  } cases[] = {
      {1010, false, {1010, 1000, 1009}},
      {1013, false, {1013, 1000, 1009}},
      {1015, false, {1015, 1000, 1009}},
      {1016, false, {1016, 1000, 1009}},
      {9, false, {9, 1000, 1009}},
      {1017, false, {1000, 1009, 1017}},
      {1018, false, {1000, 1009, 1018}},
      {1018, true, {1018, 1000, 1009}},
      {5, false, {1000, 1009, 5}},
      {1, false, {1}},
      {2, false, {2}},
      {3, false, {3}},
      {4, false, {4}},
      {6, false, {6}},
  };
  for (const Case& c : cases) {
    queue_ = RequestQueue();
    Add(1000);
    Add(1009);
    Add(c.code, 0, c.atFront);
    EXPECT_EQ(queue_.Codes(), c.expected) << "code " << c.code;
  }
}

TEST_F(RequestQueueTest, UserActionsRaiseTheAbortFlagPollsDoNot) {
  for (uint32_t code = 1000; code <= 1019; ++code) {
    radio_.abort = false;
    Add(code);
    const bool user = (code >= 1010 && code <= 1016) || code == 1018 || code == 1019;
    EXPECT_EQ(radio_.abort.load(), user) << "code " << code;
  }
}

TEST_F(RequestQueueTest, TakeFrontEmptiesInOrder) {
  Add(1000);
  Add(1011, 7);
  auto first = queue_.TakeFront();
  ASSERT_NE(first, nullptr);
  EXPECT_EQ(first->code, 1011u);
  EXPECT_EQ(queue_.TakeFront()->code, 1000u);
  EXPECT_EQ(queue_.TakeFront(), nullptr);
}

}  // namespace
}  // namespace tavlorin
