// Exception: the runtime's base exception class, and its runtime subclasses.
//
// Every failure the library reports is a C++ exception thrown by value that
// derives from quill::Exception (itself a std::exception). Message() is the
// UTF-16 text; what() is the same text in UTF-8.
//
//   try { quill::StrToInt(u"abc"); }
//   catch (const quill::EConvertError& e) { /* e.Message(): 'abc' is not a valid integer value */ }
#pragma once

#include <exception>
#include <initializer_list>
#include <string>
#include <string_view>

#include "quill/rtl/export.h"
#include "quill/rtl/format.h"
#include "quill/rtl/resstrings.h"
#include "quill/rtl/types.h"

namespace quill {

class QUILL_API Exception : public std::exception {
 public:
  // Carries `msg` as it is.
  explicit Exception(UnicodeString msg);
  explicit Exception(std::u16string_view msg) : Exception(UnicodeString(msg)) {}
  explicit Exception(const char16_t* msg) : Exception(UnicodeString(msg)) {}
  // Carries the current text of a resource string (loaded now).
  explicit Exception(const TResStringRec& res);
  // Carries Format(fmt, args) (the runtime's CreateFmt).
  Exception(std::u16string_view fmt, std::initializer_list<FormatArg> args);
  // Carries Format(LoadResString(res), args).
  Exception(const TResStringRec& res, std::initializer_list<FormatArg> args);

  ~Exception() override;

  [[nodiscard]] const UnicodeString& Message() const noexcept { return message_; }
  void SetMessage(UnicodeString msg);
  const char* what() const noexcept override { return utf8_.c_str(); }

 private:
  UnicodeString message_;
  std::string utf8_;
};

// Declares `Name` as an exception class deriving from `Base` that adds nothing.
#define QUILL_DECLARE_EXCEPTION(Name, Base)                   \
  class QUILL_API Name : public Base {                       \
   public:                                                   \
    using Base::Base;                                        \
    ~Name() override;                                        \
  }

// Text to number, number to text and date conversion failures.
QUILL_DECLARE_EXCEPTION(EConvertError, Exception);
// Calling an abstract operation: message "Abstract Error".
QUILL_DECLARE_EXCEPTION(EAbstractError, Exception);
// Pointer-list index errors: "List index out of bounds (%d)".
QUILL_DECLARE_EXCEPTION(EListError, Exception);
// String-list index and state errors.
QUILL_DECLARE_EXCEPTION(EStringListError, Exception);
// Stream errors: short reads and writes, bad seeks.
QUILL_DECLARE_EXCEPTION(EStreamError, Exception);
QUILL_DECLARE_EXCEPTION(EReadError, EStreamError);
QUILL_DECLARE_EXCEPTION(EWriteError, EStreamError);
// File stream errors: "Cannot open file "%s". %s", "Cannot create file "%s". %s".
QUILL_DECLARE_EXCEPTION(EFileStreamError, EStreamError);
QUILL_DECLARE_EXCEPTION(EFOpenError, EFileStreamError);
QUILL_DECLARE_EXCEPTION(EFCreateError, EFileStreamError);
// Out-of-range arguments to runtime routines that have no better class.
QUILL_DECLARE_EXCEPTION(ERangeError, Exception);

// The runtime's message texts used by more than one runtime routine.
namespace rtlmsg {
inline constexpr char16_t SInvalidInteger[] = u"'%s' is not a valid integer value";
inline constexpr char16_t SInvalidFloat[] = u"'%s' is not a valid floating point value";
inline constexpr char16_t SInvalidDate[] = u"'%s' is not a valid date";
inline constexpr char16_t SInvalidTime[] = u"'%s' is not a valid time";
inline constexpr char16_t SInvalidDateTime[] = u"'%s' is not a valid date and time";
inline constexpr char16_t SDateEncodeError[] = u"Invalid argument to date encode";
inline constexpr char16_t STimeEncodeError[] = u"Invalid argument to time encode";
inline constexpr char16_t SAbstractError[] = u"Abstract Error";
inline constexpr char16_t SListIndexError[] = u"List index out of bounds (%d)";
inline constexpr char16_t SListCapacityError[] = u"List capacity out of bounds (%d)";
inline constexpr char16_t SListCountError[] = u"List count out of bounds (%d)";
inline constexpr char16_t SSortedListError[] = u"Operation not allowed on sorted list";
inline constexpr char16_t SDuplicateString[] = u"String list does not allow duplicates";
inline constexpr char16_t SFOpenErrorEx[] = u"Cannot open file \"%s\". %s";
inline constexpr char16_t SFCreateErrorEx[] = u"Cannot create file \"%s\". %s";
inline constexpr char16_t SReadError[] = u"Stream read error";
inline constexpr char16_t SWriteError[] = u"Stream write error";
inline constexpr char16_t SInvalidFormat[] = u"Format '%s' invalid or incompatible with argument";
inline constexpr char16_t SArgumentMissing[] = u"No argument for format '%s'";
}  // namespace rtlmsg

// Raises EAbstractError with the runtime's message; used by abstract operations.
[[noreturn]] QUILL_API void AbstractError();

}  // namespace quill
