#include "look/Wording.h"

#include <cstddef>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "platform/Places.h"
#include "support/SystemWords.h"

namespace tessaly {
namespace {

const Wording& mac = Wording::forMacos();
const Wording& tux = Wording::forLinux();

// Every text of a wording, in the order in which they are declared.
std::vector<std::string> textsOf(const Wording& words) {
  const AccessGateWords& gate = words.gate;
  return {words.startupDisk,
          words.fileSystem,
          words.idleLine,
          words.scanWholeDisk,
          words.reveal,
          words.searchKeys,
          words.nothingReadable,
          words.systemFiles,
          words.thisComputerIs,
          gate.heading,
          gate.caption,
          gate.steps[0],
          gate.steps[1],
          gate.steps[2],
          gate.grant,
          gate.note,
          words.sharedBlocksMode,
          words.sharedBlocksTitle,
          words.sharedBlocksCaption,
          words.cloudTitle,
          words.cloudCaption,
          words.localSnapshot,
          words.thinningAsked,
          words.leftoversCaption,
          words.sensorsStart,
          words.chatRole,
          words.chatStays,
          words.startHidden,
          words.textRecognition};
}

// A text that was added but is missing in textsOf() would be checked by no test.
TEST(Wording, these_tests_check_every_text_of_a_wording) {
  EXPECT_EQ(textsOf(mac).size() * sizeof(std::string), sizeof(Wording));
}

TEST(Wording, the_texts_on_macos_use_its_terms) {
  EXPECT_EQ(mac.startupDisk, "Macintosh HD");
  EXPECT_EQ(mac.fileSystem, "APFS");
  EXPECT_EQ(mac.idleLine,
            "Native macOS disk space visualizer, developer cache cleaner & system monitor.");
  EXPECT_EQ(mac.scanWholeDisk, "Scan Full Mac");
  EXPECT_EQ(mac.reveal, "Reveal in Finder");
  EXPECT_EQ(mac.searchKeys, "⌘F");
  EXPECT_EQ(mac.nothingReadable, "Grant Full Disk Access or pick another folder.");
  EXPECT_EQ(mac.systemFiles, "macOS system files");
  EXPECT_EQ(mac.thisComputerIs, "This Mac is ");
  EXPECT_EQ(mac.sharedBlocksMode, "APFS Clones");
  EXPECT_EQ(mac.sharedBlocksTitle, "Shared APFS blocks");
  EXPECT_EQ(mac.sharedBlocksCaption,
            "Clones and hard links look like extra copies but share disk. Unique is what deleting "
            "one copy actually frees.");
  EXPECT_EQ(mac.cloudTitle, "iCloud offloaded");
  EXPECT_EQ(mac.cloudCaption,
            "In iCloud but not fully on this disk. Don’t trash these if you still need the "
            "originals in the cloud.");
  EXPECT_EQ(mac.localSnapshot, "Time Machine local snapshot");
  EXPECT_EQ(mac.thinningAsked, "Asked macOS to thin local snapshots (up to 20 GB).");
  EXPECT_EQ(mac.leftoversCaption,
            "Uninstall Mac apps with residue cleanup — Application Support, caches, preferences, "
            "and logs.");
  EXPECT_EQ(mac.sensorsStart, "Initializing macOS kernel telemetry sensors…");
  EXPECT_EQ(mac.chatRole,
            "You are Tessaly, a macOS disk space analyzer. Be concise. Never tell the user to "
            "empty Trash bypass or delete /System. Prefer caches, build artifacts, and old "
            "downloads. Use the scan context.");
  EXPECT_EQ(mac.chatStays, "Replies stay on this Mac until you close the hub.");
  EXPECT_EQ(mac.startHidden, "Start hidden in menu bar");
  EXPECT_EQ(mac.textRecognition, "Uses on-device Vision. Does not upload screenshots.");
}

TEST(Wording, the_texts_on_macos_explain_how_access_to_the_disk_is_granted) {
  EXPECT_EQ(mac.gate.heading, "Full Disk Access isn’t active yet");
  EXPECT_EQ(mac.gate.caption,
            "Settings can show Tessaly as on while still bound to an older copy. macOS matches the "
            "exact app that’s running. Toggle Tessaly off, then on, using this app — then quit and "
            "reopen.");
  EXPECT_EQ(mac.gate.steps[0],
            "Click Grant access. Finder highlights this Tessaly; Settings opens Full Disk Access.");
  EXPECT_EQ(
      mac.gate.steps[1],
      "Turn Tessaly off, then on again. If you see two copies, enable the one Finder selected.");
  EXPECT_EQ(mac.gate.steps[2],
            "Click Quit & Reopen. The permission only applies after a relaunch.");
  EXPECT_EQ(mac.gate.grant, "Grant access");
  EXPECT_EQ(mac.gate.note,
            "Scan Home and Choose Folder work without this. Full Mac scan needs Full Disk Access "
            "on this exact app.");
}

TEST(Wording, the_texts_on_linux_use_its_terms) {
  EXPECT_EQ(tux.startupDisk, "System Disk");
  EXPECT_EQ(tux.fileSystem, "");
  EXPECT_EQ(tux.idleLine, "Disk space visualizer, developer cache cleaner & system monitor.");
  EXPECT_EQ(tux.scanWholeDisk, "Scan Whole Disk");
  EXPECT_EQ(tux.reveal, "Show in File Manager");
  EXPECT_EQ(tux.searchKeys, "Ctrl F");
  EXPECT_EQ(tux.thisComputerIs, "This computer is ");
  EXPECT_EQ(tux.sharedBlocksMode, "Shared Blocks");
  // Removing one of several copies that share all blocks frees none of them.
  EXPECT_EQ(tux.sharedBlocksCaption.find("frees"), std::string::npos);
  EXPECT_EQ(tux.localSnapshot, "local snapshot");
  EXPECT_EQ(tux.cloudTitle, "Offloaded to the cloud");
  EXPECT_EQ(tux.startHidden, "Start hidden in status area");
  EXPECT_EQ(tux.textRecognition, "Uses on-device text recognition. Does not upload screenshots.");
}

TEST(Wording, no_text_on_linux_contains_a_word_of_macos) {
  for (const std::string& text : textsOf(tux)) EXPECT_EQ(wordOfMacosIn(text), std::nullopt) << text;
}

TEST(Wording, only_the_file_system_has_an_empty_text_on_linux) {
  for (const std::string& text : textsOf(mac)) EXPECT_NE(text, "");
  std::size_t unsaid = 0;
  for (const std::string& text : textsOf(tux)) unsaid += text.empty() ? 1 : 0;
  EXPECT_EQ(unsaid, 1U);
}

TEST(Wording, the_current_wording_is_that_of_this_system) {
#ifdef __APPLE__
  EXPECT_EQ(&Wording::current(), &mac);
#else
  EXPECT_EQ(&Wording::current(), &tux);
#endif
}

TEST(Wording, the_top_folder_has_the_name_of_the_disk) {
  EXPECT_EQ(mac.nameOf("Macintosh HD", "/"), "Macintosh HD");
  EXPECT_EQ(tux.nameOf("Macintosh HD", "/"), "System Disk");
}

TEST(Wording, any_other_folder_has_its_own_name) {
  EXPECT_EQ(tux.nameOf("Macintosh HD", "/mnt/Macintosh HD"), "Macintosh HD");
  EXPECT_EQ(tux.nameOf("caf\xe9", "/mnt/caf\xe9"), "caf\xe9");
}

TEST(Wording, the_type_of_a_volume_is_in_capitals_on_linux) {
  EXPECT_EQ(tux.fileSystemAfterSize("ext4"), " EXT4");
  EXPECT_EQ(tux.fileSystemAfterSize("btrfs"), " BTRFS");
  EXPECT_EQ(tux.fileSystemAfterSize("fuse.sshfs"), " FUSE.SSHFS");
}

TEST(Wording, an_unknown_type_of_a_volume_has_no_text_on_linux) {
  EXPECT_EQ(tux.fileSystemAfterSize(""), "");
}

TEST(Wording, all_volumes_on_macos_have_the_same_type) {
  EXPECT_EQ(mac.fileSystemAfterSize(""), " APFS");
  EXPECT_EQ(mac.fileSystemAfterSize("exfat"), " APFS");
}

TEST(Wording, the_disk_has_the_same_name_as_in_the_list_of_volumes) {
  EXPECT_EQ(Places::forMacos().volumes.keptMounts.at("/"), mac.startupDisk);
  EXPECT_EQ(Places::forLinux().volumes.keptMounts.at("/"), tux.startupDisk);
}

}  // namespace
}  // namespace tessaly
