// quill subcommands and demo of the Compress unit.
#include "tools/quill/commands.h"

namespace quilltool {

void RegisterCompressCommands(CLI::App& app) { (void)app; }

void DemoCompress(std::ostream& out) { (void)out; }

}  // namespace quilltool
