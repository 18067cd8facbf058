// quill version: the version record of a Windows executable or DLL (Gutils),
// and the Gutils part of `quill demo`.
//
//   quill version FILE    prints the nine fields of FILE's version record
#include <iostream>
#include <string>
#include <utility>
#include <vector>

#include "quill/rtl/unicode.h"
#include "quill/utils/gutils.h"
#include "tools/quill/commands.h"
#include "tools/quill/io.h"

namespace quilltool {
namespace {

namespace G = quill::Gutils;
using quill::UnicodeToUtf8;
using quill::Utf8ToUnicode;

// One "Name: value" line per field, in the record's order. LegalTrademarks
// is never read from the file, so it shows what the record held before.
void PrintRecord(std::ostream& out, const G::TGVersionInfoRec& r) {
  const std::vector<std::pair<const char*, const quill::UnicodeString*>> fields = {
      {"CompanyName", &r.CompanyName},       {"FileDescription", &r.FileDescription},
      {"FileVersion", &r.FileVersion},       {"InternalName", &r.InternalName},
      {"LegalCopyright", &r.LegalCopyright}, {"LegalTrademarks", &r.LegalTrademarks},
      {"OriginalFilename", &r.OriginalFilename}, {"ProductVersion", &r.ProductVersion},
      {"ProductName", &r.ProductName}};
  for (const auto& [name, value] : fields) out << name << ": " << UnicodeToUtf8(*value) << "\n";
}

// Shows a text with its control characters spelled out.
std::string Visible(const quill::UnicodeString& s) {
  std::string out;
  for (char16_t c : s) {
    if (c == u'\r') out += "\\r";
    else if (c == u'\n') out += "\\n";
    else if (c == u'\0') out += "\\0";
    else if (c < 32 || (c >= 127 && c < 160)) {
      const char hex[] = "0123456789ABCDEF";
      out += "\\x";
      out += hex[c >> 4];
      out += hex[c & 15];
    } else out += UnicodeToUtf8(std::u16string_view(&c, 1));
  }
  return out;
}

std::string Money(quill::Currency c) {
  const int64_t raw = c.Raw();
  const int64_t whole = raw / 10000;
  int64_t frac = (raw < 0 ? -raw : raw) % 10000;
  std::string f = std::to_string(frac + 10000).substr(1);
  return (raw < 0 && whole == 0 ? "-" : "") + std::to_string(whole) + "." + f;
}

}  // namespace

void RegisterUtilsCommands(CLI::App& app) {
  auto* version = app.add_subcommand("version", "Print the version record of a Windows executable or DLL");
  static std::string file;
  version->add_option("FILE", file, "A PE file (.exe, .dll)")->required();
  version->callback([] {
    // A missing or unreadable file, a file that is no PE file, and a PE file
    // without version information each have their own message.
    {
      InputFile in(file);
      char head[2] = {};
      const size_t got = in.Read(head, 2);
      if (got < 2 || head[0] != 'M' || head[1] != 'Z') {
        throw ToolError(kExitDataError, file + " is not a Windows executable or DLL (it does not start with \"MZ\")");
      }
    }
    G::TGVersionInfoRec rec;
    if (!G::GetVersionInfo(Utf8ToUnicode(file), rec)) {
      throw ToolError(kExitDataError, file + " has no version information (no readable version resource)");
    }
    PrintRecord(Stdout(), rec);
    const bool all_empty = rec.CompanyName.empty() && rec.FileDescription.empty() && rec.FileVersion.empty() &&
                           rec.InternalName.empty() && rec.LegalCopyright.empty() && rec.OriginalFilename.empty() &&
                           rec.ProductVersion.empty() && rec.ProductName.empty();
    quill::UnicodeString key;
    if (all_empty && G::GetVersionTranslation(Utf8ToUnicode(file), key)) {
      FlushStdout();
      if (key.empty()) {
        std::cerr << "quill: " << file << ": every field is empty: the version block lists no translation\n";
      } else {
        const std::string k = UnicodeToUtf8(key);
        std::cerr << "quill: " << file << ": every field is empty: looked under translation " << k << " (language "
                  << k.substr(0, 4) << ", code page " << k.substr(4) << "), the first the block lists\n";
      }
    }
  });
}

void DemoUtils(std::ostream& out) {
  out << "== Utils\n";
  out << "MinInt(-1, 1) = " << G::MinInt(-1, 1) << ", MaxInt(3, 7) = " << G::MaxInt(3, 7) << "\n";
  const auto c = quill::Currency::FromRaw(10150);
  out << "CRound(" << Money(c) << ") = " << Money(G::CRound(c))
      << " (halves go to the even cent)\n";
  out << "RoundTo(25, 10) = " << Money(G::RoundTo(quill::Currency::FromInt(25), 10))
      << ", RoundToM(20, 10) = " << Money(G::RoundToM(quill::Currency::FromInt(20), 10)) << "\n";
  out << "FontStyleToInt({bold, underline}) = "
      << G::FontStyleToInt(G::TFontStyles{G::fsBold, G::fsUnderline}) << "\n";

  const quill::UnicodeString lines = u"alpha\r\nbeta gamma\r\nsay \"hi\"\r\n";
  const quill::UnicodeString comma = G::StringToComma(lines);
  out << "StringToComma(\"" << Visible(lines) << "\") = " << Visible(comma) << "\n";
  out << "CommaToString(that) = \"" << Visible(G::CommaToString(comma)) << "\"\n";

  const quill::UnicodeString secret = G::Encrypt1(u"Meet at noon", u"key");
  out << "Encrypt1(\"Meet at noon\", \"key\") = \"" << Visible(secret) << "\", Decrypt1 gives \""
      << UnicodeToUtf8(G::Decrypt1(secret, u"key")) << "\"\n";
  out << "ExpandEnvVars(\"%NO_SUCH_VARIABLE% stays\") = \""
      << Visible(G::ExpandEnvVars(u"%NO_SUCH_VARIABLE% stays")) << "\"\n";

  const std::string sample = SampleDataDir() + "/gutils-version-sample.exe";
  G::TGVersionInfoRec rec;
  rec.LegalTrademarks = u"(not read from the file)";
  out << "GetVersionInfo(gutils-version-sample.exe):\n";
  if (G::GetVersionInfo(Utf8ToUnicode(sample), rec)) {
    PrintRecord(out, rec);
  } else {
    out << "  (sample file missing)\n";
  }
  out << "\n";
}

}  // namespace quilltool
