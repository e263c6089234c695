// The texts that name a system, its file system, its programs, its services or its keys. Plain
// values: both systems' texts are compiled, and can be tested, on both. current() is the one in
// force. All other texts are the same on every system and stand where they are used.
#pragma once

#include <array>
#include <string>
#include <string_view>

namespace tessaly {

// Of the gate that stands before the window while the disk cannot be read.
struct AccessGateWords {
  std::string heading;
  std::string caption;
  std::array<std::string, 3> steps;
  std::string grant;  // the button that starts to give access
  std::string note;
};

struct Wording {
  // The volume of "/", and the top folder of a scan of it.
  std::string startupDisk;
  // What is said of every volume; empty where each has a type of its own.
  std::string fileSystem;

  std::string idleLine;         // under the program's name, before the first scan
  std::string scanWholeDisk;    // starts a scan of "/"
  std::string reveal;           // shows an item in the program that manages files
  std::string searchKeys;       // of the search, as keys are written on this system
  std::string nothingReadable;  // what to do about a scan that could read nothing
  std::string systemFiles;      // why a system folder at the top of the disk is protected
  std::string thisComputerIs;   // begins the warning of a full disk; "90% full" follows
  AccessGateWords gate;

  std::string sharedBlocksMode;   // of the map's modes
  std::string sharedBlocksTitle;  // of the list of that mode
  std::string sharedBlocksCaption;
  std::string cloudTitle;
  std::string cloudCaption;
  std::string localSnapshot;  // one of them; several have an "s" at the end
  std::string thinningAsked;  // the system was asked to give up snapshots, and said nothing
  std::string leftoversCaption;
  std::string sensorsStart;  // no figure of the machine has come yet
  std::string chatRole;      // what the assistant is told that it is
  std::string chatStays;     // where its replies are kept
  std::string startHidden;
  std::string textRecognition;

  // What views call the item `name` at `path`. Trees and saved files have one name for "/" on all
  // systems.
  std::string nameOf(std::string_view name, std::string_view path) const;

  // The file system of a volume, to stand behind its size: with a blank in front, empty where
  // neither the system nor `type` tells it. `type` is as the system writes it, such as "ext4".
  std::string fileSystemAfterSize(std::string_view type) const;

  static const Wording& forMacos();
  static const Wording& forLinux();
  static const Wording& current();
};

}  // namespace tessaly
