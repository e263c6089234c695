#include "app/preview/pages/MediaFacts.h"

#include <cmath>
#include <cstdint>
#include <string>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavcodec/codec_desc.h>
#include <libavformat/avformat.h>
#include <libavutil/channel_layout.h>
#include <libavutil/dict.h>
#include <libavutil/rational.h>
}

#include "scan/Format.h"

namespace tessaly::MediaFacts {

namespace {

// Longer tags come from malicious files, or are lyrics in the wrong field.
constexpr int longestTag = 200;

void add(MediaPreview& preview, const char* name, const QString& value) {
  if (!value.isEmpty()) preview.facts.emplace_back(QString::fromLatin1(name), value);
}

// "1.5" for 1.5, "25" for 25.0: at most this many decimals, without zeros at the end.
QString number(double value, int decimals) {
  std::string text = Format::fixed(value, decimals);
  if (text.find('.') != std::string::npos) {
    while (text.ends_with('0')) text.pop_back();
    if (text.ends_with('.')) text.pop_back();
  }
  return QString::fromStdString(text);
}

// "0:07", "3:25", "1:02:03".
QString duration(std::int64_t microseconds) {
  if (microseconds <= 0) return {};
  const std::int64_t seconds = (microseconds + AV_TIME_BASE / 2) / AV_TIME_BASE;
  const auto twoDigits = [](std::int64_t value) {
    return QStringLiteral("%1").arg(value, 2, 10, QLatin1Char('0'));
  };
  const QString tail = twoDigits(seconds % 60);
  if (seconds < 3600) return QStringLiteral("%1:%2").arg(seconds / 60).arg(tail);
  return QStringLiteral("%1:%2:%3").arg(seconds / 3600).arg(twoDigits(seconds / 60 % 60), tail);
}

QString bitRate(std::int64_t bitsPerSecond) {
  if (bitsPerSecond <= 0) return {};
  const double kilobits = static_cast<double>(bitsPerSecond) / 1000;
  if (kilobits < 1000) return QStringLiteral("%1 kbit/s").arg(number(kilobits, 0));
  return QStringLiteral("%1 Mbit/s").arg(number(kilobits / 1000, 1));
}

QString codec(const AVCodecParameters& parameters) {
  const AVCodecDescriptor* known = avcodec_descriptor_get(parameters.codec_id);
  if (known == nullptr) return {};
  return QString::fromUtf8(known->long_name != nullptr ? known->long_name : known->name);
}

QString channels(const AVChannelLayout& layout) {
  if (layout.nb_channels <= 0) return {};
  if (layout.nb_channels == 1) return QStringLiteral("Mono");
  if (layout.nb_channels == 2) return QStringLiteral("Stereo");
  return QString::number(layout.nb_channels);
}

QString frameRate(const AVStream& stream) {
  const AVRational& rate = stream.avg_frame_rate;
  if (rate.num <= 0 || rate.den <= 0) return {};
  return QStringLiteral("%1 frames per second").arg(number(av_q2d(rate), 2));
}

// If pixels are not square, the displayed size is used.
QString dimensions(const AVCodecParameters& parameters) {
  if (parameters.width <= 0 || parameters.height <= 0) return {};
  return QStringLiteral("%1 × %2").arg(parameters.width).arg(parameters.height);
}

bool isCover(const AVStream& stream) {
  return (stream.disposition & AV_DISPOSITION_ATTACHED_PIC) != 0;
}

const AVStream* firstOf(const AVFormatContext& format, AVMediaType type) {
  for (unsigned i = 0; i < format.nb_streams; ++i) {
    const AVStream* stream = format.streams[i];
    if (stream->codecpar->codec_type == type && !isCover(*stream)) return stream;
  }
  return nullptr;
}

// Some containers, such as Ogg, store tags in the stream.
QString tag(const AVFormatContext& format, const AVStream* stream, const char* key) {
  const AVDictionaryEntry* entry = av_dict_get(format.metadata, key, nullptr, 0);
  if (entry == nullptr && stream != nullptr) {
    entry = av_dict_get(stream->metadata, key, nullptr, 0);
  }
  if (entry == nullptr) return {};
  QString text = QString::fromUtf8(entry->value).simplified();
  if (text.size() <= longestTag) return text;
  return text.left(longestTag) + QChar(0x2026);
}

}  // namespace

MediaPreview of(const AVFormatContext& format) {
  MediaPreview preview;
  const AVStream* film = firstOf(format, AVMEDIA_TYPE_VIDEO);
  const AVStream* sound = firstOf(format, AVMEDIA_TYPE_AUDIO);
  const AVStream* first = film != nullptr ? film : sound;
  add(preview, "Title", tag(format, first, "title"));
  add(preview, "Artist", tag(format, first, "artist"));
  add(preview, "Album", tag(format, first, "album"));
  add(preview, "Duration",
      format.duration == AV_NOPTS_VALUE ? QString() : duration(format.duration));
  if (film != nullptr) {
    add(preview, "Dimensions", dimensions(*film->codecpar));
    add(preview, "Frame rate", frameRate(*film));
    add(preview, "Video", codec(*film->codecpar));
  }
  if (sound != nullptr) {
    add(preview, "Audio", codec(*sound->codecpar));
    add(preview, "Channels", channels(sound->codecpar->ch_layout));
    if (sound->codecpar->sample_rate > 0) {
      add(preview, "Sample rate",
          QStringLiteral("%1 kHz").arg(number(sound->codecpar->sample_rate / 1000.0, 3)));
    }
  }
  add(preview, "Bit rate", bitRate(format.bit_rate));
  return preview;
}

}  // namespace tessaly::MediaFacts
