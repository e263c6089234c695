// Makes a tree shaped like a developer's home folder for benchmarks, the same on every call.
//
//     make_home_tree home DIR   1,000,000 files in 120,000 folders below DIR, and some links
//     make_home_tree flat DIR   200,000 files in DIR itself
//
// Files get their blocks by fallocate, so the tree has sizes on disk but hardly anything is
// written. Its contents are typical of such homes: installed packages of small files in deep
// folders, object stores fanned out over 256 folders, build products, caches, some photographs and
// films, and a few of the user's own files.
#include <algorithm>
#include <array>
#include <cerrno>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace {

constexpr long homeFiles = 1'000'000;
constexpr long homeFolders = 120'000;
constexpr long flatFiles = 200'000;

[[noreturn]] void fail(const std::string& what) {
  std::fprintf(stderr, "make_home_tree: %s: %s\n", what.c_str(), std::strerror(errno));
  std::exit(1);
}

// SplitMix64 (Steele, Lea, Flood 2014): the distributions of the standard library differ between
// implementations, and the tree must not.
class Dice {
 public:
  std::uint64_t next() {
    std::uint64_t z = (state_ += 0x9E3779B97F4A7C15U);
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9U;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBU;
    return z ^ (z >> 31);
  }

  // From `low` to `high`, both included.
  long between(long low, long high) {
    return low + static_cast<long>(next() % static_cast<std::uint64_t>(high - low + 1));
  }

  bool oneIn(long n) { return between(1, n) == 1; }

  template <std::size_t n>
  std::string_view of(const std::array<std::string_view, n>& choices) {
    return choices[next() % n];
  }

  std::string hex(int digits) {
    constexpr std::string_view alphabet = "0123456789abcdef";
    std::string text;
    for (int i = 0; i < digits; ++i) {
      text += alphabet[next() % 16];
    }
    return text;
  }

  std::string word(long shortest, long longest) {
    constexpr std::string_view consonants = "bcdfghklmnprstvwz";
    constexpr std::string_view vowels = "aeiou";
    std::string text;
    const long length = between(shortest, longest);
    while (static_cast<long>(text.size()) < length) {
      text += text.size() % 2 == 0 ? consonants[next() % consonants.size()]
                                   : vowels[next() % vowels.size()];
    }
    return text;
  }

 private:
  std::uint64_t state_ = 20240229;
};

// Skewed like real homes: half the files below 2 KiB, a long tail, and always below the size from
// which a file gets its own node in the tree.
long smallSize(Dice& dice) {
  const double octaves =
      7.0 + static_cast<double>(dice.next() % 1000) / 1000.0 * (dice.oneIn(8) ? 10.5 : 6.0);
  return std::min(static_cast<long>(std::exp2(octaves)), 250'000L);
}

// Counts the files and folders made, and keeps to the budget.
class Maker {
 public:
  Dice& dice() { return dice_; }
  long files() const { return files_; }
  long folders() const { return folders_; }
  long links() const { return links_; }
  void countFolder() { ++folders_; }

  void file(int folder, const std::string& name, long size) {
    const int fd = ::openat(folder, name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0644);
    if (fd < 0) {
      fail("create " + name);
    }
    if (size > 0 && ::fallocate(fd, 0, 0, size) != 0 && ::ftruncate(fd, size) != 0) {
      fail("size of " + name);
    }
    ::close(fd);
    ++files_;
  }

  void link(int folder, const std::string& name, const std::string& target) {
    if (::symlinkat(target.c_str(), folder, name.c_str()) != 0) {
      fail("link " + name);
    }
    ++links_;
  }

 private:
  Dice dice_;
  long files_ = 0;
  long folders_ = 0;
  long links_ = 0;
};

// A folder that has just been created, open while it is being filled.
class Folder {
 public:
  Folder(Maker& maker, const std::string& path)
      : maker_(&maker), fd_(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
    if (fd_ < 0) {
      fail("open " + path);
    }
  }

  Folder(const Folder& parent, const std::string& name) : maker_(parent.maker_) {
    if (::mkdirat(parent.fd_, name.c_str(), 0755) != 0) {
      fail("make folder " + name);
    }
    fd_ = ::openat(parent.fd_, name.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd_ < 0) {
      fail("open folder " + name);
    }
    maker_->countFolder();
  }

  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;
  ~Folder() { ::close(fd_); }

  Maker& maker() const { return *maker_; }
  Dice& dice() const { return maker_->dice(); }
  void file(const std::string& name, long size) const { maker_->file(fd_, name, size); }
  void small(const std::string& name) const { file(name, smallSize(dice())); }
  void link(const std::string& name, const std::string& target) const {
    maker_->link(fd_, name, target);
  }

  void smalls(long count, const std::string& stem, std::string_view ending) const {
    for (long i = 0; i < count; ++i) {
      small(stem + std::to_string(i) + std::string(ending));
    }
  }

 private:
  Maker* maker_;
  int fd_ = -1;
};

constexpr std::array<std::string_view, 8> codeEndings = {".js",  ".ts",  ".d.ts", ".js.map",
                                                         ".mjs", ".cjs", ".json", ".md"};

void nodePackage(const Folder& parent, const std::string& name, int depth) {
  const Folder package(parent, name);
  Dice& dice = package.dice();
  package.small("package.json");
  package.small("README.md");
  package.small("LICENSE");
  package.smalls(dice.between(0, 4), "index", dice.of(codeEndings));
  constexpr std::array<std::string_view, 4> parts = {"lib", "dist", "src", "types"};
  const long partCount = dice.between(0, 2);
  for (long part = 0; part < partCount; ++part) {
    const Folder inner(package, std::string(parts[static_cast<std::size_t>(part)]));
    inner.smalls(dice.between(3, 22), dice.word(3, 8), dice.of(codeEndings));
    if (dice.oneIn(3)) {
      const Folder deeper(inner, dice.word(4, 9));
      deeper.smalls(dice.between(2, 16), dice.word(3, 8), dice.of(codeEndings));
    }
  }
  if (depth < 4 && dice.oneIn(9)) {
    const Folder modules(package, "node_modules");
    const long count = dice.between(1, 4);
    for (long i = 0; i < count; ++i) {
      nodePackage(modules, dice.word(4, 12) + std::to_string(i), depth + 1);
    }
  }
}

void nodeModules(const Folder& project, long packages) {
  const Folder modules(project, "node_modules");
  Dice& dice = modules.dice();
  modules.small(".package-lock.json");
  std::vector<std::string> names;
  for (long i = 0; i < packages; ++i) {
    names.push_back(dice.word(4, 14) + "-" + std::to_string(i));
    nodePackage(modules, names.back(), 0);
  }
  const Folder scoped(modules, "@" + dice.word(4, 8));
  for (long i = 0; i < packages / 8; ++i) {
    nodePackage(scoped, dice.word(4, 14) + "-" + std::to_string(i), 0);
  }
  const Folder bin(modules, ".bin");
  for (std::size_t i = 0; i < names.size(); i += 9) {
    bin.link(names[i], "../" + names[i] + "/index0.js");
  }
}

// Files distributed over folders named by the first byte of a hash.
void fannedOut(const Folder& store, long files, int digits, std::string_view ending) {
  Dice& dice = store.dice();
  constexpr std::string_view alphabet = "0123456789abcdef";
  for (long i = 0; i < 256; ++i) {
    const std::string name = {alphabet[static_cast<std::size_t>(i / 16)],
                              alphabet[static_cast<std::size_t>(i % 16)]};
    const Folder part(store, name);
    const long count = dice.between(files / 320, files / 204);
    for (long j = 0; j < count; ++j) {
      part.small(dice.hex(digits) + std::string(ending));
    }
  }
}

void gitFolder(const Folder& project, long objects) {
  const Folder git(project, ".git");
  git.small("HEAD");
  git.small("config");
  git.small("index");
  {
    const Folder hooks(git, "hooks");
    hooks.smalls(12, "hook", ".sample");
  }
  {
    const Folder refs(git, "refs");
    const Folder heads(refs, "heads");
    heads.smalls(git.dice().between(1, 20), "topic", "");
  }
  const Folder store(git, "objects");
  fannedOut(store, objects, 38, "");
  const Folder pack(store, "pack");
  pack.file("pack-" + git.dice().hex(40) + ".pack", git.dice().between(300'000, 30'000'000));
  pack.small("pack-" + git.dice().hex(40) + ".idx");
}

void sources(const Folder& parent, int depth, std::string_view ending) {
  Dice& dice = parent.dice();
  parent.smalls(dice.between(3, 14), dice.word(4, 9), ending);
  if (depth == 0) {
    return;
  }
  const long count = dice.between(1, 4);
  for (long i = 0; i < count; ++i) {
    const Folder inner(parent, dice.word(4, 9) + std::to_string(i));
    sources(inner, depth - 1, ending);
  }
}

void webProject(const Folder& code, long number) {
  Dice& dice = code.dice();
  const Folder project(code, dice.word(5, 9) + "-web-" + std::to_string(number));
  project.small("package.json");
  project.small("tsconfig.json");
  {
    const Folder src(project, "src");
    sources(src, 3, ".tsx");
  }
  gitFolder(project, dice.between(400, 2'600));
  nodeModules(project, dice.between(500, 1'300));
  const Folder next(project, ".next");
  const Folder cache(next, "cache");
  cache.smalls(dice.between(20, 300), "chunk", ".pack");
  cache.file("webpack.pack", dice.between(270'000, 60'000'000));
}

void rustProject(const Folder& code, long number) {
  Dice& dice = code.dice();
  const Folder project(code, dice.word(5, 9) + "-rs-" + std::to_string(number));
  project.small("Cargo.toml");
  {
    const Folder src(project, "src");
    sources(src, 2, ".rs");
  }
  gitFolder(project, dice.between(300, 1'500));
  const Folder target(project, "target");
  const Folder debug(target, "debug");
  {
    const Folder deps(debug, "deps");
    const long count = dice.between(900, 3'000);
    for (long i = 0; i < count; ++i) {
      deps.small("lib" + dice.word(4, 10) + "-" + dice.hex(16) + (i % 3 == 0 ? ".rlib" : ".d"));
    }
    for (long i = 0; i < 9; ++i) {
      deps.file("big" + std::to_string(i) + ".rlib", dice.between(300'000, 9'000'000));
    }
  }
  const Folder incremental(debug, "incremental");
  const long sessions = dice.between(20, 80);
  for (long i = 0; i < sessions; ++i) {
    const Folder session(incremental, dice.word(5, 9) + "-" + dice.hex(13));
    const Folder state(session, "s-" + dice.hex(10) + "-" + dice.hex(7));
    state.smalls(dice.between(10, 90), dice.hex(12), ".o");
  }
}

void pythonProject(const Folder& code, long number) {
  Dice& dice = code.dice();
  const Folder project(code, dice.word(5, 9) + "-py-" + std::to_string(number));
  {
    const Folder src(project, "src");
    sources(src, 2, ".py");
  }
  gitFolder(project, dice.between(200, 900));
  const Folder venv(project, ".venv");
  const Folder lib(venv, "lib");
  const Folder version(lib, "python3.11");
  const Folder site(version, "site-packages");
  const long packages = dice.between(40, 160);
  for (long i = 0; i < packages; ++i) {
    const Folder package(site, dice.word(4, 12) + std::to_string(i));
    const long modules = dice.between(3, 40);
    package.smalls(modules, "module", ".py");
    const Folder compiled(package, "__pycache__");
    compiled.smalls(modules, "module", ".cpython-311.pyc");
    if (dice.oneIn(3)) {
      const Folder tests(package, "tests");
      tests.smalls(dice.between(2, 30), "test_", ".py");
    }
  }
}

void caches(const Folder& home) {
  Dice& dice = home.dice();
  const Folder cache(home, ".cache");
  {
    const Folder builds(cache, "go-build");
    fannedOut(builds, 12'000, 62, "-d");
  }
  {
    const Folder ccache(cache, "ccache");
    for (long i = 0; i < 16; ++i) {
      const Folder outer(ccache, std::string(1, "0123456789abcdef"[i]));
      for (long j = 0; j < 16; ++j) {
        const Folder inner(outer, std::string(1, "0123456789abcdef"[j]));
        const long count = dice.between(10, 60);
        for (long k = 0; k < count; ++k) {
          inner.small(dice.hex(29) + "R");
        }
      }
    }
  }
  {
    const Folder thumbnails(cache, "thumbnails");
    const Folder large(thumbnails, "large");
    for (long i = 0; i < 7'000; ++i) {
      large.small(dice.hex(32) + ".png");
    }
  }
  {
    const Folder browser(cache, "browser");
    const Folder entries(browser, "entries");
    for (long i = 0; i < 14'000; ++i) {
      entries.small(dice.hex(40));
    }
    for (long i = 0; i < 60; ++i) {
      entries.file("media" + std::to_string(i), dice.between(270'000, 5'000'000));
    }
  }
  const Folder pip(cache, "pip");
  const Folder http(pip, "http");
  for (long i = 0; i < 300; ++i) {
    const std::string hash = dice.hex(4) + std::to_string(i);
    const Folder a(http, hash);
    const Folder b(a, dice.hex(1));
    const Folder c(b, dice.hex(1));
    const Folder d(c, dice.hex(1));
    d.small(dice.hex(56));
  }
}

void registries(const Folder& home) {
  Dice& dice = home.dice();
  {
    const Folder npm(home, ".npm");
    const Folder cacache(npm, "_cacache");
    const Folder content(cacache, "content-v2");
    for (long i = 0; i < 2'000; ++i) {
      const Folder outer(content, dice.hex(2) + std::to_string(i));
      const long count = dice.between(1, 3);
      for (long j = 0; j < count; ++j) {
        const Folder inner(outer, dice.hex(2) + std::to_string(j));
        inner.smalls(dice.between(1, 3), dice.hex(120), "");
      }
    }
  }
  const Folder cargo(home, ".cargo");
  const Folder registry(cargo, "registry");
  const Folder src(registry, "src");
  for (long i = 0; i < 500; ++i) {
    const Folder crate(src, dice.word(4, 12) + "-" + std::to_string(i) + ".0.1");
    crate.small("Cargo.toml");
    const Folder code(crate, "src");
    sources(code, 1, ".rs");
  }
}

void documents(const Folder& home) {
  Dice& dice = home.dice();
  constexpr std::array<std::string_view, 6> endings = {".pdf", ".txt", ".docx",
                                                       ".md",  ".png", ".zip"};
  for (const char* name : {"Documents", "Downloads", "Desktop"}) {
    const Folder folder(home, name);
    const long count = dice.between(60, 400);
    for (long i = 0; i < count; ++i) {
      folder.small(dice.word(4, 16) + " " + std::to_string(i) + std::string(dice.of(endings)));
    }
    folder.small("r\xC3\xA9sum\xC3\xA9 \xE6\x96\x87\xE6\xA1\xA3.pdf");
    for (long i = 0; i < 12; ++i) {
      folder.file("large " + std::to_string(i) + ".zip", dice.between(300'000, 40'000'000));
    }
    for (long i = 0; i < 30; ++i) {
      const Folder inner(folder, dice.word(4, 12) + " " + std::to_string(i));
      sources(inner, 1, dice.of(endings));
    }
  }
}

void media(const Folder& home) {
  Dice& dice = home.dice();
  {
    const Folder movies(home, "Movies");
    for (long i = 0; i < 20; ++i) {
      movies.file("film " + std::to_string(i) + ".mp4", dice.between(5'000'000, 60'000'000));
    }
  }
  const Folder pictures(home, "Pictures");
  for (long year = 2015; year < 2025; ++year) {
    const Folder folder(pictures, std::to_string(year));
    folder.smalls(dice.between(100, 500), "thumb", ".jpg");
    for (long i = 0; i < 25; ++i) {
      folder.file("IMG_" + std::to_string(1000 + i) + ".jpg", dice.between(300'000, 4'000'000));
    }
  }
  const Folder library(pictures, "Photos Library.photoslibrary");
  const Folder originals(library, "originals");
  for (long i = 0; i < 16; ++i) {
    const Folder part(originals, std::string(1, "0123456789ABCDEF"[i]));
    for (long j = 0; j < 250; ++j) {
      part.small(dice.hex(32) + ".heic");
    }
    part.file("large.heic", dice.between(300'000, 4'000'000));
  }
}

void applications(const Folder& home) {
  Dice& dice = home.dice();
  const Folder applications(home, "Applications");
  for (long i = 0; i < 25; ++i) {
    const Folder app(applications, dice.word(5, 9) + std::to_string(i) + ".app");
    const Folder contents(app, "Contents");
    contents.small("Info.plist");
    {
      const Folder binaries(contents, "MacOS");
      binaries.file("main", dice.between(300'000, 20'000'000));
    }
    const Folder resources(contents, "Resources");
    for (long j = 0; j < 30; ++j) {
      const Folder language(resources, dice.word(2, 3) + std::to_string(j) + ".lproj");
      language.smalls(dice.between(2, 9), "Strings", ".strings");
    }
  }
}

void configuration(const Folder& home) {
  Dice& dice = home.dice();
  home.smalls(25, ".rc", "");
  const Folder config(home, ".config");
  for (long i = 0; i < 80; ++i) {
    const Folder program(config, dice.word(4, 9) + std::to_string(i));
    sources(program, 1, ".json");
  }
  home.link("work", "code");
  home.link("downloads", "Downloads");
  const Folder loops(home, ".loops");
  loops.link("up", "..");
  loops.link("self", "self");
  loops.link("gone", "nowhere");
}

// The sections above leave less than a tenth of the budget; checkouts of plain sources use it up to
// the last file and folder.
void checkouts(const Folder& home) {
  Maker& maker = home.maker();
  Dice& dice = maker.dice();
  const Folder archive(home, "checkouts");
  while (maker.folders() < homeFolders) {
    const long foldersLeft = homeFolders - maker.folders();
    const long filesLeft = homeFiles - maker.files();
    const long modules = std::min(foldersLeft - 1, dice.between(20, 60));
    const Folder checkout(archive, dice.word(5, 9) + std::to_string(foldersLeft));
    for (long i = 0; i < modules; ++i) {
      const long mean = filesLeft / foldersLeft;
      const Folder module(checkout, dice.word(4, 9) + std::to_string(i));
      module.smalls(dice.between(mean / 2, mean + mean / 2), dice.word(4, 9), ".cpp");
    }
  }
  archive.smalls(homeFiles - maker.files(), "left", ".txt");
}

void makeHome(const Folder& home) {
  Maker& maker = home.maker();
  configuration(home);
  documents(home);
  media(home);
  applications(home);
  caches(home);
  registries(home);
  {
    const Folder code(home, "code");
    for (long i = 0;
         maker.files() < homeFiles * 85 / 100 && maker.folders() < homeFolders * 92 / 100; ++i) {
      webProject(code, i);
      if (i % 2 == 0) {
        rustProject(code, i);
      }
      pythonProject(code, i);
    }
  }
  checkouts(home);
}

void makeFlat(const Folder& folder) {
  for (long i = 0; i < flatFiles; ++i) {
    folder.small(folder.dice().hex(24) + "-" + std::to_string(i) + ".dat");
  }
}

}  // namespace

int main(int argc, char** argv) {
  const std::string_view shape = argc == 3 ? argv[1] : "";
  if (shape != "home" && shape != "flat") {
    std::fprintf(stderr, "usage: make_home_tree home|flat DIR   (DIR must not exist)\n");
    return 2;
  }
  ::umask(022);
  const std::string path = argv[2];
  if (::mkdir(path.c_str(), 0755) != 0) {
    fail("make " + path);
  }
  Maker maker;
  {
    const Folder top(maker, path);
    shape == "home" ? makeHome(top) : makeFlat(top);
  }
  std::printf("%ld files in %ld folders, %ld links\n", maker.files(), maker.folders(),
              maker.links());
  if (shape == "home" && (maker.files() != homeFiles || maker.folders() != homeFolders)) {
    std::fprintf(stderr, "make_home_tree: the counts are not those of the benchmark\n");
    return 1;
  }
  return 0;
}
