#include "picture/PictureOptions.h"

#include <map>

#include <QFile>

namespace tessaly {

namespace {

using Screen = PictureOptions::Screen;

std::optional<std::pair<int, int>> twoNumbers(const QString& text, QChar between) {
  const QStringList parts = text.split(between);
  if (parts.size() != 2) return std::nullopt;
  bool first = false;
  bool second = false;
  const std::pair numbers(parts[0].toInt(&first), parts[1].toInt(&second));
  if (!first || !second) return std::nullopt;
  return numbers;
}

bool take(PictureOptions& options, const QString& name, const QString& value) {
  if (name == QLatin1String("--root")) {
    options.root = QFile::encodeName(value).toStdString();
    return true;
  }
  if (name == QLatin1String("--drill")) {
    options.drill = value.split(QLatin1Char('/'), Qt::SkipEmptyParts);
    return true;
  }
  if (name == QLatin1String("--hover")) {
    const auto point = twoNumbers(value, QLatin1Char(','));
    if (point) options.hover = QPoint(point->first, point->second);
    return point.has_value();
  }
  if (name == QLatin1String("--size")) {
    const auto size = twoNumbers(value, QLatin1Char('x'));
    if (size) options.size = QSize(size->first, size->second);
    return size && !options.size->isEmpty();
  }
  if (name == QLatin1String("--scale")) {
    bool isNumber = false;
    options.scale = value.toDouble(&isNumber);
    return isNumber && options.scale >= 0.5 && options.scale <= 4;
  }
  if (name == QLatin1String("--fixture")) {
    options.fixture = value;
    return !value.isEmpty();
  }
  if (name == QLatin1String("--keep")) {
    options.keep = value;
    return !value.isEmpty();
  }
  if (name == QLatin1String("--screen")) {
    static const std::map<QString, Screen> screens = {
        {QStringLiteral("idle"), Screen::idle},
        {QStringLiteral("scanning"), Screen::scanning},
        {QStringLiteral("failed"), Screen::failed},
        {QStringLiteral("map"), Screen::map},
        {QStringLiteral("rescanning"), Screen::rescanning}};
    const auto found = screens.find(value);
    if (found == screens.end()) return false;
    options.screen = found->second;
    return true;
  }
  return false;
}

}  // namespace

const char* PictureOptions::usage() {
  return "usage: tessaly_picture OUT.png [--root DIR] [--drill NAME/NAME] [--hover X,Y]\n"
         "       [--size WxH] [--scale FACTOR] [--screen idle|scanning|failed|map|rescanning]\n"
         "       tessaly_picture OUT.png --fixture SCREEN [--size WxH] [--scale FACTOR]\n"
         "       tessaly_picture --keep FOLDER\n";
}

std::optional<PictureOptions> PictureOptions::parse(const QStringList& arguments) {
  PictureOptions options;
  for (qsizetype i = 0; i < arguments.size(); ++i) {
    const QString& argument = arguments[i];
    if (!argument.startsWith(QLatin1String("--"))) {
      if (!options.file.isEmpty()) return std::nullopt;
      options.file = argument;
      continue;
    }
    if (i + 1 == arguments.size() || !take(options, argument, arguments[i + 1]))
      return std::nullopt;
    ++i;
  }
  if (!options.keep.isEmpty() && arguments.size() != 2) return std::nullopt;
  if (options.file.isEmpty() && options.keep.isEmpty()) return std::nullopt;
  return options;
}

}  // namespace tessaly
