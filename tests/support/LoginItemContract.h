// Tests for every LoginItem. To run them on an implementation, define a harness:
//
//   struct Harness {
//     LoginItem& item();  // not enabled at first
//     void refuse();      // from now on the system changes nothing
//   };
//   INSTANTIATE_TYPED_TEST_SUITE_P(MyLoginItem, LoginItemContract, Harness);
#pragma once

#include <gtest/gtest.h>

#include "platform/LoginItem.h"

namespace tessaly {

template <class Harness>
class LoginItemContract : public ::testing::Test {
 protected:
  LoginItem& item() { return harness_.item(); }

  Harness harness_;
};

TYPED_TEST_SUITE_P(LoginItemContract);

TYPED_TEST_P(LoginItemContract, is_off_at_first) {
  EXPECT_FALSE(this->item().isEnabled());
}

TYPED_TEST_P(LoginItemContract, is_on_and_off_as_it_was_set) {
  EXPECT_TRUE(this->item().setEnabled(true));
  EXPECT_TRUE(this->item().isEnabled());
  EXPECT_TRUE(this->item().setEnabled(false));
  EXPECT_FALSE(this->item().isEnabled());
  EXPECT_TRUE(this->item().setEnabled(true));
  EXPECT_TRUE(this->item().isEnabled());
}

TYPED_TEST_P(LoginItemContract, is_content_where_there_is_nothing_to_do) {
  EXPECT_TRUE(this->item().setEnabled(false));
  EXPECT_TRUE(this->item().setEnabled(true));
  EXPECT_TRUE(this->item().setEnabled(true));
  EXPECT_TRUE(this->item().isEnabled());
}

TYPED_TEST_P(LoginItemContract, says_that_a_change_was_refused_and_stays_as_it_was) {
  this->harness_.refuse();
  EXPECT_FALSE(this->item().setEnabled(true));
  EXPECT_FALSE(this->item().isEnabled());
  EXPECT_TRUE(this->item().setEnabled(false));
}

TYPED_TEST_P(LoginItemContract, stays_on_where_it_may_not_be_taken_away) {
  ASSERT_TRUE(this->item().setEnabled(true));
  this->harness_.refuse();
  EXPECT_FALSE(this->item().setEnabled(false));
  EXPECT_TRUE(this->item().isEnabled());
  EXPECT_TRUE(this->item().setEnabled(true));
}

REGISTER_TYPED_TEST_SUITE_P(LoginItemContract, is_off_at_first, is_on_and_off_as_it_was_set,
                            is_content_where_there_is_nothing_to_do,
                            says_that_a_change_was_refused_and_stays_as_it_was,
                            stays_on_where_it_may_not_be_taken_away);

}  // namespace tessaly
