// quill subcommands and demo of the Date unit.
#include "tools/quill/commands.h"

namespace quilltool {

void RegisterDateCommands(CLI::App& app) { (void)app; }

void DemoDates(std::ostream& out) { (void)out; }

}  // namespace quilltool
