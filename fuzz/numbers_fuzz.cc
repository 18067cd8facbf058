// Number text on arbitrary input: the integer, float and currency readers in
// both string forms must never crash or read out of bounds, must agree
// between the 8-bit and UTF-16 forms of the same text, and a finite float
// must survive FloatToStr and back. Format gets the input as a format string.
#include <cfloat>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

#include "quill/rtl/exception.h"
#include "quill/rtl/floatconv.h"
#include "quill/rtl/format.h"
#include "quill/rtl/intconv.h"

namespace {

void Check(bool ok) {
  if (!ok) std::abort();
}

// The same bytes as UTF-16 units 0..255, so both forms see the same text.
std::u16string Widen(std::string_view s) {
  std::u16string w;
  w.reserve(s.size());
  for (char c : s) w.push_back(static_cast<char16_t>(static_cast<unsigned char>(c)));
  return w;
}

void Integers(std::string_view s, const std::u16string& w) {
  int32_t a = 0, b = 0;
  const bool ok8 = quill::TryStrToInt(s, a);
  const bool ok16 = quill::TryStrToInt(w, b);
  Check(ok8 == ok16 && (!ok8 || a == b));
  int64_t c = 0, d = 0;
  const bool ok64 = quill::TryStrToInt64(s, c);
  Check(ok64 == quill::TryStrToInt64(w, d) && (!ok64 || c == d));
  // Whatever the 32-bit reader accepts, the 64-bit reader accepts too.
  if (ok8) Check(ok64);
  if (ok8 && s.find_first_of("$xX") == std::string_view::npos) Check(c == a);
  // Decimal text of an accepted value reads back to the same value.
  if (ok64) {
    int64_t back = 0;
    Check(quill::TryStrToInt64(quill::IntToStr(c), back) && back == c);
  }
}

void Floats(std::string_view s, const std::u16string& w, const quill::TFormatSettings& fs) {
  double a = 0, b = 0;
  const bool ok8 = quill::TryStrToFloat(s, a, fs);
  const bool ok16 = quill::TryStrToFloat(w, b, fs);
  Check(ok8 == ok16);
  if (!ok8) return;
  Check(std::memcmp(&a, &b, sizeof a) == 0);
  Check(std::isfinite(a));
  const std::u16string t1 = quill::FloatToStr(a, fs);
  double v1 = 0;
  if (!quill::TryStrToFloat(t1, v1, fs)) {
    // Only the few doubles just below the top of the range round (at 15
    // digits) to a text beyond the range.
    Check(std::fabs(a) > 1.797693134862315e308);
    return;
  }
  // Fifteen digits do not pin a double, but they are a fixed point: the value
  // read back prints as the same text (normal range; denormals have fewer
  // digits of their own).
  if (v1 == 0 || std::fabs(v1) >= DBL_MIN) Check(quill::FloatToStr(v1, fs) == t1);
  if (std::fabs(a) >= DBL_MIN) Check(std::fabs(v1 - a) <= std::fabs(a) * 1e-14);
}

void Currency(const std::u16string& w, const quill::TFormatSettings& fs) {
  quill::Currency c;
  if (quill::TryStrToCurr(w, c, fs)) {
    quill::Currency back;
    Check(quill::TryStrToCurr(quill::CurrToStr(c, fs), back, fs) && back == c);
  }
}

// One form per input (chosen by the length's parity): a rejected format
// raises, and raising is by far the slowest step of this target.
void FormatText(std::string_view s, const std::u16string& w) {
  try {
    if (s.size() % 2 == 0) {
      (void)quill::Format(w, {42, -7, u"str", 1.5, int64_t{-1}});
    } else {
      (void)quill::Format(s, {u"w", "a", 3.25, 0});
    }
  } catch (const quill::EConvertError&) {
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view s(reinterpret_cast<const char*>(data), size);
  const std::u16string w = Widen(s);
  Integers(s, w);
  quill::TFormatSettings dot;
  dot.DecimalSeparator = u'.';
  quill::TFormatSettings comma;
  comma.DecimalSeparator = u',';
  Floats(s, w, dot);
  Floats(s, w, comma);
  Currency(w, dot);
  // Pairs of bytes as UTF-16 units reach the code units above 255.
  std::u16string units(size / 2, u'\0');
  std::memcpy(units.data(), data, units.size() * 2);
  int32_t i = 0;
  int64_t j = 0;
  double f = 0;
  (void)quill::TryStrToInt(units, i);
  (void)quill::TryStrToInt64(units, j);
  (void)quill::TryStrToFloat(units, f, dot);
  if (size <= 256) FormatText(s, w);
  return 0;
}
