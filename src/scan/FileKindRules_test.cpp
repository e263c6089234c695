#include "scan/FileKindRules.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <string>
#include <string_view>
#include <vector>

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

TEST(FileKindRules, the_last_extension_decides_the_kind) {
  EXPECT_EQ(classify("archive.tar.gz", false), FileKind::archive);
  EXPECT_EQ(classify("clip.mov.bak", false), FileKind::other);
}

TEST(FileKindRules, the_case_of_an_extension_does_not_matter) {
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

TEST(FileKindRules, an_extension_is_found_after_bytes_that_are_not_utf8) {
  EXPECT_EQ(classify("caf\xe9.PDF", false), FileKind::document);
}

TEST(FileKindRules, a_disk_image_is_a_disk_only_as_a_file) {
  EXPECT_EQ(classify("disk.sparsebundle", false), FileKind::disk);
  EXPECT_EQ(classify("install.dmg", false), FileKind::disk);
}

// All extensions with their kinds, independent of the tables in use, so that a test fails if an
// extension is lost, added or moved there.
const std::map<std::string, FileKind> kindOfEnding = {
    {"mp4", FileKind::video},        {"mov", FileKind::video},
    {"mkv", FileKind::video},        {"avi", FileKind::video},
    {"webm", FileKind::video},       {"m4v", FileKind::video},
    {"jpg", FileKind::image},        {"jpeg", FileKind::image},
    {"png", FileKind::image},        {"gif", FileKind::image},
    {"heic", FileKind::image},       {"webp", FileKind::image},
    {"svg", FileKind::image},        {"raw", FileKind::image},
    {"dng", FileKind::image},        {"pdf", FileKind::document},
    {"doc", FileKind::document},     {"docx", FileKind::document},
    {"pages", FileKind::document},   {"txt", FileKind::document},
    {"md", FileKind::document},      {"rtf", FileKind::document},
    {"xls", FileKind::document},     {"xlsx", FileKind::document},
    {"ppt", FileKind::document},     {"key", FileKind::document},
    {"js", FileKind::code},          {"ts", FileKind::code},
    {"tsx", FileKind::code},         {"py", FileKind::code},
    {"swift", FileKind::code},       {"go", FileKind::code},
    {"rs", FileKind::code},          {"java", FileKind::code},
    {"c", FileKind::code},           {"cpp", FileKind::code},
    {"json", FileKind::code},        {"yml", FileKind::code},
    {"zip", FileKind::archive},      {"tar", FileKind::archive},
    {"gz", FileKind::archive},       {"rar", FileKind::archive},
    {"7z", FileKind::archive},       {"pkg", FileKind::archive},
    {"dmg", FileKind::disk},         {"iso", FileKind::disk},
    {"sparseimage", FileKind::disk}, {"sparsebundle", FileKind::disk},
};

TEST(FileKindRules, every_extension_gives_its_kind_to_files_but_not_to_directories) {
  for (const auto& [ending, kind] : kindOfEnding) {
    EXPECT_EQ(classify("x." + ending, false), kind) << ending;
    EXPECT_EQ(classify("x.y." + ending, false), kind) << ending;
    EXPECT_EQ(classify("x." + ending + "q", false), FileKind::other) << ending;
    EXPECT_EQ(classify("x." + ending, true), FileKind::folder) << ending;
  }
}

TEST(FileKindRules, the_tables_list_no_other_extension) {
  std::map<std::string, FileKind> listed;
  const auto add = [&](const auto& endings, FileKind kind) {
    for (const std::string_view ending : endings)
      EXPECT_TRUE(listed.emplace(ending, kind).second) << ending;
  };
  add(FileKindRules::video, FileKind::video);
  add(FileKindRules::image, FileKind::image);
  add(FileKindRules::document, FileKind::document);
  add(FileKindRules::code, FileKind::code);
  add(FileKindRules::archive, FileKind::archive);
  add(FileKindRules::disk, FileKind::disk);
  EXPECT_EQ(listed, kindOfEnding);
  for (const char* ending : {"bmp", "tiff", "mp3", "wmv", "flv", "csv", "html", "h", "hpp", "yaml",
                             "toml", "bz2", "xz", "deb", "img", "log", "exe"})
    EXPECT_EQ(classify(std::string("x.") + ending, false), FileKind::other) << ending;
}

TEST(FileKindRules, no_other_extension_of_up_to_three_characters_has_a_kind) {
  const std::string_view characters = "abcdefghijklmnopqrstuvwxyz0123456789";
  std::vector<std::string> endings = {""};
  for (std::size_t i = 0; i < endings.size() && endings[i].size() < 3; ++i) {
    for (const char character : characters) endings.push_back(endings[i] + character);
  }
  for (const std::string& ending : endings) {
    if (kindOfEnding.contains(ending) || ending == "app") continue;
    EXPECT_EQ(classify("x." + ending, false), FileKind::other) << ending;
  }
}

TEST(FileKindRules, six_folder_names_are_important_and_videos_too_on_linux) {
  EXPECT_THAT(
      FileKindRules::important(Places::forMacos()),
      UnorderedElementsAre("Desktop", "Downloads", "Documents", "Pictures", "Movies", "Music"));
  EXPECT_THAT(FileKindRules::important(Places::forLinux()),
              UnorderedElementsAre("Desktop", "Downloads", "Documents", "Pictures", "Movies",
                                   "Music", "Videos"));
  EXPECT_FALSE(FileKindRules::important().contains("downloads"));
}

TEST(PathExtension, an_extension_is_the_text_after_the_last_dot) {
  EXPECT_EQ(pathExtension("a.b.c"), "c");
  EXPECT_EQ(pathExtension("..c"), "c");
  EXPECT_EQ(pathExtension("a. c"), " c");
}

TEST(PathExtension, a_name_with_only_a_leading_or_a_trailing_dot_has_no_extension) {
  EXPECT_EQ(pathExtension(".zshrc"), "");
  EXPECT_EQ(pathExtension("notes."), "");
  EXPECT_EQ(pathExtension("."), "");
  EXPECT_EQ(pathExtension(""), "");
  EXPECT_EQ(pathExtension("Makefile"), "");
}

TEST(PathExtension, the_extension_of_a_path_is_that_of_its_last_component) {
  EXPECT_EQ(pathExtension("/a.d/b"), "");
  EXPECT_EQ(pathExtension("/a.d/b.c"), "c");
  EXPECT_EQ(pathExtension("/a/.b"), "");
}

TEST(FileKindText, every_kind_is_read_back_from_its_raw_text) {
  std::vector<std::string> texts;
  for (const FileKind kind : allFileKinds) {
    texts.emplace_back(rawText(kind));
    EXPECT_EQ(fileKindFromRawText(rawText(kind)), kind);
  }
  EXPECT_THAT(texts, testing::ElementsAre("folder", "app", "video", "image", "document", "code",
                                          "archive", "disk", "other"));
}

TEST(FileKindText, other_texts_are_no_kind) {
  EXPECT_EQ(fileKindFromRawText(""), std::nullopt);
  EXPECT_EQ(fileKindFromRawText("Folder"), std::nullopt);
  EXPECT_EQ(fileKindFromRawText("folders"), std::nullopt);
}

}  // namespace
}  // namespace tessaly
