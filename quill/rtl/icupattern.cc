#include "quill/rtl/internal/icupattern.h"

#include <vector>

namespace quill::internal {
namespace {

struct Token {
  bool field;
  char16_t letter;  // field letter
  size_t count;     // field width
  std::u16string text;  // literal text
};

constexpr bool IsAsciiLetter(char16_t c) { return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z'); }

// Splits an ICU pattern into fields (runs of one ASCII letter) and literals
// (everything else, with '...' quoting and '' for a quote undone).
std::vector<Token> Tokenize(std::u16string_view p) {
  std::vector<Token> out;
  auto literal = [&out]() -> std::u16string& {
    if (out.empty() || out.back().field) out.push_back(Token{false, 0, 0, {}});
    return out.back().text;
  };
  size_t i = 0;
  while (i < p.size()) {
    const char16_t c = p[i];
    if (c == u'\'') {
      if (i + 1 < p.size() && p[i + 1] == u'\'') {
        literal().push_back(u'\'');
        i += 2;
        continue;
      }
      ++i;
      while (i < p.size()) {
        if (p[i] == u'\'') {
          if (i + 1 < p.size() && p[i + 1] == u'\'') {
            literal().push_back(u'\'');
            i += 2;
            continue;
          }
          ++i;
          break;
        }
        literal().push_back(p[i++]);
      }
      continue;
    }
    if (IsAsciiLetter(c)) {
      size_t n = 1;
      while (i + n < p.size() && p[i + n] == c) ++n;
      out.push_back(Token{true, c, n, {}});
      i += n;
      continue;
    }
    literal().push_back(c);
    ++i;
  }
  return out;
}

// The runtime's spelling of one ICU field, or empty when it has none.
std::u16string FieldText(char16_t letter, size_t n) {
  switch (letter) {
    case u'y':
    case u'Y':
    case u'u':
      return n == 2 ? u"yy" : u"yyyy";
    case u'M':
    case u'L':
      return n == 1 ? u"m" : n == 2 ? u"mm" : n == 3 || n == 5 ? u"mmm" : u"mmmm";
    case u'd':
      return n == 1 ? u"d" : u"dd";
    case u'E':
    case u'c':
    case u'e':
      return n == 4 ? u"dddd" : u"ddd";
    case u'H':
    case u'h':
    case u'k':
    case u'K':
      return n == 1 ? u"h" : u"hh";
    case u'm':
      return n == 1 ? u"n" : u"nn";
    case u's':
      return n == 1 ? u"s" : u"ss";
    case u'S':
      return n == 1 ? u"z" : u"zzz";
    case u'a':
    case u'b':
    case u'B':
      return u"AMPM";
    default:
      return {};
  }
}

bool HasAsciiLetter(std::u16string_view s) {
  for (char16_t c : s) {
    if (IsAsciiLetter(c)) return true;
  }
  return false;
}

}  // namespace

std::u16string TranslateIcuPattern(std::u16string_view icu) {
  std::vector<Token> kept;
  bool drop_next_literal = false;
  for (Token& t : Tokenize(icu)) {
    if (t.field) {
      std::u16string text = FieldText(t.letter, t.count);
      if (text.empty()) {
        // A dropped field takes the literal that joined it to the pattern:
        // the one before it, or the one after it when it comes first.
        if (!kept.empty() && !kept.back().field) {
          kept.pop_back();
        } else if (kept.empty()) {
          drop_next_literal = true;
        }
        continue;
      }
      t.text = std::move(text);
    } else if (drop_next_literal) {
      drop_next_literal = false;
      continue;
    }
    drop_next_literal = false;
    kept.push_back(std::move(t));
  }
  std::u16string out;
  for (const Token& t : kept) {
    if (t.field || !HasAsciiLetter(t.text)) {
      out += t.text;
      continue;
    }
    out.push_back(u'"');
    out += t.text;
    out.push_back(u'"');
  }
  return out;
}

char16_t PatternSeparator(std::u16string_view icu, std::u16string_view fields, char16_t fallback) {
  const std::vector<Token> tokens = Tokenize(icu);
  bool seen_field = false;
  for (const Token& t : tokens) {
    if (t.field) {
      if (fields.find(t.letter) == std::u16string_view::npos) continue;
      if (seen_field) return fallback;  // two fields with nothing between
      seen_field = true;
      continue;
    }
    if (!seen_field || t.text.empty()) continue;
    // Bidirectional marks (right-to-left locales put them around the
    // separator) and spaces are skipped when a visible character follows.
    auto is_mark = [](char16_t c) { return c == u'\u200E' || c == u'\u200F' || c == u'\u061C'; };
    for (char16_t c : t.text) {
      if (!is_mark(c) && c != u' ' && c != u'\u00A0' && c != u'\u202F') return c;
    }
    for (char16_t c : t.text) {
      if (!is_mark(c)) return c;
    }
  }
  return fallback;
}

}  // namespace quill::internal
