// One row of a preview: a fact of a file by its name and value, or an item of a folder by its
// symbol, name and size.
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
