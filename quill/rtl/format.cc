#include "quill/rtl/format.h"

#include <charconv>
#include <cmath>
#include <optional>
#include <cstddef>
#include <string>
#include <type_traits>

#include "quill/rtl/exception.h"
#include "quill/rtl/formatsettings.h"
#include "quill/rtl/internal/floattext.h"
#include "quill/rtl/unicode.h"

namespace quill {
namespace {

using internal::NumText;

// Widths and precisions above this are treated as malformed: nothing sensible
// pads a field to a million characters, and an unchecked count would let a
// format string request gigabytes.
constexpr int kMaxCount = 1 << 20;

template <class CharT>
bool IsAscii(std::basic_string_view<CharT> s) {
  for (CharT c : s) {
    if (static_cast<std::make_unsigned_t<CharT>>(c) >= 0x80) return false;
  }
  return true;
}

// The format string as UTF-16 for an error message.
UnicodeString MessageText(std::u16string_view fmt) { return UnicodeString(fmt); }
UnicodeString MessageText(std::string_view fmt) {
  if (IsAscii(fmt)) return UnicodeString(fmt.begin(), fmt.end());
  return AnsiToUnicode(fmt);
}

// Raises EConvertError with `templ`'s "%s" replaced by the whole format
// string. Built by hand so that reporting a bad format never re-enters Format.
template <class CharT>
[[noreturn]] void Raise(const char16_t* templ, std::basic_string_view<CharT> fmt) {
  const std::u16string_view t(templ);
  const size_t at = t.find(u"%s");
  UnicodeString msg(t.substr(0, at));
  msg += MessageText(fmt);
  msg += t.substr(at + 2);
  throw EConvertError(std::move(msg));
}

// Appends UTF-16 text to either output form (8-bit output gets the ANSI code
// page; pure ASCII is narrowed directly).
void AppendWide(std::u16string& out, std::u16string_view s) { out.append(s); }
void AppendWide(std::string& out, std::u16string_view s) {
  if (IsAscii(s)) {
    for (char16_t c : s) out.push_back(static_cast<char>(c));
  } else {
    out += UnicodeToAnsi(s);
  }
}

// Appends ANSI text to either output form.
void AppendAnsi(std::string& out, std::string_view s) { out.append(s); }
void AppendAnsi(std::u16string& out, std::string_view s) {
  if (IsAscii(s)) {
    for (char c : s) out.push_back(static_cast<char16_t>(c));
  } else {
    out += AnsiToUnicode(s);
  }
}

template <class CharT>
void AppendChar16(std::basic_string<CharT>& out, char16_t c) {
  if (c < 0x80) {
    out.push_back(static_cast<CharT>(c));
  } else {
    AppendWide(out, std::u16string_view(&c, 1));
  }
}

template <class CharT>
class Formatter {
 public:
  using View = std::basic_string_view<CharT>;
  using Str = std::basic_string<CharT>;

  Formatter(View fmt, std::initializer_list<FormatArg> args)
      : fmt_(fmt), args_(args.begin()), arg_count_(args.size()) {}

  Str Run() {
    out_.reserve(fmt_.size() + 16);
    size_t i = 0;
    const size_t n = fmt_.size();
    while (i < n) {
      const size_t pct = fmt_.find(CharT('%'), i);
      if (pct == View::npos) {
        out_.append(fmt_.substr(i));
        break;
      }
      out_.append(fmt_.substr(i, pct - i));
      i = Specifier(pct + 1);
    }
    return std::move(out_);
  }

 private:
  [[noreturn]] void Invalid() const { Raise(rtlmsg::SInvalidFormat, fmt_); }
  [[noreturn]] void Missing() const { Raise(rtlmsg::SArgumentMissing, fmt_); }

  const FormatArg& TakeArg() {
    if (next_ >= arg_count_) Missing();
    return args_[next_++];
  }

  int64_t TakeInt() {
    const auto* v = std::get_if<int64_t>(&TakeArg().value());
    if (v == nullptr) Invalid();
    return *v;
  }

  // Reads a count at `i`: digits, or '*' taking an integer argument.
  std::optional<int> Count(size_t& i) {
    if (i < fmt_.size() && fmt_[i] == CharT('*')) {
      ++i;
      const int64_t v = TakeInt();
      if (v > kMaxCount || v < -kMaxCount) Invalid();
      return static_cast<int>(v);
    }
    if (i >= fmt_.size() || fmt_[i] < CharT('0') || fmt_[i] > CharT('9')) return std::nullopt;
    int v = 0;
    while (i < fmt_.size() && fmt_[i] >= CharT('0') && fmt_[i] <= CharT('9')) {
      v = v * 10 + static_cast<int>(fmt_[i] - CharT('0'));
      if (v > kMaxCount) Invalid();
      ++i;
    }
    return v;
  }

  // Formats the specifier whose text starts after the '%' at `i`; returns the
  // position after it.
  size_t Specifier(size_t i) {
    const size_t n = fmt_.size();
    if (i < n && fmt_[i] == CharT('%')) {
      out_.push_back(CharT('%'));
      return i + 1;
    }
    std::optional<int> first = Count(i);
    if (first && i < n && fmt_[i] == CharT(':')) {
      // An explicit index moves the argument pointer; later specifiers go on
      // from the argument after it.
      if (*first < 0) Invalid();
      next_ = static_cast<size_t>(*first);
      first.reset();
      ++i;
    }
    bool left = false;
    if (!first && i < n && fmt_[i] == CharT('-')) {
      left = true;
      ++i;
    }
    if (!first) first = Count(i);
    int width = first.value_or(0);
    if (width < 0) {  // a negative width taken from '*' pads on the right
      left = true;
      width = -width;
    }
    int prec = -1;
    if (i < n && fmt_[i] == CharT('.')) {
      ++i;
      prec = Count(i).value_or(0);
      if (prec < 0) prec = -1;  // a negative precision from '*' means none
    }
    if (i >= n) Invalid();
    CharT type = fmt_[i];
    if (type >= CharT('A') && type <= CharT('Z')) type = static_cast<CharT>(type - CharT('A') + CharT('a'));
    start_ = out_.size();
    switch (static_cast<char>(type)) {
      case 'd': Decimal(TakeInt(), prec); break;
      case 'u': Unsigned(TakeArg(), prec, 10); break;
      case 'x': Unsigned(TakeArg(), prec, 16); break;
      case 'p': Pointer(TakeInt()); break;
      case 's': String(TakeArg(), prec); break;
      case 'f': FloatText(TakeFloat(), 'f', prec); break;
      case 'e': FloatText(TakeFloat(), 'e', prec); break;
      case 'g': FloatText(TakeFloat(), 'g', prec); break;
      case 'n': FloatText(TakeFloat(), 'n', prec); break;
      case 'm': Money(TakeFloat(), prec); break;
      default: Invalid();
    }
    Pad(width, left);
    return i + 1;
  }

  double TakeFloat() {
    const auto* v = std::get_if<double>(&TakeArg().value());
    if (v == nullptr) Invalid();
    return *v;
  }

  // Pads the field written since start_ to `width` with blanks.
  void Pad(int width, bool left) {
    const size_t len = out_.size() - start_;
    if (width <= 0 || len >= static_cast<size_t>(width)) return;
    const size_t fill = static_cast<size_t>(width) - len;
    if (left) {
      out_.append(fill, CharT(' '));
    } else {
      out_.insert(start_, fill, CharT(' '));
    }
  }

  void Digits(std::string_view digits, int prec) {
    if (prec > 0 && static_cast<size_t>(prec) > digits.size()) {
      out_.append(static_cast<size_t>(prec) - digits.size(), CharT('0'));
    }
    for (char c : digits) out_.push_back(static_cast<CharT>(c));
  }

  void Decimal(int64_t v, int prec) {
    const uint64_t mag = v < 0 ? 0 - static_cast<uint64_t>(v) : static_cast<uint64_t>(v);
    char buf[24];
    auto r = std::to_chars(buf, buf + sizeof buf, mag);
    if (v < 0) out_.push_back(CharT('-'));
    Digits(std::string_view(buf, static_cast<size_t>(r.ptr - buf)), prec);
  }

  void Unsigned(const FormatArg& arg, int prec, int base) {
    const auto* v = std::get_if<int64_t>(&arg.value());
    if (v == nullptr) Invalid();
    // A 32-bit argument shows its 32-bit pattern, as the runtime's Integer does.
    const uint64_t bits = arg.Is64Bit() ? static_cast<uint64_t>(*v)
                                        : static_cast<uint64_t>(static_cast<uint32_t>(*v));
    char buf[24];
    auto r = std::to_chars(buf, buf + sizeof buf, bits, base);
    for (char* p = buf; p < r.ptr; ++p) {
      if (*p >= 'a' && *p <= 'f') *p = static_cast<char>(*p - 'a' + 'A');
    }
    Digits(std::string_view(buf, static_cast<size_t>(r.ptr - buf)), prec);
  }

  void Pointer(int64_t v) {
    char buf[24];
    auto r = std::to_chars(buf, buf + sizeof buf, static_cast<uint64_t>(v), 16);
    for (char* p = buf; p < r.ptr; ++p) {
      if (*p >= 'a' && *p <= 'f') *p = static_cast<char>(*p - 'a' + 'A');
    }
    Digits(std::string_view(buf, static_cast<size_t>(r.ptr - buf)), 16);
  }

  // A string or character argument; `prec` is the maximum length kept.
  void String(const FormatArg& arg, int prec) {
    const FormatArg::Value& v = arg.value();
    if (const auto* w = std::get_if<std::u16string_view>(&v)) {
      AppendWide(out_, *w);
    } else if (const auto* a = std::get_if<std::string_view>(&v)) {
      AppendAnsi(out_, *a);
    } else if (const auto* wc = std::get_if<char16_t>(&v)) {
      AppendWide(out_, std::u16string_view(wc, 1));
    } else if (const auto* ac = std::get_if<char>(&v)) {
      AppendAnsi(out_, std::string_view(ac, 1));
    } else {
      Invalid();
    }
    if (prec >= 0 && out_.size() - start_ > static_cast<size_t>(prec)) {
      out_.resize(start_ + static_cast<size_t>(prec));
    }
  }

  // Copies ASCII number text, mapping '.' and ',' to the settings' separators.
  void Number(std::string_view text, const TFormatSettings& fs) {
    for (char c : text) {
      if (c == '.') {
        AppendChar16(out_, fs.DecimalSeparator);
      } else if (c == ',') {
        AppendChar16(out_, fs.ThousandSeparator);
      } else {
        out_.push_back(static_cast<CharT>(c));
      }
    }
  }

  void FloatText(double v, char type, int prec) {
    NumText text;
    switch (type) {
      case 'f': internal::FixedText(v, prec < 0 ? 2 : prec, false, text); break;
      case 'n': internal::FixedText(v, prec < 0 ? 2 : prec, true, text); break;
      case 'e': internal::ExponentText(v, prec < 0 ? 15 : prec, text); break;
      default: internal::GeneralText(v, prec < 0 ? 15 : prec, text); break;
    }
    Number(text.View(), FormatSettings());
  }

  // Money: fixed with thousands separators and the settings' currency string
  // placed by CurrencyFormat (positive) or NegCurrFormat (negative).
  void Money(double v, int prec) {
    const TFormatSettings& fs = FormatSettings();
    NumText text;
    internal::FixedText(v, prec < 0 ? fs.CurrencyDecimals : prec, true, text);
    std::string_view num = text.View();
    const bool negative = !num.empty() && num[0] == '-';
    if (negative) num.remove_prefix(1);
    if (!std::isfinite(v)) {
      Number(text.View(), fs);
      return;
    }
    // The layouts, with '$' for the currency string and '1' for the number.
    static constexpr const char* kPositive[] = {"$1", "1$", "$ 1", "1 $"};
    static constexpr const char* kNegative[] = {
        "($1)", "-$1",  "$-1",  "$1-",  "(1$)",  "-1$",   "1-$",   "1$-",
        "-1 $", "-$ 1", "1 $-", "$ 1-", "$ -1",  "1- $",  "($ 1)", "(1 $)"};
    const char* layout = negative ? kNegative[fs.NegCurrFormat % 16] : kPositive[fs.CurrencyFormat % 4];
    for (const char* p = layout; *p != '\0'; ++p) {
      if (*p == '$') {
        AppendWide(out_, fs.CurrencyString);
      } else if (*p == '1') {
        Number(num, fs);
      } else {
        out_.push_back(static_cast<CharT>(*p));
      }
    }
  }

  View fmt_;
  const FormatArg* args_;
  size_t arg_count_;
  size_t next_ = 0;
  size_t start_ = 0;
  Str out_;
};

}  // namespace

UnicodeString Format(std::u16string_view fmt, std::initializer_list<FormatArg> args) {
  return Formatter<char16_t>(fmt, args).Run();
}

AnsiString Format(std::string_view fmt, std::initializer_list<FormatArg> args) {
  return Formatter<char>(fmt, args).Run();
}

}  // namespace quill
