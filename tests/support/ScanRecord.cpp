#include "support/ScanRecord.h"

#include <algorithm>
#include <thread>

namespace tessaly {
namespace {

std::string worded(const std::vector<ScanRecord::Event>& events, std::size_t place) {
  if (place >= events.size()) return "nothing";
  const auto& event = events[place];
  switch (event.form) {
    case ScanRecord::Event::Form::line:
      return "line '" + event.text + "'";
    case ScanRecord::Event::Form::fraction:
      return "fraction " + std::to_string(event.fraction);
    case ScanRecord::Event::Form::poll:
      return "poll";
  }
  return "";
}

}  // namespace

DiskScanner::Callbacks ScanRecord::callbacks() {
  const auto caller = std::this_thread::get_id();
  const auto note = [this, caller](Event event) {
    // Other threads write nothing, or the record itself would have a data race.
    if (std::this_thread::get_id() != caller) {
      elsewhere_ = true;
      return;
    }
    events_.push_back(std::move(event));
  };
  DiskScanner::Callbacks callbacks;
  callbacks.progress = [note](const std::string& line) { note({Event::Form::line, line, 0}); };
  callbacks.percent = [note](double fraction) { note({Event::Form::fraction, "", fraction}); };
  callbacks.isCancelled = [this, note] {
    note({Event::Form::poll, "", 0});
    if (elsewhere_) return true;
    if (++polls_ == actionAt_) action_();
    return polls_ >= cancelAt_;
  };
  return callbacks;
}

std::vector<std::string> ScanRecord::lines() const {
  std::vector<std::string> found;
  for (const Event& event : events_) {
    if (event.form == Event::Form::line) found.push_back(event.text);
  }
  return found;
}

std::vector<double> ScanRecord::fractions() const {
  std::vector<double> found;
  for (const Event& event : events_) {
    if (event.form == Event::Form::fraction) found.push_back(event.fraction);
  }
  return found;
}

std::string differenceOf(const ScanRecord& expected, const ScanRecord& actual) {
  if (actual.wasCalledElsewhere()) return "a callback on another thread";
  const auto& a = expected.events();
  const auto& b = actual.events();
  for (std::size_t place = 0; place < std::max(a.size(), b.size()); ++place) {
    if (place < a.size() && place < b.size() && a[place] == b[place]) continue;
    return "event " + std::to_string(place) + ": expected " + worded(a, place) + ", got " +
           worded(b, place);
  }
  return "";
}

}  // namespace tessaly
