#include "quill/rtl/intconv.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <new>
#include <string>

#include "quill/rtl/exception.h"

// Counts global allocations so tests can check that readers do not allocate.
#include "quill/rtl/internal/alloc_counter_for_test.h"
using quill::testing_support::g_allocations;

namespace quill {
namespace {

struct IntCase {
  const char* text;
  bool ok;
  int32_t value;
};

// The accepted and rejected texts of the 32-bit grammar.
constexpr IntCase kIntCases[] = {
    {"123", true, 123},
    {"+123", true, 123},
    {" 123", true, 123},         // leading blanks are skipped
    {"   -5", true, -5},
    {"0", true, 0},
    {"-0", true, 0},
    {"123 ", false, 0},          // trailing blank
    {"\t123", false, 0},         // a tab is not a blank for integers
    {"- 123", false, 0},         // blank after the sign
    {"", false, 0},
    {" ", false, 0},
    {"+", false, 0},
    {"-", false, 0},
    {"$", false, 0},
    {"0x", false, 0},
    {"x", false, 0},
    {"-$", false, 0},
    {"1e3", false, 0},           // no exponent
    {"1.0", false, 0},           // no decimal separator
    {"1,000", false, 0},         // no thousands separator
    {"1 000", false, 0},         // no inner blank
    {"++1", false, 0},
    {"$FF", true, 255},
    {"$ff", true, 255},
    {"0xFF", true, 255},
    {"0XfF", true, 255},
    {"xFF", true, 255},
    {"XFF", true, 255},
    {"x56e", true, 1390},        // 'x' alone is a hex prefix, so this is not "56e"
    {"-$10", true, -16},         // the sign comes before the prefix
    {"+$10", true, 16},
    {" $10", true, 16},
    {"$ 10", false, 0},
    {"$-10", false, 0},          // no sign after the prefix
    {"0x0x1", false, 0},
    {"$G", false, 0},
    {"2147483647", true, 2147483647},
    {"-2147483648", true, INT32_MIN},
    {"2147483648", false, 0},
    {"-2147483649", false, 0},
    {"99999999999999999999999", false, 0},
    {"$7FFFFFFF", true, 2147483647},
    {"$80000000", true, INT32_MIN},  // hex is a 32-bit pattern
    {"$FFFFFFFF", true, -1},
    {"$100000000", false, 0},        // more than 32 bits
    {"-$FFFFFFFF", true, 1},         // the pattern -1, then negated
    {"-$80000000", true, INT32_MIN},
    {"$000000000000FF", true, 255},  // leading zeros do not count as bits
    {"00000000000000000012", true, 12},
    {"\xA0" "1", false, 0},          // code 160 is not a blank
};

TEST(TryStrToInt, Grammar8Bit) {
  for (const IntCase& c : kIntCases) {
    int32_t v = 777;
    EXPECT_EQ(TryStrToInt(std::string_view(c.text), v), c.ok) << "text: '" << c.text << "'";
    EXPECT_EQ(v, c.ok ? c.value : 777) << "text: '" << c.text << "'";
  }
}

TEST(TryStrToInt, GrammarUtf16) {
  for (const IntCase& c : kIntCases) {
    const std::string_view t(c.text);
    const UnicodeString w(t.begin(), t.end());
    int32_t v = 777;
    EXPECT_EQ(TryStrToInt(w, v), c.ok) << "text: '" << c.text << "'";
    EXPECT_EQ(v, c.ok ? c.value : 777) << "text: '" << c.text << "'";
  }
}

TEST(TryStrToInt, EmbeddedNulFails) {
  // A NUL inside the text is an ordinary invalid character.
  int32_t v = 0;
  EXPECT_FALSE(TryStrToInt(std::string_view("12\0" "3", 4), v));
  EXPECT_FALSE(TryStrToInt(std::u16string_view(u"12\0", 3), v));
}

TEST(TryStrToInt, NonAsciiDigitsFail) {
  // Fullwidth and Arabic-Indic digits are not digits here.
  int32_t v = 0;
  EXPECT_FALSE(TryStrToInt(u"\uFF11\uFF12", v));
  EXPECT_FALSE(TryStrToInt(u"\u0661", v));
  // A UTF-16 unit whose low byte is a digit must not pass as one.
  EXPECT_FALSE(TryStrToInt(u"\u0131", v));
}

TEST(TryStrToInt, AllSingleBytes) {
  // Exactly the ten ASCII digits convert as one-character texts.
  for (int b = 0; b < 256; ++b) {
    const char c = static_cast<char>(b);
    int32_t v = -1;
    const bool ok = TryStrToInt(std::string_view(&c, 1), v);
    EXPECT_EQ(ok, b >= '0' && b <= '9') << b;
    if (ok) {
      EXPECT_EQ(v, b - '0');
    }
  }
}

struct Int64Case {
  const char* text;
  bool ok;
  int64_t value;
};

constexpr Int64Case kInt64Cases[] = {
    {"9223372036854775807", true, INT64_MAX},
    {"-9223372036854775808", true, INT64_MIN},
    {"9223372036854775808", false, 0},
    {"-9223372036854775809", false, 0},
    {"18446744073709551616", false, 0},    // wraps 64 bits
    {"184467440737095516160", false, 0},
    {"2147483648", true, 2147483648LL},
    {"$FFFFFFFF", true, 4294967295LL},     // 64-bit pattern: no longer -1
    {"$FC75B6A9D025CB16", true, static_cast<int64_t>(0xFC75B6A9D025CB16ULL)},
    {"$FFFFFFFFFFFFFFFF", true, -1},
    {"-$FFFFFFFFFFFFFFFF", true, 1},
    {"$10000000000000000", false, 0},
    {" +0x7fffffffffffffff", true, INT64_MAX},
    {"12 ", false, 0},
    {"", false, 0},
};

TEST(TryStrToInt64, Grammar) {
  for (const Int64Case& c : kInt64Cases) {
    int64_t v = 777;
    EXPECT_EQ(TryStrToInt64(std::string_view(c.text), v), c.ok) << c.text;
    EXPECT_EQ(v, c.ok ? c.value : 777) << c.text;
    const std::string_view t(c.text);
    int64_t w = 777;
    EXPECT_EQ(TryStrToInt64(UnicodeString(t.begin(), t.end()), w), c.ok) << c.text;
    EXPECT_EQ(w, c.ok ? c.value : 777) << c.text;
  }
}

TEST(TryStrToInt, DoesNotAllocate) {
  const std::string narrow = "  -$7FFFFFFF";
  const UnicodeString wide = u"-2147483648";
  int32_t a = 0, b = 0, d = 0;
  int64_t c = 0;
  const long before = g_allocations.load();
  const bool ok = TryStrToInt(narrow, a) && TryStrToInt(wide, b) && TryStrToInt64(wide, c) &&
                  !TryStrToInt(u"bad text", d) && StrToIntDef(u"12", 0) == 12;
  const long after = g_allocations.load();
  EXPECT_TRUE(ok);
  EXPECT_EQ(after - before, 0);
}

TEST(StrToInt, ReturnsValue) {
  EXPECT_EQ(StrToInt(u"x56e"), 1390);
  EXPECT_EQ(StrToInt("-$10"), -16);
  EXPECT_EQ(StrToInt64(u"-9223372036854775808"), INT64_MIN);
  EXPECT_EQ(StrToInt64("$FFFFFFFF"), 4294967295LL);
}

// The message quotes the text exactly as given, blanks included.
TEST(StrToInt, RaisesWithTextAsGiven) {
  try {
    (void)StrToInt(u"abc");
    FAIL() << "no exception";
  } catch (const EConvertError& e) {
    EXPECT_EQ(e.Message(), u"'abc' is not a valid integer value");
  }
  try {
    (void)StrToInt(" 12 ");
    FAIL() << "no exception";
  } catch (const EConvertError& e) {
    EXPECT_EQ(e.Message(), u"' 12 ' is not a valid integer value");
  }
  try {
    (void)StrToInt64(u"");
    FAIL() << "no exception";
  } catch (const EConvertError& e) {
    EXPECT_EQ(e.Message(), u"'' is not a valid integer value");
    EXPECT_STREQ(e.what(), "'' is not a valid integer value");
  }
  EXPECT_THROW((void)StrToInt("2147483648"), EConvertError);
  EXPECT_THROW((void)StrToInt64("9223372036854775808"), EConvertError);
}

TEST(StrToIntDef, DefaultOnFailure) {
  EXPECT_EQ(StrToIntDef(u"12", -1), 12);
  EXPECT_EQ(StrToIntDef(u"12x", -1), -1);
  EXPECT_EQ(StrToIntDef("", 99), 99);
  EXPECT_EQ(StrToIntDef("$FFFFFFFF", 99), -1);
}

TEST(IntToStr, Decimal) {
  EXPECT_EQ(IntToStr(0), u"0");
  EXPECT_EQ(IntToStr(-5), u"-5");
  EXPECT_EQ(IntToStr(INT64_MIN), u"-9223372036854775808");
  EXPECT_EQ(IntToStr(INT64_MAX), u"9223372036854775807");
  EXPECT_EQ(IntToStrA(-2147483648LL), "-2147483648");
  EXPECT_EQ(IntToStrA(42), "42");
}

TEST(IntToStr, RoundTripsThroughStrToInt) {
  for (int64_t v : {int64_t{0}, int64_t{1}, int64_t{-1}, int64_t{INT32_MAX}, int64_t{INT32_MIN}, INT64_MAX, INT64_MIN}) {
    int64_t back = 0;
    ASSERT_TRUE(TryStrToInt64(IntToStr(v), back)) << v;
    EXPECT_EQ(back, v);
  }
}

TEST(IntToHex, UpperCaseZeroPadded) {
  EXPECT_EQ(IntToHex(int64_t{255}, 4), u"00FF");
  EXPECT_EQ(IntToHex(int64_t{0xABCDEF}, 2), u"ABCDEF");  // never truncates
  EXPECT_EQ(IntToHex(int64_t{0}, 0), u"0");
  EXPECT_EQ(IntToHex(int64_t{0}, 3), u"000");
}

TEST(IntToHex, NegativeShowsPatternOfArgumentWidth) {
  EXPECT_EQ(IntToHex(int32_t{-1}, 2), u"FFFFFFFF");
  EXPECT_EQ(IntToHex(int64_t{-1}, 2), u"FFFFFFFFFFFFFFFF");
  EXPECT_EQ(IntToHex(INT32_MIN, 1), u"80000000");
}

}  // namespace
}  // namespace quill
