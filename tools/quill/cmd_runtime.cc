// quill demo: the runtime layer (locale, code page, number text, string lists).
#include <string>

#include "quill/rtl/rtl.h"
#include "tools/quill/commands.h"

namespace quilltool {

namespace {
std::string U8(const quill::UnicodeString& s) { return quill::UnicodeToUtf8(s); }
}  // namespace

void DemoRuntime(std::ostream& out) {
  using namespace quill;
  out << "== runtime\n";
  out << "system locale: " << SystemDefaultLocaleTag() << " (LCID " << GetSystemDefaultLCID()
      << "), ANSI code page " << GetACP() << "\n";
  TFormatSettings de = TFormatSettings::Create(u"de-DE");
  out << "de-DE: short date " << U8(de.ShortDateFormat) << ", decimal '"
      << U8(UnicodeString(1, de.DecimalSeparator)) << "', month 3 " << U8(de.LongMonthNames[2])
      << "\n";
  out << "StrToInt(\"x56e\") = " << StrToInt(u"x56e") << ", FloatToStr(1/3) = "
      << U8(FloatToStr(1.0 / 3.0)) << ", FloatToStr(1E15) = " << U8(FloatToStr(1e15)) << "\n";
  try {
    (void)StrToInt(u"12 ");
  } catch (const EConvertError& e) {
    out << "StrToInt(\"12 \") raises: " << e.what() << "\n";
  }
  TStringList list;
  list.SetCommaText(u"alpha, \"beta gamma\",,delta");
  out << "comma text splits into " << list.Count() << " items; read back: "
      << U8(list.CommaText()) << "\n";
  out << "AnsiUpperCase(\"straße\") = " << U8(AnsiUpperCase(u"straße")) << "\n";
}

}  // namespace quilltool
