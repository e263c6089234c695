#include "reclaim/CriticalPaths.h"

#include <gtest/gtest.h>

namespace tessaly {
namespace {

constexpr const char* macHome = "/Users/ada";
constexpr const char* linuxHome = "/home/ada";

bool onMac(std::string_view path, std::string_view home = macHome) {
  return CriticalPaths::isCritical(path, home, Places::forMacos());
}

bool onLinux(std::string_view path, std::string_view home = linuxHome) {
  return CriticalPaths::isCritical(path, home, Places::forLinux());
}

TEST(CriticalPaths, usr_is_critical_but_for_usr_local) {
  for (const auto on : {onMac, onLinux}) {
    EXPECT_TRUE(on("/usr", macHome));
    EXPECT_TRUE(on("/usr/bin/tool", macHome));
    EXPECT_FALSE(on("/usr/local", macHome));
    EXPECT_FALSE(on("/usr/local/bin/tool", macHome));
    EXPECT_TRUE(on("/usr/locality", macHome));
  }
}

TEST(CriticalPaths, slashes_are_normalised_before_comparing) {
  EXPECT_TRUE(onMac("//Users///"));
  EXPECT_TRUE(onMac("///"));
  EXPECT_TRUE(onMac("/usr//bin//"));
  EXPECT_TRUE(onMac("/Users//ada/"));
}

TEST(CriticalPaths, an_empty_path_is_not_critical) {
  EXPECT_FALSE(onMac(""));
}

TEST(CriticalPaths, the_home_is_critical_and_a_folder_of_it_is_not) {
  EXPECT_TRUE(onMac("/Users/ada/"));
  EXPECT_TRUE(onMac("/Users/ada", "/Users/ada/"));
  EXPECT_FALSE(onMac("/Users/ada/Documents"));
  EXPECT_TRUE(onLinux("/home/ada/"));
  EXPECT_FALSE(onLinux("/home/ada/Documents"));
}

TEST(CriticalPaths, a_home_with_a_final_slash_gives_the_same_answers) {
  for (const char* path : {"/Users/ada/Library", "/Users/ada/Library/Preferences/x",
                           "/Users/ada/Library/Caches/x", "/Users/ada/Documents"}) {
    EXPECT_EQ(onMac(path, "/Users/ada/"), onMac(path, "/Users/ada")) << path;
  }
}

TEST(CriticalPaths, the_library_of_the_user_is_critical_in_parts) {
  EXPECT_TRUE(onMac("/Users/ada/Library"));
  EXPECT_FALSE(onMac("/Users/ada/Library/Caches"));
  EXPECT_FALSE(onMac("/Users/ada/Library/Caches/pip/x"));
  EXPECT_FALSE(onMac("/Users/ada/Library/Logs/x"));
  EXPECT_FALSE(onMac("/Users/ada/Library/Saved Application State/x"));
  EXPECT_FALSE(onMac("/Users/ada/Library/pnpm"));
  EXPECT_TRUE(onMac("/Users/ada/Library/Application Support"));
  EXPECT_TRUE(onMac("/Users/ada/Library/Application Support/x/y"));
  EXPECT_TRUE(onMac("/Users/ada/Library/Preferences"));
  EXPECT_FALSE(onMac("/Users/ada/Library/Containers"));
  EXPECT_FALSE(onMac("/Users/ada/Library/Containers/x"));
  EXPECT_TRUE(onMac("/Users/ada/Library/Developer/Xcode/Archives"));
  EXPECT_TRUE(onMac("/Users/ada/Library/Developer/Xcode/Archives/x"));
  EXPECT_FALSE(onMac("/Users/ada/Library/Developer/Xcode/DerivedData"));
  EXPECT_FALSE(onMac("/Users/ada/Library/Developer/Xcode/DerivedData/x"));
  EXPECT_FALSE(onMac("/Users/ada/Library/Developer/Xcode/iOS DeviceSupport/x"));
  EXPECT_FALSE(onMac("/Users/ada/Library/Developer/CoreSimulator/Caches/x"));
  EXPECT_FALSE(onMac("/Users/ada/Library/Developer"));
}

TEST(CriticalPaths, protected_paths_of_the_library_are_prefixes_of_text) {
  EXPECT_TRUE(onMac("/Users/ada/Library/PreferencesBackup"));
  EXPECT_TRUE(onMac("/Users/ada/Library/Application Support Old/x"));
  EXPECT_FALSE(onMac("/Users/ada/Library/CachesOld/../x"));
}

TEST(CriticalPaths, only_the_library_of_the_user_has_exceptions) {
  EXPECT_TRUE(onMac("/Library/Caches/x"));
  EXPECT_FALSE(onMac("/Users/bob/Library/Preferences/x"));
}

TEST(CriticalPaths, links_are_not_resolved) {
  EXPECT_TRUE(onMac("/private/tmp/x"));
  EXPECT_FALSE(onMac("/tmp/x"));
  EXPECT_FALSE(onMac("/etc"));
}

TEST(CriticalPaths, some_folders_are_critical_without_their_contents) {
  EXPECT_TRUE(onMac("/Applications"));
  EXPECT_FALSE(onMac("/Applications/Tool.app"));
  EXPECT_TRUE(onMac("/Users"));
  EXPECT_FALSE(onMac("/Users/bob"));
  EXPECT_FALSE(onMac("/Volumes"));
  EXPECT_FALSE(onMac("/Volumes/Data/System"));
}

TEST(CriticalPaths, every_listed_folder_of_macos_is_critical) {
  for (const char* path :
       {"/", "/Applications", "/Library", "/System", "/Users", "/usr", "/bin", "/sbin", "/private",
        "/System/x", "/usr/x", "/bin/x", "/sbin/x", "/private/x", "/Library/x"}) {
    EXPECT_TRUE(onMac(path)) << path;
  }
}

TEST(CriticalPaths, paths_are_case_sensitive) {
  EXPECT_FALSE(onMac("/users"));
}

TEST(CriticalPaths, linux_has_the_same_folders_and_its_own) {
  for (const char* path : {"/",        "/Applications", "/Library",     "/System",  "/Users",
                           "/usr",     "/bin",          "/sbin",        "/private", "/boot",
                           "/dev",     "/etc",          "/home",        "/lib",     "/lib64",
                           "/media",   "/mnt",          "/opt",         "/proc",    "/root",
                           "/run",     "/srv",          "/sys",         "/var",     "/boot/vmlinuz",
                           "/dev/sda", "/etc/fstab",    "/lib/x",       "/lib64/x", "/proc/1",
                           "/sys/x",   "/var/lib",      "/var/lib/dpkg"}) {
    EXPECT_TRUE(onLinux(path)) << path;
  }
  for (const char* path : {"/home/bob", "/media/stick/x", "/mnt/x", "/opt/x", "/root/x", "/run/x",
                           "/srv/x", "/var/cache", "/var/library", "/library"}) {
    EXPECT_FALSE(onLinux(path)) << path;
  }
}

TEST(CriticalPaths, linux_protects_settings_and_data_in_the_home_by_component) {
  for (const char* path :
       {"/home/ada/.config", "/home/ada/.config/x", "/home/ada/.local/share",
        "/home/ada/.local/share/x", "/home/ada/.ssh", "/home/ada/.ssh/id", "/home/ada/.gnupg/x"}) {
    EXPECT_TRUE(onLinux(path)) << path;
  }
  for (const char* path :
       {"/home/ada/.cache", "/home/ada/.cache/x", "/home/ada/.local/share/Trash/files/x",
        "/home/ada/.local/share/pnpm/store", "/home/ada/.configuration", "/home/ada/.sshfs",
        "/home/ada/.local", "/home/ada/Library/Preferences", "/home/bob/.ssh"}) {
    EXPECT_FALSE(onLinux(path)) << path;
  }
}

TEST(CriticalPaths, a_home_inside_a_critical_folder_of_linux_is_treated_as_a_home) {
  const char* const home = "/var/lib/service";
  EXPECT_TRUE(onLinux("/var/lib/service", home));
  EXPECT_FALSE(onLinux("/var/lib/service/Downloads", home));
  EXPECT_TRUE(onLinux("/var/lib/service/.ssh", home));
  EXPECT_TRUE(onLinux("/var/lib/services", home));
  EXPECT_TRUE(onLinux("/root", "/root"));
  EXPECT_FALSE(onLinux("/root/Downloads", "/root"));
}

TEST(CriticalPaths, a_home_inside_a_critical_folder_of_macos_stays_critical) {
  EXPECT_TRUE(onMac("/private/var/root/Downloads", "/private/var/root"));
}

TEST(CriticalPaths, without_a_home_only_the_root_is_critical) {
  EXPECT_TRUE(onLinux("/", "/"));
  EXPECT_FALSE(onLinux("/data", "/"));
}

TEST(CriticalPaths, the_warning_begins_with_the_role_of_the_path) {
  const auto reason = [](std::string_view path) {
    return CriticalPaths::reason(path, macHome, Wording::forMacos());
  };
  EXPECT_EQ(reason("//"), "Startup disk root");
  EXPECT_EQ(reason("/System/Library"), "macOS system files");
  EXPECT_EQ(reason("/Systematic"), "macOS system files");
  EXPECT_EQ(reason("/Users/ada/"), "Your home folder");
  EXPECT_EQ(reason("/Users//ada/Library"), "User Library");
  EXPECT_EQ(reason("/Users/ada/Library/Preferences"), "Protected location");
  EXPECT_EQ(reason("/Library"), "Protected location");
  EXPECT_EQ(CriticalPaths::reason("/Users/ada", "/Users/ada//"), "Your home folder");
}

TEST(CriticalPaths, the_warning_names_the_system_only_where_it_is_that_one) {
  EXPECT_EQ(CriticalPaths::reason("/System/Library", "/home/ada", Wording::forLinux()),
            "System files");
}

}  // namespace
}  // namespace tessaly
