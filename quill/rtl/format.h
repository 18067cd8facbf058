// Format: the runtime's "%s"/"%d" message formatting.
//
//   Format(u"Token %d is not available", {5})  -> u"Token 5 is not available"
//   Format(u"\"%s\" not a character", {u"#300"}) -> u"\"#300\" not a character"
//
// Specifier: '%' [index ':'] ['-'] [width] ['.' prec] type, with '*' taking the
// width or precision from the arguments and "%%" giving '%'. Types: d, u, x, s,
// f, e, g, n, m, p. An explicit index resets the argument pointer; later
// specifiers continue from the argument after it.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <variant>

#include "quill/rtl/export.h"
#include "quill/rtl/types.h"

namespace quill {

// One argument of Format: an integer, a floating-point number, a character or
// a string in either form. 8-bit strings are taken to be in the ANSI code page.
class QUILL_API FormatArg {
 public:
  FormatArg(int32_t v) : value_(static_cast<int64_t>(v)) {}
  FormatArg(int64_t v) : value_(v), is64_(true) {}
  FormatArg(uint32_t v) : value_(static_cast<int64_t>(v)) {}
  FormatArg(uint64_t v) : value_(static_cast<int64_t>(v)), is64_(true) {}
  FormatArg(double v) : value_(v) {}
  FormatArg(char16_t c) : value_(UnicodeString(1, c)) {}
  FormatArg(char c) : value_(AnsiString(1, c)) {}
  FormatArg(const char16_t* s) : value_(UnicodeString(s)) {}
  FormatArg(std::u16string_view s) : value_(UnicodeString(s)) {}
  FormatArg(const UnicodeString& s) : value_(s) {}
  FormatArg(const char* s) : value_(AnsiString(s)) {}
  FormatArg(std::string_view s) : value_(AnsiString(s)) {}
  FormatArg(const AnsiString& s) : value_(s) {}

  using Value = std::variant<int64_t, double, UnicodeString, AnsiString>;
  const Value& value() const { return value_; }
  // True for arguments given as 64-bit integers: %u, %x and %p then show all
  // 64 bits; a 32-bit argument shows its 32-bit pattern (-1 is FFFFFFFF).
  bool Is64Bit() const { return is64_; }

 private:
  Value value_;
  bool is64_ = false;
};

// Formats `fmt` with `args`. Raises EConvertError "Format '%s' invalid or
// incompatible with argument" for a wrong argument type or an unknown type
// letter, and "No argument for format '%s'" when arguments run out; %s there is
// the whole format string.
[[nodiscard]] QUILL_API UnicodeString Format(std::u16string_view fmt,
                                             std::initializer_list<FormatArg> args);

// The 8-bit form: the same rules, the result in the ANSI code page.
[[nodiscard]] QUILL_API AnsiString Format(std::string_view fmt,
                                          std::initializer_list<FormatArg> args);

}  // namespace quill
