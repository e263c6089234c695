// Records every callback of one scan in order, and can cancel the scan at an item.
#pragma once

#include <atomic>
#include <cstddef>
#include <functional>
#include <limits>
#include <string>
#include <vector>

#include "scan/DiskScanner.h"

namespace tessaly {

class ScanRecord {
 public:
  struct Event {
    enum class Form { line, fraction, poll };
    Form form = Form::poll;
    std::string text;
    double fraction = 0;

    friend bool operator==(const Event&, const Event&) = default;
  };

  static constexpr std::size_t never = std::numeric_limits<std::size_t>::max();

  // The scan is cancelled at poll number `cancelAt`, counted from 1, and later.
  explicit ScanRecord(std::size_t cancelAt = never) : cancelAt_(cancelAt) {}

  // Calls `action` within poll number `at`.
  void during(std::size_t at, std::function<void()> action) {
    actionAt_ = at;
    action_ = std::move(action);
  }

  // Callbacks that write into this record, which must outlive them. They must be called on the
  // calling thread.
  DiskScanner::Callbacks callbacks();

  const std::vector<Event>& events() const { return events_; }
  std::vector<std::string> lines() const;
  std::vector<double> fractions() const;
  std::size_t polls() const { return polls_; }
  bool wasCalledElsewhere() const { return elsewhere_; }

 private:
  std::size_t cancelAt_;
  std::size_t actionAt_ = 0;
  std::function<void()> action_;
  std::vector<Event> events_;
  std::size_t polls_ = 0;
  std::atomic<bool> elsewhere_ = false;
};

// The first difference between two records as a message; "" if they are equal.
std::string differenceOf(const ScanRecord& expected, const ScanRecord& actual);

}  // namespace tessaly
