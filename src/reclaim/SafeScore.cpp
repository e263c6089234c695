#include "reclaim/SafeScore.h"

#include <algorithm>
#include <chrono>
#include <string_view>

#include "platform/UnicodeText.h"
#include "scan/FileKindRules.h"
#include "scan/PathName.h"

namespace tessaly::SafeScore {

namespace {

using Words = std::vector<std::string>;

constexpr int most = 100;
constexpr int cautionBelow = 40;
constexpr int safeAbove = 74;

bool holdsOne(const std::string& text, const Words& words) {
  return std::any_of(words.begin(), words.end(),
                     [&](const std::string& word) { return text.find(word) != std::string::npos; });
}

bool endsWithOne(const std::string& text, const Words& words) {
  return std::any_of(words.begin(), words.end(),
                     [&](const std::string& word) { return text.ends_with(word); });
}

// `lower` is a path in lower case.
bool isPersonal(const std::string& lower, const Rules& rules) {
  if (holdsOne(lower, rules.places.score.personal)) return true;
  for (const std::string& name : FileKindRules::important(rules.places)) {
    if (lower.find("/" + UnicodeText::lowercased(name) + "/") != std::string::npos) return true;
  }
  return std::any_of(rules.personalFolders.begin(), rules.personalFolders.end(),
                     [&](const std::string& folder) {
                       return lower.starts_with(UnicodeText::lowercased(folder) + "/");
                     });
}

// The score as it is built up.
class Sum {
 public:
  void add(int points) { score_ += points; }
  void add(int points, std::string_view reason) {
    score_ += points;
    if (!reasons_.empty()) reasons_ += " · ";
    reasons_ += reason;
  }
  // The label warns, whatever the score.
  void guard() { isGuarded_ = true; }
  // Takes off points, but ends at 0.
  void lower(int points, std::string_view reason) {
    add(std::max(score_, points) - points - score_, reason);
  }
  void cap() { score_ = std::min(score_, most); }

  int score() const { return score_; }
  bool isCaution() const { return isGuarded_ || score_ < cautionBelow; }
  std::string label() const {
    if (isCaution()) return "Keep / caution";
    return score_ > safeAbove ? "Safe to remove" : "Review";
  }
  std::string reasons() const { return reasons_.empty() ? "Neutral" : reasons_; }

 private:
  int score_ = 0;
  bool isGuarded_ = false;
  std::string reasons_;
};

void scorePlace(Sum& sum, const std::string& path, const Rules& rules) {
  const std::string lower = UnicodeText::lowercased(path);
  const ScoreWords& words = rules.places.score;
  if (holdsOne(lower, words.caches) || endsWithOne(lower, words.cacheEnds)) {
    sum.add(85, "developer or cache path");
  } else {
    sum.add(50);
  }
  if (holdsOne(lower, words.downloads)) sum.add(10, "Downloads");
  if (isPersonal(lower, rules)) {
    sum.add(-35, "personal folder");
    sum.guard();
  }
}

void scoreKind(Sum& sum, const std::string& kind) {
  const std::string lower = UnicodeText::lowercased(kind);
  if (holdsOne(lower, {"archive", "disk", "other"})) sum.add(8);
  if (holdsOne(lower, {"video", "image", "document"})) {
    sum.add(-12, kind);
    sum.guard();
  }
}

void scoreAge(Sum& sum, double days) {
  if (days > 180) {
    sum.add(20, "idle 6+ months");
  } else if (days > 30) {
    sum.add(8, "idle 30+ days");
  } else if (days < 7) {
    sum.lower(20, "used this week");
    sum.guard();
    return;
  }
  sum.cap();
}

}  // namespace

double presentTime() {
  return std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch()).count();
}

SafeItem evaluate(const std::string& path, std::int64_t bytes, const std::string& kind,
                  std::optional<double> mtime, const Rules& rules) {
  constexpr double day = 86400;
  Sum sum;
  scorePlace(sum, path, rules);
  scoreKind(sum, kind);
  if (mtime && *mtime > 0) {
    scoreAge(sum, (rules.now - *mtime) / day);
  } else {
    sum.cap();
  }
  return {.name = std::string(lastPathComponent(path)),
          .path = path,
          .bytes = bytes,
          .score = sum.score(),
          .label = sum.label(),
          .caution = sum.isCaution(),
          .reason = sum.reasons()};
}

std::vector<SafeItem> rank(const std::vector<LargeOldFile>& files, const Rules& rules) {
  constexpr double thousand = 1000;
  std::vector<SafeItem> items;
  items.reserve(files.size());
  for (const LargeOldFile& file : files) {
    items.push_back(evaluate(file.path, file.bytes, file.kind,
                             static_cast<double>(file.mtimeMs) / thousand, rules));
  }
  std::stable_sort(items.begin(), items.end(),
                   [](const SafeItem& a, const SafeItem& b) { return a.score > b.score; });
  return items;
}

}  // namespace tessaly::SafeScore
