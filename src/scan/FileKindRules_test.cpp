#include "scan/FileKindRules.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

namespace tessaly {
namespace {

using FileKindRules::classify;
using FileKindRules::pathExtension;
using testing::UnorderedElementsAre;

TEST(FileKindRules, a_directory_is_an_app_or_a_folder) {
  EXPECT_EQ(classify("Photos.APP", true), FileKind::app);
  EXPECT_EQ(classify("Safari.app", true), FileKind::app);
  EXPECT_EQ(classify("movie.mp4", true), FileKind::folder);
  EXPECT_EQ(classify("disk.sparsebundle", true), FileKind::folder);
  EXPECT_EQ(classify("app", true), FileKind::folder);
  EXPECT_EQ(classify("", true), FileKind::folder);
}

TEST(FileKindRules, a_file_named_like_a_bundle_is_an_app) {
  EXPECT_EQ(classify("Tool.app", false), FileKind::app);
  EXPECT_EQ(classify(".app", false), FileKind::app);
  EXPECT_EQ(classify("snapp", false), FileKind::other);
}

TEST(FileKindRules, the_last_extension_decides) {
  EXPECT_EQ(classify("archive.tar.gz", false), FileKind::archive);
  EXPECT_EQ(classify("clip.mov.bak", false), FileKind::other);
}

TEST(FileKindRules, case_does_not_matter) {
  EXPECT_EQ(classify("HOLIDAY.JPEG", false), FileKind::image);
  EXPECT_EQ(classify("\u212A.\u212Aey", false), FileKind::document);
}

TEST(FileKindRules, a_name_without_a_listed_extension_is_other) {
  EXPECT_EQ(classify("Makefile", false), FileKind::other);
  EXPECT_EQ(classify(".zshrc", false), FileKind::other);
  EXPECT_EQ(classify(".md", false), FileKind::other);
  EXPECT_EQ(classify("notes.", false), FileKind::other);
  EXPECT_EQ(classify("", false), FileKind::other);
  EXPECT_EQ(classify("\xff\xfe", false), FileKind::other);
  EXPECT_EQ(classify("+ 20 more", false), FileKind::other);
}

TEST(FileKindRules, bytes_that_are_no_text_do_not_hide_the_extension) {
  EXPECT_EQ(classify("caf\xe9.PDF", false), FileKind::document);
}

TEST(FileKindRules, a_disk_image_is_a_disk_only_as_a_file) {
  EXPECT_EQ(classify("disk.sparsebundle", false), FileKind::disk);
  EXPECT_EQ(classify("install.dmg", false), FileKind::disk);
}

TEST(FileKindRules, every_listed_extension_gives_its_kind) {
  const auto allGive = [](const auto& extensions, FileKind kind) {
    for (const std::string_view extension : extensions) {
      EXPECT_EQ(classify("x." + std::string(extension), false), kind) << extension;
    }
  };
  allGive(FileKindRules::video, FileKind::video);
  allGive(FileKindRules::image, FileKind::image);
  allGive(FileKindRules::document, FileKind::document);
  allGive(FileKindRules::code, FileKind::code);
  allGive(FileKindRules::archive, FileKind::archive);
  allGive(FileKindRules::disk, FileKind::disk);
}

TEST(FileKindRules, six_folders_are_important_and_videos_on_linux) {
  EXPECT_THAT(
      FileKindRules::important(Places::forMacos()),
      UnorderedElementsAre("Desktop", "Downloads", "Documents", "Pictures", "Movies", "Music"));
  EXPECT_THAT(FileKindRules::important(Places::forLinux()),
              UnorderedElementsAre("Desktop", "Downloads", "Documents", "Pictures", "Movies",
                                   "Music", "Videos"));
  EXPECT_FALSE(FileKindRules::important().contains("downloads"));
}

TEST(PathExtension, is_what_follows_the_last_dot) {
  EXPECT_EQ(pathExtension("a.b.c"), "c");
  EXPECT_EQ(pathExtension("..c"), "c");
  EXPECT_EQ(pathExtension("a. c"), " c");
}

TEST(PathExtension, is_empty_for_a_leading_and_for_a_trailing_dot) {
  EXPECT_EQ(pathExtension(".zshrc"), "");
  EXPECT_EQ(pathExtension("notes."), "");
  EXPECT_EQ(pathExtension("."), "");
  EXPECT_EQ(pathExtension(""), "");
  EXPECT_EQ(pathExtension("Makefile"), "");
}

TEST(PathExtension, looks_at_the_last_component_alone) {
  EXPECT_EQ(pathExtension("/a.d/b"), "");
  EXPECT_EQ(pathExtension("/a.d/b.c"), "c");
  EXPECT_EQ(pathExtension("/a/.b"), "");
}

TEST(FileKindText, every_kind_has_its_raw_text_and_comes_back_from_it) {
  std::vector<std::string> texts;
  for (const FileKind kind : allFileKinds) {
    texts.emplace_back(rawText(kind));
    EXPECT_EQ(fileKindFromRawText(rawText(kind)), kind);
  }
  EXPECT_THAT(texts, testing::ElementsAre("folder", "app", "video", "image", "document", "code",
                                          "archive", "disk", "other"));
}

TEST(FileKindText, no_other_text_is_a_kind) {
  EXPECT_EQ(fileKindFromRawText(""), std::nullopt);
  EXPECT_EQ(fileKindFromRawText("Folder"), std::nullopt);
  EXPECT_EQ(fileKindFromRawText("folders"), std::nullopt);
}

}  // namespace
}  // namespace tessaly
