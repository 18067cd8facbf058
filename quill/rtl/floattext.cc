#include <algorithm>
#include <charconv>
#include <limits>
#include <cmath>
#include <cstdlib>

#include "quill/rtl/internal/floattext.h"

namespace quill::internal {
namespace {

// Writes the name of a non-finite value; returns false for finite values.
bool NonFiniteText(double v, NumText& out) {
  if (std::isnan(v)) {
    out.Append("NAN");
    return true;
  }
  if (std::isinf(v)) {
    out.Append(v < 0 ? "-INF" : "INF");
    return true;
  }
  return false;
}

int ClampPrecision(int p) { return p < 1 ? 1 : (p > 18 ? 18 : p); }

// Count of decimal digits after the point in the exact value of |v| (0 for
// integers): v = m * 2^e with m odd has -e of them when e < 0.
int ExactFractionDigits(double v) {
  int e = 0;
  const double m = std::frexp(std::fabs(v), &e);  // |v| = m * 2^e, m in [0.5, 1)
  auto bits = static_cast<uint64_t>(std::ldexp(m, 53));
  e -= 53;
  if (bits == 0) return 0;
  e += __builtin_ctzll(bits);
  return e < 0 ? -e : 0;
}

// True when |v| lies exactly halfway between two `precision`-digit values.
// Only such ties need care: elsewhere to_chars already rounds to nearest.
bool IsSignificantTie(double v, int precision) {
  const int frac = ExactFractionDigits(v);
  char buf[400];
  if (frac > 0) {
    // The exact value has E + 1 + frac significant digits (E: its decimal
    // exponent); a tie has exactly precision + 1 of them, the last a 5.
    auto r = std::to_chars(buf, buf + sizeof buf, std::fabs(v), std::chars_format::scientific, precision);
    const char* e = std::find(buf, r.ptr, 'e');
    int exp10 = 0;
    std::from_chars(e + 1 + (e[1] == '+' ? 1 : 0), r.ptr, exp10);
    return exp10 + frac == precision;
  }
  auto r = std::to_chars(buf, buf + sizeof buf, std::fabs(v), std::chars_format::fixed, 0);
  const std::string_view digits(buf, static_cast<size_t>(r.ptr - buf));
  return digits.size() > static_cast<size_t>(precision) && digits[static_cast<size_t>(precision)] == '5' &&
         digits.find_first_not_of('0', static_cast<size_t>(precision) + 1) == std::string_view::npos;
}

// |v|, nudged one step outward when it is an exact tie, so that the
// correctly-rounding to_chars rounds the tie away from zero as the runtime's
// number layout does (0.125 to two decimals is 0.13, not 0.12).
double TieAwayFromZero(double v, bool tie) {
  const double a = std::fabs(v);
  return tie ? std::nextafter(a, std::numeric_limits<double>::infinity()) : a;
}

void AppendUnsigned(unsigned value, NumText& out) {
  char buf[16];
  auto r = std::to_chars(buf, buf + sizeof buf, value);
  out.Append(std::string_view(buf, static_cast<size_t>(r.ptr - buf)));
}

}  // namespace

namespace {

// Splits scientific to_chars output into digits and exponent.
void ReadScientific(const char* p, const char* end, Digits& out) {
  out.count = 0;
  for (; p < end && *p != 'e'; ++p) {
    if (*p != '.') out.digit[out.count++] = *p;
  }
  int e = 0;
  std::from_chars(p + 1 + (p[1] == '+' ? 1 : 0), end, e);
  out.exp10 = e;
}

}  // namespace

void RoundToDigits(double v, int precision, bool keep_zeros, Digits& out) {
  precision = ClampPrecision(precision);
  // to_chars rounds the exact binary value to nearest, ties to even; the
  // runtime's ties go away from zero, so a tie is redone just beyond it.
  char buf[48];
  auto r = std::to_chars(buf, buf + sizeof buf, std::fabs(v), std::chars_format::scientific, precision - 1);
  ReadScientific(buf, r.ptr, out);
  // Cheap filter first: a tie needs exactly precision + 1 significant digits,
  // so its count of fraction digits is fixed by the exponent (which rounding
  // may have raised by one). An integer needs more than `precision` digits.
  const int frac = ExactFractionDigits(v);
  const bool maybe_tie = frac == 0 ? out.exp10 >= precision
                                   : (frac == precision - out.exp10 || frac == precision - out.exp10 + 1);
  if (maybe_tie && IsSignificantTie(v, precision)) {
    r = std::to_chars(buf, buf + sizeof buf, TieAwayFromZero(v, true), std::chars_format::scientific,
                      precision - 1);
    ReadScientific(buf, r.ptr, out);
  }
  if (!keep_zeros) {
    while (out.count > 1 && out.digit[out.count - 1] == '0') --out.count;
  }
}

void GeneralText(double v, int precision, NumText& out) {
  if (NonFiniteText(v, out)) return;
  if (v == 0) {
    out.Push('0');
    return;
  }
  precision = ClampPrecision(precision);
  Digits d;
  RoundToDigits(v, precision, false, d);
  if (v < 0) out.Push('-');
  const int e = d.exp10;
  if (e >= -4 && e < precision) {
    if (e < 0) {
      out.Append("0.");
      out.Fill('0', -e - 1);
      out.Append(std::string_view(d.digit, static_cast<size_t>(d.count)));
      return;
    }
    for (int i = 0; i <= e; ++i) out.Push(i < d.count ? d.digit[i] : '0');
    if (d.count > e + 1) {
      out.Push('.');
      out.Append(std::string_view(d.digit + e + 1, static_cast<size_t>(d.count - e - 1)));
    }
    return;
  }
  out.Push(d.digit[0]);
  if (d.count > 1) {
    out.Push('.');
    out.Append(std::string_view(d.digit + 1, static_cast<size_t>(d.count - 1)));
  }
  out.Push('E');
  if (e < 0) out.Push('-');
  AppendUnsigned(static_cast<unsigned>(std::abs(e)), out);
}

void ExponentText(double v, int precision, NumText& out) {
  if (NonFiniteText(v, out)) return;
  precision = ClampPrecision(precision);
  Digits d;
  if (v == 0) {
    d.count = precision;
    for (int i = 0; i < precision; ++i) d.digit[i] = '0';
    d.exp10 = 0;
  } else {
    RoundToDigits(v, precision, true, d);
    if (v < 0) out.Push('-');
  }
  out.Push(d.digit[0]);
  if (d.count > 1) {
    out.Push('.');
    out.Append(std::string_view(d.digit + 1, static_cast<size_t>(d.count - 1)));
  }
  out.Push('E');
  out.Push(d.exp10 < 0 ? '-' : '+');
  const unsigned mag = static_cast<unsigned>(std::abs(d.exp10));
  if (mag < 100) out.Push('0');
  if (mag < 10) out.Push('0');
  AppendUnsigned(mag, out);
}

void FixedText(double v, int decimals, bool thousands, NumText& out) {
  if (NonFiniteText(v, out)) return;
  decimals = decimals < 0 ? 0 : (decimals > 18 ? 18 : decimals);
  char buf[400];
  const double a = TieAwayFromZero(v, ExactFractionDigits(v) == decimals + 1);
  auto r = std::to_chars(buf, buf + sizeof buf, a, std::chars_format::fixed, decimals);
  const std::string_view text(buf, static_cast<size_t>(r.ptr - buf));
  if (v < 0 && text.find_first_not_of("0.") != std::string_view::npos) out.Push('-');
  const size_t point = text.find('.');
  const size_t int_len = point == std::string_view::npos ? text.size() : point;
  for (size_t i = 0; i < int_len; ++i) {
    if (thousands && i > 0 && (int_len - i) % 3 == 0) out.Push(',');
    out.Push(text[i]);
  }
  out.Append(text.substr(int_len));
}

void CurrencyText(int64_t raw, NumText& out) {
  // Work on the magnitude as unsigned so the most negative count is exact.
  uint64_t mag = raw < 0 ? 0 - static_cast<uint64_t>(raw) : static_cast<uint64_t>(raw);
  if (raw < 0) out.Push('-');
  char buf[24];
  auto r = std::to_chars(buf, buf + sizeof buf, mag / 10000);
  out.Append(std::string_view(buf, static_cast<size_t>(r.ptr - buf)));
  unsigned frac = static_cast<unsigned>(mag % 10000);
  if (frac == 0) return;
  char f[4];
  for (int i = 3; i >= 0; --i) {
    f[i] = static_cast<char>('0' + frac % 10);
    frac /= 10;
  }
  int n = 4;
  while (f[n - 1] == '0') --n;
  out.Push('.');
  out.Append(std::string_view(f, static_cast<size_t>(n)));
}

}  // namespace quill::internal
