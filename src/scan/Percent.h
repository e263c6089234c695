// Percentages as texts: "37%". They run from 0 to 100. Independent of the locale. Pure, safe from
// any thread.
#pragma once

#include <string>

namespace tessaly::Percent {

// Cut to a whole number: only a finished scan shows 100%. Values outside of 0 to 100 give the
// nearer limit, NaN gives 0. For gauges and for the progress of scans.
std::string cut(double percent);

// Rounded to the nearest whole number, ties to the even one. For shares of a folder, and for the
// usage of the disk in texts.
std::string rounded(double percent);

}  // namespace tessaly::Percent
