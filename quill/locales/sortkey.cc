#include "quill/locales/sortkey.h"

#include <unicode/ucol.h>
#include <unicode/uloc.h>

#include <cstring>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "quill/locales/codepages.h"
#include "quill/rtl/internal/converter.h"
#include "quill/rtl/localefacts.h"
#include "quill/rtl/syslocale.h"
#include "quill/rtl/unicode.h"

namespace quill::Glocales {
namespace {

struct CollatorCloser {
  void operator()(UCollator* c) const { ucol_close(c); }
};

struct LocaleCollator {
  std::unique_ptr<UCollator, CollatorCloser> collator;  // nullptr: unknown locale
  int32_t code_page = 0;                                // the locale's ANSI page
  // The page's byte table when it is a single-byte page (tables live for the
  // process), so that short words decode without a conversion call.
  const char16_t* to_unicode = nullptr;
};

// The collator of a (resolved) locale for the calling thread, opened on first
// use: ICU collators are not to be shared between threads while in use.
const LocaleCollator& CollatorFor(LCID resolved) {
  static thread_local std::unordered_map<LCID, LocaleCollator> cache;
  auto it = cache.find(resolved);
  if (it != cache.end()) return it->second;
  LocaleCollator entry;
  if (const WinLocaleFact* fact = FindLocaleFact(resolved)) {
    char id[ULOC_FULLNAME_CAPACITY] = {};
    UErrorCode err = U_ZERO_ERROR;
    const std::string tag(fact->tag);
    uloc_forLanguageTag(tag.c_str(), id, sizeof id, nullptr, &err);
    if (U_SUCCESS(err)) {
      UCollator* c = ucol_open(id, &err);
      if (U_SUCCESS(err)) {
        // Case ignored: differences of case (and the other tertiary ones)
        // leave the key unchanged.
        ucol_setStrength(c, UCOL_SECONDARY);
        entry.collator.reset(c);
      } else {
        ucol_close(c);
      }
    }
    entry.code_page = static_cast<int32_t>(fact->ansi_cp);
    // Page 0 means GetACP(), which the environment may change: decode those
    // through the conversion each time.
    if (entry.code_page != 0) entry.to_unicode = quill::internal::ConverterFor(fact->ansi_cp).to_unicode;
  }
  return cache.emplace(resolved, std::move(entry)).first->second;
}

// `s` decoded as StrToWideByCodePage(s, lc.code_page) decodes it, into `out`.
void Decode(const LocaleCollator& lc, std::string_view s, std::u16string& out) {
  if (lc.to_unicode == nullptr) {
    out = StrToWideByCodePage(s, lc.code_page);
    return;
  }
  out.resize(s.size());
  for (size_t i = 0; i < s.size(); ++i) out[i] = lc.to_unicode[static_cast<unsigned char>(s[i])];
}

// The key of `text` into `buf` (grown when too small); its length.
int32_t KeyInto(const UCollator* c, std::u16string_view text, std::vector<uint8_t>& buf) {
  const auto len = static_cast<int32_t>(text.size());
  int32_t n = ucol_getSortKey(c, text.data(), len, buf.data(), static_cast<int32_t>(buf.size()));
  if (n > static_cast<int32_t>(buf.size())) {
    buf.resize(static_cast<size_t>(n));
    n = ucol_getSortKey(c, text.data(), len, buf.data(), n);
  }
  return n;
}

}  // namespace

int32_t GetSortKey(std::string_view S, LCID Locale, uint8_t*& Key) {
  const LocaleCollator& lc = CollatorFor(ResolveLCID(Locale));
  if (!lc.collator) return 0;
  const UCollator* c = lc.collator.get();
  static thread_local std::vector<uint8_t> scratch(256);

  // Measure the key of all of S followed by its terminator. U+0000 is
  // completely ignorable in every collation, so that is the key of S.
  static thread_local std::u16string text;
  Decode(lc, S, text);
  const int32_t n = KeyInto(c, text, scratch);
  if (n <= 0) return 0;
  Key = static_cast<uint8_t*>(GetMem(static_cast<size_t>(n)));

  // The key proper covers S up to its first 0 byte.
  const void* nul = std::memchr(S.data(), 0, S.size());
  if (nul == nullptr) {
    std::memcpy(Key, scratch.data(), static_cast<size_t>(n));
    return n;
  }
  Decode(lc, S.substr(0, static_cast<size_t>(static_cast<const char*>(nul) - S.data())), text);
  const int32_t m = ucol_getSortKey(c, text.data(), static_cast<int32_t>(text.size()), Key, n);
  return m <= n ? m : 0;
}

}  // namespace quill::Glocales
