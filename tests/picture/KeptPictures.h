// The folder of the approved pictures of all screens, and the comparison with new ones.
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
  // An accepted difference between one renderer and the one that drew the pictures.
  struct KnownDifference {
    std::string renderer;  // a name from rendererOf()
    QString screen;
    QRect area;  // in pixels
    std::string reason;
  };

  // `folder` has a picture "NAME.png" for each screen. `known` is the text of
  // known-differences.txt.
  KeptPictures(QString folder, const std::string& known);

  // The pictures in the source tree.
  static KeptPictures ofTheProject();

  // The software renderer on this kind of processor: "software/x86_64".
  static std::string rendererOfThisMachine();

  // Null if there is none that can be read.
  QImage picture(const QString& screen) const;

  // Compares with the kept picture, without the known differences of `renderer`.
  PictureDifference differenceOf(const QString& screen, const QImage& seen,
                                 const std::string& renderer) const;

  // False if it cannot be written.
  bool keep(const QString& screen, const QImage& seen) const;

  // The pictures in the folder, by the names of their screens.
  QStringList names() const;
  void remove(const QString& screen) const;

  const std::vector<KnownDifference>& known() const { return known_; }
  // Invalid lines of known-differences.txt: a number or the reason is missing.
  const QStringList& senselessLines() const { return senseless_; }

 private:
  QString fileOf(const QString& screen) const;

  QString folder_;
  std::vector<KnownDifference> known_;
  QStringList senseless_;
};

}  // namespace tessaly
