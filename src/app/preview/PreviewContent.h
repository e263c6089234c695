// What a preview shows of one file: the facts that every file has, and its readable content. A
// plain value, made on a worker thread and shown on the main thread.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include <QImage>
#include <QSize>
#include <QString>

namespace tessaly {

// Facts from the file system. Times are in seconds since 1970; absent if the file system does not
// store them.
struct PreviewFacts {
  std::string path;       // bytes, absolute
  std::string name;       // bytes, its last component
  bool isDir = false;     // of the target, if it is a link
  std::int64_t size = 0;  // bytes of content; 0 for a folder
  std::optional<double> created;
  std::optional<double> modified;
  std::string linkTarget;  // raw bytes of a symbolic link's target; empty for other files
};

// An image, scaled down for the screen.
struct ImagePreview {
  QImage image;
  QSize pixels;  // of the image in the file, in its upright orientation
};

// The beginning of a text.
struct TextPreview {
  QString text;
  bool isWhole = true;  // nothing is missing at the end
};

// The first pages of a document, rendered.
struct PagesPreview {
  std::vector<QImage> pages;
  int count = 0;  // of all pages, also those that were not rendered
};

// Sound or film: facts known without playing it, as rows of a name and a value.
struct MediaPreview {
  std::vector<std::pair<QString, QString>> facts;
};

// The items of a folder, folders first, then by name; including hidden ones.
struct FolderPreview {
  struct Item {
    std::string name;  // bytes
    bool isDir = false;
    std::int64_t size = 0;  // bytes of content; 0 for a folder
  };
  std::vector<Item> items;
  std::int64_t count = 0;  // of all items, also those that are not listed
};

// Only the facts can be shown.
struct FactsOnly {};

// The file cannot be shown. `reason` is a sentence for the user.
struct PreviewFailure {
  QString reason;
};

struct PreviewContent {
  PreviewFacts facts;
  std::variant<FactsOnly, ImagePreview, TextPreview, PagesPreview, MediaPreview, FolderPreview,
               PreviewFailure>
      body;
};

}  // namespace tessaly
