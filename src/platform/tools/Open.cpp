#include "platform/tools/Open.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <optional>
#include <ostream>
#include <sys/stat.h>
#include <utility>

#include "platform/FileUri.h"
#include "platform/tools/Editors.h"
#include "platform/tools/Terminals.h"

namespace tessaly::tools {

namespace {

struct Request {
  std::optional<std::string> application;
  std::string path;
};

struct Target {
  std::string path;  // absolute
  bool isFolder;
};

std::optional<Request> requestOf(const std::vector<std::string>& args) {
  if (args.size() == 3 && args[0] == "-a") return Request{.application = args[1], .path = args[2]};
  if (args.size() == 2 && args[0] == "--") return Request{.application = {}, .path = args[1]};
  if (args.size() == 1 && !args[0].starts_with('-')) {
    return Request{.application = {}, .path = args[0]};
  }
  return std::nullopt;
}

// On a single line, whatever the name contains.
std::string shown(std::string text) {
  std::replace(text.begin(), text.end(), '\n', '?');
  return text;
}

// Programs get only absolute paths, so that none is read as an option.
Result<Target> targetAt(const std::string& path) {
  std::string absolute = path;
  if (!path.starts_with('/')) {
    std::error_code problem;
    absolute = std::filesystem::current_path(problem).string() + "/" + path;
    if (problem) return SystemError::fromErrno(problem.value(), path);
  }
  struct stat status {};
  // The empty path is an error, and not the working directory.
  if (path.empty()) return SystemError::fromErrno(ENOENT, path);
  if (stat(absolute.c_str(), &status) != 0) return SystemError::fromErrno(errno, absolute);
  return Target{.path = std::move(absolute), .isFolder = S_ISDIR(status.st_mode)};
}

std::string folderOf(const Target& target) {
  if (target.isFolder) return target.path;
  return target.path.substr(0, std::max<std::size_t>(target.path.rfind('/'), 1));
}

std::optional<std::vector<Process::Launch>> launchesFor(const std::string& application,
                                                        const Target& target,
                                                        const Programs& programs) {
  if (application == "Terminal") return Terminals::launchesIn(folderOf(target), programs);
  return Editors::launchesOf(application, target.path, target.isFolder, programs);
}

int openIn(const std::string& application, const Target& target, std::ostream& err,
           const Programs& programs) {
  const auto launches = launchesFor(application, target, programs);
  if (!launches || launches->empty()) {
    err << "Unable to find application named '" << shown(application) << "'\n";
    return failed;
  }
  std::string reason;
  for (const Process::Launch& launch : *launches) {
    const Outcome started = programs.start(launch);
    if (started) return done;
    if (reason.empty()) reason = started.error().description();
  }
  err << "The application '" << application << "' cannot be opened: " << shown(reason) << "\n";
  return failed;
}

int openByDefault(const Target& target, std::ostream& err, const Programs& programs) {
  if (const std::optional<std::string> opener = programs.find("xdg-open")) {
    const Result<Process::Exit> exit =
        programs.run({.path = *opener, .args = {fileUri(target.path)}, .isDetached = true});
    if (exit && exit.value().isSuccess()) return done;
  }
  err << "No application knows how to open " << shown(target.path) << "\n";
  return failed;
}

// Starts another instance of a program that may already be running. The program itself checks for a
// display.
int startAnother(const std::string& application, std::ostream& err, const Programs& programs) {
  const Outcome started = programs.start({.path = application, .isDetached = true});
  if (started) return done;
  err << "The application '" << shown(application)
      << "' cannot be opened: " << shown(started.error().description()) << "\n";
  return failed;
}

}  // namespace

int open(const std::vector<std::string>& args, Streams streams, const Services& services) {
  if (args.size() == 2 && args[0] == "-n")
    return startAnother(args[1], streams.err, services.programs);
  if (args.size() == 1 && (args[0] == "--help" || args[0] == "-h")) {
    streams.out << "Usage: tessaly-tools open [-a APPLICATION] PATH\n"
                   "       tessaly-tools open -n PROGRAM\n"
                   "\n"
                   "Opens a file or folder in the desktop's default application, or in\n"
                   "\n"
                   "  Terminal   what $TERMINAL names, x-terminal-emulator, or another terminal,\n"
                   "             in that folder\n"
                   "  Cursor, Visual Studio Code, Code\n"
                   "             these editors\n"
                   "  TextEdit   an editor that the desktop comes with\n";
    return done;
  }
  const std::optional<Request> request = requestOf(args);
  if (!request) {
    streams.err << "usage: open [-a APPLICATION] PATH, or open -n PROGRAM\n";
    return misused;
  }
  const Result<Target> target = targetAt(request->path);
  if (!target) {
    if (target.error().kind == SystemError::Kind::notFound) {
      streams.err << "The file " << shown(target.error().path) << " does not exist.\n";
    } else {
      streams.err << "open: " << shown(target.error().description()) << "\n";
    }
    return failed;
  }
  const Programs& programs = services.programs;
  if (!programs.haveDisplay()) {
    streams.err << "open: there is no display to open a window on\n";
    return failed;
  }
  if (request->application) {
    return openIn(*request->application, target.value(), streams.err, programs);
  }
  return openByDefault(target.value(), streams.err, programs);
}

}  // namespace tessaly::tools
