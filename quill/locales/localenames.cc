// The English name table and LocaleEngName.
#include "quill/locales/localenames.h"

#include <algorithm>
#include <iterator>

#include "quill/locales/localecodes.h"
#include "quill/locales/localeinfo.h"
#include "quill/strings/slicing.h"

namespace quill::Glocales {
namespace {

// The names are kept in these historic forms on purpose; callers show and
// store them.
constexpr TLocaleEngNameRow kEngNames[] = {
    {0x0401, u"Arabic (Saudi Arabia)"},
    {0x0801, u"Arabic (Iraq)"},
    {0x0C01, u"Arabic (Egypt)"},
    {0x1001, u"Arabic (Libya)"},
    {0x1401, u"Arabic (Algeria)"},
    {0x1801, u"Arabic (Morocco)"},
    {0x1C01, u"Arabic (Tunisia)"},
    {0x2001, u"Arabic (Oman)"},
    {0x2401, u"Arabic (Yemen)"},
    {0x2801, u"Arabic (Syria)"},
    {0x2C01, u"Arabic (Jordan)"},
    {0x3001, u"Arabic (Lebanon)"},
    {0x3401, u"Arabic (Kuwait)"},
    {0x3801, u"Arabic (U.A.E.)"},
    {0x3C01, u"Arabic (Bahrain)"},
    {0x4001, u"Arabic (Qatar)"},
    {0x0402, u"Bulgarian"},
    {0x0403, u"Catalan"},
    {0x0404, u"Chinese (Taiwan)"},
    {0x0804, u"Chinese (PRC)"},
    {0x0C04, u"Chinese (Hong Kong)"},
    {0x1004, u"Chinese (Singapore)"},
    {0x1404, u"Chinese (Macau)"},
    {0x0405, u"Czech"},
    {0x0406, u"Danish"},
    {0x0407, u"German (Germany)"},
    {0x0807, u"German (Switzerland)"},
    {0x0C07, u"German (Austria)"},
    {0x1007, u"German (Luxembourg)"},
    {0x1407, u"German (Liechtenstein)"},
    {0x0408, u"Greek"},
    {0x0409, u"English (United States)"},
    {0x0809, u"English (United Kingdom)"},
    {0x0C09, u"English (Australia)"},
    {0x1009, u"English (Canada)"},
    {0x1409, u"English (New Zealand)"},
    {0x1809, u"English (Ireland)"},
    {0x1C09, u"English (South Africa)"},
    {0x2009, u"English (Jamaica)"},
    {0x2409, u"English (Caribbean)"},
    {0x2809, u"English (Belize)"},
    {0x2C09, u"English (Trinidad)"},
    {0x3009, u"English (Zimbabwe)"},
    {0x3409, u"English (Philippines)"},
    {0x040A, u"Spanish (Traditional Sort)"},
    {0x080A, u"Spanish (Mexico)"},
    {0x0C0A, u"Spanish (International Sort)"},
    {0x100A, u"Spanish (Guatemala)"},
    {0x140A, u"Spanish (Costa Rica)"},
    {0x180A, u"Spanish (Panama)"},
    {0x1C0A, u"Spanish (Dominican Republic)"},
    {0x200A, u"Spanish (Venezuela)"},
    {0x240A, u"Spanish (Colombia)"},
    {0x280A, u"Spanish (Peru)"},
    {0x2C0A, u"Spanish (Argentina)"},
    {0x300A, u"Spanish (Ecuador)"},
    {0x340A, u"Spanish (Chile)"},
    {0x380A, u"Spanish (Uruguay)"},
    {0x3C0A, u"Spanish (Paraguay)"},
    {0x400A, u"Spanish (Bolivia)"},
    {0x440A, u"Spanish (El Salvador)"},
    {0x480A, u"Spanish (Honduras)"},
    {0x4C0A, u"Spanish (Nicaragua)"},
    {0x500A, u"Spanish (Puerto Rico)"},
    {0x040B, u"Finnish"},
    {0x040C, u"French (France)"},
    {0x080C, u"French (Belgium)"},
    {0x0C0C, u"French (Canada)"},
    {0x100C, u"French (Switzerland)"},
    {0x140C, u"French (Luxembourg)"},
    {0x180C, u"French (Monaco)"},
    {0x040D, u"Hebrew"},
    {0x040E, u"Hungarian"},
    {0x040F, u"Icelandic"},
    {0x0410, u"Italian (Italy)"},
    {0x0810, u"Italian (Switzerland)"},
    {0x0411, u"Japanese"},
    {0x0412, u"Korean"},
    {0x0413, u"Dutch (Netherlands)"},
    {0x0813, u"Dutch (Belgium)"},
    {0x0414, u"Norwegian (Bokmal)"},
    {0x0814, u"Norwegian (Nynorsk)"},
    {0x0415, u"Polish"},
    {0x0416, u"Portuguese (Brazil)"},
    {0x0816, u"Portuguese (Portugal)"},
    {0x0418, u"Romanian"},
    {0x0419, u"Russian"},
    {0x041A, u"Croatian"},
    {0x081A, u"Serbian (Latin)"},
    {0x0C1A, u"Serbian (Cyrillic)"},
    {0x041B, u"Slovak"},
    {0x041C, u"Albanian"},
    {0x041D, u"Swedish"},
    {0x081D, u"Swedish (Finland)"},
    {0x041E, u"Thai"},
    {0x041F, u"Turkish"},
    {0x0420, u"Urdu"},
    {0x0421, u"Indonesian"},
    {0x0422, u"Ukrainian"},
    {0x0423, u"Belarusian"},
    {0x0424, u"Slovenian"},
    {0x0425, u"Estonian"},
    {0x0426, u"Latvian"},
    {0x0427, u"Lithuanian"},
    {0x0429, u"Farsi"},
    {0x042A, u"Vietnamese"},
    {0x042B, u"Armenian"},
    {0x042C, u"Azeri (Latin)"},
    {0x082C, u"Azeri (Cyrillic)"},
    {0x042D, u"Basque"},
    {0x042F, u"Macedonian (FYROM)"},
    {0x0436, u"Afrikaans"},
    {0x0437, u"Georgian"},
    {0x0438, u"Faeroese"},
    {0x0439, u"Hindi"},
    {0x043E, u"Malay (Malaysia)"},
    {0x083E, u"Malay (Brunei Darussalam)"},
    {0x043F, u"Kazakh"},
    {0x0440, u"Kyrgyz (Cyrillic)"},
    {0x0441, u"Swahili"},
    {0x0443, u"Uzbek (Latin)"},
    {0x0843, u"Uzbek (Cyrillic)"},
    {0x0444, u"Tatar"},
    {0x0446, u"Punjabi"},
    {0x0447, u"Gujarati"},
    {0x0449, u"Tamil"},
    {0x044A, u"Telugu"},
    {0x044B, u"Kannada"},
    {0x044E, u"Marathi"},
    {0x044F, u"Sanskrit"},
    {0x0450, u"Mongolian (Cyrillic)"},
    {0x0456, u"Galician"},
    {0x0457, u"Konkani"},
    {0x045A, u"Syriac"},
    {0x0465, u"Divehi"},
};
static_assert(std::size(kEngNames) == 135);

}  // namespace

std::span<const TLocaleEngNameRow> LocaleEngNameTable() { return kEngNames; }

UnicodeString LocaleEngName(LCID Locale) {
  const auto row = std::find_if(std::begin(kEngNames), std::end(kEngNames),
                                [Locale](const TLocaleEngNameRow& r) { return r.Locale == Locale; });
  if (row != std::end(kEngNames)) return UnicodeString(row->Name);
  UnicodeString name = LocaleInfo(Locale, LOCALE_SENGLANGUAGE);
  if (GetPrimaryLangID(Locale) != Locale) {
    name = Gstrings::GetBeforeSep(u" (", name);
    name += u" (";
    name += LocaleInfo(Locale, LOCALE_SABBREVLANGNAME);
    name += u')';
  }
  return name;
}

}  // namespace quill::Glocales
