#include "quill/rtl/unicode.h"

#include <unicode/ucnv.h>
#include <unicode/ustring.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <memory>
#include <mutex>
#include <string>
#include <unordered_map>
#include <vector>

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
    {10006, "x-mac-greek"}, {10007, "x-mac-cyrillic"}, {10029, "x-mac-centraleurroman"},
    {10081, "x-mac-turkish"}, {12000, "UTF-32LE"},    {12001, "UTF-32BE"},
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

// The byte tables of one single-byte page, shared by every thread and kept
// for the process (a page's tables never change).
struct SingleByteTables {
  char16_t to_unicode[256] = {};
  std::once_flag from_once;
  std::unique_ptr<uint16_t[]> from_unicode;
};

std::mutex& TablesMutex() {
  static std::mutex m;
  return m;
}

std::unordered_map<TCodePage, std::unique_ptr<SingleByteTables>>& AllTables() {
  static auto* tables = new std::unordered_map<TCodePage, std::unique_ptr<SingleByteTables>>();
  return *tables;
}

// The unit ICU decodes the single byte `b` to, or -1 when it gives no
// single unit.
int32_t DecodeByte(UConverter* conv, int b) {
  const char byte = static_cast<char>(b);
  UChar u[4];
  UErrorCode err = U_ZERO_ERROR;
  ucnv_reset(conv);
  const int32_t n = ucnv_toUChars(conv, u, 4, &byte, 1, &err);
  return U_SUCCESS(err) && n == 1 ? u[0] : -1;
}

// The control a byte stands for on Windows when ICU's IBM table swaps it.
constexpr char16_t StraightControl(char16_t unit_from_icu) {
  switch (unit_from_icu) {
    case 0x1C: return 0x1A;
    case 0x7F: return 0x1C;
    case 0x1A: return 0x7F;
    default: return unit_from_icu;
  }
}

CodePageConverter Describe(UConverter* conv, TCodePage page) {
  CodePageConverter facts;
  facts.conv = conv;
  facts.page = page;
  if (conv == nullptr) return facts;
  facts.single_byte = ucnv_getMaxCharSize(conv) == 1;
  const bool stateful = ucnv_getType(conv) == UCNV_UTF7 || ucnv_getType(conv) == UCNV_ISO_2022 ||
                        ucnv_getType(conv) == UCNV_HZ;
  facts.ibm_controls = !stateful && DecodeByte(conv, 0x1A) == 0x1C && DecodeByte(conv, 0x1C) == 0x7F &&
                       DecodeByte(conv, 0x7F) == 0x1A;
  // A page is ASCII-compatible when the 128 ASCII bytes decode to themselves
  // (after the control swap is undone).
  char bytes[128];
  for (int i = 0; i < 128; ++i) bytes[i] = static_cast<char>(i);
  UChar units[256];
  UErrorCode err = U_ZERO_ERROR;
  ucnv_reset(conv);
  const int32_t n = ucnv_toUChars(conv, units, 256, bytes, 128, &err);
  bool same = U_SUCCESS(err) && n == 128;
  for (int i = 0; same && i < 128; ++i) {
    same = (facts.ibm_controls ? StraightControl(units[i]) : units[i]) == i;
  }
  ucnv_reset(conv);
  // Stateful encodings (UTF-7, ISO-2022, HZ) give special meaning to some
  // ASCII bytes even when they decode the plain ones to themselves.
  facts.ascii_compatible = same && !stateful;

  if (facts.single_byte && !stateful) {
    std::lock_guard<std::mutex> lock(TablesMutex());
    auto& slot = AllTables()[page];
    if (!slot) {
      auto tables = std::make_unique<SingleByteTables>();
      bool whole = true;
      for (int b = 0; whole && b < 256; ++b) {
        const int32_t u = DecodeByte(conv, b);
        whole = u >= 0;
        if (whole) {
          tables->to_unicode[b] = facts.ibm_controls ? StraightControl(static_cast<char16_t>(u))
                                                     : static_cast<char16_t>(u);
        }
      }
      ucnv_reset(conv);
      if (whole) slot = std::move(tables);
    }
    if (slot) facts.to_unicode = slot->to_unicode;
  }
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
    entry.facts = Describe(entry.owner.get(), codepage);
    it = cache.emplace(codepage, std::move(entry)).first;
  }
  if (it->second.facts.conv != nullptr) ucnv_reset(it->second.facts.conv);
  return it->second.facts;
}


const uint16_t* FromUnicodeTable(const CodePageConverter& cp) {
  if (cp.to_unicode == nullptr) return nullptr;
  SingleByteTables* tables = nullptr;
  {
    std::lock_guard<std::mutex> lock(TablesMutex());
    tables = AllTables()[cp.page].get();
  }
  if (tables == nullptr) return nullptr;
  std::call_once(tables->from_once, [&] {
    auto from = std::make_unique<uint16_t[]>(0x10000);
    std::fill(from.get(), from.get() + 0x10000, static_cast<uint16_t>('?'));
    // One pass of ICU's own converter (with its '?' substitute) over every
    // non-surrogate BMP unit; the offsets say which unit each byte came from.
    // A unit that yields no byte at all (ICU drops the default-ignorable
    // characters it cannot encode) is marked to be dropped.
    std::vector<UChar> units;
    units.reserve(0x10000);
    for (uint32_t u = 0; u < 0x10000; ++u) {
      if (u < 0xD800 || u > 0xDFFF) units.push_back(static_cast<UChar>(u));
    }
    UErrorCode err = U_ZERO_ERROR;
    UConverter* conv = ucnv_open(IcuConverterName(cp.page), &err);
    if (U_SUCCESS(err)) ucnv_setSubstChars(conv, "?", 1, &err);
    if (U_SUCCESS(err)) {
      std::vector<char> bytes(units.size() * 2);
      std::vector<int32_t> offsets(bytes.size());
      char* target = bytes.data();
      const UChar* source = units.data();
      ucnv_fromUnicode(conv, &target, bytes.data() + bytes.size(), &source, units.data() + units.size(),
                       offsets.data(), true, &err);
      if (U_SUCCESS(err)) {
        std::vector<bool> seen(units.size());
        const size_t produced = static_cast<size_t>(target - bytes.data());
        for (size_t i = 0; i < produced; ++i) {
          if (offsets[i] < 0) continue;
          const auto at = static_cast<size_t>(offsets[i]);
          from[units[at]] = static_cast<uint8_t>(bytes[i]);
          seen[at] = true;
        }
        for (size_t i = 0; i < units.size(); ++i) {
          if (!seen[i]) from[units[i]] = kDropUnit;
        }
      }
    }
    ucnv_close(conv);
    if (cp.ibm_controls) {
      for (uint16_t c : {0x1A, 0x1C, 0x7F}) from[c] = c;
    }
    tables->from_unicode = std::move(from);
  });
  return tables->from_unicode.get();
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

// ICU's IBM-flavoured tables give the bytes 1A, 1C and 7F (never trail bytes
// in those pages) the controls 1C, 7F and 1A; feeding ICU the byte that it
// decodes to the straight control undoes that.
constexpr char IbmControlByte(char b) {
  switch (b) {
    case 0x1A: return 0x7F;
    case 0x1C: return 0x1A;
    case 0x7F: return 0x1C;
    default: return b;
  }
}
constexpr char16_t IbmControlUnit(char16_t u) {
  switch (u) {
    case 0x1A: return 0x1C;
    case 0x1C: return 0x7F;
    case 0x7F: return 0x1A;
    default: return u;
  }
}

UnicodeString AnsiToUnicode(std::string_view s, TCodePage codepage) {
  if (s.empty()) return UnicodeString();
  if (codepage == CP_UTF8 || (codepage == CP_ACP && GetACP() == CP_UTF8)) return Utf8ToUnicode(s);
  const internal::CodePageConverter& cp = internal::ConverterFor(codepage);
  if (cp.to_unicode != nullptr) {
    // Single-byte page: one table lookup per byte.
    UnicodeString out(s.size(), u'\0');
    const char16_t* table = cp.to_unicode;
    for (size_t i = 0; i < s.size(); ++i) out[i] = table[static_cast<unsigned char>(s[i])];
    return out;
  }
  if (cp.ascii_compatible && IsAscii(s)) return UnicodeString(s.begin(), s.end());
  if (cp.conv == nullptr) {
    // No converter: bytes outside ASCII have no known meaning.
    UnicodeString out;
    out.reserve(s.size());
    for (char c : s) out.push_back(static_cast<unsigned char>(c) < 0x80 ? char16_t(c) : u'\xFFFD');
    return out;
  }
  std::string fixed;
  if (cp.ibm_controls && s.find_first_of(std::string_view("\x1A\x1C\x7F", 3)) != std::string_view::npos) {
    fixed.assign(s);
    for (char& c : fixed) c = IbmControlByte(c);
    s = fixed;
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
  if (codepage == CP_UTF8 || (codepage == CP_ACP && GetACP() == CP_UTF8)) return UnicodeToUtf8(s);
  const internal::CodePageConverter& cp = internal::ConverterFor(codepage);
  if (cp.ascii_compatible && IsAscii(s)) return AnsiString(s.begin(), s.end());
  if (const uint16_t* table = internal::FromUnicodeTable(cp)) {
    // Single-byte page: one lookup per unit. A surrogate pair (no BMP
    // character, so never in the page) goes through ICU, which substitutes
    // or drops it; a lone surrogate becomes '?'.
    AnsiString out(s.size(), '\0');
    size_t n = 0;
    for (size_t i = 0; i < s.size(); ++i) {
      const char16_t u = s[i];
      if (u >= 0xD800 && u <= 0xDBFF && i + 1 < s.size() && s[i + 1] >= 0xDC00 && s[i + 1] <= 0xDFFF) {
        char sub[8];
        UErrorCode err = U_ZERO_ERROR;
        ucnv_reset(cp.conv);
        const int32_t k = ucnv_fromUChars(cp.conv, sub, sizeof sub, s.data() + i, 2, &err);
        for (int32_t j = 0; U_SUCCESS(err) && j < k; ++j) out[n++] = sub[j];
        ++i;
        continue;
      }
      const uint16_t b = table[u];
      if (b != internal::kDropUnit) out[n++] = static_cast<char>(b);
    }
    out.resize(n);
    return out;
  }
  if (cp.conv == nullptr) {
    AnsiString out;
    out.reserve(s.size());
    for (char16_t c : s) out.push_back(c < 0x80 ? static_cast<char>(c) : '?');
    return out;
  }
  UnicodeString fixed;
  if (cp.ibm_controls && s.find_first_of(std::u16string_view(u"\x1A\x1C\x7F", 3)) != std::u16string_view::npos) {
    fixed.assign(s);
    for (char16_t& c : fixed) c = IbmControlUnit(c);
    s = fixed;
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
