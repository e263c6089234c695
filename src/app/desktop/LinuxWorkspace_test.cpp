// A bus of our own, with a file manager on it that writes down what it is asked for.
#include "app/desktop/LinuxWorkspace.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <mutex>
#include <thread>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QEventLoop>
#include <QProcess>

#include "support/TempTree.h"

namespace tessaly {
namespace {

// Runs each task on a thread of its own, and joins them all on request.
class ThreadDispatch : public Dispatch {
 public:
  void async(Queue queue, Work work) override {
    EXPECT_NE(queue, Queue::main);
    threads_.emplace_back(std::move(work));
  }
  void after(std::chrono::milliseconds, Queue, Work) override { ADD_FAILURE(); }

  // Keeps the main thread's events going meanwhile: the fake file manager answers there.
  void finish() {
    for (auto& thread : threads_) {
      QEventLoop loop;
      std::thread joiner([&] {
        thread.join();
        QMetaObject::invokeMethod(&loop, &QEventLoop::quit, Qt::QueuedConnection);
      });
      loop.exec();
      joiner.join();
    }
    threads_.clear();
  }

 private:
  std::vector<std::thread> threads_;
};

class FileManager : public QDBusVirtualObject {
 public:
  QString introspect(const QString&) const override { return {}; }
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
    calls.push_back(message);
    connection.send(message.createReply());
    return true;
  }
  std::vector<QDBusMessage> calls;
};

class LinuxWorkspaceTest : public testing::Test {
 protected:
  void SetUp() override {
    daemon_.setProgram(QStringLiteral("dbus-daemon"));
    daemon_.setArguments({QStringLiteral("--session"), QStringLiteral("--nofork"),
                          QStringLiteral("--print-address")});
    daemon_.start();
    ASSERT_TRUE(daemon_.waitForReadyRead()) << "dbus-daemon is needed for this test";
    address_ = QString::fromUtf8(daemon_.readLine()).trimmed();
  }

  void TearDown() override {
    dispatch_.finish();
    QDBusConnection::disconnectFromBus(QStringLiteral("viewer"));
    QDBusConnection::disconnectFromBus(QStringLiteral("workspace"));
    daemon_.kill();
    daemon_.waitForFinished();
  }

  void startFileManager() {
    auto bus = QDBusConnection::connectToBus(address_, QStringLiteral("viewer"));
    ASSERT_TRUE(
        bus.registerVirtualObject(QStringLiteral("/org/freedesktop/FileManager1"), &fileManager_));
    ASSERT_TRUE(bus.registerService(QStringLiteral("org.freedesktop.FileManager1")));
  }

  LinuxWorkspace workspace() {
    return LinuxWorkspace(
        dispatch_,
        {[this] { return QDBusConnection::connectToBus(address_, QStringLiteral("workspace")); },
         [this](const std::string& uri) {
           const std::lock_guard lock(mutex_);
           opened_.push_back(uri);
         }});
  }

  std::string file(const std::string& name) {
    const std::string path = folder_.path() + "/" + name;
    std::ofstream(path) << "x";
    return path;
  }

  ThreadDispatch dispatch_;
  TempTree folder_;
  QProcess daemon_;
  QString address_;
  FileManager fileManager_;
  std::mutex mutex_;
  std::vector<std::string> opened_;
};

TEST_F(LinuxWorkspaceTest, asks_the_file_manager_for_the_items) {
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

TEST_F(LinuxWorkspaceTest, shows_the_folder_where_no_file_manager_answers) {
  workspace().reveal({file("a"), file("b")});
  dispatch_.finish();
  EXPECT_EQ(opened_, std::vector{"file://" + folder_.path()});
}

TEST_F(LinuxWorkspaceTest, shows_the_folder_of_a_file_that_has_gone) {
  startFileManager();
  workspace().reveal({folder_.path() + "/gone"});
  dispatch_.finish();
  EXPECT_TRUE(fileManager_.calls.empty());
  EXPECT_EQ(opened_, std::vector{"file://" + folder_.path()});
}

TEST_F(LinuxWorkspaceTest, does_nothing_where_the_folder_has_gone_as_well) {
  startFileManager();
  workspace().reveal({folder_.path() + "/gone/with/it"});
  dispatch_.finish();
  EXPECT_TRUE(fileManager_.calls.empty());
  EXPECT_TRUE(opened_.empty());
}

TEST_F(LinuxWorkspaceTest, reveals_a_broken_link_itself) {
  startFileManager();
  const std::string link = folder_.path() + "/link";
  std::filesystem::create_symlink("/nowhere", link);
  workspace().reveal({link});
  dispatch_.finish();
  EXPECT_EQ(fileManager_.calls.size(), 1u);
}

TEST_F(LinuxWorkspaceTest, opens_a_file_by_its_uri) {
  workspace().open("/a b/\xff");
  dispatch_.finish();
  EXPECT_EQ(opened_, std::vector<std::string>{"file:///a%20b/%FF"});
}

}  // namespace
}  // namespace tessaly
