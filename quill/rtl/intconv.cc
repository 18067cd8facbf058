#include "quill/rtl/intconv.h"

#include <charconv>

#include "quill/rtl/exception.h"
#include "quill/rtl/internal/intparse.h"

namespace quill {
namespace {

// Kept out of line and cold so the success path of StrToInt stays as lean as
// TryStrToInt's.
template <class CharT>
[[noreturn, gnu::cold, gnu::noinline]] void RaiseInvalidInteger(std::basic_string_view<CharT> s) {
  throw EConvertError(rtlmsg::SInvalidInteger, {s});
}

template <class Int, class CharT>
Int StrToIntOrRaise(std::basic_string_view<CharT> s) {
  Int v{};
  if (!internal::ParseInt(s.data(), s.data() + s.size(), v)) [[unlikely]] {
    RaiseInvalidInteger(s);
  }
  return v;
}

template <class Str>
Str DecimalText(int64_t value) {
  char buf[24];
  auto r = std::to_chars(buf, buf + sizeof buf, value);
  return Str(buf, r.ptr);
}

UnicodeString HexText(uint64_t bits, int digits) {
  char buf[24];
  auto r = std::to_chars(buf, buf + sizeof buf, bits, 16);
  const size_t len = static_cast<size_t>(r.ptr - buf);
  const size_t width = digits > 0 && static_cast<size_t>(digits) > len ? static_cast<size_t>(digits) : len;
  UnicodeString out(width - len, u'0');
  out.reserve(width);
  for (const char* p = buf; p < r.ptr; ++p) {
    out.push_back(static_cast<char16_t>(*p >= 'a' ? *p - 'a' + 'A' : *p));
  }
  return out;
}

}  // namespace

bool TryStrToInt(std::u16string_view s, int32_t& value) noexcept {
  return internal::ParseInt(s.data(), s.data() + s.size(), value);
}
bool TryStrToInt(std::string_view s, int32_t& value) noexcept {
  return internal::ParseInt(s.data(), s.data() + s.size(), value);
}
bool TryStrToInt64(std::u16string_view s, int64_t& value) noexcept {
  return internal::ParseInt(s.data(), s.data() + s.size(), value);
}
bool TryStrToInt64(std::string_view s, int64_t& value) noexcept {
  return internal::ParseInt(s.data(), s.data() + s.size(), value);
}

int32_t StrToInt(std::u16string_view s) { return StrToIntOrRaise<int32_t>(s); }
int32_t StrToInt(std::string_view s) { return StrToIntOrRaise<int32_t>(s); }
int64_t StrToInt64(std::u16string_view s) { return StrToIntOrRaise<int64_t>(s); }
int64_t StrToInt64(std::string_view s) { return StrToIntOrRaise<int64_t>(s); }

int32_t StrToIntDef(std::u16string_view s, int32_t def) noexcept {
  int32_t v = def;
  return internal::ParseInt(s.data(), s.data() + s.size(), v) ? v : def;
}
int32_t StrToIntDef(std::string_view s, int32_t def) noexcept {
  int32_t v = def;
  return internal::ParseInt(s.data(), s.data() + s.size(), v) ? v : def;
}

UnicodeString IntToStr(int64_t value) { return DecimalText<UnicodeString>(value); }
AnsiString IntToStrA(int64_t value) { return DecimalText<AnsiString>(value); }

UnicodeString IntToHex(int64_t value, int digits) { return HexText(static_cast<uint64_t>(value), digits); }
UnicodeString IntToHex(int32_t value, int digits) {
  return HexText(static_cast<uint32_t>(value), digits);
}

}  // namespace quill
