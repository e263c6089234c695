#include "picture/KeptPictures.h"

#include <utility>

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QSysInfo>

namespace tessaly {

KeptPictures::KeptPictures(QString folder, const std::string& known) : folder_(std::move(folder)) {
  static const QRegularExpression form(
      QStringLiteral("^(\\S+)\\s+(\\S+)\\s+(\\d+),(\\d+)\\s+(\\d+)x(\\d+)\\s+(\\S.*)$"));
  for (const QString& line : QString::fromStdString(known).split(u'\n')) {
    if (line.trimmed().isEmpty() || line.startsWith(u'#')) continue;
    const QRegularExpressionMatch match = form.match(line);
    const auto number = [&](int group) { return match.captured(group).toInt(); };
    if (match.hasMatch()) {
      known_.push_back({match.captured(1).toStdString(), match.captured(2),
                        QRect(number(3), number(4), number(5), number(6)),
                        match.captured(7).toStdString()});
    } else {
      senseless_ << line;
    }
  }
}

KeptPictures KeptPictures::ofTheProject() {
  QFile known(QStringLiteral(TESSALY_PICTURES "/known-differences.txt"));
  if (!known.open(QIODevice::ReadOnly)) qFatal("known-differences.txt cannot be read");
  return {QStringLiteral(TESSALY_PICTURES "/kept"), known.readAll().toStdString()};
}

std::string KeptPictures::rendererOfThisMachine() {
  return "software/" + QSysInfo::buildCpuArchitecture().toStdString();
}

QString KeptPictures::fileOf(const QString& screen) const {
  return folder_ + u'/' + screen + QStringLiteral(".png");
}

QImage KeptPictures::picture(const QString& screen) const {
  return QImage(fileOf(screen)).convertToFormat(QImage::Format_RGB32);
}

PictureDifference KeptPictures::differenceOf(const QString& screen, const QImage& seen,
                                             const std::string& renderer) const {
  std::vector<QRect> areas;
  for (const KnownDifference& difference : known_) {
    if (difference.screen == screen && difference.renderer == renderer)
      areas.push_back(difference.area);
  }
  return PictureComparison::differenceOf(picture(screen), seen, areas);
}

bool KeptPictures::keep(const QString& screen, const QImage& seen) const {
  constexpr int smallestFile = 0;  // of "quality", which only changes the size of a lossless format
  return seen.save(fileOf(screen), "PNG", smallestFile);
}

QStringList KeptPictures::names() const {
  QStringList names;
  for (const QString& file : QDir(folder_).entryList({QStringLiteral("*.png")}, QDir::Files))
    names << file.chopped(4);
  return names;
}

void KeptPictures::remove(const QString& screen) const {
  QFile::remove(fileOf(screen));
}

}  // namespace tessaly
