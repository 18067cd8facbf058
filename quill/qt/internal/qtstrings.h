// Conversions between the library's UTF-16 strings and Qt's.
#pragma once

#include <QByteArray>
#include <QString>

#include "quill/rtl/types.h"

namespace quill::qtinternal {

inline QString ToQString(const UnicodeString& s) {
  return QString(reinterpret_cast<const QChar*>(s.data()), static_cast<qsizetype>(s.size()));
}

inline UnicodeString FromQString(const QString& s) {
  return UnicodeString(reinterpret_cast<const char16_t*>(s.utf16()), static_cast<size_t>(s.size()));
}

// Bytes as they are (an 8-bit string is bytes in a code page, not UTF-8).
inline QByteArray ToQByteArray(const AnsiString& s) {
  return QByteArray(s.data(), static_cast<qsizetype>(s.size()));
}

inline AnsiString FromQByteArray(const QByteArray& b) {
  return AnsiString(b.constData(), static_cast<size_t>(b.size()));
}

}  // namespace quill::qtinternal
