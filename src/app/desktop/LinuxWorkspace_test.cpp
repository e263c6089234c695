// A test's own bus, with a file manager that records its calls.
#include "app/desktop/LinuxWorkspace.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <mutex>
#include <sys/stat.h>

#include <QDBusConnection>
#include <QDBusMessage>

#include "support/OwnProcess.h"
#include "support/PrivateBus.h"
#include "support/QtDispatch.h"
#include "support/TempTree.h"
#include "support/TestTool.h"

namespace tessaly {
namespace {

class LinuxWorkspaceTest : public testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(bus_.isRunning()) << "dbus-daemon is needed for this test"; }

  void TearDown() override { dispatch_.finish(); }

  void startFileManager() {
    QDBusConnection bus = bus_.connection(QStringLiteral("viewer"));
    ASSERT_TRUE(
        bus.registerVirtualObject(QStringLiteral("/org/freedesktop/FileManager1"), &fileManager_));
    ASSERT_TRUE(bus.registerService(QStringLiteral("org.freedesktop.FileManager1")));
  }

  LinuxWorkspace workspace() {
    return LinuxWorkspace(dispatch_,
                          {[this] { return bus_.connection(QStringLiteral("workspace")); },
                           [this](const std::string& uri) {
                             const std::lock_guard lock(mutex_);
                             opened_.push_back(uri);
                           }});
  }

  std::string file(const std::string& name) {
    std::string path = folder_.path() + "/" + name;
    std::ofstream(path) << "x";
    return path;
  }

  BusObject fileManager_;
  PrivateBus bus_;
  QtDispatch dispatch_;
  TempTree folder_;
  std::mutex mutex_;
  std::vector<std::string> opened_;
};

TEST_F(LinuxWorkspaceTest, the_file_manager_reveals_the_items) {
  startFileManager();
  const std::string path = file("caf\xe9 1");
  workspace().reveal({path});
  dispatch_.finish();
  ASSERT_EQ(fileManager_.calls.size(), 1u);
  const QDBusMessage& call = fileManager_.calls.front();
  EXPECT_EQ(call.interface(), QStringLiteral("org.freedesktop.FileManager1"));
  EXPECT_EQ(call.member(), QStringLiteral("ShowItems"));
  EXPECT_EQ(call.signature(), QStringLiteral("ass"));
  EXPECT_EQ(call.arguments().at(0).toStringList(),
            QStringList{QStringLiteral("file://") + QString::fromStdString(folder_.path()) +
                        QStringLiteral("/caf%E9%201")});
  EXPECT_TRUE(opened_.empty());
}

TEST_F(LinuxWorkspaceTest, the_folder_is_shown_if_no_file_manager_answers) {
  workspace().reveal({file("a"), file("b")});
  dispatch_.finish();
  EXPECT_EQ(opened_, std::vector{"file://" + folder_.path()});
}

TEST_F(LinuxWorkspaceTest, the_folder_of_a_missing_file_is_shown) {
  startFileManager();
  workspace().reveal({folder_.path() + "/gone"});
  dispatch_.finish();
  EXPECT_TRUE(fileManager_.calls.empty());
  EXPECT_EQ(opened_, std::vector{"file://" + folder_.path()});
}

TEST_F(LinuxWorkspaceTest, nothing_is_shown_if_the_folder_is_missing_too) {
  startFileManager();
  workspace().reveal({folder_.path() + "/gone/with/it"});
  dispatch_.finish();
  EXPECT_TRUE(fileManager_.calls.empty());
  EXPECT_TRUE(opened_.empty());
}

TEST_F(LinuxWorkspaceTest, a_dangling_link_itself_is_revealed) {
  startFileManager();
  const std::string link = folder_.path() + "/link";
  std::filesystem::create_symlink("/nowhere", link);
  workspace().reveal({link});
  dispatch_.finish();
  EXPECT_EQ(fileManager_.calls.size(), 1u);
}

TEST_F(LinuxWorkspaceTest, a_file_is_opened_by_its_uri) {
  const std::string path = file("a b\xff");
  workspace().open(path);
  dispatch_.finish();
  EXPECT_EQ(opened_, std::vector{"file://" + folder_.path() + "/a%20b%FF"});
}

TEST_F(LinuxWorkspaceTest, a_folder_is_opened) {
  workspace().open(folder_.path());
  dispatch_.finish();
  EXPECT_EQ(opened_, std::vector{"file://" + folder_.path()});
}

TEST_F(LinuxWorkspaceTest, the_folder_of_a_missing_file_is_opened) {
  startFileManager();
  workspace().open(folder_.path() + "/gone");
  dispatch_.finish();
  EXPECT_TRUE(fileManager_.calls.empty());
  EXPECT_EQ(opened_, std::vector{"file://" + folder_.path()});
}

TEST_F(LinuxWorkspaceTest, the_folder_of_a_dangling_link_is_opened) {
  const std::string link = folder_.path() + "/link";
  std::filesystem::create_symlink("/nowhere", link);
  workspace().open(link);
  dispatch_.finish();
  EXPECT_EQ(opened_, std::vector{"file://" + folder_.path()});
}

TEST_F(LinuxWorkspaceTest, nothing_is_opened_if_the_folder_is_missing_too) {
  workspace().open(folder_.path() + "/gone/with/it");
  dispatch_.finish();
  EXPECT_TRUE(opened_.empty());
}

TEST_F(LinuxWorkspaceTest, a_closed_workspace_opens_nothing_instead_of_a_file_manager) {
  startFileManager();
  LinuxWorkspace workspace = this->workspace();
  fileManager_.answer = [&](const QDBusMessage& call, const QDBusConnection& bus) {
    workspace.close();
    bus.send(call.createErrorReply(QDBusError::Failed, QStringLiteral("no")));
  };
  workspace.reveal({file("a")});
  dispatch_.finish();
  ASSERT_EQ(fileManager_.calls.size(), 1u);
  workspace.open(file("b"));
  dispatch_.finish();
  EXPECT_TRUE(opened_.empty());
}

// The real desktop, except for a script instead of xdg-open.
class StartedXdgOpen : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_EQ(mkfifo(folder_.at("told").c_str(), 0600), 0);
    before_ = qgetenv("PATH");
    qputenv("PATH", QByteArray::fromStdString(folder_.path()));
  }

  void TearDown() override { qputenv("PATH", before_); }

  // Blocks until there is a reader, and ends when the hold is released.
  void plantXdgOpen(const std::string& holdPath) const {
    const std::string path = folder_.at("xdg-open");
    std::ofstream(path) << "#!/bin/sh\n"
                        << "printf '%s\\n' \"$@\" >'" << folder_.at("told") << "'\n"
                        << "exec '" << testTool() << "' hold '" << holdPath << "'\n";
    ASSERT_EQ(chmod(path.c_str(), 0755), 0);
  }

  std::string told() const {
    std::ifstream fifo(folder_.at("told"));
    std::string text;
    std::getline(fifo, text, '\0');
    return text;
  }

  TempTree folder_;
  QByteArray before_;
};

TEST_F(StartedXdgOpen, xdg_open_gets_the_uri_and_is_reaped_when_it_ends) {
  Hold hold(folder_.at("hold"));
  plantXdgOpen(hold.path());
  const OwnProcess before = OwnProcess::now();
  LinuxWorkspace::Services::real().openUri("file:///a%20b");
  EXPECT_EQ(told(), "file:///a%20b\n");
  EXPECT_TRUE(OwnProcess::now().hasChildren);
  hold.release();
  // Releasing the hold closes its descriptor.
  const OwnProcess after{before.descriptors - 1, before.threads, false};
  EXPECT_EQ(settled(after), after);
}

TEST_F(StartedXdgOpen, a_missing_xdg_open_is_ignored) {
  const OwnProcess before = OwnProcess::now();
  LinuxWorkspace::Services::real().openUri("file:///a%20b");
  EXPECT_EQ(OwnProcess::now(), before);
}

TEST_F(LinuxWorkspaceTest, there_are_no_pages_of_settings_and_nothing_is_asked) {
  EXPECT_FALSE(workspace().openSettings("x-apple.systempreferences:com.apple.preference.security"));
  dispatch_.finish();
  EXPECT_TRUE(opened_.empty());
}

}  // namespace
}  // namespace tessaly
