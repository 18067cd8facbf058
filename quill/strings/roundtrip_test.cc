// Round-trip properties of the two literal notations, on random text.
#include <gtest/gtest.h>

#include <random>
#include <string>

#include "quill/strings/cescapes.h"
#include "quill/strings/quoting.h"

namespace quill::Gstrings {
namespace {

// Random text over an alphabet rich in the characters the notations treat
// specially (quotes, "#", "$", backslash, digits, hex letters, control codes).
template <class Ch>
std::basic_string<Ch> RandomText(std::mt19937& rng, size_t max_len, unsigned max_code) {
  static const char kSpecial[] = "'\"#$\\0123456789abcdefxABCDEF \t\r\n\x01\x1b";
  std::uniform_int_distribution<size_t> len_dist(0, max_len);
  std::uniform_int_distribution<int> kind(0, 2);
  std::uniform_int_distribution<unsigned> any(0, max_code);
  std::uniform_int_distribution<size_t> special(0, sizeof(kSpecial) - 2);
  std::basic_string<Ch> s(len_dist(rng), Ch(0));
  for (auto& c : s) {
    c = kind(rng) == 0 ? static_cast<Ch>(any(rng))
                       : static_cast<Ch>(static_cast<unsigned char>(kSpecial[special(rng)]));
  }
  return s;
}

TEST(QuotedStringRoundTrip, UnquoteGivesInputBack8Bit) {
  // Every non-empty text survives quoting then unquoting, with either quote.
  std::mt19937 rng(12345);
  for (int iter = 0; iter < 5000; ++iter) {
    const std::string s = RandomText<char>(rng, 40, 255);
    if (s.empty()) continue;
    for (char q : {'\'', '"'}) {
      ASSERT_EQ(UnquotedString(QuotedString(s, q), q), s) << "iteration " << iter;
    }
  }
}

TEST(QuotedStringRoundTrip, UnquoteGivesInputBackUtf16) {
  std::mt19937 rng(54321);
  for (int iter = 0; iter < 5000; ++iter) {
    const UnicodeString s = RandomText<char16_t>(rng, 40, 0xFFFF);
    if (s.empty()) continue;
    for (char16_t q : {u'\'', u'"'}) {
      ASSERT_EQ(UnquotedString(QuotedString(s, q), q), s) << "iteration " << iter;
    }
  }
}

TEST(QuotedStringRoundTrip, EmptyTextDoesNotRoundTrip) {
  // The empty literal falls back to itself: the one text excluded above.
  EXPECT_EQ(UnquotedString(QuotedString(std::string(), '\''), '\''), "''");
}

TEST(CStringRoundTrip, UnescapeWithTwoDigitLimitGivesInput8Bit) {
  // CStringEx writes "\x" escapes with exactly two digits, so reading back
  // with MaxDigits 2 is exact for every 8-bit text.
  std::mt19937 rng(777);
  for (int iter = 0; iter < 5000; ++iter) {
    const std::string s = RandomText<char>(rng, 40, 255);
    for (bool keep : {false, true}) {
      const std::string lit = QuotedCStringEx(s, keep);
      int32_t pos = 1;
      ASSERT_EQ(XUnquotedCStringEx(lit, 2, pos), s) << "iteration " << iter;
      ASSERT_EQ(pos, static_cast<int32_t>(lit.size()) + 1);
    }
  }
}

TEST(CStringRoundTrip, UnescapeWithTwoDigitLimitGivesInputUtf16) {
  std::mt19937 rng(778);
  for (int iter = 0; iter < 5000; ++iter) {
    const UnicodeString s = RandomText<char16_t>(rng, 40, 0xFFFF);
    int32_t pos = 1;
    ASSERT_EQ(XUnquotedCStringEx(QuotedCString(s), 2, pos), s) << "iteration " << iter;
  }
}

TEST(CStringRoundTrip, UnlimitedDigitsSwallowFollowingHexLetters) {
  // Without a digit limit, ESC followed by "A" reads back as one code 0x1BA
  // cut to 8 bits: the reason callers pass MaxDigits 2 for a round trip.
  const std::string s = "\x1b" "A";
  EXPECT_EQ(UnquotedCString(QuotedCString(s)), "\xba");
}

}  // namespace
}  // namespace quill::Gstrings
