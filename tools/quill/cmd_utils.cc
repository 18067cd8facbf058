// quill subcommands and demo of the Utils unit.
#include "tools/quill/commands.h"

namespace quilltool {

void RegisterUtilsCommands(CLI::App& app) { (void)app; }

void DemoUtils(std::ostream& out) { (void)out; }

}  // namespace quilltool
