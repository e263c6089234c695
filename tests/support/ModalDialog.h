// Operates a dialog that runs an event loop of its own.
#pragma once

#include <functional>
#include <gtest/gtest.h>
#include <utility>

#include <QApplication>
#include <QTimer>

namespace tessaly {

// Runs `answer` on the dialog as soon as it is open.
template <class Dialog>
void whenUp(std::function<void(Dialog&)> answer) {
  QTimer::singleShot(0, [answer = std::move(answer)] {
    auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
    ASSERT_NE(dialog, nullptr);
    answer(*dialog);
  });
}

}  // namespace tessaly
