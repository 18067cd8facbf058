// quill help: opens a help file through the library's help launcher (Ghtmlhlp).
//
//   quill help FILE[::TOPIC]        shows a compiled help file's topic (or its
//                                   default topic), or an HTML page, in the
//                                   desktop's viewer
//   quill help --context N FILE     the topic of context number N (F1 help)
#include <cstdint>
#include <string>

#include "quill/htmlhlp/ghtmlhlp.h"
#include "quill/rtl/unicode.h"
#include "tools/quill/commands.h"
#include "tools/quill/io.h"

namespace quilltool {

void RegisterHelpCommands(CLI::App& app) {
  auto* help = app.add_subcommand("help", "Open a help file (FILE.chm[::/TOPIC.htm] or an HTML page) in the viewer");
  static std::string name;
  static uint32_t context = 0;
  help->add_option("FILE", name, "FILE or FILE::TOPIC, e.g. app.chm::/intro.htm")->required();
  auto* context_option = help->add_option("--context", context, "Show the topic of this context number (HH_HELP_CONTEXT)");
  help->footer(
      "The viewer is $QUILL_OPEN_COMMAND or xdg-open; compiled help pages are extracted into "
      "$XDG_CACHE_HOME/quill/help first. Status 1 when nothing could be shown or the help engine "
      "(libquill23-hhctrl.so, or $QUILL_HELP_ENGINE) cannot be loaded.");
  help->callback([context_option] {
    namespace H = quill::Ghtmlhlp;
    const bool by_context = context_option->count() > 0;
    int32_t shown = 0;
    try {
      shown = H::OpenHtmlHelp(quill::Utf8ToUnicode(name), by_context ? H::HH_HELP_CONTEXT : H::HH_DISPLAY_TOPIC,
                              by_context ? context : 0);
    } catch (const H::EHtmlHelpError& e) {
      throw ToolError(kExitDataError, std::string(e.what()) + " (the help engine libquill23-hhctrl.so)");
    }
    if (shown == 0) {
      throw ToolError(kExitDataError, "nothing to show for " + name + " (no such file or topic, or no viewer)");
    }
    Stdout() << "shown: " << name << "\n";
  });
}

}  // namespace quilltool
