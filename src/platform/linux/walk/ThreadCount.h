// How many threads take part in a walk, the caller's included.
#pragma once

namespace tessaly::walk {

// As many as are `wanted`, and by the number of cores where that is 0: no more than four, since a
// disk gives no more, and no fewer than two, so that one reads while the other takes. A system that
// does not tell its cores says 0.
int threadCount(int wanted, unsigned cores);

}  // namespace tessaly::walk
