// "Quit & Reopen" of the built program on an X server of its own, where "/" cannot be listed: a new
// process appears, and is the only instance.
#include <csignal>
#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <stdexcept>
#include <string>
#include <sys/types.h>
#include <unistd.h>
#include <utility>
#include <vector>

#include <QTest>

#include "app/Application.h"
#include "fixture/Services.h"
#include "journeys/Programs.h"
#include "platform/Deadline.h"
#include "platform/Process.h"
#include "support/Needs.h"
#include "support/TempTree.h"
#include "support/WindowItems.h"
#include "support/XServer.h"

namespace tessaly {
namespace {

constexpr int refused = 77;

// Runs its first argument below a root folder that nobody may list, without the privileges of root.
// The contents are those of the real root folder.
const char* const underClosedRoot = R"(
  root=$1 program=$2
  mount -t tmpfs -o mode=0755 none "$root" || exit 77
  for entry in /*; do
    if [ -L "$entry" ]; then cp -P "$entry" "$root$entry"
    elif [ -d "$entry" ]; then
      mkdir "$root$entry" && mount --rbind "$entry" "$root$entry" || exit 77
    fi
  done
  chmod 0111 "$root"
  without=-dac_override,-dac_read_search
  exec env -u QT_QPA_PLATFORM -u QT_SCALE_FACTOR -u WAYLAND_DISPLAY \
    setpriv --bounding-set "$without" --inh-caps "$without" chroot "$root" "$program"
)";

std::string contentsOf(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

class RelaunchTest : public testing::Test {
 protected:
  // The middle of a button of the gate, taken from an off-screen window.
  QPoint middleOf(const QString& name) {
    FakeMachine machine;
    machine.isAccessGranted = false;
    Application application(servicesOf(machine, home_.path()));
    application.window().show();
    settle(application.window());
    return tessaly::middleOf(itemNamed(application.window(), name));
  }

  std::vector<std::pair<std::string, std::string>> environment() const {
    return {{"DISPLAY", server_.display().toStdString()},
            {"HOME", home_.path()},
            {"XDG_CONFIG_HOME", state_.path()},
            {"XDG_DATA_HOME", state_.path()},
            {"XDG_RUNTIME_DIR", state_.at("run")},
            // Without an OpenGL driver, so that all machines draw alike.
            {"QT_QUICK_BACKEND", "software"},
            {"QT_XCB_GL_INTEGRATION", "none"},
            {"DBUS_SESSION_BUS_ADDRESS", "unix:path=/none"}};
  }

  Process start(const std::string& path, std::vector<std::string> args) {
    Result<Process> started =
        Process::launch({.path = path, .args = std::move(args), .environment = environment()});
    if (!started) throw std::runtime_error("cannot start " + path);
    return std::move(started).value();
  }

  static bool isProgram(const std::string& pid) {
    return contentsOf("/proc/" + pid + "/comm") == "tessaly\n";
  }

  static std::string parentOf(const std::filesystem::path& process) {
    std::ifstream status(process / "status");
    for (std::string line; std::getline(status, line);)
      if (line.starts_with("PPid:")) return line.substr(line.find_first_of("0123456789"));
    return {};
  }

  // The running programs with the state of this test, without a child just forked to start a tool,
  // which still has the program's name.
  std::vector<pid_t> running() const {
    std::vector<pid_t> found;
    for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
      const std::string name = entry.path().filename().string();
      if (name.find_first_not_of("0123456789") != std::string::npos) continue;
      if (!isProgram(name) || isProgram(parentOf(entry.path()))) continue;
      if (contentsOf(entry.path() / "environ").find(state_.path()) == std::string::npos) continue;
      found.push_back(static_cast<pid_t>(std::stol(name)));
    }
    return found;
  }

  bool showsGate(QPoint grant) {
    // Left of the label of the button that has the accent colour.
    return server_.lookUntil([at = grant - QPoint(58, 0)](const QImage& screen) {
      const QRgb pixel = screen.pixel(at);
      return qBlue(pixel) > 150 && qRed(pixel) < 40;
    });
  }

  ~RelaunchTest() override {
    for (const pid_t pid : running()) ::kill(pid, SIGKILL);
  }

  TempTree home_{"paper.pdf 1M\n"};
  TempTree state_{
      "run/ mode=0700\n"
      "root/\n"};
  XServer server_{QSize(1280, 820)};
};

TEST_F(RelaunchTest, quit_and_reopen_starts_another_instance_which_is_the_only_one) {
  const QPoint grant = middleOf(QStringLiteral("grant"));
  const QPoint relaunch = middleOf(QStringLiteral("relaunch"));
  std::vector<std::string> closed = {
      "-m", "sh", "-c", underClosedRoot, "sh", state_.at("root"), tessalyProgram()};
  if (geteuid() != 0) closed.insert(closed.begin(), "-r");
  Process first = start("/usr/bin/unshare", closed);
  if (first.waitUntil(Deadline::after(0)) || !showsGate(grant)) {
    ASSERT_TRUE(first.waitUntil(Deadline::after(0)));
    ASSERT_EQ(first.exit()->status, refused);
    GTEST_SKIP() << needs(Need::mounts, "nothing can be mounted here");
  }
  const std::vector<pid_t> before = running();
  ASSERT_EQ(before.size(), 1u);

  server_.click(relaunch);
  ASSERT_TRUE(first.waitUntil(Deadline::after(60)));
  EXPECT_TRUE(first.exit()->isSuccess());

  EXPECT_TRUE(QTest::qWaitFor([this] { return running().size() == 1; }, 60000));
  const std::vector<pid_t> after = running();
  ASSERT_EQ(after.size(), 1u);
  EXPECT_NE(after, before);
  EXPECT_TRUE(showsGate(grant));

  // A further start reaches the new instance.
  Process another = start("/usr/bin/env", {"-u", "QT_QPA_PLATFORM", tessalyProgram()});
  ASSERT_TRUE(another.waitUntil(Deadline::after(60)));
  EXPECT_TRUE(another.exit()->isSuccess());
  EXPECT_EQ(running(), after);
}

}  // namespace
}  // namespace tessaly
