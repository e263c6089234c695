#include "scan/Package.h"

#include <gtest/gtest.h>

namespace tessaly {
namespace {

TEST(Package, three_endings_in_any_case_make_a_package) {
  for (const char* name : {"Mail.app", "MAIL.APP", "Photos.photoslibrary", "P.PhotosLibrary",
                           "backup.sparsebundle", "b.SPARSEBUNDLE", ".app"}) {
    EXPECT_TRUE(isPackageName(name)) << name;
  }
}

TEST(Package, only_the_suffix_of_the_name_counts) {
  for (const char* name : {"", "app", "Mail.app.zip", "Mailapp", "x.photoslibrary2", "x.framework",
                           "x.sparseimage", "pp"}) {
    EXPECT_FALSE(isPackageName(name)) << name;
  }
}

TEST(Package, only_the_suffix_app_makes_an_application) {
  EXPECT_TRUE(isAppName("Tool.App"));
  EXPECT_FALSE(isAppName("Photos.photoslibrary"));
}

TEST(Package, bytes_that_are_not_utf8_are_compared_as_they_are) {
  EXPECT_TRUE(isPackageName("\xff\xfe.app"));
  EXPECT_FALSE(isPackageName("\xff.ap\xf0"));
}

}  // namespace
}  // namespace tessaly
