// quill tokens: the Gscanner unit on a file or standard input, and its part
// of `quill demo`.
//
//   quill tokens [--style pascal|c|sql|perl|none] [--json] FILE|-
//
// One token per line: line, start, end, pos, type and text, separated by
// tabs, the text with backslash, tab, CR, LF and other control characters
// escaped; or one JSON object per line with --json. Without --style the style
// follows the file extension (.pas .pp .dpr .inc: pascal; .c .h .cc .cpp .hpp
// .cxx: c; .sql: sql; .pl .pm: perl); anything else, standard input
// included, is read in the scanner's default Pascal style.
#include <malloc.h>

#include <algorithm>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <cstring>
#include <vector>
#include <string_view>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <iterator>
#include <map>
#include <sstream>
#include <string>

#include "quill/rtl/exception.h"
#include "quill/rtl/unicode.h"
#include "quill/scanner/gscanner.h"
#include "quill/strings/gstrings.h"
#include "tools/quill/commands.h"
#include "tools/quill/io.h"
#include "tools/quill/textout.h"

namespace quilltool {
namespace {

using quill::Gscanner::TGScanner;
using quill::Gscanner::TGToken;
using quill::Gscanner::TGTokenType;
using quill::Gscanner::TSourceStyle;
using quill::TStringList;
using quill::UnicodeString;

const char* TypeName(TGTokenType t) {
  static const char* const names[] = {"ttUnknown",  "ttIdent",    "ttReservedWord", "ttSeparator",
                                      "ttChar",     "ttString",   "ttLString",      "ttNumber",
                                      "ttVariable", "ttFunction", "ttStrTemplate"};
  return t <= quill::Gscanner::ttStrTemplate ? names[t] : "?";
}

bool StyleByName(const std::string& name, TSourceStyle& style) {
  static const std::map<std::string, TSourceStyle> styles = {{"pascal", quill::Gscanner::ssPascal},
                                                             {"c", quill::Gscanner::ssC},
                                                             {"sql", quill::Gscanner::ssSQL},
                                                             {"perl", quill::Gscanner::ssPerl},
                                                             {"none", quill::Gscanner::ssNone}};
  const auto it = styles.find(name);
  if (it == styles.end()) return false;
  style = it->second;
  return true;
}

TSourceStyle StyleByExtension(const std::string& file) {
  const size_t dot = file.rfind('.');
  const size_t slash = file.rfind('/');
  if (dot == std::string::npos || (slash != std::string::npos && dot < slash)) return quill::Gscanner::ssPascal;
  std::string ext = file.substr(dot + 1);
  for (char& c : ext) c = static_cast<char>(c >= 'A' && c <= 'Z' ? c + 32 : c);
  if (ext == "c" || ext == "h" || ext == "cc" || ext == "cpp" || ext == "hpp" || ext == "cxx") return quill::Gscanner::ssC;
  if (ext == "sql") return quill::Gscanner::ssSQL;
  if (ext == "pl" || ext == "pm") return quill::Gscanner::ssPerl;
  return quill::Gscanner::ssPascal;
}

struct TokenFields {
  TGTokenType TokType;
  int64_t TokLine;
  int32_t TokStart, TokEnd;
  int64_t TokPos;
  const UnicodeString& RealStr;
  bool TokLocalize;
};

constexpr char kDigitPairs[] =
    "00010203040506070809101112131415161718192021222324252627282930313233343536373839"
    "40414243444546474849505152535455565758596061626364656667686970717273747576777879"
    "8081828384858687888990919293949596979899";

// Writes `v` (not negative) in decimal at `p`; returns the end. Two digits
// at a time, no library calls: four numbers go out per token, and the two
// columns are nearly always below 100, which takes one branch and a copy.
inline char* PutUInt(char* p, uint64_t v) {
  if (v < 100) {
    if (v < 10) {
      *p = static_cast<char>('0' + v);
      return p + 1;
    }
    std::memcpy(p, kDigitPairs + v * 2, 2);
    return p + 2;
  }
  // The digit count from the bit width (1233 / 4096 is about log10 2), then
  // the digits right to left in place.
  static constexpr uint64_t kPow10[] = {1ull, 10ull, 100ull, 1000ull, 10000ull, 100000ull, 1000000ull,
                                        10000000ull, 100000000ull, 1000000000ull, 10000000000ull,
                                        100000000000ull, 1000000000000ull, 10000000000000ull,
                                        100000000000000ull, 1000000000000000ull, 10000000000000000ull,
                                        100000000000000000ull, 1000000000000000000ull,
                                        10000000000000000000ull};
  const int bits = 64 - __builtin_clzll(v);
  int n = (bits * 1233) >> 12;
  n += v >= kPow10[n] ? 1 : 0;
  char* e = p + n;
  while (v >= 100) {
    e -= 2;
    std::memcpy(e, kDigitPairs + (v % 100) * 2, 2);
    v /= 100;
  }
  if (v >= 10) {
    std::memcpy(e - 2, kDigitPairs + v * 2, 2);
  } else {
    e[-1] = static_cast<char>('0' + v);
  }
  return p + n;
}

inline char* PutInt(char* p, int64_t v) {
  if (v < 0) {
    *p++ = '-';
    return PutUInt(p, static_cast<uint64_t>(0) - static_cast<uint64_t>(v));
  }
  return PutUInt(p, static_cast<uint64_t>(v));
}

// Short texts byte by byte: cheaper than a call to memcpy.
inline char* PutStr(char* p, std::string_view s) {
  for (char c : s) *p++ = c;
  return p;
}

// A literal: a copy of known size, which the compiler turns into a few moves.
template <size_t N>
inline char* PutLit(char* p, const char (&s)[N]) {
  std::memcpy(p, s, N - 1);
  return p + (N - 1);
}

// The output of `tokens`, formatted straight into a large buffer that goes to
// the checked standard output whenever it fills. With `background`, a full
// buffer is written by a second thread while the next one fills (writing a
// gigabyte into a file costs the kernel a good part of a second, which then
// overlaps the scan); the two buffers take turns. Drain() waits for the
// writer, so that whatever follows (a message on standard error) comes after
// the output.
class TokenWriter {
 public:
  explicit TokenWriter(bool background = false) : buf_(kSize), background_(background) {
    if (background_) spare_.resize(kSize);
  }
  ~TokenWriter() {
    // Leaving by an error: what was handed over is written, then the thread
    // ends; its own error, if any, is the caller's to find with CheckStdout.
    if (writer_.joinable()) {
      {
        std::lock_guard<std::mutex> lock(mutex_);
        stop_ = true;
      }
      wake_.notify_all();
      writer_.join();
    }
  }
  TokenWriter(const TokenWriter&) = delete;
  TokenWriter& operator=(const TokenWriter&) = delete;

  // One line for a token; `line_base` and `pos_base` place a piece of the
  // source in the whole file.
  void Put(const TokenFields& t, int64_t line_base, int64_t pos_base, bool json) {
    // Room for the numbers and names, and for the text at its longest (a
    // \u escape is six bytes per UTF-16 unit).
    const size_t need = 160 + t.RealStr.size() * kEscapedBytesPerUnit;
    if (buf_.size() - used_ < need) HandOver();
    if (need > buf_.size()) buf_.resize(need);
    char* p = buf_.data() + used_;
    if (json) {
      p = PutLit(p, "{\"line\":");
      p = PutLine(p, line_base + t.TokLine);
      p = PutLit(p, ",\"start\":");
      p = PutInt(p, t.TokStart);
      p = PutLit(p, ",\"end\":");
      p = PutInt(p, t.TokEnd);
      p = PutLit(p, ",\"pos\":");
      p = PutInt(p, pos_base + t.TokPos);
      p = PutLit(p, ",\"type\":\"");
      p = PutStr(p, TypeName(t.TokType));
      p = PutLit(p, "\",\"text\":\"");
      p = PutEscapedText(p, t.RealStr, true);
      p = t.TokLocalize ? PutLit(p, "\",\"localize\":true}\n") : PutLit(p, "\",\"localize\":false}\n");
    } else {
      p = PutLine(p, line_base + t.TokLine);
      *p++ = '\t';
      p = PutInt(p, t.TokStart);
      *p++ = '\t';
      p = PutInt(p, t.TokEnd);
      *p++ = '\t';
      p = PutInt(p, pos_base + t.TokPos);
      *p++ = '\t';
      p = PutStr(p, TypeName(t.TokType));
      *p++ = '\t';
      p = PutEscapedText(p, t.RealStr, false);
      *p++ = '\n';
    }
    used_ = static_cast<size_t>(p - buf_.data());
  }

  // Everything so far to standard output, written when this returns; throws
  // when it cannot be written.
  void Drain() {
    HandOver();
    WaitIdle();
    CheckStdout();
  }
  [[nodiscard]] std::string_view Text() const { return {buf_.data(), used_}; }

 private:
  static constexpr size_t kSize = size_t{1} << 18;

  // The line number: a line holds several tokens, so its text is kept and
  // copied until the line changes.
  char* PutLine(char* p, int64_t line) {
    if (line != line_) {
      line_ = line;
      line_len_ = static_cast<size_t>(PutInt(line_text_, line) - line_text_);
    }
    // All of line_text_: a copy of fixed size is a few moves, and the
    // buffer has room (Put asks for 160 bytes and more).
    std::memcpy(p, line_text_, sizeof line_text_);
    return p + line_len_;
  }

  // The buffer so far goes out: written here, or handed to the writer
  // thread once it is done with the other buffer (whose write error, if
  // any, is raised here).
  void HandOver() {
    if (!background_) {
      Stdout().write(buf_.data(), static_cast<std::streamsize>(used_));
      used_ = 0;
      CheckStdout();
      return;
    }
    WaitIdle();
    CheckStdout();
    if (used_ == 0) return;
    std::swap(buf_, spare_);
    {
      std::lock_guard<std::mutex> lock(mutex_);
      job_ = used_;
    }
    used_ = 0;
    if (!writer_.joinable()) {
      writer_ = std::thread([this] { WriterLoop(); });
    } else {
      wake_.notify_all();
    }
  }

  // Until the writer thread has written what it was handed.
  void WaitIdle() {
    if (!background_) return;
    std::unique_lock<std::mutex> lock(mutex_);
    idle_.wait(lock, [this] { return job_ == 0; });
  }

  void WriterLoop() {
    std::unique_lock<std::mutex> lock(mutex_);
    for (;;) {
      wake_.wait(lock, [this] { return job_ != 0 || stop_; });
      if (job_ != 0) {
        const size_t n = job_;
        lock.unlock();
        // The main thread touches neither spare_ nor standard output until
        // job_ is back to 0.
        Stdout().write(spare_.data(), static_cast<std::streamsize>(n));
        lock.lock();
        job_ = 0;
        idle_.notify_all();
      } else if (stop_) {
        return;
      }
    }
  }

  std::vector<char> buf_;
  size_t used_ = 0;
  const bool background_;
  std::vector<char> spare_;  // the buffer being written (background)
  std::thread writer_;
  std::mutex mutex_;
  std::condition_variable wake_;  // job_ set, or stop_
  std::condition_variable idle_;  // job_ back to 0
  size_t job_ = 0;                // bytes of spare_ to write; 0: none
  bool stop_ = false;
  int64_t line_ = -1;  // not a line the scanner reports
  char line_text_[24] = {};
  size_t line_len_ = 0;
};

TokenFields FieldsOf(const TGToken& t) {
  return {t.TokType, t.TokLine, t.TokStart, t.TokEnd, t.TokPos, t.RealStr, t.TokLocalize};
}

void PrintToken(std::ostream& out, const TGToken& t, bool json) {
  TokenWriter w;
  w.Put(FieldsOf(t), 0, 0, json);
  out << w.Text();
}

// The scanner with a look at the blanks and comments after a position, using
// its own comment tests, so the tool sees comments exactly as the walk does.
class GapScanner : public TGScanner {
 public:
  // From line `line`, 1-based column `col` of Source, skips blanks and
  // comments to the next token. Returns that position in `at_line`/`at_col`
  // and false; or true, with the opener's position, when the source ends
  // inside a block comment; a position past the end when nothing follows.
  bool SkipGap(int32_t line, int32_t col, int32_t& at_line, int32_t& at_col) {
    const TStringList& src = Source();
    int32_t i = col < 1 ? 1 : col;
    for (int32_t l = line; l < src.Count(); ++l, i = 1) {
      const UnicodeString& s = src.Get(l);
      const int32_t n = static_cast<int32_t>(s.size());
      while (i <= n) {
        if (isLineComment(s, i)) break;
        UnicodeString closer;
        if (isBlockComment(s, i, closer)) {
          int32_t cl = l;
          size_t found = closer.empty() ? std::u16string::npos : s.find(closer, static_cast<size_t>(i));
          while (found == std::u16string::npos) {
            if (++cl >= src.Count()) {
              at_line = l;
              at_col = i;
              return true;
            }
            found = src.Get(cl).find(closer);
          }
          if (cl != l) {
            // Continue on the closer's line.
            l = cl;
            i = static_cast<int32_t>(found + closer.size()) + 1;
            return SkipGap(l, i, at_line, at_col);
          }
          i = static_cast<int32_t>(found + closer.size()) + 1;
          continue;
        }
        if (!quill::Gstrings::IsSpace(s[static_cast<size_t>(i) - 1])) {
          at_line = l;
          at_col = i;
          return false;
        }
        ++i;
      }
    }
    at_line = src.Count();
    at_col = 1;
    return false;
  }
};

// Splits bytes into lines the way TStrings::SetText does (CR, LF and CR LF
// end a line; a final break adds no empty line) and reads a file piece by
// piece: the scanner never holds more than a piece of the source.
class LineReader {
 public:
  explicit LineReader(InputFile& in) : in_(in) {}

  // Stores the next complete lines, about `budget` bytes of them, as UTF-16
  // in `lines` from index `used` on (reusing the strings already there),
  // advancing `used`; false at the end of the input.
  bool Next(TStringList& lines, int32_t& used, size_t budget) {
    if (done_ && buf_.empty()) return false;
    // Read to about `budget` bytes; when they hold no line break, read on
    // (a line longer than the budget comes whole).
    size_t cut = 0;
    size_t searched = 0;  // bytes known to hold no line break (but a last CR)
    for (size_t target = budget;; target += budget) {
      Fill(target);
      if (first_ && (done_ || buf_.size() >= 3)) {
        if (buf_.compare(0, 3, "\xEF\xBB\xBF") == 0) buf_.erase(0, 3);
        first_ = false;
      }
      cut = CompleteLines(searched > 0 ? searched - 1 : 0);
      if (cut > 0 || done_) break;
      searched = buf_.size();
    }
    const char* const data = buf_.data();
    size_t pos = 0;
    while (pos < cut) {
      size_t e = pos;
      while (e < cut && data[e] != '\n' && data[e] != '\r') ++e;
      StoreLine(lines, used++, std::string_view(data + pos, e - pos));
      pos = e;
      if (pos < cut && data[pos] == '\r') ++pos;
      if (pos < cut && data[pos] == '\n') ++pos;
    }
    buf_.erase(0, cut);
    return true;
  }

 private:
  // Reads until the buffer holds `target` bytes or the input ends.
  void Fill(size_t target) {
    if (done_ || buf_.size() >= target) return;
    size_t have = buf_.size();
    buf_.resize(target + (size_t{1} << 16));
    while (have < target) {
      const size_t got = in_.Read(buf_.data() + have, buf_.size() - have);
      if (got == 0) {
        done_ = true;
        break;
      }
      have += got;
    }
    buf_.resize(have);
  }

  // The length of the buffer's complete lines: all of it once the input
  // ended; else up to the last line break, where a CR last in the buffer
  // may be the first half of CR LF and waits. 0: no complete line yet. The
  // first `floor` bytes are known to hold no line break and are not searched.
  [[nodiscard]] size_t CompleteLines(size_t floor) const {
    if (done_) return buf_.size();
    size_t cut = buf_.size();
    while (cut > floor && buf_[cut - 1] != '\n' && buf_[cut - 1] != '\r') --cut;
    if (cut > floor && buf_[cut - 1] == '\r' && cut == buf_.size()) {
      --cut;
      while (cut > floor && buf_[cut - 1] != '\n' && buf_[cut - 1] != '\r') --cut;
    }
    return cut > floor ? cut : 0;
  }

  // Line `index` of `lines` becomes `bytes` in UTF-16, reusing the string's
  // memory when the line exists already.
  void StoreLine(TStringList& lines, int32_t index, std::string_view bytes) {
    wide_.resize(bytes.size());
    unsigned char any = 0;
    for (size_t i = 0; i < bytes.size(); ++i) {
      any |= static_cast<unsigned char>(bytes[i]);
      wide_[i] = static_cast<char16_t>(static_cast<unsigned char>(bytes[i]));
    }
    if (any >= 128) wide_ = quill::Utf8ToUnicode(bytes);
    if (index < lines.Count()) {
      lines.Put(index, wide_);
    } else {
      lines.Add(wide_);
    }
  }

  InputFile& in_;
  std::string buf_;
  UnicodeString wide_;
  bool done_ = false;
  bool first_ = true;
};

// Walks FILE piece by piece (a few MB of lines at a time), printing each
// token with its line and offset in the whole file. A piece that ends inside
// a block comment is carried into the next one from the comment's opener on.
int RunTokens(const std::string& file, const std::string& style_name, bool json) {
  TSourceStyle style = StyleByExtension(file);
  if (!style_name.empty() && !StyleByName(style_name, style)) {
    throw ToolError(kExitUsage, "tokens: unknown style \"" + style_name + "\" (pascal, c, sql, perl, none)");
  }
  InputFile in(file);
  LineReader reader(in);
  GapScanner sc;
  sc.SetSourceStyle(style);
  // Writing into a file costs the kernel a copy per byte, which a second
  // thread overlaps with the scan; to a device or a pipe (whose reader
  // needs the other processor) the plain way is faster.
  TokenWriter out(/*background=*/StdoutIsRegularFile());

  constexpr size_t kPiece = size_t{1} << 20;
  int64_t line_base = 0;  // the whole file's line number of Source line 0
  int64_t pos_base = 0;   // the whole file's offset of Source line 0
  TStringList carry;      // lines carried over (from an open block comment)
  for (;;) {
    TStringList& src = sc.Source();
    int32_t used = 0;
    for (int32_t i = 0; i < carry.Count(); ++i) {
      if (used < src.Count()) {
        src.Put(used++, carry.Get(i));
      } else {
        src.Add(carry.Get(i));
        ++used;
      }
    }
    carry.Clear();
    const bool more = reader.Next(src, used, kPiece);
    while (src.Count() > used) src.Delete(src.Count() - 1);
    if (!more && used == 0) break;

    // Slots of an earlier piece must not pass for this piece's tokens when
    // the first scan fails.
    for (int32_t k = 0; k <= 10; ++k) sc.SetToken(k, TGToken{});
    int32_t last_line = 0, last_end = 1;  // where scanning resumed after the last token
    int32_t unprinted = 0;                // first queue slot not printed yet
    try {
      sc.FirstToken();
      unprinted = 1;
      for (; !sc.EOS(); sc.NextToken()) {
        if (sc.TokStart() == 0) continue;  // the empty token of a short source
        out.Put(FieldsOf(sc.CurrentToken()), line_base, pos_base, json);
        last_line = sc.TokLine();
        last_end = sc.TokEnd();
      }
    } catch (const quill::Exception& e) {
      // A failed scan leaves the queue as it was: the tokens scanned ahead
      // of the current one are printed, then the error follows at the
      // failing token, which starts after the last of them.
      int32_t l = last_line, c = last_end;
      for (int32_t k = unprinted; k <= 10; ++k) {
        const TGToken t = sc.GetToken(k);
        if (t.TokStart == 0) continue;
        out.Put(FieldsOf(t), line_base, pos_base, json);
        if (t.TokLine > l || (t.TokLine == l && t.TokEnd > c)) {
          l = t.TokLine;
          c = t.TokEnd;
        }
      }
      out.Drain();
      int32_t at_line = l, at_col = c;
      sc.SkipGap(l, c, at_line, at_col);
      throw ToolError(kExitDataError, in.Name() + ":" + std::to_string(line_base + at_line + 1) + ":" +
                                          std::to_string(at_col) + ": " + e.what());
    }

    int32_t open_line = 0, open_col = 0;
    const bool open = sc.SkipGap(last_line, last_end, open_line, open_col);
    if (open && more) {
      // Rescan from the opener with the next piece; what stands before it on
      // its line was printed already and becomes blanks (columns stay).
      for (int32_t l = open_line; l < src.Count(); ++l) carry.Add(src.Get(l));
      UnicodeString first = carry.Get(0);
      for (int32_t k = 0; k < open_col - 1; ++k) first[static_cast<size_t>(k)] = u' ';
      carry.Put(0, first);
    } else if (open) {
      out.Drain();
      std::cerr << "quill: " << in.Name() << ":" << line_base + open_line + 1 << ":" << open_col
                << ": warning: unterminated block comment: the rest of the file is skipped\n";
    }
    const int32_t done_lines = open && more ? open_line : src.Count();
    for (int32_t l = 0; l < done_lines; ++l) pos_base += static_cast<int64_t>(src.Get(l).size()) + 2;
    line_base += done_lines;
    if (!more) break;
  }
  out.Drain();
  return 0;
}

}  // namespace

void RegisterScannerCommands(CLI::App& app) {
  auto* tokens = app.add_subcommand("tokens", "Print the tokens of FILE (or - for standard input), one per line");
  static std::string file;
  static std::string style;
  static bool json = false;
  tokens->add_option("FILE", file, "Source file, or - for standard input")->required();
  tokens->add_option("--style", style,
                     "pascal, c, sql, perl or none (default: from the file extension; see below)");
  tokens->add_flag("--json", json, "One JSON object per token, with the same fields and a localize flag");
  tokens->footer(
      "Columns (tab-separated): LINE START END POS TYPE TEXT\n"
      "  LINE   line of the token, 0-based (the first line is 0)\n"
      "  START  column of the token's first character, 1-based, in UTF-16 code units\n"
      "  END    1-based column where scanning resumes after the token (normally one past its last\n"
      "         character)\n"
      "  POS    offset of the first character in the whole file, 0-based, in UTF-16 code units,\n"
      "         counting every line break as two characters\n"
      "  TYPE   ttIdent, ttReservedWord, ttSeparator, ttChar, ttString, ttNumber, ttUnknown, ...\n"
      "  TEXT   the text as scanned (for strings and characters the decoded value), with \\\\, \\t,\n"
      "         \\r, \\n and \\xNN escapes\n"
      "Style by extension: .pas .pp .dpr .inc pascal; .c .h .cc .cpp .hpp .cxx c; .sql sql; .pl .pm perl.\n"
      "Standard input and every other extension are read as Pascal; --style chooses another.\n"
      "Errors name FILE:LINE:COL (line and column 1-based). A block comment that is never closed\n"
      "gives a warning. Exit status: 0 done, 1 file or token error, 2 usage error.");
  tokens->callback([] { ExitStatus() = RunTokens(file, style, json); });
}

void DemoScanner(std::ostream& out) {
  out << "== Scanner\n";
  TGScanner sc;
  const std::string path = SampleDataDir() + "/scanner-demo.pas";
  try {
    sc.Source().LoadFromFile(path);
  } catch (const quill::Exception& e) {
    out << "cannot read " << path << ": " << e.what() << "\n";
    return;
  }
  std::map<std::string, int> counts;
  int total = 0;
  sc.FirstToken();
  out << "first tokens of scanner-demo.pas (line, start, end, pos, type, text):\n";
  for (; !sc.EOS(); sc.NextToken()) {
    const TGToken t = sc.GetToken(0);
    if (t == TGToken{}) continue;
    if (total < 12) {
      out << "  ";
      PrintToken(out, t, false);
    }
    ++counts[TypeName(t.TokType)];
    ++total;
  }
  out << total << " tokens:";
  for (const auto& [name, n] : counts) out << ' ' << name << '=' << n;
  out << "\n";

  // Find the body of Greet: from "begin" to the matching "end", with a pair
  // scan for the "for" inside and the source text of the whole body.
  sc.FirstToken();
  while (!sc.EOS() && sc.TokStr() != u"begin") sc.NextToken();
  const auto body_start = sc.GetBookmark();
  const bool found = sc.ScanToPair(u"begin", u"end", u"for", u"", {quill::Gscanner::ttIdent});
  out << "ScanToPair(begin, end, for): " << (found ? "found" : "not found") << " at line "
      << sc.TokLine() + 1 << ", column " << sc.TokStart() << "\n";
  sc.SetBookmark(body_start);
  while (!sc.EOS() && sc.TokStr() != u"end") sc.NextToken();
  const std::string piece = quill::UnicodeToUtf8(sc.ExtractPiece(body_start, sc.GetBookmark(), true));
  out << "ExtractPiece(begin .. end), " << std::count(piece.begin(), piece.end(), '\n') + 1 << " lines:\n";
  std::istringstream lines(piece);
  for (std::string line; std::getline(lines, line);) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    out << "  | " << line << "\n";
  }
}

}  // namespace quilltool
