#include "app/preview/ContentKind.h"

#include <algorithm>
#include <array>

namespace tessaly {

namespace {

using namespace std::string_view_literals;
using Family = ContentKind::Family;

struct Signature {
  std::string_view bytes;
  ContentKind kind;
  std::size_t offset = 0;
};

constexpr ContentKind media = {.family = Family::media, .image = {}};
constexpr ContentKind closed = {.family = Family::closed, .image = {}};

constexpr ContentKind image(std::string_view format) {
  return {.family = Family::image, .image = format};
}

// The first match counts.
constexpr Signature signatures[] = {
    {"\x89PNG\r\n\x1A\n"sv, image("png")},
    {"\x8AMNG\r\n\x1A\n"sv, image("mng")},
    {"\xFF\xD8\xFF"sv, image("jpeg")},
    {"GIF87a"sv, image("gif")},
    {"GIF89a"sv, image("gif")},
    {"II*\0"sv, image("tiff")},
    {"MM\0*"sv, image("tiff")},
    {"II+\0"sv, image("tiff")},
    {"MM\0+"sv, image("tiff")},
    {"WEBP"sv, image("webp"), 8},
    {"icns"sv, image("icns")},
    {"\0\0\0\x0CjP  \r\n"sv, image("jp2")},
    {"\0\0\0\x0CJXL \r\n"sv, image("jxl")},
    {"ftypavif"sv, image("avif"), 4},
    {"ftypavis"sv, image("avif"), 4},
    {"ftyphei"sv, image("heic"), 4},
    {"ftypmif1"sv, image("heif"), 4},
    {"8BPS"sv, image("psd")},
    {"DDS "sv, image("dds")},

    {"WAVE"sv, media, 8},
    {"AVI "sv, media, 8},
    {"OggS"sv, media},
    {"fLaC"sv, media},
    {"ID3"sv, media},
    {"ftyp"sv, media, 4},
    {"moov"sv, media, 4},
    {"mdat"sv, media, 4},
    {"wide"sv, media, 4},
    {"\x1A\x45\xDF\xA3"sv, media},
    {"AIFF"sv, media, 8},
    {"AIFC"sv, media, 8},
    {"8SVX"sv, media, 8},
    {".snd\0\0"sv, media},
    {"caff\0\1"sv, media},
    {"FLV\1"sv, media},
    {"\x30\x26\xB2\x75\x8E\x66\xCF\x11"sv, media},
    {"\0\0\1\xBA"sv, media},
    {"\0\0\1\xB3"sv, media},
    {"MAC "sv, media},
    {"wvpk"sv, media},
    {"TTA1"sv, media},
    {"MPCK"sv, media},
    {"MP+"sv, media},
    {"DSD "sv, media},
    {"#!AMR"sv, media},
    {".RMF\0"sv, media},

    {"\x7F"
     "ELF"sv,
     closed},
    {"PK\3\4"sv, closed},
    {"PK\5\6"sv, closed},
    {"\x1F\x8B\x08"sv, closed},
    {"BZh"sv, closed},
    {"\xFD"
     "7zXZ\0"sv,
     closed},
    {"7z\xBC\xAF\x27\x1C"sv, closed},
    {"\x28\xB5\x2F\xFD"sv, closed},
    {"\x04\x22\x4D\x18"sv, closed},
    {"Rar!\x1A\x07"sv, closed},
    {"ustar"sv, closed, 257},
    {"!<arch>\n"sv, closed},
    {"\xED\xAB\xEE\xDB"sv, closed},
    {"MSCF\0"sv, closed},
    {"SQLite format 3\0"sv, closed},
    {"\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1"sv, closed},
    {"\xCA\xFE\xBA\xBE"sv, closed},
    {"\xCF\xFA\xED\xFE"sv, closed},
    {"\xCE\xFA\xED\xFE"sv, closed},
    {"\0asm"sv, closed},
    {"wOFF"sv, closed},
    {"wOF2"sv, closed},
    {"OTTO\0"sv, closed},
    {"\0\1\0\0\0"sv, closed},
    {"QFI\xFB"sv, closed},
    {"LUKS\xBA\xBE"sv, closed},
    {"MThd\0"sv, closed},
};

bool has(std::string_view head, std::size_t offset, std::string_view bytes) {
  return head.size() >= offset && head.substr(offset).starts_with(bytes);
}

// A signature of letters only may also be the beginning of a text; a real file of that format has
// other bytes that no text has.
bool isNoText(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return byte < 0x20 && !(byte >= '\b' && byte <= '\r') && byte != 0x1B;
}

// Two letters are too common, so the size of the header is checked too.
bool isBmp(std::string_view head) {
  constexpr std::array<int, 7> headers = {12, 40, 52, 56, 64, 108, 124};
  return head.size() >= 18 && head.starts_with("BM") && has(head, 6, "\0\0\0\0"sv) &&
         has(head, 15, "\0\0\0"sv) &&
         std::find(headers.begin(), headers.end(), static_cast<unsigned char>(head[14])) !=
             headers.end();
}

// An icon or a cursor: a number of images, and a zero byte that the first one must have.
bool isIco(std::string_view head) {
  return head.size() >= 22 && (head.starts_with("\0\0\1\0"sv) || head.starts_with("\0\0\2\0"sv)) &&
         head[4] != 0 && head[5] == 0 && head[9] == 0;
}

// "P6", white space or a comment, and the width.
bool isPnm(std::string_view head) {
  if (head.size() < 4 || head[0] != 'P' || head[1] < '1' || head[1] > '6') return false;
  if (head[2] != '\n' && head[2] != ' ' && head[2] != '\r' && head[2] != '\t') return false;
  return head[3] == '#' || (head[3] >= '0' && head[3] <= '9');
}

// Packets of 188 bytes that all begin with the same byte.
bool isTransportStream(std::string_view head) {
  constexpr std::size_t packet = 188;
  constexpr std::size_t packets = 5;
  if (head.size() < packet * packets) return false;
  for (std::size_t i = 0; i < packets; ++i) {
    if (head[i * packet] != 'G') return false;
  }
  return true;
}

// At the beginning of a line near the beginning of the file: mail headers and the like may precede
// it.
bool isPdf(std::string_view head) {
  constexpr std::string_view mark = "%PDF-";
  head = head.substr(0, 1024);
  for (std::size_t at = head.find(mark); at != std::string_view::npos;
       at = head.find(mark, at + 1)) {
    const bool isAtLine = at == 0 || head[at - 1] == '\n' || head[at - 1] == '\r' ||
                          head.substr(0, at) == "\xEF\xBB\xBF";
    if (isAtLine && at + mark.size() < head.size() && head[at + mark.size()] >= '0' &&
        head[at + mark.size()] <= '9') {
      return true;
    }
  }
  return false;
}

// Whether the first element is <svg>, after an XML declaration, comments and a DOCTYPE.
bool isSvg(std::string_view head) {
  if (head.starts_with("\xEF\xBB\xBF")) head.remove_prefix(3);
  const auto skipTo = [&head](std::string_view end) {
    const std::size_t at = head.find(end);
    head.remove_prefix(at == std::string_view::npos ? head.size() : at + end.size());
  };
  while (true) {
    const std::size_t next = head.find_first_not_of(" \t\r\n");
    if (next == std::string_view::npos) return false;
    head.remove_prefix(next);
    if (head.starts_with("<?")) {
      skipTo("?>");
    } else if (head.starts_with("<!--")) {
      skipTo("-->");
    } else if (head.starts_with("<!DOCTYPE")) {
      // Internal declarations are in brackets.
      const std::size_t end = head.find_first_of("[>");
      if (end != std::string_view::npos && head[end] == '[') skipTo("]");
      skipTo(">");
    } else {
      break;
    }
  }
  if (!head.starts_with('<')) return false;
  std::string_view element = head.substr(1, head.find_first_of(" \t\r\n/>") - 1);
  if (const std::size_t colon = element.find(':'); colon != std::string_view::npos) {
    element.remove_prefix(colon + 1);
  }
  return element == "svg";
}

}  // namespace

ContentKind ContentKind::of(std::string_view head) {
  const bool isBinary = std::any_of(head.begin(), head.end(), isNoText);
  for (const Signature& signature : signatures) {
    if (isBinary && has(head, signature.offset, signature.bytes)) return signature.kind;
  }
  if (head.starts_with("/* XPM")) return ::tessaly::image("xpm");
  if (isBmp(head)) return ::tessaly::image("bmp");
  if (isIco(head)) return ::tessaly::image("ico");
  if (isPnm(head)) return ::tessaly::image("ppm");
  if (isPdf(head)) return {.family = Family::document, .image = {}};
  if (isSvg(head)) return ::tessaly::image("svg");
  if (isTransportStream(head)) return media;
  return {};
}

}  // namespace tessaly
