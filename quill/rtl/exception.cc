#include "quill/rtl/exception.h"

#include "quill/rtl/unicode.h"

namespace quill {

Exception::Exception(UnicodeString msg) : message_(std::move(msg)), utf8_(UnicodeToUtf8(message_)) {}

Exception::Exception(const TResStringRec& res) : Exception(LoadResString(res)) {}

Exception::Exception(std::u16string_view fmt, std::initializer_list<FormatArg> args)
    : Exception(Format(fmt, args)) {}

Exception::Exception(const TResStringRec& res, std::initializer_list<FormatArg> args)
    : Exception(Format(LoadResString(res), args)) {}

Exception::~Exception() = default;

void Exception::SetMessage(UnicodeString msg) {
  message_ = std::move(msg);
  utf8_ = UnicodeToUtf8(message_);
}

// Out-of-line destructors anchor each class's type information in the library.
EConvertError::~EConvertError() = default;
EAbstractError::~EAbstractError() = default;
EListError::~EListError() = default;
EStringListError::~EStringListError() = default;
EStreamError::~EStreamError() = default;
EReadError::~EReadError() = default;
EWriteError::~EWriteError() = default;
EFileStreamError::~EFileStreamError() = default;
EFOpenError::~EFOpenError() = default;
EFCreateError::~EFCreateError() = default;
ERangeError::~ERangeError() = default;

void AbstractError() { throw EAbstractError(rtlmsg::SAbstractError); }

}  // namespace quill
