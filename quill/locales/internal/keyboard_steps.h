// How the installed keyboard layouts are read. Not installed; open to tests
// and the fuzz target.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "quill/locales/keyboard.h"

namespace quill::Glocales::internal {

// The handles of a comma list of XKB names and hexadecimal handles (see
// keyboard.h); unknown names and empty items are skipped; at most 64.
[[nodiscard]] std::vector<HKL> ParseKeyboardLayouts(std::string_view list);

// The value of the last XKBLAYOUT assignment in a shell-style file such as
// /etc/default/keyboard; empty when none or unreadable.
[[nodiscard]] std::string XkbLayoutFromFile(const char* path);

// GetKLByLocale over the given layouts.
[[nodiscard]] HKL KLByLocaleIn(std::span<const HKL> layouts, uint16_t LangID);

}  // namespace quill::Glocales::internal
