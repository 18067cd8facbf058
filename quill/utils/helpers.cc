// Small Gutils helpers.
#include "quill/utils/helpers.h"

#include <chrono>
#include <random>

namespace quill::Gutils {

int32_t MinInt(int32_t A, int32_t B) { return A < B ? A : B; }

int32_t MaxInt(int32_t A, int32_t B) { return A > B ? A : B; }

void* GetRandomItem(const TList& List, const void* Excluded) {
  // Reseeded from the clock on each call, as callers expect a fresh draw
  // sequence every time.
  std::mt19937 gen(static_cast<std::mt19937::result_type>(
      std::chrono::high_resolution_clock::now().time_since_epoch().count()));
  std::uniform_int_distribution<int32_t> pick(0, List.Count() - 1);
  for (;;) {
    void* item = List.Get(pick(gen));
    if (item != Excluded) return item;
  }
}

namespace {

// Shifts each unit of `S` by the key's units, cycling through the key.
// `shift` maps (unit, key unit) to the new unit value before it is cut to 16
// bits.
template <typename Shift>
UnicodeString ShiftByKey(const UnicodeString& S, const UnicodeString& Key, Shift shift) {
  if (S.empty() || Key.empty()) return S;
  UnicodeString result(S.size(), u'\0');
  size_t j = 0;
  for (size_t i = 0; i < S.size(); ++i) {
    result[i] = static_cast<char16_t>(shift(static_cast<int32_t>(S[i]), static_cast<int32_t>(Key[j])));
    if (++j == Key.size()) j = 0;
  }
  return result;
}

}  // namespace

UnicodeString Encrypt1(const UnicodeString& S, const UnicodeString& Key) {
  return ShiftByKey(S, Key, [](int32_t c, int32_t k) {
    c += k;
    return c > 127 ? c - 95 : c;
  });
}

UnicodeString Decrypt1(const UnicodeString& S, const UnicodeString& Key) {
  return ShiftByKey(S, Key, [](int32_t c, int32_t k) {
    c -= k;
    return c < 32 ? c + 95 : c;
  });
}

void GetCurrentFormats(TFormatSettings& Settings) {
  constexpr LCID kSystemDefaultLocale = 2048;
  Settings = TFormatSettings::Create(kSystemDefaultLocale);
}

}  // namespace quill::Gutils
