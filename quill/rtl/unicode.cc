#include "quill/rtl/unicode.h"

#include <unicode/ucnv.h>
#include <unicode/ustring.h>

#include <cstdio>
#include <memory>
#include <string>
#include <unordered_map>

#include "quill/rtl/internal/converter.h"
#include "quill/rtl/syslocale.h"

namespace quill {
namespace internal {
namespace {

struct NamedPage {
  TCodePage page;
  const char* name;
};

// Windows code pages whose ICU name is not simply "windows-N" or "ibm-N".
constexpr NamedPage kNamedPages[] = {
    {1200, "UTF-16LE"},     {1201, "UTF-16BE"},       {10000, "macintosh"},
    {10007, "x-mac-cyrillic"}, {12000, "UTF-32LE"},   {12001, "UTF-32BE"},
    {20127, "US-ASCII"},    {20866, "KOI8-R"},        {20932, "EUC-JP"},
    {20936, "GB2312"},      {21866, "KOI8-U"},        {28591, "ISO-8859-1"},
    {28592, "ISO-8859-2"},  {28593, "ISO-8859-3"},    {28594, "ISO-8859-4"},
    {28595, "ISO-8859-5"},  {28596, "ISO-8859-6"},    {28597, "ISO-8859-7"},
    {28598, "ISO-8859-8"},  {28599, "ISO-8859-9"},    {28603, "ISO-8859-13"},
    {28605, "ISO-8859-15"}, {38598, "ISO-8859-8-I"},  {50220, "ISO-2022-JP"},
    {50221, "ISO-2022-JP"}, {50222, "ISO-2022-JP"},   {50225, "ISO-2022-KR"},
    {51932, "EUC-JP"},      {51949, "EUC-KR"},        {52936, "HZ-GB-2312"},
    {54936, "GB18030"},     {65000, "UTF-7"},         {65001, "UTF-8"},
};

bool IcuKnows(const char* name) {
  UErrorCode err = U_ZERO_ERROR;
  const uint16_t n = ucnv_countAliases(name, &err);
  return U_SUCCESS(err) && n > 0;
}

struct ConverterCloser {
  void operator()(UConverter* c) const { ucnv_close(c); }
};

struct CacheEntry {
  std::unique_ptr<UConverter, ConverterCloser> owner;
  CodePageConverter facts;
};

CodePageConverter Describe(UConverter* conv) {
  CodePageConverter facts;
  facts.conv = conv;
  if (conv == nullptr) return facts;
  facts.single_byte = ucnv_getMaxCharSize(conv) == 1;
  // A page is ASCII-compatible when the 128 ASCII bytes decode to themselves.
  char bytes[128];
  for (int i = 0; i < 128; ++i) bytes[i] = static_cast<char>(i);
  UChar units[256];
  UErrorCode err = U_ZERO_ERROR;
  const int32_t n = ucnv_toUChars(conv, units, 256, bytes, 128, &err);
  bool same = U_SUCCESS(err) && n == 128;
  for (int i = 0; same && i < 128; ++i) same = units[i] == i;
  ucnv_reset(conv);
  // Stateful encodings (UTF-7, ISO-2022, HZ) give special meaning to some
  // ASCII bytes even when they decode the plain ones to themselves.
  facts.ascii_compatible = same && ucnv_getType(conv) != UCNV_UTF7 &&
                           ucnv_getType(conv) != UCNV_ISO_2022 && ucnv_getType(conv) != UCNV_HZ;
  return facts;
}

}  // namespace

const char* IcuConverterName(TCodePage codepage) {
  for (const NamedPage& p : kNamedPages) {
    if (p.page == codepage) return p.name;
  }
  // The names of the remaining pages are built once and kept for the process.
  static thread_local std::unordered_map<TCodePage, std::string> built;
  if (auto it = built.find(codepage); it != built.end()) {
    return it->second.empty() ? nullptr : it->second.c_str();
  }
  std::string found;
  for (const char* prefix : {"windows-", "ibm-"}) {
    std::string candidate = prefix + std::to_string(codepage);
    if (IcuKnows(candidate.c_str())) {
      found = std::move(candidate);
      break;
    }
  }
  auto& slot = built[codepage];
  slot = std::move(found);
  return slot.empty() ? nullptr : slot.c_str();
}

const CodePageConverter& ConverterFor(TCodePage codepage) {
  if (codepage == CP_ACP) codepage = GetACP();
  // UConverter objects are stateful, so each thread keeps its own.
  static thread_local std::unordered_map<TCodePage, CacheEntry> cache;
  auto it = cache.find(codepage);
  if (it == cache.end()) {
    CacheEntry entry;
    if (const char* name = IcuConverterName(codepage)) {
      UErrorCode err = U_ZERO_ERROR;
      UConverter* conv = ucnv_open(name, &err);
      if (U_FAILURE(err)) {
        ucnv_close(conv);
        conv = nullptr;
      }
      if (conv != nullptr) {
        err = U_ZERO_ERROR;
        ucnv_setSubstChars(conv, "?", 1, &err);
        entry.owner.reset(conv);
      }
    }
    entry.facts = Describe(entry.owner.get());
    it = cache.emplace(codepage, std::move(entry)).first;
  }
  if (it->second.facts.conv != nullptr) ucnv_reset(it->second.facts.conv);
  return it->second.facts;
}

}  // namespace internal

namespace {

bool IsAscii(std::string_view s) {
  for (char c : s) {
    if (static_cast<unsigned char>(c) >= 0x80) return false;
  }
  return true;
}

bool IsAscii(std::u16string_view s) {
  for (char16_t c : s) {
    if (c >= 0x80) return false;
  }
  return true;
}

}  // namespace

UnicodeString Utf8ToUnicode(std::string_view s) {
  // ASCII fast path: one unit per byte, no ICU call.
  if (IsAscii(s)) return UnicodeString(s.begin(), s.end());
  // UTF-16 never needs more units than UTF-8 has bytes.
  UnicodeString out(s.size(), u'\0');
  int32_t len = 0;
  UErrorCode err = U_ZERO_ERROR;
  u_strFromUTF8WithSub(out.data(), static_cast<int32_t>(out.size()), &len, s.data(),
                       static_cast<int32_t>(s.size()), 0xFFFD, nullptr, &err);
  if (U_FAILURE(err)) return UnicodeString();
  out.resize(static_cast<size_t>(len));
  return out;
}

std::string UnicodeToUtf8(std::u16string_view s) {
  if (IsAscii(s)) return std::string(s.begin(), s.end());
  // At most three bytes per UTF-16 unit (a pair gives four bytes for two units).
  std::string out(s.size() * 3, '\0');
  int32_t len = 0;
  UErrorCode err = U_ZERO_ERROR;
  u_strToUTF8WithSub(out.data(), static_cast<int32_t>(out.size()), &len, s.data(),
                     static_cast<int32_t>(s.size()), 0xFFFD, nullptr, &err);
  if (U_FAILURE(err)) return std::string();
  out.resize(static_cast<size_t>(len));
  return out;
}

UnicodeString AnsiToUnicode(std::string_view s, TCodePage codepage) {
  if (s.empty()) return UnicodeString();
  const internal::CodePageConverter& cp = internal::ConverterFor(codepage);
  if (cp.ascii_compatible && IsAscii(s)) return UnicodeString(s.begin(), s.end());
  if (cp.conv == nullptr) {
    // No converter: bytes outside ASCII have no known meaning.
    UnicodeString out;
    out.reserve(s.size());
    for (char c : s) out.push_back(static_cast<unsigned char>(c) < 0x80 ? char16_t(c) : u'\xFFFD');
    return out;
  }
  // No code page yields more than two UTF-16 units per byte.
  UnicodeString out(s.size() * 2 + 2, u'\0');
  UErrorCode err = U_ZERO_ERROR;
  const int32_t len = ucnv_toUChars(cp.conv, out.data(), static_cast<int32_t>(out.size()), s.data(),
                                    static_cast<int32_t>(s.size()), &err);
  if (U_FAILURE(err)) return UnicodeString();
  out.resize(static_cast<size_t>(len));
  return out;
}

AnsiString UnicodeToAnsi(std::u16string_view s, TCodePage codepage) {
  if (s.empty()) return AnsiString();
  const internal::CodePageConverter& cp = internal::ConverterFor(codepage);
  if (cp.ascii_compatible && IsAscii(s)) return AnsiString(s.begin(), s.end());
  if (cp.conv == nullptr) {
    AnsiString out;
    out.reserve(s.size());
    for (char16_t c : s) out.push_back(c < 0x80 ? static_cast<char>(c) : '?');
    return out;
  }
  const int32_t cap = UCNV_GET_MAX_BYTES_FOR_STRING(static_cast<int32_t>(s.size()), ucnv_getMaxCharSize(cp.conv));
  AnsiString out(static_cast<size_t>(cap), '\0');
  UErrorCode err = U_ZERO_ERROR;
  const int32_t len = ucnv_fromUChars(cp.conv, out.data(), cap, s.data(),
                                      static_cast<int32_t>(s.size()), &err);
  if (U_FAILURE(err)) return AnsiString();
  out.resize(static_cast<size_t>(len));
  return out;
}

bool IsValidCodePage(TCodePage codepage) {
  if (codepage == CP_ACP) return false;
  return internal::ConverterFor(codepage).conv != nullptr;
}

}  // namespace quill
