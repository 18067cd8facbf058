// quill subcommands and demo of the Scanner unit.
#include "tools/quill/commands.h"

namespace quilltool {

void RegisterScannerCommands(CLI::App& app) { (void)app; }

void DemoScanner(std::ostream& out) { (void)out; }

}  // namespace quilltool
