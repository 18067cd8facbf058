// quill subcommands and demo of the Gstrings searching, replacing and
// conversion routines.
//
//   quill xpos <pattern> <text> [--start N] [--n N] [--ignore-case]
//   quill replace <text> <old> <new> [--ignore-case]
//   quill hex <digits>
#include <iostream>
#include <string>

#include "quill/rtl/exception.h"
#include "quill/rtl/unicode.h"
#include "quill/strings/gstrings.h"
#include "tools/quill/commands.h"
#include "tools/quill/io.h"

namespace quilltool {
namespace {

using quill::UnicodeString;
namespace gs = quill::Gstrings;

std::string U8(const UnicodeString& s) { return quill::UnicodeToUtf8(s); }
UnicodeString U16(const std::string& s) { return quill::Utf8ToUnicode(s); }

}  // namespace

void RegisterStringsCommands(CLI::App& app) {
  {
    auto* cmd = app.add_subcommand("xpos", "Position of the n-th occurrence of a pattern (1-based, 0 = none)");
    static std::string pattern, text;
    static int start = 1, n = 1;
    static bool ignoreCase = false;
    cmd->add_option("pattern", pattern)->required();
    cmd->add_option("text", text)->required();
    cmd->add_option("--start", start, "position to start at");
    cmd->add_option("--n", n, "which occurrence");
    cmd->add_flag("--ignore-case", ignoreCase, "search ignoring case");
    cmd->callback([] {
      const UnicodeString p = U16(pattern), t = U16(text);
      std::cout << (ignoreCase ? gs::CXPos(p, t, start, n) : gs::XPos(p, t, start, n)) << "\n";
    });
  }
  {
    auto* cmd = app.add_subcommand("replace", "Replace every occurrence of a pattern");
    static std::string text, oldText, newText;
    static bool ignoreCase = false;
    cmd->add_option("text", text)->required();
    cmd->add_option("old", oldText)->required();
    cmd->add_option("new", newText)->required();
    cmd->add_flag("--ignore-case", ignoreCase, "match ignoring case");
    cmd->callback([] {
      const UnicodeString t = U16(text), o = U16(oldText), w = U16(newText);
      std::cout << U8(ignoreCase ? gs::XReplaceStr(t, o, w, false) : gs::ReplaceStr(t, o, w))
                << "\n";
    });
  }
  {
    auto* cmd = app.add_subcommand("hex", "Value of hexadecimal digits (32-bit, wrapping)");
    static std::string digits;
    cmd->add_option("digits", digits)->required();
    cmd->callback([] {
      try {
        std::cout << gs::HexToInt(U16(digits)) << "\n";
      } catch (const quill::Exception& e) {
        throw ToolError(kExitDataError, std::string("hex: ") + e.what());
      }
    });
  }
}

void DemoStrings(std::ostream& out) {
  out << "== Searching, replacing and conversions (Gstrings)\n";
  const UnicodeString text = u"Fa\u00E7ade, FA\u00C7ADE and fa\u00E7ade again";
  out << "text                      : " << U8(text) << "\n";
  out << "XPos(\"ade\", n=2)          : " << gs::XPos(u"ade", text, 1, 2) << "\n";
  out << "CXPos(\"FA\u00C7\", n=3)         : " << gs::CXPos(u"FA\u00C7", text, 1, 3) << "\n";
  out << "BXPos(\"a\", from the end)  : " << gs::BXPos(u"a", text, 0, 1) << "\n";
  out << "XReplaceStr(ignore case)  : " << U8(gs::XReplaceStr(text, u"fa\u00E7ade", u"front", false))
      << "\n";
  out << "XReplaceStr(flag true)    : " << U8(gs::XReplaceStr(text, u"fa\u00E7ade", u"front", true))
      << "  (the true flag never replaces)\n";
  out << "Padl(\"abcdef\", 3)         : " << gs::Padl("abcdef", 3, '*') << "  Padl(\"ab\", 4): "
      << gs::Padl("ab", 4, '*') << "\n";
  out << "GetBeforeSep(\"=\")         : [" << gs::GetBeforeSep("=", " key = value") << "]\n";
  out << "CapitalizeFirst           : " << U8(gs::CapitalizeFirst(u"hELLO wORLD")) << "\n";
  out << "HexToInt(\"ff\")            : " << gs::HexToInt(u"ff")
      << "  HexToInt(\"100000000\"): " << gs::HexToInt(u"100000000") << "\n";
  try {
    (void)gs::HexToInt(u"1G");
  } catch (const quill::Exception& e) {
    out << "HexToInt(\"1G\")            : error: " << e.what() << "\n";
  }
  out << "ZStrToInt(\" 7 \")          : " << gs::ZStrToInt(u" 7 ")
      << "  ZStrToInt(\"x\"): " << gs::ZStrToInt(u"x") << "\n";
  out << "XFloatToStr(1.5)          : " << U8(gs::XFloatToStr(1.5)) << "\n";
  out << "NStrToBool(\"\")/XStrToBool : " << gs::NStrToBool(u"") << "/" << gs::XStrToBool(u"")
      << "\n";
  out << "OnlyFileName              : " << gs::OnlyFileName("C:\\dir\\a.tar.gz") << "\n";
  out << "ConcPath 8-bit / UTF-16   : " << gs::ConcPath("C:\\dir\\", "\\f") << " / "
      << U8(gs::ConcPath(u"C:\\dir\\", u"\\f")) << "\n";
}

}  // namespace quilltool
