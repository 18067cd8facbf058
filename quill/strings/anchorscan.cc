// The character frequencies the vectorised candidate scans choose their
// anchors by.
#include "quill/strings/internal/anchorscan.h"

#include <array>

namespace quill::Gstrings::internal {

namespace {

// Rough frequency of each byte in text and source code (per 10,000 bytes),
// used to pick the pattern characters whose bytes the scan looks for: the
// rarer they are, the fewer candidates need checking.
constexpr std::array<uint16_t, 256> kByteFrequency = [] {
  std::array<uint16_t, 256> f{};
  for (int b = 0; b < 256; ++b) f[b] = b < 32 ? 1 : 5;  // controls; bytes above 127
  f[0] = 20;  // binary data
  f['\n'] = 300;
  f['\t'] = 100;
  f['\r'] = 20;
  const char* const letters = "etaoinsrhldcumfpgwybvkxjqz";
  const uint16_t letterFreq[] = {900, 650, 600, 550, 550, 550, 500, 500, 350, 330, 300, 280, 250,
                                 220, 180, 170, 150, 130, 130, 110, 80, 60, 30, 20, 10, 10};
  for (int i = 0; i < 26; ++i) {
    f[static_cast<unsigned char>(letters[i])] = letterFreq[i];
    f[static_cast<unsigned char>(letters[i] - 32)] = static_cast<uint16_t>(letterFreq[i] / 8 + 5);
  }
  for (int d = '0'; d <= '9'; ++d) f[d] = 60;
  f[' '] = 1500;
  const char* const punct = ",._()-=;\"'/:*{}<>[]#$+&\\!@%|?~^`";
  const uint16_t punctFreq[] = {100, 120, 80, 80, 80, 80, 80, 60, 60, 50, 50, 50, 40, 30, 30,
                                30, 30, 30, 30, 30, 30, 20, 20, 20, 10, 10, 10, 10, 10, 5, 5, 5};
  for (int i = 0; punct[i] != '\0'; ++i) f[static_cast<unsigned char>(punct[i])] = punctFreq[i];
  return f;
}();


}  // namespace

uint16_t CharFrequency(uint32_t code) noexcept { return code < 256 ? kByteFrequency[code] : 5; }

}  // namespace quill::Gstrings::internal
