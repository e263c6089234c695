// Waits for effects of Qt's event loop, with a limit like every wait of a test.
#pragma once

#include <string>

#include <QCoreApplication>

#include "support/Eventually.h"

namespace tessaly {

// Runs the event loop until `condition` is true. Past the limit the test fails with the text
// `awaited`, and the result is false.
template <class Condition>
bool eventuallyByEvents(const Condition& condition, const std::string& awaited) {
  const auto isSo = [&] {
    QCoreApplication::processEvents();
    return condition();
  };
  return eventually(isSo, awaited);
}

}  // namespace tessaly
