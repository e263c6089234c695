#include "app/preview/pages/MediaReader.h"

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <gtest/gtest.h>
#include <stdexcept>
#include <string>
#include <unistd.h>
#include <utility>
#include <variant>
#include <vector>

extern "C" {
#include <libavformat/avformat.h>
#include <libavutil/dict.h>
#include <libavutil/mathematics.h>
}

#include "support/ForkedChild.h"
#include "support/PreviewFile.h"
#include "support/TempTree.h"

namespace tessaly {
namespace {

using namespace std::string_literals;
using Rows = std::vector<std::pair<std::string, std::string>>;

Rows rowsIn(const Decoded& body) {
  Rows rows;
  if (const auto* media = std::get_if<MediaPreview>(&body)) {
    for (const auto& [name, value] : media->facts) {
      rows.emplace_back(name.toStdString(), value.toStdString());
    }
  } else {
    ADD_FAILURE() << "no sound or film: " << body.index();
  }
  return rows;
}

Decoded readBytes(const std::string& bytes) {
  const TempTree tree;
  putFile(tree.at("recording"), bytes);
  return MediaReader::read(held(tree.at("recording")), {});
}

bool has(const Decoded& decoded, ReaderAnswer::Verdict expected) {
  const auto* verdict = std::get_if<ReaderAnswer::Verdict>(&decoded);
  return verdict != nullptr && *verdict == expected;
}

bool isDamaged(const Decoded& decoded) {
  return has(decoded, ReaderAnswer::Verdict::damaged);
}

std::string number(std::uint32_t value, int bytes) {
  std::string text;
  for (int i = 0; i < bytes; ++i) text += static_cast<char>(value >> 8 * i & 0xFF);
  return text;
}

std::string chunk(const std::string& name, const std::string& content) {
  return name + number(static_cast<std::uint32_t>(content.size()), 4) + content +
         std::string(content.size() % 2, '\0');
}

// Silence with 16 bits per sample.
std::string wav(unsigned channels, unsigned rate, unsigned seconds, const std::string& more = {}) {
  const std::string format = number(1, 2) + number(channels, 2) + number(rate, 4) +
                             number(rate * channels * 2, 4) + number(channels * 2, 2) +
                             number(16, 2);
  return chunk("RIFF", "WAVE" + chunk("fmt ", format) + more +
                           chunk("data", std::string(rate * channels * 2 * seconds, '\0')));
}

// A second of uncompressed film with sound.
class Film {
 public:
  explicit Film(const std::string& path) {
    if (avformat_alloc_output_context2(&format_, nullptr, "matroska", path.c_str()) < 0 ||
        avio_open(&format_->pb, path.c_str(), AVIO_FLAG_WRITE) < 0) {
      throw std::runtime_error("no film can be written");
    }
    av_dict_set(&format_->metadata, "title", "A  walk\nin the wood", 0);
    av_dict_set(&format_->metadata, "artist", "Nobody", 0);
    AVCodecParameters& video = added(AVMEDIA_TYPE_VIDEO, AV_CODEC_ID_RAWVIDEO);
    video.width = 64;
    video.height = 48;
    video.format = AV_PIX_FMT_YUV420P;
    video.codec_tag = MKTAG('I', '4', '2', '0');
    AVCodecParameters& audio = added(AVMEDIA_TYPE_AUDIO, AV_CODEC_ID_PCM_S16LE);
    audio.sample_rate = 8000;
    audio.bits_per_coded_sample = 16;
    av_channel_layout_default(&audio.ch_layout, 1);
    format_->streams[0]->avg_frame_rate = {25, 1};
    if (avformat_write_header(format_, nullptr) < 0) throw std::runtime_error("no header");
    for (int i = 0; i < 25; ++i) {
      write(0, 64 * 48 * 3 / 2, i);
      write(1, 640, i);
    }
    av_write_trailer(format_);
    avio_closep(&format_->pb);
    avformat_free_context(format_);
  }

 private:
  AVCodecParameters& added(AVMediaType type, AVCodecID codec) {
    AVStream* stream = avformat_new_stream(format_, nullptr);
    stream->codecpar->codec_type = type;
    stream->codecpar->codec_id = codec;
    return *stream->codecpar;
  }

  void write(int stream, int bytes, int frame) {
    AVPacket* packet = av_packet_alloc();
    av_new_packet(packet, bytes);
    std::fill(packet->data, packet->data + bytes, static_cast<std::uint8_t>(0));
    packet->stream_index = stream;
    packet->pts = packet->dts = av_rescale_q(frame, {1, 25}, format_->streams[stream]->time_base);
    packet->duration = av_rescale_q(1, {1, 25}, format_->streams[stream]->time_base);
    packet->flags |= AV_PKT_FLAG_KEY;
    av_interleaved_write_frame(format_, packet);
    av_packet_free(&packet);
  }

  AVFormatContext* format_ = nullptr;
};

TEST(MediaReader, a_sound_has_its_facts) {
  EXPECT_EQ(rowsIn(readBytes(wav(2, 44100, 2))), (Rows{{"Duration", "0:02"},
                                                       {"Audio", "PCM signed 16-bit little-endian"},
                                                       {"Channels", "Stereo"},
                                                       {"Sample rate", "44.1 kHz"},
                                                       {"Bit rate", "1.4 Mbit/s"}}));
}

TEST(MediaReader, title_and_artist_are_facts_if_present) {
  const std::string names =
      chunk("LIST", "INFO" + chunk("INAM", "A song\0"s) + chunk("IART", "A singer\0"s));
  const Rows rows = rowsIn(readBytes(wav(1, 8000, 1, names)));
  ASSERT_GE(rows.size(), 4U);
  EXPECT_EQ(rows[0], (Rows::value_type{"Title", "A song"}));
  EXPECT_EQ(rows[1], (Rows::value_type{"Artist", "A singer"}));
  EXPECT_EQ(rows[4], (Rows::value_type{"Channels", "Mono"}));
}

TEST(MediaReader, an_overlong_title_is_cut) {
  const std::string names = chunk("LIST", "INFO" + chunk("INAM", std::string(999, 't')));
  const Rows rows = rowsIn(readBytes(wav(1, 8000, 1, names)));
  EXPECT_EQ(rows[0].second, std::string(200, 't') + "…");
}

TEST(MediaReader, a_film_has_its_facts) {
  const TempTree tree;
  const Film film(tree.at("film"));
  const Rows rows = rowsIn(MediaReader::read(held(tree.at("film")), {}));
  ASSERT_EQ(rows.size(), 10U);
  EXPECT_EQ(rows[0], (Rows::value_type{"Title", "A walk in the wood"}));
  EXPECT_EQ(rows[1], (Rows::value_type{"Artist", "Nobody"}));
  EXPECT_EQ(rows[2], (Rows::value_type{"Duration", "0:01"}));
  EXPECT_EQ(rows[3], (Rows::value_type{"Dimensions", "64 × 48"}));
  EXPECT_EQ(rows[4], (Rows::value_type{"Frame rate", "25 frames per second"}));
  EXPECT_EQ(rows[5], (Rows::value_type{"Video", "raw video"}));
  EXPECT_EQ(rows[6], (Rows::value_type{"Audio", "PCM signed 16-bit little-endian"}));
  EXPECT_EQ(rows[7], (Rows::value_type{"Channels", "Mono"}));
  EXPECT_EQ(rows[8], (Rows::value_type{"Sample rate", "8 kHz"}));
  EXPECT_EQ(rows[9].first, "Bit rate");
}

TEST(MediaReader, durations_over_an_hour_are_shown_in_hours) {
  // The header gives the length; the rest of the file has no blocks.
  const TempTree tree("recording sparse=1G");
  const std::string head = wav(1, 44100, 0);
  std::string whole = head.substr(0, head.size() - 4) + number((1U << 30) - 44, 4);
  whole.replace(4, 4, number((1U << 30) - 8, 4));
  std::fstream(tree.at("recording"), std::ios::in | std::ios::out | std::ios::binary) << whole;
  EXPECT_EQ(rowsIn(MediaReader::read(held(tree.at("recording")), {}))[0],
            (Rows::value_type{"Duration", "3:22:54"}));
}

TEST(MediaReader, a_damaged_recording_is_reported) {
  const std::string whole = wav(2, 44100, 1);
  EXPECT_TRUE(isDamaged(readBytes(whole.substr(0, 20))));
  EXPECT_TRUE(isDamaged(readBytes("fLaC" + std::string(1000, '\xAA'))));
  EXPECT_TRUE(
      isDamaged(readBytes("\0\0\0\x18"
                          "ftypisom\0\0\2\0isomiso2\0\0\1\0moov"s)));
}

TEST(MediaReader, a_truncated_film_has_facts_or_is_reported_as_damaged) {
  const TempTree tree;
  const Film film(tree.at("film"));
  const std::string whole = contentOf(tree.at("film"));
  int shown = 0;
  int damaged = 0;
  for (std::size_t length = 4; length < whole.size(); length += length < 1500 ? 25 : 5000) {
    const Decoded body = readBytes(whole.substr(0, length));
    shown += std::holds_alternative<MediaPreview>(body) ? 1 : 0;
    damaged += isDamaged(body) ? 1 : 0;
    EXPECT_TRUE(std::holds_alternative<MediaPreview>(body) || isDamaged(body)) << length;
  }
  EXPECT_GT(shown, 0);
  EXPECT_GT(damaged, 0);
}

// Frames of silence at 128 kbit/s: sound without a signature.
std::string mp3(int frames) {
  std::string bytes;
  for (int i = 0; i < frames; ++i) bytes += "\xFF\xFB\x90\x64"s + std::string(413, '\0');
  return bytes;
}

Decoded readUnsigned(const std::string& bytes) {
  const TempTree tree;
  putFile(tree.at("file"), bytes);
  return MediaReader::readUnsigned(held(tree.at("file")), {});
}

TEST(MediaReader, sound_without_a_signature_is_found) {
  const Rows rows = rowsIn(readUnsigned(mp3(200)));
  EXPECT_EQ(rows[0], (Rows::value_type{"Duration", "0:05"}));
  EXPECT_EQ(rows[1], (Rows::value_type{"Audio", "MP3 (MPEG audio layer 3)"}));
}

TEST(MediaReader, no_sound_is_found_in_other_files) {
  constexpr ReaderAnswer::Verdict other = ReaderAnswer::Verdict::other;
  std::string noise;
  std::uint32_t state = 1;
  for (int i = 0; i < 100'000; ++i) {
    state = state * 1'664'525 + 1'013'904'223;
    noise += static_cast<char>(state >> 24);
  }
  EXPECT_TRUE(has(readUnsigned(noise), other));
  // So few frames may occur anywhere by chance.
  EXPECT_TRUE(has(readUnsigned(mp3(5) + std::string(20'000, '\0')), other));
  EXPECT_TRUE(has(readUnsigned(std::string(100'000, '\0')), other));
  EXPECT_TRUE(has(readUnsigned(""), other));
}

// Such a playlist tells the library to open another file, in the current directory.
TEST(MediaReader, files_referenced_by_a_container_are_not_opened) {
  const TempTree tree;
  putFile(tree.at("other.wav"), wav(1, 8000, 1));
  putFile(tree.at("list"), "ffconcat version 1.0\nfile 'other.wav'\n");
  const std::string told = inForkedChild([&tree]() -> std::string {
    if (::chdir(tree.path().c_str()) != 0) return "no folder";
    return isDamaged(MediaReader::read(held(tree.at("list")), {})) ? "" : "it was opened";
  });
  EXPECT_EQ(told, "");
}

}  // namespace
}  // namespace tessaly
