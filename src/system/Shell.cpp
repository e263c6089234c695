#include "system/Shell.h"

#include <algorithm>
#include <utility>

#include "platform/Deadline.h"
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

}  // namespace

std::string run(const std::string& path, const std::vector<std::string>& args, double timeout,
                const std::optional<std::string>& cwd) {
  // Only here, where a tool's words are read, not for whatever a Process starts: an editor should
  // speak the user's language. Nor may options that the user keeps for zip change what it does
  // here: some delete what has been archived.
  const std::vector<std::pair<std::string, std::string>> environment = {
      {"LC_ALL", "C"}, {"ZIPOPT", ""}, {"ZIP", ""}};
  Result<Process> launched = Process::launch({.path = path,
                                              .args = args,
                                              .cwd = cwd,
                                              .environment = environment,
                                              .output = Process::Stream::captured,
                                              .error = Process::Stream::captured});
  if (!launched) {
    throw ToolError("POSIX", launched.error().code, launched.error().description());
  }
  Process tool = std::move(launched).value();
  const Deadline deadline = Deadline::after(timeout);
  if (!tool.waitUntil(deadline)) {
    tool.terminate();
    tool.waitUntil(Deadline::after(graceSeconds));
    throw ToolError(ToolError::ownDomain, ToolError::timedOut, "timed out: " + path);
  }
  std::string output = tool.readOutput(deadline);
  if (!isUtf8(output)) output.clear();
  return output;
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
