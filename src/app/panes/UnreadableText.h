// What the figures of a scan say of what it could not read. Pure.
#pragma once

#include <QString>

#include "scan/UnreadableItems.h"

namespace tessaly::UnreadableText {

// "· 12 unreadable"; empty where all was read.
QString figure(const UnreadableItems& items);

// The first of them, a line each, "/root: not permitted", and how many more there are. Long paths
// are cut in the middle, so that the whole has room in the smallest window. Empty where all was
// read.
QString list(const UnreadableItems& items);

// Why one could not be read, in words that follow a colon.
QString reason(const SystemError& failure);

}  // namespace tessaly::UnreadableText
