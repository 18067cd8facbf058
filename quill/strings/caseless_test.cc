// The byte-wise case-insensitive search of 8-bit text under single-byte code
// pages: same answers as searching the lowered copies, and no copy of the text.
#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <new>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include "quill/rtl/casing.h"
#include "quill/rtl/syslocale.h"
#include "quill/strings/internal/caseless.h"
#include "quill/strings/replace.h"
#include "quill/strings/search.h"

// The largest single allocation made since the last reset, so a test can tell
// that no buffer the size of the text was taken.
namespace {
std::atomic<std::size_t> g_largest{0};
}  // namespace

void* operator new(std::size_t n) {
  std::size_t seen = g_largest.load(std::memory_order_relaxed);
  while (n > seen && !g_largest.compare_exchange_weak(seen, n)) {
  }
  if (void* p = std::malloc(n == 0 ? 1 : n)) return p;
  throw std::bad_alloc();
}
// Out of line, so the compiler does not pair the inlined free() with new.
__attribute__((noinline)) void operator delete(void* p) noexcept { std::free(p); }
__attribute__((noinline)) void operator delete(void* p, std::size_t) noexcept { std::free(p); }

namespace quill::Gstrings {
namespace {

// Sets an environment variable for one scope and restores it.
class PinnedEnv {
 public:
  PinnedEnv(const char* name, const char* value) : name_(name) {
    if (const char* v = std::getenv(name)) saved_ = v;
    setenv(name, value, 1);
    ResetLocaleCache();
  }
  ~PinnedEnv() {
    if (saved_) {
      setenv(name_, saved_->c_str(), 1);
    } else {
      unsetenv(name_);
    }
    ResetLocaleCache();
  }
  PinnedEnv(const PinnedEnv&) = delete;
  PinnedEnv& operator=(const PinnedEnv&) = delete;

 private:
  const char* name_;
  std::optional<std::string> saved_;
};

// Bytes whose lowering matters in the pages tested: ASCII letters, Latin-1,
// Cyrillic and Greek capitals and small letters, the Turkish dotted and
// dotless I, and a few neutral bytes.
const std::string kAlphabet =
    "aAeEiIkKsSzZ 0-\xC0\xE0\xC9\xE9\xC4\xE4\xD3\xF3\xDD\xFD\xC1\xE1\xA8\xB8\xFF\x80\x8A\x9A";

// Random texts long enough for every scan width (16, 32 and 64 bytes a step)
// and random patterns, some cut from the text with their case changed: the
// answers of CXPos, CPos and XReplaceStr must be those on the lowered copies.
void CheckAgainstLoweredCopies(uint32_t seed) {
  std::mt19937 rng(seed);
  for (int round = 0; round < 1500; ++round) {
    std::string t;
    const std::size_t len = rng() % 300;
    // Some texts draw from a few letters only, so matches are dense.
    const std::size_t letters = round % 4 == 0 ? 4 : kAlphabet.size();
    for (std::size_t i = 0; i < len; ++i) t += kAlphabet[rng() % letters];
    std::string p;
    if (!t.empty() && round % 2 == 0) {
      const std::size_t at = rng() % t.size();
      p = t.substr(at, 1 + rng() % 6);
      for (char& c : p) {
        if (rng() % 2) c = AnsiUpperChar(c);
      }
    } else {
      const std::size_t plen = 1 + rng() % 4;
      for (std::size_t i = 0; i < plen; ++i) p += kAlphabet[rng() % letters];
    }
    const std::string lt = AnsiLowerCase(t);
    const std::string lp = AnsiLowerCase(p);
    for (int32_t start : {0, 1, 3, 70}) {
      for (int32_t n : {1, 2, 5}) {
        ASSERT_EQ(CXPos(p, t, start, n), XPos(lp, lt, start, n))
            << "round " << round << " start " << start << " n " << n;
      }
    }
    ASSERT_EQ(CPos(p, t), XPos(lp, lt, 1, 1)) << round;
    // Replacing every occurrence: the pieces between matches come from `t`.
    std::string expected;
    std::size_t last = 0;
    for (std::size_t at = lt.find(lp); at != std::string::npos && !lp.empty();
         at = lt.find(lp, last)) {
      expected += t.substr(last, at - last) + "#";
      last = at + lp.size();
    }
    expected += t.substr(last);
    ASSERT_EQ(XReplaceStr(t, p, "#", false), expected) << round;
  }
}

TEST(CXPos, SingleByteCodePagesSameAnswersAsLoweredCopies) {
  for (const char* cp : {"1252", "1251", "1253", "1254", "1250", "437"}) {
    SCOPED_TRACE(cp);
    PinnedEnv pin("QUILL_ANSI_CODEPAGE", cp);
    CheckAgainstLoweredCopies(11);
  }
}

// Turkish lowers I to dotless i and dotted capital I to i: the byte table
// carries that, so the byte-wise search must agree with the lowered copies.
TEST(CXPos, SingleByteCodePageTurkishLocale) {
  PinnedEnv pin("QUILL_ANSI_CODEPAGE", "1254");
  PinnedEnv locale("LC_ALL", "tr_TR.UTF-8");
  // The pattern "I" lowers to dotless i (0xFD): plain "i" is not a match.
  EXPECT_EQ(CPos("I", "xi\xFD"), 3);
  EXPECT_EQ(CPos("\xDD", "xIi"), 3);
  CheckAgainstLoweredCopies(12);
}

// A megabyte of Latin-1 text is searched in place: no allocation near the
// text's size (the old way lowered a copy of the whole text).
TEST(CXPos, SingleByteCodePageTakesNoCopyOfTheText) {
  PinnedEnv pin("QUILL_ANSI_CODEPAGE", "1252");
  std::string text;
  while (text.size() < (1u << 20)) text += "Gr\xFC\xDF Gott, caf\xE9 cr\xE8me br\xFBl\xE9" "e; ";
  text += "NEEDLE \xC9T\xC9";
  const auto size = static_cast<int32_t>(text.size());
  // A first search builds the code page's tables (converter buffers).
  EXPECT_EQ(CPos("\xC9", "caf\xE9"), 4);
  g_largest = 0;
  EXPECT_EQ(CXPos("needle \xE9t\xE9", text, 1, 1), size - 9);
  EXPECT_EQ(CPos("CAF\xC9 CR\xC8ME", text), 12);
  EXPECT_EQ(CXPos("zz", text, 1, 1), 0);
  EXPECT_LT(g_largest.load(), 4096u);
}

// UTF-16 text of other scripts with an ASCII pattern: the scan by anchors
// must give the answers of the lowered copies, also where KELVIN SIGN lowers
// to 'k' and capital I with dot above to 'i' (those letters are never
// anchors), on texts long enough for every scan width.
TEST(CXPos, Utf16NonAsciiTextsSameAnswersAsLoweredCopies) {
  const std::u16string alphabet =
      u"aAkKiIsSeE -\u212A\u0130\u0430\u0410\u043A\u041A\u4E2D\u6587\u00E9\u00C9";
  std::mt19937 rng(13);
  for (int round = 0; round < 400; ++round) {
    std::u16string t;
    const std::size_t len = rng() % 700;
    for (std::size_t i = 0; i < len; ++i) t += alphabet[rng() % alphabet.size()];
    std::u16string p;
    const std::size_t plen = 1 + rng() % 4;
    for (std::size_t i = 0; i < plen; ++i) p += alphabet[rng() % 12];  // ASCII only
    const std::u16string lt = AnsiLowerCase(t);
    const std::u16string lp = AnsiLowerCase(p);
    for (int32_t n : {1, 2, 4}) {
      ASSERT_EQ(CXPos(p, t, 1, n), XPos(lp, lt, 1, n)) << "round " << round << " n " << n;
    }
  }
}

// XStartsWith lowers only the text's head: its answers must be those of
// the whole lowered text, also when a character straddles the prefix's end
// (UTF-8 and double-byte characters, a surrogate pair).
TEST(XStartsWith, HeadLoweringSameAnswersAsWholeText) {
  // Armenian capitals (U+0531, U+0532) lower to letters with another first
  // byte in UTF-8.
  const std::vector<std::string> texts = {"\xC3\x89T\xC3\x89 more text", "\x82\x60\x82\x61 AB",
                                          "\xD4\xB1\xD4\xB2 armenian",
                                          "Caf\xC9 CAF\xC9", "plain"};
  for (const char* cp : {"65001", "932", "1252"}) {
    PinnedEnv pin("QUILL_ANSI_CODEPAGE", cp);
    for (const auto& t : texts) {
      const std::string lt = AnsiLowerCase(t);
      for (std::size_t k = 0; k <= t.size(); ++k) {
        const std::string p = t.substr(0, k);
        // Upper-cased prefixes, and pieces of the lowered text, too.
        for (const std::string& q : {p, AnsiUpperCase(p), lt.substr(0, k)}) {
          const std::string lq = AnsiLowerCase(q);
          EXPECT_EQ(XStartsWith(q, t, false), lt.compare(0, lq.size(), lq) == 0 && lq.size() <= lt.size())
              << cp << " " << t << " " << k;
        }
      }
    }
  }
  const std::u16string u = u"\U00010400\U00010400x\u00C9";
  const std::u16string lu = AnsiLowerCase(u);
  for (std::size_t k = 0; k <= u.size(); ++k) {
    const std::u16string p = AnsiUpperCase(u.substr(0, k));
    const std::u16string lp = AnsiLowerCase(p);
    EXPECT_EQ(XStartsWith(p, u, false), lu.compare(0, lp.size(), lp) == 0) << k;
  }
}

// The ASCII letters a non-ASCII unit lowers to: 'k' (U+212A) and 'i'
// (U+0130); a plain letter such as 'a' has none.
TEST(HighUnitLowersTo, KelvinSignAndDottedCapitalI) {
  EXPECT_TRUE(internal::HighUnitLowersTo('k'));
  EXPECT_TRUE(internal::HighUnitLowersTo('i'));
  EXPECT_FALSE(internal::HighUnitLowersTo('a'));
  EXPECT_FALSE(internal::HighUnitLowersTo('z'));
}

}  // namespace
}  // namespace quill::Gstrings
