// How the runtime reads locale names from the environment and from system
// configuration files. Not installed; the parts are exposed for tests.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

namespace quill::internal {

// A POSIX locale name ("de_DE.UTF-8@euro", "sr_RS@latin") or a tag ("de-de")
// as a language tag: the codeset and modifiers other than a script (latin,
// cyrillic, devanagari) are dropped, '_' becomes '-', and the spelling is the
// fact table's when the table knows the tag ("de-DE"), else the usual BCP 47
// case ("xx-YY").
[[nodiscard]] std::string PosixNameToTag(std::string_view name);

// The value of the last LANG assignment in a shell-style file such as
// /etc/default/locale (quotes and "export" allowed); empty when there is none
// or the file cannot be read.
[[nodiscard]] std::string LangFromConfigFile(const char* path);

// A locale setting given as a tag, a POSIX name or an LCID (decimal or 0x
// hex) as a tag; "C" and "POSIX" give "en-US"; empty when nothing usable.
[[nodiscard]] std::string TagFromSetting(std::string_view value);

// The system default locale tag: `override_value` (QUILL_SYSTEM_LOCALE) when
// usable, else LANG from the first of `files` that gives a usable one, else
// "en-US".
[[nodiscard]] std::string SystemTagFrom(std::string_view override_value,
                                        std::initializer_list<const char*> files);

}  // namespace quill::internal
