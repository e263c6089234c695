// Waiting for what Qt's event loop brings about, with an end as every wait of a test has one.
#pragma once

#include <string>

#include <QCoreApplication>

#include "support/Eventually.h"

namespace tessaly {

// Runs the event loop until `condition` holds. Past the limit the test fails, with the words for
// what was awaited, and the answer is false.
template <class Condition>
bool eventuallyByEvents(const Condition& condition, const std::string& awaited) {
  const auto isSo = [&] {
    QCoreApplication::processEvents();
    return condition();
  };
  return eventually(isSo, awaited);
}

}  // namespace tessaly
