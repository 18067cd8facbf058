// Number layout shared by FloatToStr, CurrToStr and Format's %f/%e/%g/%n/%m.
//
// Rounding is to the nearest value; a value exactly halfway (only values with
// a short binary expansion, such as 0.125 or 2.5, can be) rounds away from
// zero, so "%.2f" of 0.125 is 0.13 and "%.0f" of 2.5 is 3.
//
// The routines write ASCII text into a fixed buffer (no allocation): '.' marks
// the decimal point and ',' a thousands separator; the caller maps them to the
// settings' separators while copying the text into its own string form.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace quill::internal {

class NumText {
 public:
  // Large enough for the fixed layout of the largest double with 18
  // decimals and thousands separators.
  static constexpr size_t kCapacity = 640;

  void Clear() { size_ = 0; }
  void Push(char c) {
    if (size_ < kCapacity) data_[size_++] = c;
  }
  void Append(std::string_view s) {
    for (char c : s) Push(c);
  }
  void Fill(char c, int n) {
    for (int i = 0; i < n; ++i) Push(c);
  }
  [[nodiscard]] std::string_view View() const { return {data_, size_}; }

 private:
  char data_[kCapacity];
  size_t size_ = 0;
};

// Significant digits of |v| rounded to `precision` digits (1..18), trailing
// zeros removed unless `keep_zeros`. `exp10` is the decimal exponent of the
// first digit. REQUIRES: v finite and non-zero.
struct Digits {
  char digit[24];
  int count = 0;
  int exp10 = 0;
};
void RoundToDigits(double v, int precision, bool keep_zeros, Digits& out);

// General layout with `precision` significant digits: fixed notation when the
// rounded value's exponent lies in -4..precision-1, otherwise d.dddE[-]x with
// no '+' and no leading exponent zeros; trailing zeros dropped; 0 and -0 give
// "0"; infinities and NaN give "INF", "-INF", "NAN".
void GeneralText(double v, int precision, NumText& out);

// Scientific layout: [-]d.ddd...E+ddd with `precision` significant digits
// (1..18) and at least three exponent digits.
void ExponentText(double v, int precision, NumText& out);

// Fixed layout with exactly `decimals` decimals (0..18), optionally with
// thousands separators. A value that rounds to zero carries no minus sign.
void FixedText(double v, int decimals, bool thousands, NumText& out);

// Raw currency count (ten-thousandths) in fixed layout with up to four
// decimals, trailing zeros and a bare point dropped.
void CurrencyText(int64_t raw, NumText& out);

}  // namespace quill::internal
