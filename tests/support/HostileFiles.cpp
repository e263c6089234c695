#include "support/HostileFiles.h"

#include <cstddef>
#include <cstdint>

namespace tessaly::HostileFiles {

namespace {

using namespace std::string_literals;

std::string bigEndian(std::uint32_t number, int bytes) {
  std::string text;
  for (int i = bytes - 1; i >= 0; --i) text += static_cast<char>(number >> 8 * i & 0xFF);
  return text;
}

// The CRC of the PNG format.
std::uint32_t checksum(const std::string& bytes) {
  std::uint32_t sum = 0xFFFFFFFF;
  for (const char byte : bytes) {
    sum ^= static_cast<unsigned char>(byte);
    for (int bit = 0; bit < 8; ++bit) sum = (sum >> 1) ^ ((sum & 1) != 0 ? 0xEDB88320U : 0U);
  }
  return ~sum;
}

std::string chunk(const std::string& name, const std::string& content) {
  return bigEndian(static_cast<std::uint32_t>(content.size()), 4) + name + content +
         bigEndian(checksum(name + content), 4);
}

std::string png(unsigned width, unsigned height, const std::string& chunks) {
  return "\x89PNG\r\n\x1A\n" +
         chunk("IHDR", bigEndian(width, 4) + bigEndian(height, 4) + "\x08\0\0\0\0"s) + chunks +
         chunk("IEND", "");
}

std::string segment(char marker, const std::string& content) {
  return std::string("\xFF") + marker +
         bigEndian(static_cast<std::uint32_t>(content.size() + 2), 2) + content;
}

std::string stream(const std::string& entries, const std::string& content) {
  return "<<" + entries + "/Length " + std::to_string(content.size()) + ">>stream\n" + content +
         "\nendstream endobj\n";
}

}  // namespace

std::string slowDrawing() {
  std::string path = "M0 0";
  std::uint32_t state = 1;
  const auto next = [&state] {
    state = state * 1'664'525 + 1'013'904'223;
    return std::to_string((state >> 16) % 1600);
  };
  for (int i = 0; i < 5000; ++i) path += "L" + next() + " " + next();
  return "<svg xmlns='http://www.w3.org/2000/svg' width='1600' height='1600'><path d='" + path +
         "' fill='none' stroke='red' stroke-width='9' stroke-dasharray='3 1'/></svg>";
}

std::string document(const std::string& content, const std::string& form) {
  return "%PDF-1.4\n1 0 obj<</Type/Catalog/Pages 2 0 R>>endobj\n"
         "2 0 obj<</Type/Pages/Kids[3 0 R]/Count 1>>endobj\n"
         "3 0 obj<</Type/Page/Parent 2 0 R/MediaBox[0 0 100 100]/Contents 4 0 R"
         "/Resources<</XObject<</F 5 0 R>>>>>>endobj\n"
         "4 0 obj" +
         stream("", content) + "5 0 obj" +
         stream("/Type/XObject/Subtype/Form/BBox[0 0 100 100]/Resources<</XObject<</F 5 0 R>>>>",
                form) +
         "trailer<</Root 1 0 R/Size 6>>\n%%EOF\n";
}

std::string documentThatDrawsItself() {
  return document("/F Do", "/F Do /F Do");
}

// The scans are empty; decoders read zeros instead.
std::string photographOfScans(int scans) {
  constexpr std::uint32_t side = 1024;
  std::string bytes =
      "\xFF\xD8" + segment('\xDB', "\0"s + std::string(64, '\1')) +
      segment('\xC2', "\x08"s + bigEndian(side, 2) + bigEndian(side, 2) + "\1\1\x11\0"s) +
      segment('\xC4', "\0\1"s + std::string(15, '\0') + "\0"s) +
      segment('\xC4', "\x10\1"s + std::string(15, '\0') + "\0"s);
  for (int i = 0; i < scans; ++i) bytes += segment('\xDA', "\1\1\0\0\0\0"s);
  return bytes + "\xFF\xD9";
}

std::string pngOf(unsigned width, unsigned height) {
  return png(width, height, chunk("IDAT", "x\x9C\3\0\0\0\0\1"s));
}

// One grey pixel, uncompressed.
std::string pngThatIsComplainedOf() {
  return png(1, 1,
             chunk("iCCP", "profile\0\0none"s) +
                 chunk("IDAT", "\x78\x01\x01\x02\0\xFD\xFF\0\x80\0\x82\0\x81"s));
}

std::string sound() {
  return "RIFF\x64\x1F\0\0WAVEfmt \x10\0\0\0\1\0\1\0\x40\x1F\0\0\x40\x1F\0\0\1\0\x08\0data\x40\x1F\0\0"s +
         std::string(8000, '\x80');
}

}  // namespace tessaly::HostileFiles
