#include "reclaim/LockLink.h"

#include <gtest/gtest.h>

namespace tessaly {
namespace {

TEST(LockLink, chromium_names_its_process_a_number_or_its_socket) {
  EXPECT_TRUE(isLockLink("SingletonLock", "desk-4711"));
  EXPECT_TRUE(isLockLink("SingletonLock", "a-desk.example-1"));
  EXPECT_TRUE(isLockLink("SingletonCookie", "12345678901234567890"));
  EXPECT_TRUE(isLockLink("SingletonSocket", "/tmp/.org.chromium.Chromium.x1/SingletonSocket"));
}

TEST(LockLink, a_link_to_a_file_with_such_a_name_is_none) {
  EXPECT_FALSE(isLockLink("SingletonLock", "desk"));
  EXPECT_FALSE(isLockLink("SingletonLock", "-4711"));
  EXPECT_FALSE(isLockLink("SingletonLock", "desk-47a"));
  EXPECT_FALSE(isLockLink("SingletonLock", "desk-"));
  EXPECT_FALSE(isLockLink("SingletonSocket", "/tmp/socket"));
  EXPECT_FALSE(isLockLink("SingletonCookie", ""));
  EXPECT_FALSE(isLockLink("singletonLock", "desk-4711"));
}

TEST(LockLink, firefox_names_an_address_and_a_process) {
  EXPECT_TRUE(isLockLink("lock", "127.0.1.1:+4711"));
  EXPECT_TRUE(isLockLink("lock", "192.168.0.7:4711"));
  EXPECT_TRUE(isLockLink("lock", "fe80::1:+4711"));
  EXPECT_FALSE(isLockLink("lock", "../other/lock"));
  EXPECT_FALSE(isLockLink("lock", "host:+4711"));
  EXPECT_FALSE(isLockLink("lock", "127.0.1.1:+"));
  EXPECT_FALSE(isLockLink("lock", ":+4711"));
  EXPECT_FALSE(isLockLink("lock", "4711"));
  EXPECT_FALSE(isLockLink("a lock", "127.0.1.1:+4711"));
}

TEST(LockLink, emacs_names_a_user_a_host_and_a_process) {
  EXPECT_TRUE(isLockLink(".#notes.txt", "ada@desk.4711"));
  EXPECT_TRUE(isLockLink(".#notes.txt", "ada@desk.example.4711:1700000000"));
  EXPECT_TRUE(isLockLink(".#a", "ada@mail@desk.1"));
  EXPECT_FALSE(isLockLink(".#notes.txt", "notes.txt.4711"));
  EXPECT_FALSE(isLockLink(".#notes.txt", "@desk.4711"));
  EXPECT_FALSE(isLockLink(".#notes.txt", "ada@desk"));
  EXPECT_FALSE(isLockLink(".#notes.txt", "ada@.4711"));
  EXPECT_FALSE(isLockLink(".#notes.txt", "ada@desk.4711:"));
  EXPECT_FALSE(isLockLink(".#notes.txt", "ada@desk.x"));
  EXPECT_FALSE(isLockLink(".#", "ada@desk.4711"));
  EXPECT_FALSE(isLockLink("notes.txt", "ada@desk.4711"));
}

}  // namespace
}  // namespace tessaly
