// Texts about the items that a scan could not read. Pure functions.
#pragma once

#include <QString>

#include "scan/UnreadableItems.h"

namespace tessaly::UnreadableText {

// "· 12 unreadable"; empty if everything was read.
QString figure(const UnreadableItems& items);

// The first items, a line each, "/root: not permitted", and the number of the others. Long paths
// are elided in the middle, so that the list fits in the smallest window. Empty if everything was
// read.
QString list(const UnreadableItems& items);

// Why an item could not be read, as text after a colon.
QString reason(const SystemError& failure);

}  // namespace tessaly::UnreadableText
