// A program for the tests to start. Its arguments are steps, executed in order:
//
//   print N            N bytes on standard output
//   complain N         N bytes on standard error
//   say TEXT           TEXT on standard output, unchanged
//   cwd, descriptors   the current directory, and the open descriptors ("0 1 2")
//   signals            the lines of /proc/self/status about blocked and ignored signals
//   variable NAME      the value of an environment variable
//   copy               standard input to standard output
//   ignore-term        from here on ignores SIGTERM
//   record-term FILE   from here on creates FILE and ends at SIGTERM
//   make FILE          creates FILE
//   tell FIFO          opens FIFO, which blocks until there is a reader, and writes a byte
//   hold FILE          waits until it gets a shared lock of FILE
//   hand-over          exits with 0, and continues in a child with the same streams
//   flood              prints until nobody reads the output
//   sleep              sleeps for ever
//   exit N
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iostream>
#include <map>
#include <set>
#include <string>
#include <sys/file.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

// A signal handler can access nothing else.
const char* terminationRecord = nullptr;

void recordTermination(int) {
  const int file = open(terminationRecord, O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
  _exit(file >= 0 ? 0 : 1);
}

void check(bool isDone, const std::string& step) {
  if (isDone) return;
  std::fprintf(stderr, "%s: %s\n", step.c_str(), std::strerror(errno));
  std::_Exit(99);
}

void writeAll(int to, const std::string& bytes) {
  for (std::size_t at = 0; at < bytes.size();) {
    const ssize_t count = write(to, bytes.data() + at, bytes.size() - at);
    check(count > 0, "write");
    at += static_cast<std::size_t>(count);
  }
}

void listDescriptors() {
  std::set<int> open;
  for (const fs::directory_entry& entry : fs::directory_iterator("/proc/self/fd")) {
    // Collected first, since listing itself opens a descriptor.
    open.insert(std::stoi(entry.path().filename().string()));
  }
  std::string text;
  for (const int number : open) {
    if (fcntl(number, F_GETFD) >= 0) text += (text.empty() ? "" : " ") + std::to_string(number);
  }
  writeAll(STDOUT_FILENO, text);
}

void listSignals() {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);) {
    if (line.starts_with("SigBlk") || line.starts_with("SigIgn")) {
      writeAll(STDOUT_FILENO, line + "\n");
    }
  }
}

void copyInput() {
  char buffer[4096];
  for (ssize_t count = 0; (count = read(STDIN_FILENO, buffer, sizeof buffer)) != 0;) {
    check(count > 0, "read");
    writeAll(STDOUT_FILENO, std::string(buffer, static_cast<std::size_t>(count)));
  }
}

void make(const char* path) {
  const int file = open(path, O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
  check(file >= 0 && close(file) == 0, "make");
}

void tell(const char* fifo) {
  const int end = open(fifo, O_WRONLY | O_CLOEXEC);
  check(end >= 0 && write(end, "x", 1) == 1 && close(end) == 0, "tell");
}

void hold(const char* path) {
  const int file = open(path, O_RDONLY | O_CLOEXEC);
  check(file >= 0 && flock(file, LOCK_SH) == 0 && close(file) == 0, "hold");
}

void sleepForEver() {
  while (true) pause();
}

}  // namespace

int main(int, char** argv) {
  const std::map<std::string, std::function<void()>> plain = {
      {"cwd", [] { writeAll(STDOUT_FILENO, fs::current_path().string()); }},
      {"descriptors", listDescriptors},
      {"signals", listSignals},
      {"copy", copyInput},
      {"ignore-term", [] { std::signal(SIGTERM, SIG_IGN); }},
      {"hand-over",
       [] {
         const pid_t child = fork();
         check(child >= 0, "hand-over");
         if (child > 0) std::_Exit(0);
       }},
      {"flood",
       [] {
         while (true) writeAll(STDOUT_FILENO, std::string(65536, 'x'));
       }},
      {"sleep", sleepForEver},
  };
  using Step = std::function<void(const char*)>;
  const std::map<std::string, Step> valued = {
      {"print",
       [](const char* count) { writeAll(STDOUT_FILENO, std::string(std::stoul(count), 'x')); }},
      {"complain",
       [](const char* count) { writeAll(STDERR_FILENO, std::string(std::stoul(count), 'x')); }},
      {"say", [](const char* text) { writeAll(STDOUT_FILENO, text); }},
      {"variable",
       [](const char* name) {
         const char* const value = std::getenv(name);
         writeAll(STDOUT_FILENO, value != nullptr ? value : "(none)");
       }},
      {"record-term",
       [](const char* file) {
         terminationRecord = file;
         std::signal(SIGTERM, recordTermination);
       }},
      {"make", make},
      {"tell", tell},
      {"hold", hold},
      {"exit", [](const char* status) { std::_Exit(std::atoi(status)); }},
  };
  for (char** step = argv + 1; *step != nullptr; ++step) {
    if (const auto found = plain.find(*step); found != plain.end()) {
      found->second();
    } else if (const auto taking = valued.find(*step); taking != valued.end() && step[1]) {
      taking->second(*++step);
    } else {
      std::fprintf(stderr, "no such step: %s\n", *step);
      return 98;
    }
  }
  return 0;
}
