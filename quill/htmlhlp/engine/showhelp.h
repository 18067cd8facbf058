// What the engine's HtmlHelpA/HtmlHelpW do on Linux: find the page a help
// name means and hand it to the desktop's viewer.
#pragma once

#include <cstdint>
#include <string_view>

namespace quill::Ghtmlhlp::engine {

// Shows the help name `name` (UTF-8 or the file system's bytes; see
// ParseHelpName) for `command` and returns the viewer's process id, or 0 when
// nothing could be shown.
// - HH_DISPLAY_TOPIC, HH_DISPLAY_TOC, HH_DISPLAY_INDEX, HH_DISPLAY_SEARCH:
//   the named topic, else the file's default topic (a desktop viewer has no
//   navigation panes to open); `data` is not used (a topic pointer there
//   would not survive OpenHtmlHelp's 32-bit Data anyway).
// - HH_HELP_CONTEXT: the topic the compiled help file's context map gives
//   context number `data` (a topic in the name is ignored); 0 when the file
//   has no map or the number is not in it.
// - Other commands: 0.
// - A compiled help file's pages are extracted once into the private cache
//   (HelpCacheRoot); the topic's extracted file is handed on. The file is
//   read in a child process (RunIsolated), so a damaged file that crashes the
//   reader shows nothing instead. Any other
//   existing file (an HTML page) is handed on as it is; naming a topic in it
//   gives 0.
// - The viewer is $QUILL_OPEN_COMMAND (split like shell words) or xdg-open,
//   started without waiting, with the file (a file:// URL when the name has
//   an anchor) as its last argument.
[[nodiscard]] uintptr_t ShowHelp(std::string_view name, uint32_t command, uintptr_t data);

}  // namespace quill::Ghtmlhlp::engine
