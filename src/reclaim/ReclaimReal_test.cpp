// The whole analysis of a home with the caches and build folders of real tools, made by the tools
// themselves as far as they are installed, and measured with the system's du.
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <map>

#include "platform/Process.h"
#include "reclaim/ReclaimAnalysis.h"
#include "scan/DiskScanner.h"
#include "scan/ScanInsights.h"
#include "support/FakeVolumes.h"
#include "support/TempTree.h"

namespace tessaly {
namespace {

using testing::UnorderedElementsAre;

namespace fs = std::filesystem;

// npm packs a package and installs it from the file, which fills its cache too.
constexpr const char* withNpm = R"(
  set -e
  cd "$HOME/dep"
  npm pack --offline --loglevel=error >/dev/null
  cd "$HOME/app"
  npm install --offline --no-audit --no-fund --loglevel=error ../dep/dep-1.0.0.tgz >/dev/null
)";
constexpr const char* asNpm = R"(
.npm/
  _cacache/
    content-v2/
      sha512/
        0a/
          b1/
            c2d3 1500000
    index-v5/
      7f/
        1e/
          9a2b 400
    tmp/
app/
  node_modules/
    .package-lock.json 300
    dep/
      data.bin 1500000
      package.json 30
)";

// pip keeps the wheels that it builds from source archives.
constexpr const char* withPip = R"(
  set -e
  cd "$HOME"
  tar czf pk-1.0.tar.gz pk-1.0
  pip3 wheel --no-index --no-build-isolation --no-deps --disable-pip-version-check -q -w wheels \
    "file://$HOME/pk-1.0.tar.gz" >/dev/null 2>&1
  [ -d "$HOME/.cache/pip/wheels" ]
)";
constexpr const char* asPip = R"(
.cache/
  pip/
    wheels/
      b3/
        2c/
          35/
            32f31a04be38/
              origin.json 150
              pk-1.0-py3-none-any.whl 900
)";

// A checkout of a repository, as a program leaves it.
constexpr const char* withGit = R"(
  set -e
  cd "$HOME/upstream"
  git init -q .
  git add .
  git -c user.name=Ada -c user.email=ada@example.org commit -q -m "First"
  git clone -q . "$HOME/checkout"
)";
constexpr const char* asGit = R"(
checkout/
  .git/
    HEAD 23
    objects/
      pack/
        pack-1.pack 9000
  main.py 40
)";

// The registry of cargo: the index, the archives as downloaded, and the unpacked sources.
constexpr const char* asCargo = R"(
.cargo/
  registry/
    CACHEDIR.TAG 177
    index/
      index.crates.io-6f17d22bba15001f/
        config.json 80
        .cache/
          se/
            rd/
              serde 90000
    cache/
      index.crates.io-6f17d22bba15001f/
        serde-1.0.219.crate 79000
    src/
      index.crates.io-6f17d22bba15001f/
        serde-1.0.219/
          Cargo.toml 2000
          src/
            part##.rs 9K x20
)";

// Whether the tools for `script` are installed and it succeeds, with `home` as the home.
bool run(const char* script, const std::string& home) {
  Result<Process> shell = Process::launch({.path = "/bin/sh",
                                           .args = {"-c", script},
                                           .cwd = home,
                                           .environment = {{"HOME", home},
                                                           {"PATH", "/usr/bin:/bin"},
                                                           {"XDG_CACHE_HOME", ""},
                                                           {"PIP_CONFIG_FILE", "/dev/null"},
                                                           {"GIT_CONFIG_NOSYSTEM", "1"},
                                                           {"npm_config_update_notifier", "false"}},
                                           .output = Process::Stream::discarded,
                                           .error = Process::Stream::discarded,
                                           .input = Process::Stream::discarded});
  if (!shell) return false;
  shell.value().waitUntil(Deadline::never());
  return shell.value().exit()->isSuccess();
}

class RealHome : public testing::Test {
 protected:
  void haveNpm() {
    home_.plant("dep/\n  data.bin 1500000\napp/\n");
    put("dep/package.json", R"({"name":"dep","version":"1.0.0"})");
    put("app/package.json", R"({"name":"app","version":"1.0.0"})");
    make(withNpm, asNpm, {".npm", "app"});
  }

  void havePip() {
    home_.plant("pk-1.0/\n");
    put("pk-1.0/setup.py",
        "from setuptools import setup\nsetup(name='pk', version='1.0', py_modules=['pk'])\n");
    put("pk-1.0/pk.py", "x = 1\n");
    make(withPip, asPip, {".cache"});
  }

  // With what builds leave in it.
  void haveCheckout() {
    home_.plant("upstream/\n  main.py 40\n");
    make(withGit, asGit, {"checkout"});
    home_.plant("checkout",
                ".next/\n  cache/\n    webpack.pack 2M\n  build-manifest.json 900\n"
                ".venv/\n  pyvenv.cfg 80\n  lib/\n    big.so 1200000\n    node_modules/\n"
                "      nested 3M\n__pycache__/\n  main.cpython-311.pyc 500\nvenv -> .venv\n");
  }

  void haveTrash() {
    home_.plant("trash/\n  files/\n    gone.bin 300K\n  info/\n    gone.bin.trashinfo 60\n");
    volumes_.homeTrash = {
        {.device = 1, .inode = 1, .items = 1, .contents = {home_.at("trash/files")}}};
  }

  void put(const std::string& name, const std::string& content) const {
    std::ofstream(home_.at(name), std::ios::binary) << content;
  }

  // What `script` makes; if it cannot, the same as a text, in place of the folders `made`.
  void make(const char* script, const char* otherwise, const std::vector<std::string>& made) {
    if (run(script, home_.path())) return;
    for (const std::string& folder : made) fs::remove_all(home_.at(folder));
    home_.plant(otherwise);
  }

  // In place of the search: the regular files of a length, found in another way.
  std::string searched(const std::string& scope, std::int64_t length) const {
    std::string lines;
    for (const auto& entry : fs::recursive_directory_iterator(scope)) {
      if (entry.is_symlink() || !entry.is_regular_file()) continue;
      if (static_cast<std::int64_t>(entry.file_size()) >= length)
        lines += entry.path().native() + "\n";
    }
    return lines;
  }

  ReclaimAnalysis::Finds analysed(const std::optional<DiskNode>& tree) {
    const auto run = [this](const std::string& path, const std::vector<std::string>& args,
                            double timeout) -> std::string {
      if (path == "/usr/bin/mdfind") return searched(args.at(1), 52428800);
      return path == "/usr/bin/tmutil" ? "" : Shell::run(path, args, timeout);
    };
    return ReclaimAnalysis::run(home_.path(), tree,
                                {.files = FileAccess::ofMachine(),
                                 .volumes = volumes_,
                                 .run = run,
                                 .places = Places::forLinux().reclaimPlaces},
                                {});
  }

  // What du prints for the path, in bytes.
  static std::int64_t kibibytes(const std::string& path) {
    const std::string text = Shell::run("/usr/bin/du", {"-sk", path}, 60);
    return std::stoll(text) * 1024;
  }

  TempTree home_;
  FakeVolumes volumes_;
};

TEST_F(RealHome, each_row_of_the_catalogue_takes_what_du_says) {
  haveNpm();
  havePip();
  haveTrash();
  home_.plant(asCargo);
  std::map<std::string, std::int64_t> rows;
  std::map<std::string, std::int64_t> expected = {{"trash", kibibytes(home_.at("trash/files"))}};
  const std::vector<std::pair<std::string, std::string>> places = {
      {"npm", ".npm/_cacache"}, {"pip", ".cache/pip"}, {"cargo", ".cargo/registry"}};
  for (const auto& [id, path] : places) {
    expected[id] = kibibytes(home_.at(path));
    EXPECT_GT(expected[id], 0) << id;
  }
  for (const ReclaimItem& item : analysed(std::nullopt).probes) rows[item.id] = item.bytes;
  EXPECT_EQ(rows, expected);
}

TEST_F(RealHome, an_idle_file_takes_its_blocks) {
  home_.plant(
      "Movies/\n  old\\sfilm.mkv 52428800\n  holes.iso sparse=60M\n  new.mkv sparse=70M\n"
      "  small.mkv 1M\n");
  fs::last_write_time(home_.at("Movies/new.mkv"), fs::file_time_type::clock::now());
  std::map<std::string, std::int64_t> rows;
  for (const LargeOldFile& file : analysed(std::nullopt).largeOld) {
    EXPECT_EQ(file.path, home_.at("Movies/" + file.name));
    rows[file.name] = file.bytes;
  }
  const std::map<std::string, std::int64_t> expected = {
      {"old film.mkv", home_.allocated("Movies/old film.mkv")}, {"holes.iso", 0}};
  EXPECT_EQ(rows, expected);
  EXPECT_GE(rows["old film.mkv"], 52428800);
}

TEST_F(RealHome, a_build_folder_takes_the_size_of_its_node) {
  haveNpm();
  haveCheckout();
  const DiskNode tree = DiskScanner::scan(home_.path());
  std::vector<std::string> names;
  for (const TreeWin& win : analysed(tree).treeWins) {
    names.push_back(win.path.substr(home_.path().size() + 1));
    const auto chain = ScanInsights::chain(tree, win.path);
    ASSERT_TRUE(chain && !chain->empty()) << win.path;
    EXPECT_EQ(chain->back().path(), win.path);
    EXPECT_EQ(win.bytes, chain->back().size());
  }
  // Not the small folder of byte code, the link, and what lies inside another one.
  EXPECT_THAT(names, UnorderedElementsAre("app/node_modules", "checkout/.next", "checkout/.venv"));
}

TEST_F(RealHome, a_home_without_any_of_it_has_no_rows) {
  home_.plant("Documents/\n  letter.txt 4K\n");
  const ReclaimAnalysis::Finds finds = analysed(DiskScanner::scan(home_.path()));
  EXPECT_EQ(finds, ReclaimAnalysis::Finds());
}

}  // namespace
}  // namespace tessaly
