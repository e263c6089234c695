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

TYPED_TEST_P(LoginItemContract, the_login_item_is_off_at_first) {
  EXPECT_FALSE(this->item().isEnabled());
}

TYPED_TEST_P(LoginItemContract, the_login_item_is_on_and_off_as_set) {
  EXPECT_TRUE(this->item().setEnabled(true));
  EXPECT_TRUE(this->item().isEnabled());
  EXPECT_TRUE(this->item().setEnabled(false));
  EXPECT_FALSE(this->item().isEnabled());
  EXPECT_TRUE(this->item().setEnabled(true));
  EXPECT_TRUE(this->item().isEnabled());
}

TYPED_TEST_P(LoginItemContract, setting_the_present_state_succeeds) {
  EXPECT_TRUE(this->item().setEnabled(false));
  EXPECT_TRUE(this->item().setEnabled(true));
  EXPECT_TRUE(this->item().setEnabled(true));
  EXPECT_TRUE(this->item().isEnabled());
}

TYPED_TEST_P(LoginItemContract, a_refused_change_fails_and_keeps_the_state) {
  this->harness_.refuse();
  EXPECT_FALSE(this->item().setEnabled(true));
  EXPECT_FALSE(this->item().isEnabled());
  EXPECT_TRUE(this->item().setEnabled(false));
}

TYPED_TEST_P(LoginItemContract, the_login_item_stays_on_if_it_may_not_be_removed) {
  ASSERT_TRUE(this->item().setEnabled(true));
  this->harness_.refuse();
  EXPECT_FALSE(this->item().setEnabled(false));
  EXPECT_TRUE(this->item().isEnabled());
  EXPECT_TRUE(this->item().setEnabled(true));
}

REGISTER_TYPED_TEST_SUITE_P(LoginItemContract, the_login_item_is_off_at_first,
                            the_login_item_is_on_and_off_as_set, setting_the_present_state_succeeds,
                            a_refused_change_fails_and_keeps_the_state,
                            the_login_item_stays_on_if_it_may_not_be_removed);

}  // namespace tessaly
