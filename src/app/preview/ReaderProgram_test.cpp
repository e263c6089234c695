#include "app/preview/ReaderProgram.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <string>
#include <sys/stat.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <variant>
#include <vector>

#include <QBuffer>
#include <QImageWriter>

#include "app/preview/ContentKind.h"
#include "app/preview/PreviewFailures.h"
#include "platform/Deadline.h"
#include "support/HostileFiles.h"
#include "support/Needs.h"
#include "support/OwnProcess.h"
#include "support/PreviewFile.h"
#include "support/TempTree.h"

namespace tessaly {
namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;
using testing::IsEmpty;
using testing::SizeIs;
using Wanted = ReaderRequest::Wanted;

const std::string damagedImage = PreviewFailures::damagedImage().reason.toStdString();
const std::string hugeImage = PreviewFailures::hugeImage().reason.toStdString();
const std::string gone = "This file is no longer there.";

// Requests like PreviewReader, for a file with a known signature.
PreviewBody readFile(ReaderProgram& reader, const HeldItem& file,
                     const PreviewRequest& request = {}) {
  std::string head(ContentKind::headBytes, '\0');
  head.resize(file.read(0, head.data(), head.size()).value());
  const ContentKind kind = ContentKind::of(head);
  const Wanted wanted = kind.family == ContentKind::Family::document ? Wanted::document
                        : kind.family == ContentKind::Family::media  ? Wanted::media
                                                                     : Wanted::image;
  return reader.read(file, wanted, kind.image, request).value_or(FactsOnly{});
}

PreviewBody readBytes(ReaderProgram& reader, const std::string& bytes,
                      const PreviewRequest& request = {}) {
  const TempTree tree;
  putFile(tree.at("file"), bytes);
  return readFile(reader, held(tree.at("file")), request);
}

std::string reasonIn(const PreviewBody& body) {
  const auto* failure = std::get_if<PreviewFailure>(&body);
  return failure != nullptr ? failure->reason.toStdString() : "no failure";
}

bool showsImage(const PreviewBody& body) {
  return std::holds_alternative<ImagePreview>(body);
}

// The running children of this process.
std::vector<pid_t> children() {
  std::vector<pid_t> all;
  for (const fs::directory_entry& entry : fs::directory_iterator("/proc")) {
    // Processes start and end meanwhile; files of ended ones cannot be read.
    std::ifstream file(entry.path() / "stat");
    std::string text;
    std::getline(file, text, '\0');
    // The fields after the name, which may contain any character.
    const std::size_t end = text.rfind(')');
    if (end == std::string::npos || text.size() < end + 4 || text[end + 2] == 'Z') continue;
    if (std::stoi(text.substr(end + 4)) == ::getpid()) all.push_back(std::stoi(text));
  }
  return all;
}

// Waits for a minute at most.
template <class Condition>
bool comesAbout(const Condition& condition) {
  const Deadline end = Deadline::after(60);
  while (!condition()) {
    if (end.hasPassed()) return false;
    ::poll(nullptr, 0, 1);
  }
  return true;
}

// The open files of the process, without the numbers of pipes and sockets.
std::vector<std::string> openIn(pid_t process) {
  std::vector<std::string> all;
  std::error_code error;
  fs::directory_iterator entry("/proc/" + std::to_string(process) + "/fd", error);
  // The process may end meanwhile.
  for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
    std::error_code closed;
    const std::string target = fs::read_symlink(entry->path(), closed).string();
    all.push_back(target.substr(0, target.find(":[")));
  }
  std::sort(all.begin(), all.end());
  return all;
}

// Whether the process is a reader that has opened the file. Between fork and exec a child is still
// a copy of this program with its descriptors, which hold the file once. A reader holds it to
// examine it, and opens it again to read it.
bool isReading(pid_t process, const std::string& path) {
  std::error_code ended;
  const fs::path program = fs::read_symlink("/proc/" + std::to_string(process) + "/exe", ended);
  if (program != fs::canonical(OwnPrograms::path(ReaderRequest::program))) return false;
  const std::vector<std::string> all = openIn(process);
  return std::count(all.begin(), all.end(), path) == 2;
}

std::string limitOf(pid_t process, const std::string& name) {
  std::ifstream file("/proc/" + std::to_string(process) + "/limits");
  for (std::string line; std::getline(file, line);) {
    if (!line.starts_with(name)) continue;
    line.erase(0, line.find_first_not_of(' ', name.size()));
    return line.substr(0, line.find(' '));
  }
  return "unknown";
}

PreviewRequest within(double seconds) {
  PreviewRequest request;
  request.limits.seconds = seconds;
  return request;
}

// A thread that reads until its request is cancelled, and the process it uses.
class BusyReading {
 public:
  BusyReading(ReaderProgram& reader, const std::string& path) : file_(held(path)) {
    request_.limits.seconds = 1e9;
    request_.cancelled = [this] { return isCancelled_.load(); };
    thread_ = std::thread([this, &reader] { body_ = readFile(reader, file_, request_); });
    comesAbout([&] {
      for (const pid_t child : children()) {
        if (isReading(child, path)) process_ = child;
      }
      return process_ != 0;
    });
  }
  ~BusyReading() { cancel(); }

  pid_t process() const { return process_; }
  void cancel() {
    isCancelled_ = true;
    if (thread_.joinable()) thread_.join();
  }
  const PreviewBody& body() const { return body_; }
  void join() { thread_.join(); }

 private:
  HeldItem file_;
  PreviewRequest request_;
  std::atomic<bool> isCancelled_ = false;
  std::thread thread_;
  pid_t process_ = 0;
  PreviewBody body_;
};

// Expects that all processes have ended after each test.
class ReaderProgramTest : public testing::Test {
 protected:
  void TearDown() override {
    EXPECT_TRUE(comesAbout([] { return !OwnProcess::now().hasChildren; }));
  }
};

TEST_F(ReaderProgramTest, images_documents_and_recordings_are_read) {
  ReaderProgram reader;
  const PreviewBody image = readBytes(reader, encoded(quarters(64, 32), "png"));
  ASSERT_TRUE(showsImage(image));
  EXPECT_EQ(std::get<ImagePreview>(image).pixels, QSize(64, 32));
  EXPECT_EQ(colorsOf(std::get<ImagePreview>(image).image), "rgbw");
  EXPECT_TRUE(std::holds_alternative<PagesPreview>(readBytes(reader, HostileFiles::document(""))));
  const PreviewBody sound = readBytes(reader, HostileFiles::sound());
  ASSERT_TRUE(std::holds_alternative<MediaPreview>(sound));
  EXPECT_EQ(std::get<MediaPreview>(sound).facts.front().first, QStringLiteral("Duration"));
}

TEST_F(ReaderProgramTest, texts_in_a_drawing_are_drawn) {
  ReaderProgram reader;
  const auto drawing = [](const std::string& text) {
    return "<svg xmlns='http://www.w3.org/2000/svg' width='40' height='40'><text x='0' y='40' "
           "font-size='50'>" +
           text + "</text></svg>";
  };
  const PreviewBody with = readBytes(reader, drawing("M"));
  const PreviewBody without = readBytes(reader, drawing(" "));
  ASSERT_TRUE(showsImage(with) && showsImage(without));
  EXPECT_NE(std::get<ImagePreview>(with).image, std::get<ImagePreview>(without).image);
}

TEST_F(ReaderProgramTest, a_file_that_lacks_its_assumed_format_is_reported) {
  ReaderProgram reader;
  const TempTree tree;
  putFile(tree.at("text"), "only text");
  const HeldItem file = held(tree.at("text"));
  EXPECT_FALSE(reader.read(file, Wanted::imageIfOne, "tga", {}).has_value());
  EXPECT_FALSE(reader.read(file, Wanted::mediaIfOne, {}, {}).has_value());
}

TEST_F(ReaderProgramTest, a_drawing_that_takes_too_long_is_given_up) {
  ReaderProgram reader;
  EXPECT_EQ(reasonIn(readBytes(reader, HostileFiles::slowDrawing(), within(0.3))), hugeImage);
}

TEST_F(ReaderProgramTest, a_photograph_with_countless_scans_is_given_up) {
  ReaderProgram reader;
  EXPECT_EQ(reasonIn(readBytes(reader, HostileFiles::photographOfScans(100'000), within(0.3))),
            hugeImage);
}

// The process exceeds its memory or its time, whichever comes first.
TEST_F(ReaderProgramTest, a_document_whose_form_draws_itself_is_given_up) {
  ReaderProgram reader;
  const PreviewBody body = readBytes(reader, HostileFiles::documentThatDrawsItself(), within(2));
  EXPECT_NE(reasonIn(body), "no failure");
}

TEST_F(ReaderProgramTest, an_image_with_a_giant_size_in_its_header_is_refused) {
  ReaderProgram reader;
  EXPECT_EQ(reasonIn(readBytes(reader, HostileFiles::pngOf(60'000, 60'000))), hugeImage);
}

TEST_F(ReaderProgramTest, a_truncated_file_is_reported_as_damaged) {
  ReaderProgram reader;
  const std::string image = encoded(quarters(64, 64), "png");
  EXPECT_EQ(reasonIn(readBytes(reader, image.substr(0, image.size() / 2))), damagedImage);
  EXPECT_EQ(reasonIn(readBytes(reader, HostileFiles::document("").substr(0, 60))),
            PreviewFailures::damagedDocument().reason.toStdString());
  EXPECT_EQ(reasonIn(readBytes(reader, HostileFiles::sound().substr(0, 20))),
            PreviewFailures::damagedMedia().reason.toStdString());
}

// An image of 45 million pixels that must be completely in memory to be decoded.
TEST_F(ReaderProgramTest, the_first_image_is_judged_like_later_ones) {
  QImage large(9000, 5000, QImage::Format_Grayscale8);
  large.fill(128);
  QByteArray bytes;
  QBuffer buffer(&bytes);
  QImageWriter writer(&buffer, "jpeg");
  writer.setProgressiveScanWrite(true);
  ASSERT_TRUE(writer.write(large));
  ReaderProgram reader;
  for (const char* turn : {"first", "second"}) {
    const PreviewBody body = readBytes(reader, bytes.toStdString());
    ASSERT_TRUE(showsImage(body)) << turn << ": " << reasonIn(body);
    EXPECT_EQ(std::get<ImagePreview>(body).pixels, large.size()) << turn;
  }
}

// Another process may replace the file between its examination and its reading.
TEST_F(ReaderProgramTest, only_the_examined_file_is_read) {
  const TempTree tree("pipe fifo\nsocket socket\nlink -> file");
  putFile(tree.at("other"), encoded(quarters(8, 8), "png"));
  ASSERT_EQ(::symlink("other", tree.at("away").c_str()), 0);
  ReaderProgram reader;
  for (const char* name : {"other", "pipe", "socket", "away"}) {
    putFile(tree.at("file"), encoded(quarters(16, 16), "png"));
    const HeldItem file = held(tree.at("file"));
    ASSERT_EQ(::rename(tree.at(name).c_str(), tree.at("file").c_str()), 0);
    EXPECT_EQ(reasonIn(readFile(reader, file)), gone) << name;
    // Opening the pipe would have unblocked a writer at its other end.
    if (name == "pipe"s) {
      EXPECT_LT(::open(tree.at("file").c_str(), O_WRONLY | O_NONBLOCK | O_CLOEXEC), 0);
      EXPECT_EQ(errno, ENXIO);
    }
    fs::remove(tree.at("file"));
    // The former target of the link.
    putFile(tree.at("other"), encoded(quarters(8, 8), "png"));
  }
  const HeldItem file = [&] {
    putFile(tree.at("file"), encoded(quarters(16, 16), "png"));
    return held(tree.at("file"));
  }();
  fs::remove(tree.at("file"));
  EXPECT_EQ(reasonIn(readFile(reader, file)), gone);
}

TEST_F(ReaderProgramTest, the_target_of_a_link_is_read) {
  const TempTree tree("folder/\nlink -> folder/image");
  putFile(tree.at("folder/image"), encoded(quarters(8, 8), "png"));
  ReaderProgram reader;
  EXPECT_TRUE(showsImage(readFile(reader, held(tree.at("link")))));
}

TEST_F(ReaderProgramTest, cancelling_ends_the_process_that_reads) {
  const TempTree tree;
  putFile(tree.at("drawing"), HostileFiles::slowDrawing());
  ReaderProgram reader;
  BusyReading reading(reader, tree.at("drawing"));
  ASSERT_NE(reading.process(), 0);
  reading.cancel();
  EXPECT_TRUE(std::holds_alternative<FactsOnly>(reading.body()));
  EXPECT_TRUE(comesAbout([&] { return ::kill(reading.process(), 0) != 0 && errno == ESRCH; }));
}

TEST_F(ReaderProgramTest, a_cancelled_request_starts_no_reading) {
  ReaderProgram reader;
  PreviewRequest request;
  request.cancelled = [] { return true; };
  EXPECT_TRUE(std::holds_alternative<FactsOnly>(
      readBytes(reader, encoded(quarters(8, 8), "png"), request)));
  EXPECT_THAT(children(), IsEmpty());
}

TEST_F(ReaderProgramTest, reading_leaves_nothing_behind_whatever_the_file) {
  const OwnProcess before = OwnProcess::now();
  {
    ReaderProgram reader;
    readBytes(reader, encoded(quarters(8, 8), "png"));
    readBytes(reader, HostileFiles::slowDrawing(), within(0.1));
    readBytes(reader, HostileFiles::documentThatDrawsItself(), within(0.1));
    readBytes(reader, HostileFiles::document("").substr(0, 60));
    int polls = 0;
    PreviewRequest request = within(1e9);
    request.cancelled = [&polls] { return ++polls > 2; };
    readBytes(reader, HostileFiles::slowDrawing(), request);
    // The waiting process for the next file.
    EXPECT_TRUE(comesAbout([] { return children().size() == 1; }));
  }
  EXPECT_EQ(settled(before), before);
}

TEST_F(ReaderProgramTest, one_process_is_kept_waiting) {
  ReaderProgram reader;
  EXPECT_THAT(children(), IsEmpty());
  reader.warmUp();
  const std::vector<pid_t> first = children();
  ASSERT_THAT(first, SizeIs(1));
  reader.warmUp();
  EXPECT_EQ(children(), first);
  ASSERT_TRUE(showsImage(readBytes(reader, encoded(quarters(8, 8), "png"))));
  std::vector<pid_t> second;
  EXPECT_TRUE(comesAbout([&] { return (second = children()).size() == 1; }));
  EXPECT_NE(second, first);
}

TEST_F(ReaderProgramTest, a_waiting_process_that_was_killed_is_replaced) {
  ReaderProgram reader;
  reader.warmUp();
  for (const pid_t child : children()) ::kill(child, SIGKILL);
  ASSERT_TRUE(comesAbout([] { return children().empty(); }));
  EXPECT_TRUE(showsImage(readBytes(reader, encoded(quarters(8, 8), "png"))));
  EXPECT_TRUE(comesAbout([] { return children().size() == 1; }));
}

TEST_F(ReaderProgramTest, a_file_whose_process_was_killed_is_reported_as_damaged) {
  const TempTree tree;
  putFile(tree.at("drawing"), HostileFiles::slowDrawing());
  ReaderProgram reader;
  BusyReading reading(reader, tree.at("drawing"));
  ASSERT_NE(reading.process(), 0);
  ::kill(reading.process(), SIGSEGV);
  reading.join();
  EXPECT_EQ(reasonIn(reading.body()), damagedImage);
}

TEST_F(ReaderProgramTest, several_files_are_read_at_once) {
  const TempTree tree;
  putFile(tree.at("image"), encoded(quarters(64, 64), "png"));
  ReaderProgram reader;
  std::vector<PreviewBody> bodies(4);
  std::vector<std::thread> threads;
  for (PreviewBody& body : bodies) {
    threads.emplace_back([&] { body = readFile(reader, held(tree.at("image"))); });
  }
  for (std::thread& thread : threads) thread.join();
  for (const PreviewBody& body : bodies) EXPECT_TRUE(showsImage(body)) << reasonIn(body);
}

TEST_F(ReaderProgramTest, a_forked_copy_of_this_program_does_not_count_as_reading) {
  const TempTree tree("file 4K");
  const HeldItem file = held(tree.at("file"));
  int ends[2];
  ASSERT_EQ(::pipe2(ends, O_CLOEXEC), 0);
  const pid_t copy = ::fork();
  if (copy == 0) {
    char none = 0;
    ::close(ends[1]);
    ::_exit(::read(ends[0], &none, 1) == 0 ? 0 : 1);
  }
  ASSERT_GT(copy, 0);
  EXPECT_THAT(openIn(copy), testing::Contains(tree.at("file")));
  EXPECT_FALSE(isReading(copy, tree.at("file")));
  for (const int end : ends) ::close(end);
  EXPECT_EQ(::waitpid(copy, nullptr, 0), copy);
}

TEST_F(ReaderProgramTest, the_process_has_the_file_open_and_nothing_else_of_ours) {
  const TempTree tree;
  putFile(tree.at("drawing"), HostileFiles::slowDrawing());
  ReaderProgram reader;
  const BusyReading reading(reader, tree.at("drawing"));
  ASSERT_NE(reading.process(), 0);
  // The file is held for the examination and open for reading; Qt has an eventfd.
  EXPECT_THAT(openIn(reading.process()),
              testing::ElementsAre("/dev/null", "/dev/null", tree.at("drawing"), tree.at("drawing"),
                                   "anon_inode", "pipe", "socket"));
}

TEST_F(ReaderProgramTest, the_process_has_limits_of_its_own) {
  const TempTree tree;
  putFile(tree.at("drawing"), HostileFiles::slowDrawing());
  ReaderProgram reader;
  const BusyReading reading(reader, tree.at("drawing"));
  ASSERT_NE(reading.process(), 0);
  const pid_t process = reading.process();
  EXPECT_EQ(limitOf(process, "Max core file size"), "0");
  EXPECT_EQ(limitOf(process, "Max file size"), "0");
  EXPECT_EQ(limitOf(process, "Max open files"), "64");
  // The time of the request, one second more, and the time used so far.
  const std::string time = limitOf(process, "Max cpu time");
  ASSERT_NE(time, "unlimited");
  EXPECT_GT(std::stoi(time), 600);
  EXPECT_LT(std::stoi(time), 700);
}

TEST_F(ReaderProgramTest, a_preview_has_ten_seconds) {
  EXPECT_EQ(PreviewRequest().limits.seconds, 10);
}

TEST_F(ReaderProgramTest, the_process_may_use_at_most_a_gibibyte_of_memory) {
#ifdef TESSALY_SANITIZED
  GTEST_SKIP() << needs(Need::plainBuild, "sanitizers need more memory than the limit");
#endif
  const TempTree tree;
  putFile(tree.at("drawing"), HostileFiles::slowDrawing());
  ReaderProgram reader;
  const BusyReading reading(reader, tree.at("drawing"));
  ASSERT_NE(reading.process(), 0);
  EXPECT_TRUE(comesAbout(
      [&] { return limitOf(reading.process(), "Max data size") == std::to_string(1 << 30); }));
}

// When this program ends in any way, the system closes its descriptors.
TEST_F(ReaderProgramTest, the_process_ends_with_the_program_that_asked) {
  const TempTree tree;
  putFile(tree.at("drawing"), HostileFiles::slowDrawing());
  const HeldItem file = held(tree.at("drawing"));
  const OwnProcess before = OwnProcess::now();
  {
    Result<Process> process = Process::launch({.path = OwnPrograms::path(ReaderRequest::program),
                                               .output = Process::Stream::captured,
                                               .error = Process::Stream::discarded,
                                               .input = Process::Stream::captured});
    ASSERT_TRUE(process.ok());
    PreviewLimits limits;
    limits.seconds = 500;
    const ReaderRequest request{.wanted = Wanted::image,
                                .format = "svg",
                                .path = tree.at("drawing"),
                                .identity = file.facts().identity,
                                .limits = limits};
    ASSERT_TRUE(process.value().writeInput(*request.encoded(), Deadline::never()));
    ASSERT_TRUE(comesAbout([&] {
      const std::vector<pid_t> all = children();
      return all.size() == 1 && isReading(all.front(), tree.at("drawing"));
    }));
    // It gets no input that would end it.
    EXPECT_FALSE(process.value().waitUntil(Deadline::after(0)));
  }
  EXPECT_EQ(settled(before), before);
}

// Into a pipe, since it may not write to files, even open ones.
TEST_F(ReaderProgramTest, warnings_of_libraries_are_dropped) {
  int ends[2];
  ASSERT_EQ(::pipe2(ends, O_CLOEXEC | O_NONBLOCK), 0);
  const int ours = ::fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, 3);
  ::dup2(ends[1], STDERR_FILENO);
  {
    ReaderProgram reader;
    EXPECT_TRUE(showsImage(readBytes(reader, HostileFiles::pngThatIsComplainedOf())));
  }
  ::dup2(ours, STDERR_FILENO);
  char said[1000];
  EXPECT_LT(::read(ends[0], said, sizeof said), 0);
  for (const int end : {ends[0], ends[1], ours}) ::close(end);
}

TEST_F(ReaderProgramTest, a_missing_program_is_reported) {
  ReaderProgram reader("/nowhere/tessaly-pages");
  reader.warmUp();
  EXPECT_EQ(reasonIn(readBytes(reader, encoded(quarters(8, 8), "png"))),
            "This image cannot be shown.");
}

// A compromised program may answer anything.
class ReaderProgramTakenOver : public ReaderProgramTest {
 protected:
  std::string reasonWith(const std::string& does, double seconds) {
    const TempTree tree;
    putFile(tree.at("program"), "#!/bin/sh\n" + does + "\n");
    EXPECT_EQ(::chmod(tree.at("program").c_str(), 0755), 0);
    ReaderProgram reader(tree.at("program"));
    return reasonIn(readBytes(reader, encoded(quarters(8, 8), "png"), within(seconds)));
  }
};

TEST_F(ReaderProgramTakenOver, a_compromised_program_may_answer_nothing) {
  EXPECT_EQ(reasonWith("exec sleep 1000", 0.2), hugeImage);
  EXPECT_EQ(reasonWith("head -c 4 >/dev/null", 60), damagedImage);
}

TEST_F(ReaderProgramTakenOver, a_compromised_program_may_answer_nonsense) {
  EXPECT_EQ(reasonWith("head -c 4 >/dev/null; echo nonsense that is no piece", 60), damagedImage);
}

TEST_F(ReaderProgramTakenOver, a_compromised_program_may_answer_without_end) {
  EXPECT_EQ(reasonWith("exec cat /dev/zero", 60), damagedImage);
}

}  // namespace
}  // namespace tessaly
