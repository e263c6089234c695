#include "session/ProgressRelay.h"

#include <utility>

namespace tessaly {

ProgressRelay::ProgressRelay(Dispatch& dispatch, Receiver receiver)
    : line_(dispatch, std::move(receiver.line)), percent_(dispatch, std::move(receiver.percent)) {}

}  // namespace tessaly
