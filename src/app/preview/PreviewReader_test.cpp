#include "app/preview/PreviewReader.h"

#include <cerrno>
#include <fcntl.h>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <variant>

#include <QBuffer>
#include <QPainter>
#include <QPdfWriter>

#include "support/ForkedChild.h"
#include "support/Needs.h"
#include "support/OwnProcess.h"
#include "support/PreviewFile.h"
#include "support/TempTree.h"

namespace tessaly {
namespace {

using namespace std::string_literals;
using testing::Optional;

PreviewContent readAt(const std::string& path, const PreviewRequest& request = {}) {
  ReaderProgram reader;
  return PreviewReader::read(path, request, reader);
}

template <class Body>
bool shows(const PreviewContent& content) {
  return std::holds_alternative<Body>(content.body);
}

std::string reasonIn(const PreviewContent& content) {
  const auto* failure = std::get_if<PreviewFailure>(&content.body);
  return failure != nullptr ? failure->reason.toStdString() : "no failure";
}

std::string textIn(const PreviewContent& content) {
  const auto* text = std::get_if<TextPreview>(&content.body);
  return text != nullptr ? text->text.toStdString() : "no text";
}

std::string document() {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  QPdfWriter writer(&buffer);
  QPainter painter(&writer);
  painter.fillRect(QRect(0, 0, 100, 100), Qt::red);
  painter.end();
  return bytes.toStdString();
}

// A second of silence, as WAV.
std::string sound() {
  return "RIFF\x64\x1F\0\0WAVEfmt \x10\0\0\0\1\0\1\0\x40\x1F\0\0\x40\x1F\0\0\1\0\x08\0data\x40\x1F\0\0"s +
         std::string(8000, '\x80');
}

TEST(PreviewReader, the_content_decides_and_not_the_name) {
  const TempTree tree;
  putFile(tree.at("a.txt"), encoded(quarters(8, 8), "png"));
  putFile(tree.at("b.png"), "plain text");
  putFile(tree.at("c.mp3"), document());
  putFile(tree.at("d.pdf"), sound());
  putFile(tree.at("e.jpeg"), "PK\3\4\x14\0\0\0"s);
  EXPECT_TRUE(shows<ImagePreview>(readAt(tree.at("a.txt"))));
  EXPECT_EQ(textIn(readAt(tree.at("b.png"))), "plain text");
  EXPECT_TRUE(shows<PagesPreview>(readAt(tree.at("c.mp3"))));
  EXPECT_TRUE(shows<MediaPreview>(readAt(tree.at("d.pdf"))));
  EXPECT_TRUE(shows<FactsOnly>(readAt(tree.at("e.jpeg"))));
}

TEST(PreviewReader, a_file_has_its_facts) {
  const TempTree tree("folder/\n  file 5 mtime=1600000000.25");
  const PreviewFacts facts = readAt(tree.at("folder/file")).facts;
  EXPECT_EQ(facts.path, tree.at("folder/file"));
  EXPECT_EQ(facts.name, "file");
  EXPECT_FALSE(facts.isDir);
  EXPECT_EQ(facts.size, 5);
  EXPECT_THAT(facts.modified, Optional(1600000000.25));
  EXPECT_EQ(facts.linkTarget, "");
}

TEST(PreviewReader, a_folder_shows_its_contents) {
  const TempTree tree("folder/ mtime=1600000000\n  file 5");
  const PreviewContent content = readAt(tree.at("folder"));
  EXPECT_TRUE(content.facts.isDir);
  EXPECT_EQ(content.facts.size, 0);
  EXPECT_THAT(content.facts.modified, Optional(1600000000.0));
  ASSERT_TRUE(shows<FolderPreview>(content));
  EXPECT_EQ(std::get<FolderPreview>(content.body).count, 1);
}

TEST(PreviewReader, the_root_of_the_disk_is_shown) {
  const PreviewContent content = readAt("/");
  EXPECT_EQ(content.facts.name, "/");
  EXPECT_TRUE(shows<FolderPreview>(content));
}

TEST(PreviewReader, a_link_shows_its_target) {
  const TempTree tree("folder/\nlink -> folder");
  putFile(tree.at("folder/text"), "linked");
  ASSERT_EQ(::symlink("folder/text", tree.at("text").c_str()), 0);
  const PreviewContent folder = readAt(tree.at("link"));
  EXPECT_TRUE(folder.facts.isDir);
  EXPECT_EQ(folder.facts.name, "link");
  EXPECT_EQ(folder.facts.linkTarget, "folder");
  EXPECT_TRUE(shows<FolderPreview>(folder));
  EXPECT_EQ(textIn(readAt(tree.at("text"))), "linked");
}

TEST(PreviewReader, a_dangling_link_shows_where_it_points) {
  const TempTree tree("link -> no\\xFFwhere");
  const PreviewContent content = readAt(tree.at("link"));
  EXPECT_TRUE(shows<FactsOnly>(content));
  EXPECT_EQ(content.facts.linkTarget, "no\xFFwhere");
  EXPECT_FALSE(content.facts.isDir);
}

TEST(PreviewReader, pipes_sockets_and_devices_show_facts_only) {
  const TempTree tree("pipe fifo\nsocket socket");
  for (const std::string& path : {tree.at("pipe"), tree.at("socket"), "/dev/zero"s, "/dev/tty"s}) {
    EXPECT_TRUE(shows<FactsOnly>(readAt(path))) << path;
  }
}

TEST(PreviewReader, a_missing_file_is_reported) {
  const TempTree tree("file");
  const PreviewContent content = readAt(tree.at("gone"));
  EXPECT_EQ(reasonIn(content), "This file is no longer there.");
  EXPECT_EQ(content.facts.path, tree.at("gone"));
  EXPECT_EQ(content.facts.name, "gone");
  EXPECT_EQ(reasonIn(readAt(tree.at("file/below"))), "This file is no longer there.");
}

TEST(PreviewReader, a_file_without_read_permission_is_reported) {
  const TempTree tree("closed 7 mode=0\nlocked/ mode=0");
  ASSERT_EQ(::chmod(tree.path().c_str(), 0755), 0);
  const std::string told = asOtherUser([&tree]() -> std::string {
    const PreviewContent file = readAt(tree.at("closed"));
    const PreviewContent folder = readAt(tree.at("locked"));
    const PreviewContent below = readAt(tree.at("locked/below"));
    return reasonIn(file) + " " + std::to_string(file.facts.size) + " " + reasonIn(folder) + " " +
           reasonIn(below);
  });
  EXPECT_EQ(told,
            "You do not have permission to read this file. 7 "
            "You do not have permission to read this folder. "
            "You do not have permission to read this file.");
}

TEST(PreviewReader, names_that_are_not_utf8_are_read) {
  const TempTree tree("\\xFF\\xFE/");
  const std::string folder = tree.at("\xFF\xFE/");
  putFile(folder + "\xC3\x28.png", encoded(quarters(8, 8), "png"));
  putFile(folder + "\x80", "text");
  putFile(folder + "\n\x90", document());
  putFile(folder + "\xA0", sound());
  EXPECT_TRUE(shows<ImagePreview>(readAt(folder + "\xC3\x28.png")));
  EXPECT_EQ(textIn(readAt(folder + "\x80")), "text");
  EXPECT_TRUE(shows<PagesPreview>(readAt(folder + "\n\x90")));
  EXPECT_TRUE(shows<MediaPreview>(readAt(folder + "\xA0")));
  EXPECT_EQ(readAt(folder + "\x80").facts.name, "\x80");
}

TEST(PreviewReader, an_empty_file_is_an_empty_text) {
  const TempTree tree("empty");
  const PreviewContent content = readAt(tree.at("empty"));
  ASSERT_TRUE(shows<TextPreview>(content));
  EXPECT_EQ(textIn(content), "");
  EXPECT_TRUE(std::get<TextPreview>(content.body).isWhole);
}

TEST(PreviewReader, a_kernel_file_without_a_length_is_shown) {
  EXPECT_THAT(textIn(readAt("/proc/self/status")), testing::HasSubstr("Name:"));
}

TEST(PreviewReader, an_unknown_file_shows_facts_only) {
  const TempTree tree;
  putFile(tree.at("binary"), "\1\2\3\0\4\5\6"s);
  EXPECT_TRUE(shows<FactsOnly>(readAt(tree.at("binary"))));
}

// The number of bytes that this thread has read, including from this file.
std::int64_t bytesRead() {
  std::ifstream file("/proc/thread-self/io");
  std::string name;
  std::int64_t count = -1;
  file >> name >> count;
  return name == "rchar:" ? count : -1;
}

TEST(PreviewReader, no_more_of_a_long_text_is_read_than_shown) {
  constexpr std::int64_t tenGigabytes = std::int64_t{10} << 30;
  const TempTree tree;
  const std::string path = tree.at("log");
  std::string text;
  while (text.size() < 300'000) text += "a line of a log\n";
  putFile(path, text);
  ASSERT_EQ(::truncate(path.c_str(), tenGigabytes), 0);
  const std::int64_t before = bytesRead();
  if (before < 0) GTEST_SKIP() << needs(Need::countedReads, "/proc/self/io tells nothing");
  const PreviewContent content = readAt(path);
  const std::int64_t after = bytesRead();
  EXPECT_EQ(content.facts.size, tenGigabytes);
  EXPECT_EQ(textIn(content).size(), 10'000 * 16U);
  ASSERT_TRUE(shows<TextPreview>(content));
  EXPECT_FALSE(std::get<TextPreview>(content.body).isWhole);
  EXPECT_GE(after - before, 256 * 1024);
  EXPECT_LE(after - before, 300 * 1024);
}

TEST(PreviewReader, a_long_text_is_cut_between_characters) {
  const TempTree tree;
  std::string text = "x";
  while (text.size() < 200) text += "€";
  putFile(tree.at("text"), text);
  PreviewRequest request;
  request.limits.textBytes = 99;
  const PreviewContent content = readAt(tree.at("text"), request);
  ASSERT_TRUE(shows<TextPreview>(content));
  EXPECT_EQ(textIn(content), text.substr(0, 97));
  EXPECT_FALSE(std::get<TextPreview>(content.body).isWhole);
}

TEST(PreviewReader, a_text_of_exactly_the_limit_is_complete) {
  const TempTree tree;
  putFile(tree.at("text"), std::string(100, 'x'));
  PreviewRequest request;
  request.limits.textBytes = 100;
  PreviewContent content = readAt(tree.at("text"), request);
  EXPECT_TRUE(std::get<TextPreview>(content.body).isWhole);
  request.limits.textBytes = 99;
  content = readAt(tree.at("text"), request);
  EXPECT_FALSE(std::get<TextPreview>(content.body).isWhole);
}

// All red, without a signature.
TEST(PreviewReader, the_name_decides_for_images_without_a_signature) {
  std::string tga = "\0\0\2\0\0\0\0\0\0\0\0\0\4\0\4\0\x18\x20"s;
  for (int i = 0; i < 16; ++i) tga += "\0\0\xFF"s;
  tga += std::string(8, '\0') + "TRUEVISION-XFILE.\0"s;
  const TempTree tree;
  putFile(tree.at("a.TGA"), tga);
  putFile(tree.at("b"), tga);
  putFile(tree.at("c.tga"), "only named like one");
  putFile(tree.at("tga"), tga);
  const PreviewContent content = readAt(tree.at("a.TGA"));
  ASSERT_TRUE(shows<ImagePreview>(content));
  EXPECT_EQ(std::get<ImagePreview>(content.body).image.pixel(0, 0), qRgb(255, 0, 0));
  EXPECT_TRUE(shows<FactsOnly>(readAt(tree.at("b"))));
  EXPECT_TRUE(shows<FactsOnly>(readAt(tree.at("tga"))));
  EXPECT_EQ(textIn(readAt(tree.at("c.tga"))), "only named like one");
}

TEST(PreviewReader, every_image_format_without_a_signature_is_recognised_by_the_name) {
  const TempTree tree;
  for (const char* format : {"wbmp", "xbm"}) {
    const std::string path = tree.at("image.") + format;
    putFile(path, encoded(quarters(16, 16), format));
    EXPECT_TRUE(shows<ImagePreview>(readAt(path))) << format;
  }
}

TEST(PreviewReader, a_cancelled_request_shows_nothing) {
  const TempTree tree("folder/\n  file");
  putFile(tree.at("image"), encoded(quarters(8, 8), "png"));
  putFile(tree.at("text"), "text");
  putFile(tree.at("pages"), document());
  putFile(tree.at("sound"), sound());
  putFile(tree.at("binary"), "\1\2\3\0\4\5\6"s);
  for (const char* name : {"folder", "image", "text", "pages", "sound", "binary"}) {
    bool isDone = false;
    for (int limit = 1; !isDone; ++limit) {
      int polls = 0;
      PreviewRequest request;
      request.limits.pixels = {20, 20};
      request.cancelled = [&] { return ++polls >= limit; };
      const PreviewContent content = readAt(tree.at(name), request);
      isDone = polls < limit;
      EXPECT_TRUE(isDone || shows<FactsOnly>(content)) << name << " " << limit;
      ASSERT_LT(limit, 10'000) << name;
    }
  }
}

TEST(PreviewReader, reading_leaves_no_descriptor_open) {
  const TempTree tree("folder/\n  file");
  putFile(tree.at("image"), encoded(quarters(8, 8), "png"));
  putFile(tree.at("broken"), encoded(quarters(8, 8), "png").substr(0, 40));
  putFile(tree.at("text"), "text");
  putFile(tree.at("pages"), document());
  putFile(tree.at("locked"), document().substr(0, 90));
  putFile(tree.at("sound"), sound());
  const auto readAll = [&tree] {
    for (const char* name : {"folder", "image", "broken", "text", "pages", "locked", "sound"}) {
      readAt(tree.at(name));
    }
  };
  // The libraries open their own files the first time.
  readAll();
  const OwnProcess before = OwnProcess::now();
  readAll();
  EXPECT_EQ(OwnProcess::now(), before);
}

}  // namespace
}  // namespace tessaly
