#include "look/Wording.h"

namespace tessaly {

namespace {

std::string inCapitals(std::string_view text) {
  std::string capitals(text);
  for (char& byte : capitals) {
    if (byte >= 'a' && byte <= 'z') byte = static_cast<char>(byte - 'a' + 'A');
  }
  return capitals;
}

}  // namespace

std::string Wording::nameOf(std::string_view name, std::string_view path) const {
  return path == "/" ? startupDisk : std::string(name);
}

std::string Wording::fileSystemAfterSize(std::string_view type) const {
  const std::string word = fileSystem.empty() ? inCapitals(type) : fileSystem;
  return word.empty() ? word : " " + word;
}

const Wording& Wording::forMacos() {
  static const Wording words = {
      .startupDisk = "Macintosh HD",
      .fileSystem = "APFS",
      .idleLine = "Native macOS disk space visualizer, developer cache cleaner & system monitor.",
      .scanWholeDisk = "Scan Full Mac",
      .reveal = "Reveal in Finder",
      .searchKeys = "⌘F",
      .nothingReadable = "Grant Full Disk Access or pick another folder.",
      .systemFiles = "macOS system files",
      .thisComputerIs = "This Mac is ",
      .gate = {.heading = "Full Disk Access isn’t active yet",
               .caption = "Settings can show Tessaly as on while still bound to an older copy. "
                          "macOS matches the exact app that’s running. Toggle Tessaly off, then "
                          "on, using this app — then quit and reopen.",
               .steps = {"Click Grant access. Finder highlights this Tessaly; Settings opens Full "
                         "Disk Access.",
                         "Turn Tessaly off, then on again. If you see two copies, enable the one "
                         "Finder selected.",
                         "Click Quit & Reopen. The permission only applies after a relaunch."},
               .grant = "Grant access",
               .note = "Scan Home and Choose Folder work without this. Full Mac scan needs Full "
                       "Disk Access on this exact app."},
      .sharedBlocksMode = "APFS Clones",
      .sharedBlocksTitle = "Shared APFS blocks",
      .sharedBlocksCaption =
          "Clones and hard links look like extra copies but share disk. Unique is what deleting "
          "one "
          "copy actually frees.",
      .cloudTitle = "iCloud offloaded",
      .cloudCaption =
          "In iCloud but not fully on this disk. Don’t trash these if you still need "
          "the originals in the cloud.",
      .localSnapshot = "Time Machine local snapshot",
      .thinningAsked = "Asked macOS to thin local snapshots (up to 20 GB).",
      .leftoversCaption =
          "Uninstall Mac apps with residue cleanup — Application Support, caches, "
          "preferences, and logs.",
      .sensorsStart = "Initializing macOS kernel telemetry sensors…",
      .chatRole =
          "You are Tessaly, a macOS disk space analyzer. Be concise. Never tell the user "
          "to empty Trash bypass or delete /System. Prefer caches, build artifacts, and "
          "old downloads. Use the scan context.",
      .chatStays = "Replies stay on this Mac until you close the hub.",
      .startHidden = "Start hidden in menu bar",
      .textRecognition = "Uses on-device Vision. Does not upload screenshots.",
  };
  return words;
}

const Wording& Wording::forLinux() {
  static const Wording words = {
      .startupDisk = "System Disk",
      .fileSystem = "",
      .idleLine = "Disk space visualizer, developer cache cleaner & system monitor.",
      .scanWholeDisk = "Scan Whole Disk",
      .reveal = "Show in File Manager",
      .searchKeys = "Ctrl F",
      .nothingReadable = "Check its permissions or pick another folder.",
      .systemFiles = "System files",
      .thisComputerIs = "This computer is ",
      // Nothing hides the disk from a program here but a sandbox that it was started in.
      .gate =
          {.heading = "The disk is hidden from Tessaly",
           .caption = "Tessaly cannot list the top folder of this system. The sandbox that it "
                      "was started in hides the disk. Let the sandbox show it — then quit and "
                      "reopen.",
           .steps = {"Click Show this copy. The file manager shows which Tessaly is running, and "
                     "so which sandbox it belongs to.",
                     "Allow that sandbox to read all files: in its permission settings, or "
                     "in the command that starts Tessaly.",
                     "Click Quit & Reopen. If the disk stays hidden, quit Tessaly and start "
                     "it from the desktop, so that the sandbox reads its settings anew."},
           .grant = "Show this copy",
           .note = "Scan Home and Choose Folder work without this. Scan Whole Disk needs a view "
                   "of the whole disk."},
      .sharedBlocksMode = "Shared Blocks",
      .sharedBlocksTitle = "Shared blocks",
      .sharedBlocksCaption =
          "Clones and hard links look like extra copies but share disk. Unique is what all of them "
          "take, until the last one is gone.",
      .cloudTitle = "Offloaded to the cloud",
      .cloudCaption =
          "In the cloud but not fully on this disk. Don’t trash these if you still "
          "need the originals in the cloud.",
      .localSnapshot = "local snapshot",
      .thinningAsked = "Asked the system to thin local snapshots (up to 20 GB).",
      .leftoversCaption =
          "Uninstall apps with residue cleanup — application data, caches, "
          "settings, and logs.",
      .sensorsStart = "Initializing kernel telemetry sensors…",
      .chatRole =
          "You are Tessaly, a Linux disk space analyzer. Be concise. Never tell the user "
          "to empty Trash bypass or delete /usr. Prefer caches, build artifacts, and old "
          "downloads. Use the scan context.",
      .chatStays = "Replies stay on this computer until you close the hub.",
      .startHidden = "Start hidden in status area",
      .textRecognition = "Uses on-device text recognition. Does not upload screenshots.",
  };
  return words;
}

const Wording& Wording::current() {
#ifdef __APPLE__
  return forMacos();
#else
  return forLinux();
#endif
}

}  // namespace tessaly
