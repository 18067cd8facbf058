// Registry files: decoding, parsing and writing (see regfile.h and
// docs/registry-file.md for the format).
#include "quill/rtl/regfile.h"

#include <unicode/ustring.h>

#include <array>
#include <cstddef>
#include <utility>

#include "quill/rtl/format.h"
#include "quill/rtl/unicode.h"

namespace quill {

ERegistryFileError::ERegistryFileError(int32_t line, const UnicodeString& reason)
    : ERegistryException(line > 0 ? Format(u"Registry file line %d: %s", {line, reason}) : reason),
      line_(line),
      reason_(reason) {}

ERegistryFileError::~ERegistryFileError() = default;

bool TRegFileOperation::operator==(const TRegFileOperation& other) const {
  return Action == other.Action && Key == other.Key && Name == other.Name && Type == other.Type &&
         Text == other.Text && DWord == other.DWord && Bytes == other.Bytes;
}

namespace {

constexpr char16_t kRoot[] = u"HKEY_CURRENT_USER";
constexpr std::u16string_view kCrLf = u"\r\n";
constexpr char16_t kHexDigits[] = u"0123456789abcdef";

[[noreturn]] void Fail(int32_t line, std::u16string_view fmt, std::initializer_list<FormatArg> args = {}) {
  throw ERegistryFileError(line, args.size() == 0 ? UnicodeString(fmt) : Format(fmt, args));
}

bool IsBlank(char16_t c) { return c == u' ' || c == u'\t'; }

std::u16string_view TrimBlanks(std::u16string_view s) {
  while (!s.empty() && IsBlank(s.front())) s.remove_prefix(1);
  while (!s.empty() && IsBlank(s.back())) s.remove_suffix(1);
  return s;
}

char16_t AsciiUpper(char16_t c) { return c >= u'a' && c <= u'z' ? static_cast<char16_t>(c - 32) : c; }

bool SameAsciiText(std::u16string_view a, std::u16string_view b) {
  if (a.size() != b.size()) return false;
  for (size_t i = 0; i < a.size(); ++i) {
    if (AsciiUpper(a[i]) != AsciiUpper(b[i])) return false;
  }
  return true;
}

bool StartsWithAscii(std::u16string_view s, std::u16string_view prefix) {
  return s.size() >= prefix.size() && SameAsciiText(s.substr(0, prefix.size()), prefix);
}

int HexDigit(char16_t c) {
  if (c >= u'0' && c <= u'9') return c - u'0';
  if (c >= u'a' && c <= u'f') return c - u'a' + 10;
  if (c >= u'A' && c <= u'F') return c - u'A' + 10;
  return -1;
}

// 1 to 8 hex digits, nothing else.
bool ParseHex32(std::u16string_view s, uint32_t& out) {
  if (s.empty() || s.size() > 8) return false;
  uint32_t v = 0;
  for (char16_t c : s) {
    const int d = HexDigit(c);
    if (d < 0) return false;
    v = (v << 4) | static_cast<uint32_t>(d);
  }
  out = v;
  return true;
}

// A short piece of a line for messages, so that a long line does not flood them.
UnicodeString Excerpt(std::u16string_view s) {
  constexpr size_t kMax = 24;
  if (s.size() <= kMax) return UnicodeString(s);
  return UnicodeString(s.substr(0, kMax)) + u"...";
}

// The other roots a file exported elsewhere may name.
bool IsOtherRoot(std::u16string_view name) {
  constexpr std::array<std::u16string_view, 8> kOthers = {
      u"HKEY_CLASSES_ROOT", u"HKEY_LOCAL_MACHINE", u"HKEY_USERS",  u"HKEY_CURRENT_CONFIG",
      u"HKEY_PERFORMANCE_DATA", u"HKEY_DYN_DATA", u"HKCR", u"HKLM"};
  for (auto other : kOthers) {
    if (SameAsciiText(name, other)) return true;
  }
  return false;
}

// True when a backslash-separated key path (not empty) has an empty name:
// at the start, at the end, or between two backslashes.
bool HasEmptyKeyName(std::u16string_view path) {
  return path.empty() || path.front() == u'\\' || path.back() == u'\\' ||
         path.find(u"\\\\") != std::u16string_view::npos;
}

// The key path of a section header's inside ("HKEY_CURRENT_USER\A\B" -> "A\B").
UnicodeString ParseKeyPath(std::u16string_view inside, int32_t line) {
  const size_t slash = inside.find(u'\\');
  const std::u16string_view root = inside.substr(0, slash);
  if (!SameAsciiText(root, kRoot)) {
    if (IsOtherRoot(root)) {
      Fail(line, u"only keys below HKEY_CURRENT_USER can be used, not %s", {UnicodeString(root)});
    }
    Fail(line, u"unknown root key \"%s\" (expected HKEY_CURRENT_USER)", {Excerpt(root)});
  }
  if (slash == std::u16string_view::npos) return {};
  const std::u16string_view path = inside.substr(slash + 1);
  if (HasEmptyKeyName(path)) Fail(line, u"empty key name in \"%s\"", {Excerpt(inside)});
  return UnicodeString(path);
}

// Reads a quoted string starting at s[pos] == '"'; pos ends after the closing quote.
UnicodeString ParseQuoted(std::u16string_view s, size_t& pos, int32_t line) {
  UnicodeString out;
  ++pos;
  while (pos < s.size()) {
    const char16_t c = s[pos++];
    if (c == u'"') return out;
    if (c == u'\\') {
      if (pos >= s.size()) break;
      const char16_t e = s[pos++];
      if (e != u'\\' && e != u'"') {
        Fail(line, u"unknown escape \"\\%s\" in a quoted string (write \\\\ for a backslash)",
             {UnicodeString(1, e)});
      }
      out.push_back(e);
    } else {
      out.push_back(c);
    }
  }
  Fail(line, u"missing closing quote");
}

// UTF-16LE bytes (hex(1) and hex(2) data) to text; one terminating NUL is dropped.
UnicodeString BytesToText(const std::vector<uint8_t>& bytes, int32_t line, std::u16string_view form) {
  if (bytes.size() % 2 != 0) {
    Fail(line, u"%s data must be UTF-16LE text: an even number of bytes", {UnicodeString(form)});
  }
  UnicodeString text;
  text.reserve(bytes.size() / 2);
  for (size_t i = 0; i < bytes.size(); i += 2) {
    text.push_back(static_cast<char16_t>(bytes[i] | (bytes[i + 1] << 8)));
  }
  if (!text.empty() && text.back() == u'\0') text.pop_back();
  return text;
}

const char16_t* UnsupportedHexType(uint32_t type) {
  switch (type) {
    case 0: return u"no type";
    case 5: return u"big-endian 32-bit number";
    case 6: return u"symbolic link";
    case 7: return u"multi-string";
    case 8: return u"resource list";
    case 9: return u"resource descriptor";
    case 10: return u"resource requirements list";
    case 11: return u"64-bit number";
    default: return nullptr;
  }
}

class Parser {
 public:
  explicit Parser(std::u16string_view text) { SplitLines(text); }

  TRegFileOperations Run() {
    bool header = false;
    bool section = false;
    bool deleted = false;
    UnicodeString key;
    for (index_ = 0; index_ < lines_.size(); ++index_) {
      const int32_t line = LineNo();
      const std::u16string_view t = TrimBlanks(lines_[index_]);
      if (!header) {
        if (t.empty()) continue;
        if (t != RegFileHeader) {
          Fail(line, u"the file must start with the line \"%s\"", {UnicodeString(RegFileHeader)});
        }
        header = true;
        continue;
      }
      if (t.empty() || t.front() == u';') continue;
      if (t.front() == u'[') {
        if (t.back() != u']' || t.size() < 2) Fail(line, u"a section header must end with \"]\"");
        std::u16string_view inside = t.substr(1, t.size() - 2);
        deleted = !inside.empty() && inside.front() == u'-';
        if (deleted) inside.remove_prefix(1);
        key = ParseKeyPath(inside, line);
        if (deleted && key.empty()) Fail(line, u"the root key cannot be deleted");
        section = true;
        TRegFileOperation op;
        op.Action = deleted ? rfaDeleteKey : rfaCreateKey;
        op.Key = key;
        op.Line = line;
        ops_.push_back(std::move(op));
        continue;
      }
      if (t.front() == u'"' || t.front() == u'@') {
        if (!section) Fail(line, u"a value line must follow a [key] section header");
        if (deleted) Fail(line, u"a value line cannot follow a [-key] deletion");
        ParseValue(t, key, line);
        continue;
      }
      Fail(line, u"expected a [key] section header, a \"name\"=value line or a ; comment, found \"%s\"",
           {Excerpt(t)});
    }
    if (!header) {
      Fail(static_cast<int32_t>(lines_.empty() ? 1 : lines_.size()),
           u"the file must start with the line \"%s\"", {UnicodeString(RegFileHeader)});
    }
    return std::move(ops_);
  }

 private:
  int32_t LineNo() const { return static_cast<int32_t>(index_ + 1); }

  void SplitLines(std::u16string_view text) {
    size_t start = 0;
    for (size_t i = 0; i < text.size(); ++i) {
      if (text[i] == u'\r' || text[i] == u'\n') {
        lines_.push_back(text.substr(start, i - start));
        if (text[i] == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n') ++i;
        start = i + 1;
      }
    }
    if (start < text.size()) lines_.push_back(text.substr(start));
  }

  void ParseValue(std::u16string_view t, const UnicodeString& key, int32_t line) {
    TRegFileOperation op;
    op.Key = key;
    op.Line = line;
    size_t pos = 0;
    if (t.front() == u'@') {
      pos = 1;
    } else {
      op.Name = ParseQuoted(t, pos, line);
    }
    while (pos < t.size() && IsBlank(t[pos])) ++pos;
    if (pos >= t.size() || t[pos] != u'=') Fail(line, u"expected \"=\" after the value name");
    ++pos;
    while (pos < t.size() && IsBlank(t[pos])) ++pos;
    const std::u16string_view data = t.substr(pos);
    if (data.empty()) Fail(line, u"missing value data after \"=\"");

    if (data == u"-") {
      op.Action = rfaDeleteValue;
    } else if (data.front() == u'"') {
      op.Action = rfaSetValue;
      op.Type = rftString;
      size_t p = 0;
      op.Text = ParseQuoted(data, p, line);
      if (p != data.size()) Fail(line, u"unexpected text after the closing quote: \"%s\"", {Excerpt(data.substr(p))});
    } else if (StartsWithAscii(data, u"dword:")) {
      op.Action = rfaSetValue;
      op.Type = rftDWord;
      if (!ParseHex32(data.substr(6), op.DWord)) {
        Fail(line, u"dword data must be 1 to 8 hex digits, found \"%s\"", {Excerpt(data.substr(6))});
      }
    } else if (StartsWithAscii(data, u"hex")) {
      op.Action = rfaSetValue;
      ParseHexValue(data, op, line);
    } else {
      Fail(line, u"unknown value data \"%s\" (expected \"text\", dword:, hex: or -)", {Excerpt(data)});
    }
    ops_.push_back(std::move(op));
  }

  // data starts with "hex"; reads "hex:" or "hex(N):" and the bytes, taking in
  // the following lines while a line ends with a backslash.
  void ParseHexValue(std::u16string_view data, TRegFileOperation& op, int32_t line) {
    size_t pos = 3;
    uint32_t type = 3;
    std::u16string_view form = u"hex";
    if (pos < data.size() && data[pos] == u'(') {
      const size_t close = data.find(u')', pos);
      if (close == std::u16string_view::npos || !ParseHex32(data.substr(pos + 1, close - pos - 1), type)) {
        Fail(line, u"hex(N) needs a hex type number N, found \"%s\"", {Excerpt(data)});
      }
      form = data.substr(0, close + 1);
      pos = close + 1;
    }
    if (pos >= data.size() || data[pos] != u':') Fail(line, u"expected \":\" after %s", {UnicodeString(form)});
    if (const char16_t* what = UnsupportedHexType(type)) {
      Fail(line, u"%s values (%s) are not supported: the registry store has no such type",
           {UnicodeString(form), what});
    }
    if (type > 4) Fail(line, u"unknown value type %s", {Excerpt(form)});

    op.Bytes = ReadHexBytes(data.substr(pos + 1), line);
    switch (type) {
      case 1:
        op.Type = rftString;
        op.Text = BytesToText(op.Bytes, line, form);
        op.Bytes.clear();
        break;
      case 2:
        op.Type = rftExpandString;
        op.Text = BytesToText(op.Bytes, line, form);
        op.Bytes.clear();
        break;
      case 3:
        op.Type = rftBinary;
        break;
      case 4:
        if (op.Bytes.size() != 4) Fail(line, u"%s data must be exactly 4 bytes", {UnicodeString(form)});
        op.Type = rftDWord;
        op.DWord = op.Bytes[0] | (op.Bytes[1] << 8) | (op.Bytes[2] << 16) | (static_cast<uint32_t>(op.Bytes[3]) << 24);
        op.Bytes.clear();
        break;
    }
  }

  // Comma-separated bytes of one or two hex digits; "hex:" alone is no bytes.
  // A trailing backslash continues the list on the next line.
  std::vector<uint8_t> ReadHexBytes(std::u16string_view first, int32_t first_line) {
    // The joined text, with the line each piece came from.
    UnicodeString joined;
    std::vector<std::pair<size_t, int32_t>> starts;
    std::u16string_view piece = first;
    int32_t piece_line = first_line;
    while (true) {
      starts.emplace_back(joined.size(), piece_line);
      if (!piece.empty() && piece.back() == u'\\') {
        joined.append(piece.substr(0, piece.size() - 1));
        if (index_ + 1 >= lines_.size()) Fail(piece_line, u"hex data continues past the end of the file");
        ++index_;
        piece = TrimBlanks(lines_[index_]);
        piece_line = LineNo();
      } else {
        joined.append(piece);
        break;
      }
    }
    auto line_at = [&](size_t offset) {
      int32_t l = starts.front().second;
      for (const auto& [start, ln] : starts) {
        if (start <= offset) l = ln;
      }
      return l;
    };

    std::vector<uint8_t> bytes;
    if (TrimBlanks(joined).empty()) return bytes;
    size_t start = 0;
    while (true) {
      const size_t comma = joined.find(u',', start);
      const size_t end = comma == UnicodeString::npos ? joined.size() : comma;
      const std::u16string_view token = TrimBlanks(std::u16string_view(joined).substr(start, end - start));
      uint32_t v = 0;
      if (token.size() > 2 || !ParseHex32(token, v)) {
        Fail(line_at(start), u"expected a hex byte (00 to ff), found \"%s\"", {Excerpt(token)});
      }
      bytes.push_back(static_cast<uint8_t>(v));
      if (comma == UnicodeString::npos) break;
      start = comma + 1;
    }
    return bytes;
  }

  std::vector<std::u16string_view> lines_;
  size_t index_ = 0;
  TRegFileOperations ops_;
};

// Writing.

void CheckNoLineBreak(std::u16string_view s, std::u16string_view what) {
  if (s.find_first_of(u"\r\n") != std::u16string_view::npos) {
    Fail(0, u"%s \"%s\" holds a line break and cannot be written to a registry file",
         {UnicodeString(what), Excerpt(s)});
  }
}

void AppendQuoted(UnicodeString& out, std::u16string_view s) {
  out.push_back(u'"');
  for (char16_t c : s) {
    if (c == u'\\' || c == u'"') out.push_back(u'\\');
    out.push_back(c);
  }
  out.push_back(u'"');
}

void AppendSection(UnicodeString& out, const UnicodeString& key, bool deleted) {
  CheckNoLineBreak(key, u"the key");
  if (!key.empty()) {
    if (HasEmptyKeyName(key)) Fail(0, u"the key \"%s\" has an empty key name", {Excerpt(key)});
  } else if (deleted) {
    Fail(0, u"the root key cannot be deleted");
  }
  out += deleted ? u"[-" : u"[";
  out += kRoot;
  if (!key.empty()) {
    out.push_back(u'\\');
    out += key;
  }
  out += u"]";
  out += kCrLf;
}

std::vector<uint8_t> TextBytes(std::u16string_view text) {
  std::vector<uint8_t> bytes;
  bytes.reserve(text.size() * 2 + 2);
  for (char16_t c : text) {
    bytes.push_back(static_cast<uint8_t>(c & 0xFF));
    bytes.push_back(static_cast<uint8_t>(c >> 8));
  }
  bytes.push_back(0);
  bytes.push_back(0);
  return bytes;
}

// `line_start` is where the current line begins in `out`.
void AppendHex(UnicodeString& out, size_t line_start, std::u16string_view form, const std::vector<uint8_t>& bytes) {
  constexpr size_t kWidth = 80;
  out += form;
  out.push_back(u':');
  for (size_t i = 0; i < bytes.size(); ++i) {
    const bool last = i + 1 == bytes.size();
    // Room for "xx", its comma and, unless last, a possible backslash.
    const size_t need = last ? 2 : 4;
    if (out.size() - line_start + need > kWidth) {
      out += u"\\";
      out += kCrLf;
      line_start = out.size();
      out += u"  ";
    }
    out.push_back(kHexDigits[bytes[i] >> 4]);
    out.push_back(kHexDigits[bytes[i] & 15]);
    if (!last) out.push_back(u',');
  }
}

void AppendValue(UnicodeString& out, const TRegFileOperation& op) {
  CheckNoLineBreak(op.Name, u"the value name");
  const size_t line_start = out.size();
  if (op.Name.empty()) {
    out.push_back(u'@');
  } else {
    AppendQuoted(out, op.Name);
  }
  out.push_back(u'=');
  if (op.Action == rfaDeleteValue) {
    out.push_back(u'-');
  } else {
    switch (op.Type) {
      case rftString:
        if (op.Text.find_first_of(std::u16string_view(u"\r\n\0", 3)) == UnicodeString::npos) {
          AppendQuoted(out, op.Text);
        } else {
          AppendHex(out, line_start, u"hex(1)", TextBytes(op.Text));
        }
        break;
      case rftExpandString:
        AppendHex(out, line_start, u"hex(2)", TextBytes(op.Text));
        break;
      case rftDWord:
        out += u"dword:";
        for (int shift = 28; shift >= 0; shift -= 4) out.push_back(kHexDigits[(op.DWord >> shift) & 15]);
        break;
      case rftBinary:
        AppendHex(out, line_start, u"hex", op.Bytes);
        break;
    }
  }
  out += kCrLf;
}

bool IsWellFormedUtf8(std::string_view bytes, UnicodeString& out) {
  out.resize(bytes.size());
  int32_t length = 0;
  UErrorCode status = U_ZERO_ERROR;
  u_strFromUTF8(out.data(), static_cast<int32_t>(out.size()), &length, bytes.data(),
                static_cast<int32_t>(bytes.size()), &status);
  if (U_FAILURE(status)) return false;
  out.resize(static_cast<size_t>(length));
  return true;
}

}  // namespace

UnicodeString DecodeRegFile(std::string_view bytes) {
  const auto b = [&](size_t i) { return static_cast<uint8_t>(bytes[i]); };
  if (bytes.size() >= 2 && ((b(0) == 0xFF && b(1) == 0xFE) || (b(0) == 0xFE && b(1) == 0xFF))) {
    const bool little = b(0) == 0xFF;
    UnicodeString text;
    text.reserve(bytes.size() / 2);
    size_t i = 2;
    for (; i + 1 < bytes.size(); i += 2) {
      text.push_back(little ? static_cast<char16_t>(b(i) | (b(i + 1) << 8))
                            : static_cast<char16_t>((b(i) << 8) | b(i + 1)));
    }
    if (i < bytes.size()) {
      int32_t line = 1;
      for (size_t k = 0; k < text.size(); ++k) {
        if (text[k] == u'\n' || (text[k] == u'\r' && (k + 1 == text.size() || text[k + 1] != u'\n'))) ++line;
      }
      throw ERegistryFileError(line, u"the UTF-16 file ends in the middle of a character (odd number of bytes)");
    }
    return text;
  }
  if (bytes.size() >= 3 && b(0) == 0xEF && b(1) == 0xBB && b(2) == 0xBF) return Utf8ToUnicode(bytes.substr(3));
  UnicodeString text;
  if (IsWellFormedUtf8(bytes, text)) return text;
  return AnsiToUnicode(bytes, CP_ACP);
}

TRegFileOperations ParseRegFileText(std::u16string_view text) { return Parser(text).Run(); }

TRegFileOperations ParseRegFile(std::string_view bytes) { return ParseRegFileText(DecodeRegFile(bytes)); }

UnicodeString WriteRegFile(const TRegFileOperations& ops) {
  UnicodeString out(RegFileHeader);
  out += kCrLf;
  out += kCrLf;
  bool any = false;   // a section header was written
  bool open = false;  // values may follow: the last section created the key `current`
  UnicodeString current;
  for (const TRegFileOperation& op : ops) {
    const bool section_op = op.Action == rfaCreateKey || op.Action == rfaDeleteKey;
    if (section_op || !open || op.Key != current) {
      if (any) out += kCrLf;
      any = true;
      const bool deleted = op.Action == rfaDeleteKey;
      AppendSection(out, op.Key, deleted);
      open = !deleted;
      current = op.Key;
      if (section_op) continue;
    }
    AppendValue(out, op);
  }
  if (any) out += kCrLf;
  return out;
}

std::string EncodeRegFile(std::u16string_view text) {
  std::string bytes;
  bytes.reserve(2 + text.size() * 2);
  bytes.push_back(static_cast<char>(0xFF));
  bytes.push_back(static_cast<char>(0xFE));
  for (char16_t c : text) {
    bytes.push_back(static_cast<char>(c & 0xFF));
    bytes.push_back(static_cast<char>(c >> 8));
  }
  return bytes;
}

}  // namespace quill
