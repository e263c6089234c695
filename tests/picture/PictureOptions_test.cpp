#include "picture/PictureOptions.h"

#include <gtest/gtest.h>

namespace tessaly {
namespace {

TEST(PictureOptions, options_need_only_a_file) {
  const auto options = PictureOptions::parse({"a.png"});
  ASSERT_TRUE(options.has_value());
  EXPECT_EQ(options->file, QStringLiteral("a.png"));
  EXPECT_EQ(options->root, "");
  EXPECT_FALSE(options->size.has_value());
  EXPECT_EQ(options->scale, 1);
  EXPECT_EQ(options->screen, PictureOptions::Screen::map);
}

TEST(PictureOptions, every_option_is_parsed) {
  const auto options =
      PictureOptions::parse({"--root", "/srv", "--size", "1100x680", "--scale", "2", "--screen",
                             "scanning", "--drill", "a/b", "--hover", "10,20", "a.png"});
  ASSERT_TRUE(options.has_value());
  EXPECT_EQ(options->root, "/srv");
  EXPECT_EQ(options->size, QSize(1100, 680));
  EXPECT_EQ(options->scale, 2);
  EXPECT_EQ(options->screen, PictureOptions::Screen::scanning);
  EXPECT_EQ(options->drill, (QStringList{"a", "b"}));
  EXPECT_EQ(options->hover, QPoint(10, 20));
}

TEST(PictureOptions, a_folder_of_kept_pictures_needs_nothing_else) {
  const auto options = PictureOptions::parse({"--keep", "kept"});
  ASSERT_TRUE(options.has_value());
  EXPECT_EQ(options->keep, QStringLiteral("kept"));
  EXPECT_FALSE(PictureOptions::parse({"--keep", "kept", "a.png"}));
  EXPECT_FALSE(PictureOptions::parse({"--keep", "kept", "--scale", "2"}));
}

TEST(PictureOptions, invalid_options_are_refused) {
  const std::vector<QStringList> senseless = {{},
                                              {"a.png", "b.png"},
                                              {"a.png", "--root"},
                                              {"a.png", "--size", "1100"},
                                              {"a.png", "--size", "0x5"},
                                              {"a.png", "--scale", "two"},
                                              {"a.png", "--scale", "9"},
                                              {"a.png", "--screen", "sidebar"},
                                              {"a.png", "--hover", "1"},
                                              {"a.png", "--frobnicate", "1"}};
  for (const auto& arguments : senseless)
    EXPECT_FALSE(PictureOptions::parse(arguments)) << arguments.join(' ').toStdString();
}

}  // namespace
}  // namespace tessaly
