// One row of a preview: a fact of a file with name and value, or an item of a folder with symbol,
// name and size.
#pragma once

#include <QString>

namespace tessaly {

struct PreviewRow {
  QString symbol;  // name of a symbol, or empty
  QString name;
  QString value;  // may be empty

  friend bool operator==(const PreviewRow&, const PreviewRow&) = default;
};

}  // namespace tessaly
