// quill demo: quoting, C escapes and section reading of the Gstrings unit.
#include <string>

#include "quill/rtl/exception.h"
#include "quill/rtl/tstrings.h"
#include "quill/rtl/unicode.h"
#include "quill/strings/gstrings.h"
#include "tools/quill/commands.h"

namespace quilltool {
namespace {

using quill::UnicodeString;
namespace gs = quill::Gstrings;

std::string U8(const UnicodeString& s) { return quill::UnicodeToUtf8(s); }

}  // namespace

void DemoQuoting(std::ostream& out) {
  out << "== Quoting (Gstrings)\n";
  const UnicodeString text = u"It's a\ttab\r\n";
  const UnicodeString quoted = gs::QuotedString(text, u'\'');
  out << "QuotedString          : " << U8(quoted) << "\n";
  out << "UnquotedString        : round trip "
      << (gs::UnquotedString(quoted, u'\'') == text ? "exact" : "DIFFERENT") << "\n";
  out << "UnquotedString(plain) : " << U8(gs::UnquotedString(u"plain", u'\'')) << "\n";
  try {
    (void)gs::UnquotedString(std::string("#300"), '\'');
  } catch (const quill::Exception& e) {
    out << "UnquotedString(#300)  : error: " << e.what() << "\n";
  }

  const UnicodeString c_lit = gs::QuotedCString(text);
  out << "QuotedCString         : " << U8(c_lit) << "\n";
  int32_t pos = 1;
  const UnicodeString back = gs::XUnquotedCStringEx(c_lit, 2, pos);
  out << "XUnquotedCStringEx    : round trip " << (back == text ? "exact" : "DIFFERENT")
      << ", pos " << pos << "\n";
  pos = 1;
  out << "UTF-8 pair \\xC3\\xA9   : " << U8(UnicodeString(1, gs::GetCExtraSymbolEx(u"\\xC3\\xA9", 0, pos, true)))
      << "\n";

  quill::TStringList fields;
  gs::ComposeCommaText(u"1, \"x,y\", 'z'", fields);
  out << "ComposeCommaText      : " << fields.Count() << " fields:";
  for (int32_t i = 0; i < fields.Count(); ++i) out << " [" << U8(fields[i]) << "]";
  out << "\n";
  out << "DelimitedText         : " << U8(gs::DelimitedText(fields, u';', u'\'')) << "\n";

  const std::string file = SampleDataDir() + "/sections-demo.ini";
  quill::TStringList ini;
  try {
    ini.LoadFromFile(file);
  } catch (const quill::Exception& e) {
    out << "sections              : cannot read sample: " << e.what() << "\n";
    return;
  }
  quill::TStringList names, values;
  gs::ReadSLSections(ini, names);
  out << "ReadSLSections        :";
  for (int32_t i = 0; i < names.Count(); ++i) out << " [" << U8(names[i]) << "]";
  out << "\n";
  int32_t last = gs::XReadSLSectionValues(0, ini, u"window", values);
  out << "[Window] #1 (to line " << last << "):";
  for (int32_t i = 0; i < values.Count(); ++i) out << " " << U8(values[i]);
  out << "\n";
  last = gs::XReadSLSectionValues(last + 1, ini, u"window", values);
  out << "[Window] #2 (to line " << last << "):";
  for (int32_t i = 0; i < values.Count(); ++i) out << " " << U8(values[i]);
  out << "\n";
  UnicodeString name, value;
  gs::GetNameAndValue(values.Count() > 0 ? values[0] : UnicodeString(), name, value);
  out << "GetNameAndValue       : " << U8(name) << " -> " << U8(value) << "\n";
}

}  // namespace quilltool
