// Format: the runtime's "%s"/"%d" message formatting.
//
//   Format(u"Token %d is not available", {5})  -> u"Token 5 is not available"
//   Format(u"\"%s\" not a character", {u"#300"}) -> u"\"#300\" not a character"
//
// Specifier: '%' [index ':'] ['-'] [width] ['.' prec] type, with '*' taking the
// width or precision from the arguments and "%%" giving '%'. An explicit index
// resets the argument pointer; later specifiers continue from the argument
// after it ("%d %d %0:d %d" with 10, 20 gives "10 20 10 20"). Width pads with
// blanks on the left ('-': on the right; a negative '*' width too) and never
// truncates. Type letters may be in either case:
//   d  integer; prec = minimum digits, zero-padded, the sign not counted
//   u  integer as unsigned; x the same in upper-case hexadecimal. A 32-bit
//      argument shows its 32-bit pattern (-1 is FFFFFFFF), a 64-bit one 64 bits
//   p  integer or pointer as 16 hexadecimal digits
//   s  string or character (either form); prec = maximum characters kept
//   f  fixed, prec decimals (default 2); n the same with thousands separators
//   e  d.ddd...E+ddd with prec significant digits (default 15)
//   g  the FloatToStr layout with prec significant digits (default 15)
//   m  money: %n with CurrencyDecimals and the currency string placed by
//      CurrencyFormat / NegCurrFormat
// Floating-point types take double arguments only and use the process's
// FormatSettings() separators; exact halves round away from zero.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <type_traits>
#include <variant>

#include "quill/rtl/export.h"
#include "quill/rtl/types.h"

namespace quill {

// One argument of Format: an integer, a floating-point number, a character or
// a string in either form. 8-bit strings are taken to be in the ANSI code page.
//
// A FormatArg refers to a string argument without copying it, so building the
// argument list costs no allocation. It is meant to live only as an element
// of the argument list of one Format call (temporaries such as IntToStr(n)
// last until the call returns); do not keep one beyond that.
class QUILL_API FormatArg {
 public:
  FormatArg(int32_t v) : value_(static_cast<int64_t>(v)) {}
  FormatArg(int64_t v) : value_(v), is64_(true) {}
  FormatArg(uint32_t v) : value_(static_cast<int64_t>(v)) {}
  FormatArg(uint64_t v) : value_(static_cast<int64_t>(v)), is64_(true) {}
  // long long and unsigned long long where they are not the int64_t types.
  template <class T>
    requires(std::is_integral_v<T> && sizeof(T) == 8 && !std::is_same_v<T, int64_t> &&
             !std::is_same_v<T, uint64_t>)
  FormatArg(T v) : value_(static_cast<int64_t>(v)), is64_(true) {}
  // Any other pointer: its address, for %p.
  FormatArg(const void* p) : value_(static_cast<int64_t>(reinterpret_cast<uintptr_t>(p))), is64_(true) {}
  FormatArg(double v) : value_(v) {}
  FormatArg(char16_t c) : value_(c) {}
  FormatArg(char c) : value_(c) {}
  FormatArg(const char16_t* s) : value_(std::u16string_view(s)) {}
  FormatArg(std::u16string_view s) : value_(s) {}
  FormatArg(const UnicodeString& s) : value_(std::u16string_view(s)) {}
  FormatArg(const char* s) : value_(std::string_view(s)) {}
  FormatArg(std::string_view s) : value_(s) {}
  FormatArg(const AnsiString& s) : value_(std::string_view(s)) {}

  using Value = std::variant<int64_t, double, std::u16string_view, std::string_view, char16_t, char>;
  const Value& value() const { return value_; }
  // True for arguments given as 64-bit integers: %u, %x and %p then show all
  // 64 bits; a 32-bit argument shows its 32-bit pattern (-1 is FFFFFFFF).
  bool Is64Bit() const { return is64_; }

 private:
  Value value_;
  bool is64_ = false;
};

// Formats `fmt` with `args`. Raises EConvertError "Format '%s' invalid or
// incompatible with argument" for a wrong argument type, an unknown type
// letter, a specifier cut off by the end of the text or a width/precision
// above 1048576, and "No argument for format '%s'" when arguments run out; %s
// there is the whole format string, untruncated. The message is assembled
// directly, never through Format itself.
[[nodiscard]] QUILL_API UnicodeString Format(std::u16string_view fmt,
                                             std::initializer_list<FormatArg> args);

// The 8-bit form: the same rules, the result in the ANSI code page.
[[nodiscard]] QUILL_API AnsiString Format(std::string_view fmt,
                                          std::initializer_list<FormatArg> args);

}  // namespace quill
