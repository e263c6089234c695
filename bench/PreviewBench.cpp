// Measures how long a preview waits for the process that reads foreign formats: one that was
// started ahead and waits, as in the program, and one that is started for the file. The aim for an
// ordinary picture is 150 ms from the request to the decoded image.
//
// The files are made from a fixed seed. Usage: tessaly_preview_bench [RUNS]
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <random>
#include <string>
#include <thread>
#include <variant>
#include <vector>

#include <QGuiApplication>
#include <QImage>
#include <QString>

#include "app/preview/PreviewReader.h"
#include "app/preview/ReaderProgram.h"
#include "support/PlainFiles.h"
#include "support/TempTree.h"

namespace tessaly {
namespace {

using Clock = std::chrono::steady_clock;

// Gradients with some noise, to compress about as badly as a photograph.
QImage photograph(int width, int height) {
  std::mt19937 random(7);
  QImage image(width, height, QImage::Format_RGB32);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      const int noise = static_cast<int>(random() % 24);
      image.setPixel(x, y,
                     qRgb(std::min(255, x * 230 / width + noise),
                          std::min(255, y * 230 / height + noise), 90 + noise));
    }
  }
  return image;
}

// Milliseconds; absent if the content was not read.
std::optional<double> readOnce(const std::string& path, ReaderProgram& reader) {
  const auto start = Clock::now();
  const PreviewContent content = PreviewReader::read(path, {}, reader);
  const std::chrono::duration<double, std::milli> passed = Clock::now() - start;
  const bool isShown = std::holds_alternative<ImagePreview>(content.body) ||
                       std::holds_alternative<PagesPreview>(content.body) ||
                       std::holds_alternative<MediaPreview>(content.body);
  return isShown ? std::optional(passed.count()) : std::nullopt;
}

void tell(const char* what, const char* how, std::vector<double> times, std::size_t runs) {
  std::sort(times.begin(), times.end());
  if (times.size() != runs) {
    std::printf("%-32s %-8s not read\n", what, how);
    return;
  }
  std::printf("%-32s %-8s min %6.1f   median %6.1f   max %6.1f ms\n", what, how, times.front(),
              times[runs / 2], times.back());
}

void measure(const char* what, const std::string& path, std::size_t runs) {
  std::vector<double> waiting;
  std::vector<double> started;
  ReaderProgram reader;
  reader.warmUp();
  for (std::size_t run = 0; run < runs; ++run) {
    // Users look at a picture before they open the next; the next process starts during that time.
    std::this_thread::sleep_for(std::chrono::milliseconds(400));
    if (const auto time = readOnce(path, reader)) waiting.push_back(*time);
    std::this_thread::sleep_for(std::chrono::milliseconds(400));
    ReaderProgram fresh;
    if (const auto time = readOnce(path, fresh)) started.push_back(*time);
  }
  tell(what, "waiting", waiting, runs);
  tell(what, "started", started, runs);
}

void run(std::size_t runs) {
  const TempTree files;
  const auto save = [&](const char* name, int width, int height) {
    const std::string path = files.at(name);
    photograph(width, height).save(QString::fromStdString(path), nullptr, 90);
    return path;
  };
  measure("PNG of 1920 by 1200", save("screen.png", 1920, 1200), runs);
  measure("JPEG of 1920 by 1200", save("small.jpg", 1920, 1200), runs);
  measure("JPEG of 12 megapixels", save("photograph.jpg", 4000, 3000), runs);
  putFile(files.at("drawing.svg"),
          R"(<svg xmlns="http://www.w3.org/2000/svg" width="400" height="300"><rect width="400" )"
          R"(height="300" fill="#246"/><circle cx="200" cy="150" r="99" fill="#fa0"/></svg>)");
  measure("SVG of two shapes", files.at("drawing.svg"), runs);
}

}  // namespace
}  // namespace tessaly

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  const int runs = argc > 1 ? std::atoi(argv[1]) : 7;
  if (runs < 1) {
    std::fputs("usage: tessaly_preview_bench [RUNS]\n", stderr);
    return 2;
  }
  tessaly::run(static_cast<std::size_t>(runs));
  return 0;
}
