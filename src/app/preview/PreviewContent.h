// What a preview shows of one file: facts that every file has, and what could be read of its
// content. A plain value, made on a worker thread and shown on the main thread.
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

// Facts of the file system. Times are in seconds since 1970; absent where the file system does not
// keep them.
struct PreviewFacts {
  std::string path;       // bytes, absolute
  std::string name;       // bytes, its last component
  bool isDir = false;     // a link counts as what it leads to
  std::int64_t size = 0;  // bytes of content; for a folder 0
  std::optional<double> created;
  std::optional<double> modified;
  std::string linkTarget;  // bytes, for a symbolic link as it is written; empty for anything else
};

// An image, scaled down to what a screen can show.
struct ImagePreview {
  QImage image;
  QSize pixels;  // of the file's image, upright as it is meant to be seen
};

// The beginning of a text.
struct TextPreview {
  QString text;
  bool isWhole = true;  // nothing was left out at the end
};

// Pages of a document, rendered, from the first.
struct PagesPreview {
  std::vector<QImage> pages;
  int count = 0;  // of all pages, which may be more than were rendered
};

// Sound or film: what is known without playing it, as rows of a name and a value.
struct MediaPreview {
  std::vector<std::pair<QString, QString>> facts;
};

// A folder's own items, folders first, then by name; the hidden ones too.
struct FolderPreview {
  struct Item {
    std::string name;  // bytes
    bool isDir = false;
    std::int64_t size = 0;  // bytes of content; for a folder 0
  };
  std::vector<Item> items;
  std::int64_t count = 0;  // of all items, which may be more than are listed
};

// Nothing to show but the facts.
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
