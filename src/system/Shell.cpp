#include "system/Shell.h"

#include <algorithm>
#include <utility>

#include "platform/Process.h"
#include "platform/UnicodeText.h"
#include "system/ToolOutput.h"
#include "system/ToolText.h"

namespace tessaly::Shell {

namespace {

constexpr double graceSeconds = 1.0;

bool isUtf8(std::string_view text) {
  while (!text.empty()) {
    const UnicodeText::Scalar scalar = UnicodeText::firstScalar(text);
    if (!scalar.isText) return false;
    text.remove_prefix(scalar.length);
  }
  return true;
}

Process started(const std::string& path, const std::vector<std::string>& args,
                const std::optional<std::string>& cwd, Process::Stream streams) {
  // Set only for tools whose output is read here: an editor started by Process should speak the
  // user's language. The user's default options for zip are removed, since they could change its
  // work: some delete the archived files.
  const std::vector<std::pair<std::string, std::string>> environment = {
      {"LC_ALL", "C"}, {"ZIPOPT", ""}, {"ZIP", ""}};
  Result<Process> launched = Process::launch({.path = path,
                                              .args = args,
                                              .cwd = cwd,
                                              .environment = environment,
                                              .output = streams,
                                              .error = streams});
  if (!launched) {
    throw ToolError("POSIX", launched.error().code, launched.error().description());
  }
  return std::move(launched).value();
}

void end(Process& tool, double grace, const After& after) {
  tool.terminate();
  if (tool.waitUntil(after(grace))) return;
  tool.kill();
  // A tool that is blocked in the kernel, as by a disk that does not answer, may outlive this wait.
  tool.waitUntil(after(grace));
}

ToolError givenUp(const std::string& path) {
  return {ToolError::ownDomain, ToolError::givenUp, "given up: " + path};
}

// Reads what the tool has printed before it ended.
std::string outputOf(Process& tool, Deadline deadline) {
  std::string output = tool.readOutput(deadline);
  if (!isUtf8(output)) output.clear();
  return output;
}

constexpr double lookEvery = 0.025;
constexpr double cancelledGraceSeconds = 0.1;

}  // namespace

std::string run(const std::string& path, const std::vector<std::string>& args, double timeout,
                const std::optional<std::string>& cwd, const After& after) {
  Process tool = started(path, args, cwd, Process::Stream::captured);
  const Deadline deadline = after(timeout);
  if (!tool.waitUntil(deadline)) {
    tool.terminate();
    tool.waitUntil(after(graceSeconds));
    throw ToolError(ToolError::ownDomain, ToolError::timedOut, "timed out: " + path);
  }
  return outputOf(tool, deadline);
}

Run cancellable(std::function<bool()> isCancelled, const After& after) {
  return [isCancelled = std::move(isCancelled), after](
             const std::string& path, const std::vector<std::string>& args, double timeout) {
    if (!isCancelled) return run(path, args, timeout, std::nullopt, after);
    if (isCancelled()) throw givenUp(path);
    Process tool = started(path, args, std::nullopt, Process::Stream::captured);
    const Deadline deadline = after(timeout);
    while (!tool.waitUntil(after(lookEvery))) {
      if (isCancelled()) {
        end(tool, cancelledGraceSeconds, after);
        throw givenUp(path);
      }
      if (deadline.hasPassed()) {
        tool.terminate();
        tool.waitUntil(after(graceSeconds));
        throw ToolError(ToolError::ownDomain, ToolError::timedOut, "timed out: " + path);
      }
    }
    return outputOf(tool, deadline);
  };
}

Ending runToEnd(const std::string& path, const std::vector<std::string>& args, double timeout,
                const std::optional<std::string>& cwd, const std::function<bool()>& isCancelled,
                const After& after) {
  Process tool = started(path, args, cwd, Process::Stream::sampled);
  const Deadline deadline = after(timeout);
  while (!tool.waitUntil(after(lookEvery))) {
    if (isCancelled && isCancelled()) {
      end(tool, cancelledGraceSeconds, after);
      throw givenUp(path);
    }
    if (deadline.hasPassed()) {
      end(tool, graceSeconds, after);
      throw ToolError(ToolError::ownDomain, ToolError::timedOut, "timed out: " + path);
    }
  }
  return {.exit = *tool.exit(), .words = tool.sample()};
}

std::int64_t duBytes(const std::string& at, const Run& run) {
  constexpr double timeout = 30;
  return parseDu(toolText(run, "/usr/bin/du", {"-sk", "-d", "0", at}, timeout));
}

std::int64_t parseDu(std::string_view text) {
  constexpr std::string_view separators = "\t ";
  constexpr std::int64_t kibibyte = 1024;
  text.remove_prefix(std::min(text.find_first_not_of(separators), text.size()));
  const std::optional<std::int64_t> count =
      ToolOutput::integer(text.substr(0, text.find_first_of(separators)));
  std::int64_t bytes = 0;
  if (!count || __builtin_mul_overflow(*count, kibibyte, &bytes)) return 0;
  return bytes;
}

}  // namespace tessaly::Shell
