// Keeps a compressed copy of items that are about to go, made by the system's zip.
//
// Paths are absolute, as bytes. Pure but for archive(), which blocks until the tool is done and is
// for worker threads. Safe from any thread.
#pragma once

#include <chrono>
#include <functional>
#include <string>
#include <vector>

namespace tessaly::ZipEngine {

// What archive() asks of the machine. Where a function is not given, the named one is taken.
struct Machine {
  // Shell::run: the tool's path, its arguments, the seconds that it may take, its working
  // directory. May throw.
  std::function<std::string(const std::string& path, const std::vector<std::string>& args,
                            double timeout, const std::string& cwd)>
      run = {};
  std::function<std::chrono::steady_clock::time_point()> now = {};  // the steady clock
};

// What to call an archive that is made at `now`: "Tessaly-2026-03-09-0705.zip", in local time.
std::string suggestedName(
    std::chrono::system_clock::time_point now = std::chrono::system_clock::now());

// The deepest folder that all of `paths` lie in, as their texts tell; "/" for none.
std::string commonParent(const std::vector<std::string>& paths);

// Packs what is there of `paths`, folders with all that is in them, into a new archive at `to`,
// each under its path below their common parent. True when that archive is there then; a file or
// folder that was there before, and that zip has left as it was, is none. What zip could not read,
// or what went meanwhile, may be missing from it.
//
// A file at `to` is replaced, and gone even where no archive comes of it. An archive that would lie
// at or inside one of `paths` is not made. Items are followed where they are links. All of it may
// take 180 seconds; when that is not enough, part of an archive may be left.
//
// `to` has the extension "zip", since zip adds it to a name without any.
bool archive(const std::vector<std::string>& paths, const std::string& to,
             const Machine& machine = {});

}  // namespace tessaly::ZipEngine
