// quill date: reading dates by format and writing date names (Gdattime).
//
//   quill date parse FORMAT TEXT   prints the date read, in ISO form
//   quill date name DATE           prints the date's name (DATE as yyyy-mm-dd)
#include <fstream>
#include <optional>
#include <iostream>
#include <string>

#include "quill/dattime/gdattime.h"
#include "quill/rtl/exception.h"
#include "quill/rtl/unicode.h"
#include "tools/quill/commands.h"
#include "tools/quill/io.h"

namespace quilltool {
namespace {

using quill::TDateTime;

// ISO 8601 form: date, and the time when it is not midnight.
std::string IsoText(TDateTime v) {
  const quill::TFormatSettings fixed;  // ':' as the time separator
  uint16_t h = 0, n = 0, s = 0, z = 0;
  quill::DecodeTime(v, h, n, s, z);
  const char16_t* format = u"yyyy-mm-dd";
  if (z != 0) {
    format = u"yyyy-mm-dd\"T\"hh:nn:ss.zzz";
  } else if (h != 0 || n != 0 || s != 0) {
    format = u"yyyy-mm-dd\"T\"hh:nn:ss";
  }
  return quill::UnicodeToUtf8(quill::FormatDateTime(format, v, fixed));
}

// Reads TEXT as a date in FORMAT; an empty result when it cannot, with the
// reason in `why`. The runtime's reader takes at most four digits for a
// number and reads what follows as more of the text ("01.01.10000" would
// give the year 1000): a number of more than four digits is refused here.
std::optional<TDateTime> ParseByFormat(const std::string& format, const std::string& text, std::string& why) {
  size_t run = 0;
  for (size_t i = 0; i <= text.size(); ++i) {
    if (i < text.size() && text[i] >= '0' && text[i] <= '9') {
      ++run;
      continue;
    }
    if (run > 4) {
      why = "the number " + text.substr(i - run, run) + " has more than four digits";
      return std::nullopt;
    }
    run = 0;
  }
  TDateTime v = 0;
  if (!quill::Gdattime::TryStrToDateTimeByFormat(quill::Utf8ToUnicode(format), quill::Utf8ToUnicode(text), v)) {
    why = "it is no valid date or time in that format";
    return std::nullopt;
  }
  return v;
}

// One line for the demo: the date read, or why not.
void PrintParsed(std::ostream& out, const std::string& format, const std::string& text) {
  std::string why;
  if (const auto v = ParseByFormat(format, text, why)) {
    out << IsoText(*v) << "\n";
  } else {
    out << "\"" << text << "\" could not be read as " << format << " (" << why << ")\n";
  }
}

bool ReadIsoDate(const std::string& text, TDateTime& v) {
  return quill::Gdattime::TryStrToDateTimeByFormat(u"yyyy-mm-dd", quill::Utf8ToUnicode(text), v);
}

}  // namespace

void RegisterDateCommands(CLI::App& app) {
  auto* date = app.add_subcommand("date", "Read dates by format and write date names");
  date->require_subcommand(1);

  auto* parse = date->add_subcommand("parse", "Read TEXT as a date written in FORMAT (d, m, y letters)");
  static std::string parse_format, parse_text;
  parse->add_option("FORMAT", parse_format, "Date format, such as dd.mm.yyyy or \"dd.mm.yyyy hh:nn\"")->required();
  parse->add_option("TEXT", parse_text, "The date text")->required();
  parse->callback([] {
    std::string why;
    const auto v = ParseByFormat(parse_format, parse_text, why);
    if (!v) throw ToolError(kExitDataError, "\"" + parse_text + "\" could not be read as " + parse_format + ": " + why);
    Stdout() << IsoText(*v) << "\n";
  });

  auto* name = date->add_subcommand("name", "Write the name of DATE (yyyy-mm-dd), such as 5 of May 2024");
  static std::string name_date;
  name->add_option("DATE", name_date, "The date as yyyy-mm-dd")->required();
  name->callback([] {
    TDateTime v = 0;
    if (!ReadIsoDate(name_date, v)) {
      throw ToolError(kExitDataError, "\"" + name_date + "\" is not a date of the form yyyy-mm-dd");
    }
    Stdout() << quill::UnicodeToUtf8(quill::Gdattime::GetDateName(v)) << "\n";
  });
}

void DemoDates(std::ostream& out) {
  using namespace quill::Gdattime;
  out << "== Dates\n";
  std::ifstream in(SampleDataDir() + "/dates.txt");
  if (!in) {
    out << "(sample file dates.txt not found)\n";
  }
  std::string line;
  while (std::getline(in, line)) {
    if (line.empty() || line[0] == '#') continue;
    const size_t bar = line.find('|');
    if (bar == std::string::npos) continue;
    out << "parse " << line.substr(0, bar) << " \"" << line.substr(bar + 1) << "\" -> ";
    PrintParsed(out, line.substr(0, bar), line.substr(bar + 1));
  }
  const TDateTime d = quill::EncodeDate(2024, 5, 5);
  out << "name 2024-05-05 -> " << quill::UnicodeToUtf8(GetDateName(d)) << "\n";
  out << "quarter of 2024-09-30 -> " << GetQuartalWrite(static_cast<uint16_t>(GetQuartal(quill::EncodeDate(2024, 9, 30))))
      << "\n";
  out << "last day of February 2024 -> " << IsoText(GetLastMonthDate(quill::EncodeDate(2024, 2, 10))) << "\n";
  out << "2024-03-31 plus 10 months -> " << IsoText(AddDate(quill::EncodeDate(2024, 3, 31), 0, 10, 0)) << "\n";
  try {
    (void)AddDate(quill::EncodeDate(2024, 3, 31), 0, 1, 0);
  } catch (const quill::EConvertError& e) {
    out << "2024-03-31 plus 1 month -> error: " << e.what() << " (the day is never clamped)\n";
  }
}

}  // namespace quilltool
