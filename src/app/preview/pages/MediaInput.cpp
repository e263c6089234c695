#include "app/preview/pages/MediaInput.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <mutex>
#include <string>

extern "C" {
#include <libavformat/avformat.h>
#include <libavutil/dict.h>
#include <libavutil/error.h>
#include <libavutil/log.h>
#include <libavutil/mem.h>
}

namespace tessaly {

namespace {

constexpr int blockBytes = 32 * 1024;
constexpr std::size_t probeBytes = 64 * 1024;

// The library's messages are not needed; it returns error codes.
void beQuiet() {
  static std::once_flag once;
  std::call_once(once, [] { av_log_set_level(AV_LOG_QUIET); });
}

int readBlock(void* opaque, std::uint8_t* to, int count) {
  const qint64 length = static_cast<ItemDevice*>(opaque)->read(reinterpret_cast<char*>(to), count);
  if (length < 0) return AVERROR(EIO);
  return length == 0 ? AVERROR_EOF : static_cast<int>(length);
}

std::int64_t seekTo(void* opaque, std::int64_t offset, int whence) {
  auto& device = *static_cast<ItemDevice*>(opaque);
  switch (whence & ~AVSEEK_FORCE) {
    case AVSEEK_SIZE:
      return device.size();
    case SEEK_CUR:
      offset += device.pos();
      break;
    case SEEK_END:
      offset += device.size();
      break;
    default:
      break;
  }
  if (offset < 0 || !device.seek(offset)) return AVERROR(EINVAL);
  return offset;
}

int refuse(AVFormatContext* /*format*/, AVIOContext** /*input*/, const char* /*url*/, int /*flags*/,
           AVDictionary** /*options*/) {
  return AVERROR(EACCES);
}

}  // namespace

struct MediaInput::Library {
  AVIOContext* blocks = nullptr;
  AVFormatContext* format = nullptr;
  bool isUsable = false;

  explicit Library(ItemDevice& device) {
    auto* const buffer = static_cast<unsigned char*>(av_malloc(blockBytes));
    if (buffer == nullptr) return;
    blocks = avio_alloc_context(buffer, blockBytes, 0, &device, readBlock, nullptr, seekTo);
    if (blocks == nullptr) {
      av_free(buffer);
      return;
    }
    format = avformat_alloc_context();
    if (format == nullptr) return;
    format->pb = blocks;
    format->flags |= AVFMT_FLAG_CUSTOM_IO;
    format->io_open = refuse;

    // There is no decoder of this name, so none is used to find out more.
    AVDictionary* options = nullptr;
    av_dict_set(&options, "codec_whitelist", "none", 0);
    // Blocks protocols for other files too, in the contexts that a playlist creates for its
    // entries.
    av_dict_set(&options, "protocol_whitelist", "none", 0);
    const int opened = avformat_open_input(&format, nullptr, nullptr, &options);
    av_dict_free(&options);
    // The function frees the context on failure.
    if (opened < 0) return;
    isUsable = avformat_find_stream_info(format, nullptr) >= 0 && format->nb_streams > 0;
  }

  ~Library() {
    avformat_close_input(&format);
    if (blocks == nullptr) return;
    // The library may have replaced the buffer.
    av_freep(&blocks->buffer);
    avio_context_free(&blocks);
  }

  Library(const Library&) = delete;
  Library& operator=(const Library&) = delete;
};

bool MediaInput::isKnown(const HeldItem& file) {
  beQuiet();
  std::string head(probeBytes + AVPROBE_PADDING_SIZE, '\0');
  const Result<std::size_t> length = file.read(0, head.data(), probeBytes);
  if (!length) return false;
  AVProbeData data = {};
  data.filename = "";
  data.buf = reinterpret_cast<unsigned char*>(head.data());
  data.buf_size = static_cast<int>(length.value());
  int score = 0;
  av_probe_input_format3(&data, 1, &score);
  return score > AVPROBE_SCORE_EXTENSION;
}

MediaInput::MediaInput(const HeldItem& file, std::int64_t mostBytes) : device_(file, mostBytes) {
  beQuiet();
  library_ = std::make_unique<Library>(device_);
}

MediaInput::~MediaInput() = default;

const AVFormatContext* MediaInput::format() const {
  return library_->isUsable ? library_->format : nullptr;
}

}  // namespace tessaly
