#include "platform/linux/PrivateName.h"

#include <gtest/gtest.h>
#include <string>

namespace tessaly {
namespace {

TEST(PrivateName, private_names_of_files_folders_and_notes_are_recognised) {
  EXPECT_TRUE(PrivateName::isOfFile(PrivateName::ofFile()));
  EXPECT_TRUE(PrivateName::isOfFolder(PrivateName::ofFolder()));
  EXPECT_TRUE(PrivateName::isOfNote(PrivateName::ofNote()));
  EXPECT_TRUE(PrivateName::isOfFile(".tessaly-1-4294967295"));
  EXPECT_TRUE(PrivateName::isOfFolder(".tessaly-0123456789abcdef"));
  EXPECT_TRUE(PrivateName::isOfNote(".tessaly-place-0123456789abcdef"));
}

TEST(PrivateName, each_private_name_is_of_one_kind_only) {
  for (const std::string& name :
       {PrivateName::ofFile(), PrivateName::ofFolder(), PrivateName::ofNote()}) {
    const int kinds = static_cast<int>(PrivateName::isOfFile(name)) +
                      static_cast<int>(PrivateName::isOfFolder(name)) +
                      static_cast<int>(PrivateName::isOfNote(name));
    EXPECT_EQ(kinds, 1) << name;
  }
}

TEST(PrivateName, a_name_that_resembles_a_private_one_is_not_recognised) {
  for (const char* name : {"",
                           ".",
                           ".tessaly",
                           ".tessaly-",
                           ".tessaly-1",
                           ".tessaly-1-",
                           ".tessaly--1",
                           ".tessaly-1-2-3",
                           ".tessaly-01-2",
                           ".tessaly-1-02",
                           ".tessaly-1-2 ",
                           ".tessaly-1-2.json",
                           ".tessaly-1-x",
                           ".tessaly-a-1",
                           ".tessaly-12345678901-1",
                           "x.tessaly-1-2",
                           "tessaly-1-2",
                           ".Tessaly-1-2",
                           ".tessaly-0123456789abcde",
                           ".tessaly-0123456789abcdef0",
                           ".tessaly-0123456789ABCDEF",
                           ".tessaly-0123456789abcdeg",
                           ".tessaly-place-",
                           ".tessaly-place-0123456789abcde",
                           ".tessaly-place-0123456789abcdef.json"}) {
    EXPECT_FALSE(PrivateName::isOfFile(name)) << name;
    EXPECT_FALSE(PrivateName::isOfFolder(name)) << name;
    EXPECT_FALSE(PrivateName::isOfNote(name)) << name;
  }
}

TEST(PrivateName, only_names_of_the_file_and_of_zips_temporary_file_belong_in_a_private_folder) {
  for (const char* name : {"file", "file.zip", "file.a.b", "zi0aZ9bQ"})
    EXPECT_TRUE(PrivateName::isInFolder(name)) << name;
  for (const char* name : {"", "files", "exchanged.zip", "my file.zip", "zi12345", "zi1234567",
                           "zi12-456", "ab123456"})
    EXPECT_FALSE(PrivateName::isInFolder(name)) << name;
}

}  // namespace
}  // namespace tessaly
