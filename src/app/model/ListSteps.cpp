#include "app/model/ListSteps.h"

#include <algorithm>
#include <cstddef>

namespace tessaly::ListSteps {

namespace {

using Kind = Step::Kind;

std::size_t at(int index) {
  return static_cast<std::size_t>(index);
}

// Counts the marked places before a place (a Fenwick tree).
class MarkedPlaces {
 public:
  explicit MarkedPlaces(int count) : sums_(at(count) + 1) {}

  void add(int place, int amount) {
    for (std::size_t i = at(place) + 1; i < sums_.size(); i += i & (~i + 1)) sums_[i] += amount;
  }
  int before(int place) const {
    int sum = 0;
    for (std::size_t i = at(place); i > 0; i -= i & (~i + 1)) sum += sums_[i];
    return sum;
  }

 private:
  std::vector<int> sums_;
};

// Whether each element is part of one longest increasing subsequence of `values`, which are
// distinct.
std::vector<bool> longestIncrease(const std::vector<int>& values) {
  std::vector<int> ends;  // by length - 1: the index of the smallest last element
  std::vector<int> previous(values.size(), -1);
  for (std::size_t i = 0; i < values.size(); ++i) {
    const auto end =
        std::ranges::lower_bound(ends, values[i], {}, [&](int index) { return values[at(index)]; });
    if (end != ends.begin()) previous[i] = *(end - 1);
    if (end == ends.end()) {
      ends.push_back(static_cast<int>(i));
    } else {
      *end = static_cast<int>(i);
    }
  }
  std::vector<bool> isPart(values.size());
  for (int i = ends.empty() ? -1 : ends.back(); i >= 0; i = previous[at(i)]) isPart[at(i)] = true;
  return isPart;
}

void addRemovals(std::vector<Step>& steps, const std::vector<bool>& isKept) {
  for (int end = static_cast<int>(isKept.size()); end > 0;) {
    int begin = end;
    while (begin > 0 && !isKept[at(begin - 1)]) --begin;
    if (begin < end) steps.push_back({.kind = Kind::remove, .first = begin, .last = end - 1});
    end = std::max(0, begin - 1);
  }
}

// `places` has, for each row in the wanted order, its place in the list, which has no other rows.
//
// Each row that moves is inserted right behind its predecessor in the wanted order. So the rows in
// their final order form the beginning of the wanted list, in pieces that begin at rows that do not
// move, and all rows that still have to move are between these pieces or behind them.
void addMoves(std::vector<Step>& steps, const std::vector<int>& places) {
  const int count = static_cast<int>(places.size());
  const std::vector<bool> stays = longestIncrease(places);
  MarkedPlaces toMove(count);
  // For each place, the wanted row of the next row that does not move, and the number of such rows
  // before the place.
  std::vector<int> nextStaying(places.size());
  std::vector<int> stayingBefore(places.size());
  std::vector<int> wantedOf(places.size(), -1);
  for (int wanted = 0; wanted < count; ++wanted) {
    if (stays[at(wanted)]) {
      wantedOf[at(places[at(wanted)])] = wanted;
    } else {
      toMove.add(places[at(wanted)], 1);
    }
  }
  for (int place = 0, staying = 0; place < count; ++place) {
    stayingBefore[at(place)] = staying;
    if (wantedOf[at(place)] >= 0) ++staying;
  }
  for (int place = count - 1, next = count; place >= 0; --place) {
    nextStaying[at(place)] = next;
    if (wantedOf[at(place)] >= 0) next = wantedOf[at(place)];
  }

  int anchor = -1;  // the place of the last row so far that does not move
  int staying = 0;  // the number of rows so far that do not move
  for (int wanted = 0; wanted < count;) {
    const int place = places[at(wanted)];
    if (stays[at(wanted)]) {
      anchor = place;
      ++staying;
      ++wanted;
      continue;
    }
    int length = 1;
    while (wanted + length < count && !stays[at(wanted + length)] &&
           places[at(wanted + length)] == place + length)
      ++length;
    const int to = wanted + (anchor < 0 ? 0 : toMove.before(anchor));
    const int inOrderBefore =
        place < anchor ? nextStaying[at(place)] : wanted + stayingBefore[at(place)] - staying;
    const int from = toMove.before(place) + inOrderBefore;
    if (from != to)
      steps.push_back({.kind = Kind::move, .first = from, .last = from + length - 1, .to = to});
    for (int i = 0; i < length; ++i) toMove.add(place + i, -1);
    wanted += length;
  }
}

void addInsertions(std::vector<Step>& steps, const std::vector<int>& origins) {
  const int count = static_cast<int>(origins.size());
  for (int begin = 0; begin < count;) {
    int end = begin;
    while (end < count && origins[at(end)] < 0) ++end;
    if (begin < end) steps.push_back({.kind = Kind::insert, .first = begin, .last = end - 1});
    begin = end + 1;
  }
}

}  // namespace

std::vector<Step> between(int count, const std::vector<int>& origins) {
  std::vector<Step> steps;
  std::vector<bool> isKept(at(count));
  for (const int origin : origins) {
    if (origin >= 0) isKept[at(origin)] = true;
  }
  addRemovals(steps, isKept);

  std::vector<int> placeAfterRemovals(at(count));
  for (int row = 0, place = 0; row < count; ++row) {
    placeAfterRemovals[at(row)] = place;
    if (isKept[at(row)]) ++place;
  }
  std::vector<int> places;
  for (const int origin : origins) {
    if (origin >= 0) places.push_back(placeAfterRemovals[at(origin)]);
  }
  addMoves(steps, places);
  addInsertions(steps, origins);
  return steps;
}

}  // namespace tessaly::ListSteps
