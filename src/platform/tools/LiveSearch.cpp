#include "platform/tools/LiveSearch.h"

#include <atomic>
#include <cerrno>
#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>
#include <utility>
#include <variant>

#include "platform/DirectoryWalk.h"
#include "platform/HomeDirectory.h"
#include "platform/ResolvedPath.h"
#include "platform/UnicodeText.h"
#include "platform/WalkedPath.h"
#include "platform/tools/BestPaths.h"
#include "platform/tools/NameMatch.h"
#include "platform/tools/SearchBounds.h"
#include "platform/tools/WholeLines.h"

namespace tessaly::tools::LiveSearch {

namespace {

using Item = DirectoryWalk::Item;
using Type = DirectoryWalk::Type;

bool isPrintable(std::string_view text) {
  return text.find('\n') == std::string_view::npos && UnicodeText::isUtf8(text);
}

std::optional<std::int64_t> sizeIn(const SearchQuery& query) {
  const auto* const sized = std::get_if<SearchQuery::BySize>(&query.wanted);
  return sized == nullptr ? std::nullopt : std::optional(sized->least);
}

// Owns everything that the walk uses, so that it may outlive the call that started it.
class Search {
 public:
  Search(const SearchQuery& query, std::string scope, const Settings& settings)
      : scope_(std::move(scope)),
        size_(sizeIn(query)),
        owner_(settings.owner),
        bounds_(scope_, settings.places, settings.home, size_.has_value()),
        best_(settings.bytes) {
    if (const auto* const named = std::get_if<SearchQuery::ByName>(&query.wanted)) {
      name_.emplace(named->text);
    }
  }

  // Runs on one thread, once.
  void run(const std::function<bool()>& isOver) {
    if (bounds_.entersScope()) {
      walk(isOver);
    } else {
      lookAtScope();
    }
    const std::lock_guard lock(mutex_);
    hasEnded_ = true;
    ended_.notify_all();
  }

  // Asks the walk to end. Safe from any thread.
  void stop() { isOver_ = true; }

  // Whether the walk has ended at `deadline`. Safe from any thread.
  bool hasEnded(const Deadline& deadline) {
    std::unique_lock lock(mutex_);
    while (!hasEnded_ && !deadline.hasPassed()) {
      const int rest = deadline.pollTimeout();
      if (rest < 0) {
        ended_.wait(lock);
      } else {
        ended_.wait_for(lock, std::chrono::milliseconds(rest));
      }
    }
    return hasEnded_;
  }

  // What was found so far. Safe from any thread.
  Result<Answer> answer(bool isLate) {
    const std::lock_guard lock(mutex_);
    if (scopeFailure_ != 0) return SystemError::fromErrno(scopeFailure_, scope_);
    Answer answer;
    answer.paths = best_.sorted();
    answer.isLate = isLate;
    answer.isCut = best_.isCut();
    answer.unreadable = unreadable_;
    answer.firstUnreadable = firstUnreadable_;
    return answer;
  }

 private:
  void walk(const std::function<bool()>& isOver) {
    DirectoryWalk walk(
        scope_, [this](const auto& folder) { return descentInto(folder); }, 0, nullptr,
        [this](const auto& item, int code) { countUnreadable(item, code); },
        {.attributes = size_.has_value(),
         .keep = [this](const auto& entry) { return isWanted(entry); }});
    if (!walk.isOpen()) {
      const std::lock_guard lock(mutex_);
      scopeFailure_ = unreadable_ > 0 ? failure_ : ENOENT;
    }
    WalkedPath path(scope_);
    while (!isOver_ && !isOver()) {
      const Item* const item = walk.next();
      if (item == nullptr) return;
      path.moveTo(*item);
      take(*item, path);
    }
    walk.stop();
  }

  // A scope in which nothing can be found is still one that must exist.
  void lookAtScope() {
    struct stat status {};
    const int code = stat(scope_.c_str(), &status) != 0 ? errno : 0;
    const std::lock_guard lock(mutex_);
    scopeFailure_ = code != 0 || S_ISDIR(status.st_mode) ? code : ENOTDIR;
  }

  // Called from any thread of the walk, as isWanted() is.
  DirectoryWalk::Descent descentInto(const DirectoryWalk::Candidate& folder) const {
    const bool isEntered =
        isPrintable(folder.name) &&
        !bounds_.leavesOut(folder.name, folder.depth, [&folder] { return folder.path(); });
    return {.enter = isEntered};
  }

  bool isWanted(const DirectoryWalk::Entry& entry) const {
    if (!size_) return name_->in(entry.name) != NameMatch::Place::nowhere;
    return entry.type == Type::file && entry.hasAttributes && entry.length >= *size_ &&
           entry.owner == owner_;
  }

  void take(const Item& item, const WalkedPath& path) {
    if (size_ ? item.type != Type::file || !item.hasAttributes : !isNamed(item)) return;
    if (!isPrintable(item.name)) return;
    if (bounds_.leavesOut(item.name, item.depth, [&path] { return path.text(); })) return;
    if (bounds_.isCritical(path.text())) return;
    if (size_) {
      addBySize(item, path.text());
    } else {
      add({.rank = rankOf(item, path), .path = path.text()});
    }
  }

  bool isNamed(const Item& item) const { return name_->in(item.name) != NameMatch::Place::nowhere; }

  std::int64_t rankOf(const Item& item, const WalkedPath& path) const {
    constexpr std::int64_t below = std::int64_t{1} << 62U;
    constexpr std::int64_t inside = std::int64_t{1} << 61U;
    auto rank = static_cast<std::int64_t>(path.text().size());
    if (name_->in(item.name) == NameMatch::Place::inside) rank += inside;
    if (path.isBelowDotFolder()) rank += below;
    return rank;
  }

  // The second look finds other names of the file, and leaves out what has vanished meanwhile.
  void addBySize(const Item& item, const std::string& path) {
    const std::int64_t rank = -item.allocatedSize;
    if (!best_.mayKeep(rank, path)) return;
    struct stat status {};
    const bool isKnown = lstat(path.c_str(), &status) == 0;
    if (isKnown ? !S_ISREG(status.st_mode) : errno == ENOENT || errno == ENOTDIR) return;
    BestPaths::Path found{.rank = rank, .path = path};
    if (isKnown && status.st_nlink > 1) found.inode = {status.st_dev, status.st_ino};
    add(std::move(found));
  }

  void add(BestPaths::Path path) {
    const std::lock_guard lock(mutex_);
    best_.add(std::move(path));
  }

  void countUnreadable(const DirectoryWalk::Candidate& item, int code) {
    const std::string path = item.path();
    const std::lock_guard lock(mutex_);
    if (unreadable_++ > 0) return;
    failure_ = code;
    firstUnreadable_ = SystemError::fromErrno(code, path).description();
  }

  const std::string scope_;
  const std::optional<std::int64_t> size_;  // absent in a search by name
  std::optional<NameMatch> name_;           // absent in a search by size
  const std::uint32_t owner_;
  const SearchBounds bounds_;
  std::atomic<bool> isOver_ = false;

  std::mutex mutex_;
  std::condition_variable ended_;
  // The walk's thread alone changes the following, with the mutex, and reads them without.
  bool hasEnded_ = false;
  BestPaths best_;
  int scopeFailure_ = 0;
  int failure_ = 0;
  int unreadable_ = 0;
  std::string firstUnreadable_;
};

}  // namespace

Settings Settings::within(const Deadline& deadline) {
  return {.places = Places::current(),
          .home = homeDirectory(),
          .owner = geteuid(),
          .deadline = deadline,
          .bytes = WholeLines::limit};
}

Result<Answer> run(const SearchQuery& query, const Settings& settings,
                   const StartThread& startThread) {
  const std::string scope = resolvedPath(query.scope);
  // Any path in it would be left out.
  if (!isPrintable(scope)) return SystemError::fromErrno(EILSEQ, query.scope);

  const auto search = std::make_shared<Search>(query, scope, settings);
  std::thread walker = startThread([search] { search->run([] { return false; }); });
  if (!walker.joinable()) {
    search->run([&settings] { return settings.deadline.hasPassed(); });
    return search->answer(settings.deadline.hasPassed());
  }
  const bool hasEnded = search->hasEnded(settings.deadline);
  search->stop();
  // A walk that still runs ends soon, unless a file system does not answer.
  constexpr double grace = 0.5;
  if (hasEnded || search->hasEnded(Deadline::after(grace))) {
    walker.join();
  } else {
    walker.detach();
  }
  return search->answer(!hasEnded);
}

}  // namespace tessaly::tools::LiveSearch
