// quill subcommands and demo of the Strings unit.
#include "tools/quill/commands.h"

namespace quilltool {

void RegisterStringsCommands(CLI::App& app) { (void)app; }

void DemoStrings(std::ostream& out) { (void)out; }

}  // namespace quilltool
