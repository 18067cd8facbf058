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
#include <algorithm>
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
#include "tools/quill/commands.h"

namespace quilltool {
namespace {

using quill::Gscanner::TGScanner;
using quill::Gscanner::TGToken;
using quill::Gscanner::TGTokenType;
using quill::Gscanner::TSourceStyle;

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

// The token text for the tab-separated form: control characters, backslash
// and tab escaped, the rest in UTF-8.
std::string PlainText(const quill::UnicodeString& s) {
  std::string out;
  for (char16_t c : s) {
    switch (c) {
      case u'\\': out += "\\\\"; break;
      case u'\t': out += "\\t"; break;
      case u'\r': out += "\\r"; break;
      case u'\n': out += "\\n"; break;
      default:
        if (c < 32 || c == 127) {
          char buf[8];
          std::snprintf(buf, sizeof buf, "\\x%02X", static_cast<unsigned>(c));
          out += buf;
        } else {
          out += quill::UnicodeToUtf8(std::u16string_view(&c, 1));
        }
    }
  }
  return out;
}

// The token text as a JSON string body.
std::string JsonText(const quill::UnicodeString& s) {
  std::string out;
  for (char16_t c : s) {
    switch (c) {
      case u'"': out += "\\\""; break;
      case u'\\': out += "\\\\"; break;
      case u'\t': out += "\\t"; break;
      case u'\r': out += "\\r"; break;
      case u'\n': out += "\\n"; break;
      default:
        if (c < 32 || c == 127 || (c >= 0xD800 && c <= 0xDFFF)) {
          char buf[8];
          std::snprintf(buf, sizeof buf, "\\u%04X", static_cast<unsigned>(c));
          out += buf;
        } else {
          out += quill::UnicodeToUtf8(std::u16string_view(&c, 1));
        }
    }
  }
  return out;
}

void PrintToken(std::ostream& out, const TGToken& t, bool json) {
  if (json) {
    out << "{\"line\":" << t.TokLine << ",\"start\":" << t.TokStart << ",\"end\":" << t.TokEnd
        << ",\"pos\":" << t.TokPos << ",\"type\":\"" << TypeName(t.TokType) << "\",\"text\":\""
        << JsonText(t.RealStr) << "\",\"localize\":" << (t.TokLocalize ? "true" : "false") << "}\n";
  } else {
    out << t.TokLine << '\t' << t.TokStart << '\t' << t.TokEnd << '\t' << t.TokPos << '\t'
        << TypeName(t.TokType) << '\t' << PlainText(t.RealStr) << '\n';
  }
}

// Loads FILE, or standard input for "-", into the scanner's source.
void LoadSource(TGScanner& sc, const std::string& file) {
  if (file != "-") {
    sc.Source().LoadFromFile(file);
    return;
  }
  std::string bytes((std::istreambuf_iterator<char>(std::cin)), std::istreambuf_iterator<char>());
  if (bytes.rfind("\xEF\xBB\xBF", 0) == 0) bytes.erase(0, 3);
  sc.Source().SetText(quill::Utf8ToUnicode(bytes));
}

int RunTokens(const std::string& file, const std::string& style_name, bool json) {
  TSourceStyle style = StyleByExtension(file);
  if (!style_name.empty() && !StyleByName(style_name, style)) {
    std::cerr << "quill tokens: unknown style \"" << style_name << "\" (pascal, c, sql, perl, none)\n";
    return 2;
  }
  TGScanner sc;
  sc.SetSourceStyle(style);
  try {
    LoadSource(sc, file);
    // The walk stops at the end of the source, not at the extra empty token
    // that a source of ten tokens or fewer presents before it.
    sc.FirstToken();
    for (; !sc.EOS(); sc.NextToken()) {
      const TGToken t = sc.GetToken(0);
      if (t == TGToken{}) continue;
      PrintToken(std::cout, t, json);
    }
  } catch (const quill::Exception& e) {
    std::cout.flush();
    std::cerr << "quill tokens: " << e.what() << '\n';
    return 1;
  }
  return 0;
}

}  // namespace

void RegisterScannerCommands(CLI::App& app) {
  auto* tokens = app.add_subcommand("tokens", "Print the tokens of FILE (or - for standard input), one per line");
  static std::string file;
  static std::string style;
  static bool json = false;
  tokens->add_option("FILE", file, "Source file, or - for standard input")->required();
  tokens->add_option("--style", style, "pascal, c, sql, perl or none (default: from the file extension)");
  tokens->add_flag("--json", json, "One JSON object per token");
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
