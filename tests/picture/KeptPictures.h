// The folder of the pictures of all screens that were looked at and kept, and how a new one
// compares with them.
#pragma once

#include <string>
#include <vector>

#include <QImage>
#include <QRect>
#include <QString>
#include <QStringList>

#include "picture/PictureComparison.h"

namespace tessaly {

class KeptPictures {
 public:
  // What one renderer draws differently from the one that the pictures come from, and may.
  struct KnownDifference {
    std::string renderer;  // as rendererOf() names it
    QString screen;
    QRect area;  // in pixels
    std::string reason;
  };

  // `folder` has a picture "NAME.png" a screen. `known` is the text of known-differences.txt.
  KeptPictures(QString folder, const std::string& known);

  // Those beside the sources.
  static KeptPictures ofTheProject();

  // Of the software renderer on this kind of processor: "software/x86_64".
  static std::string rendererOfThisMachine();

  // Null when there is none that can be read.
  QImage picture(const QString& screen) const;

  // Compares with what was kept, but for what is known of `renderer`.
  PictureDifference differenceOf(const QString& screen, const QImage& seen,
                                 const std::string& renderer) const;

  // False when it cannot be written.
  bool keep(const QString& screen, const QImage& seen) const;

  // The pictures in the folder, by the names of their screens.
  QStringList names() const;
  void remove(const QString& screen) const;

  const std::vector<KnownDifference>& known() const { return known_; }
  // Lines of the text that tell of no difference: a number is missing, or the reason.
  const QStringList& senselessLines() const { return senseless_; }

 private:
  QString fileOf(const QString& screen) const;

  QString folder_;
  std::vector<KnownDifference> known_;
  QStringList senseless_;
};

}  // namespace tessaly
