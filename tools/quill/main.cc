// quill: the command-line face of the Quill library.
//
//   quill demo                     shows each unit at work on bundled samples
//   quill --version                prints the library version
#include <cstdlib>
#include <iostream>

#include <CLI/CLI.hpp>

#include "quill/frame/quill23.h"
#include "tools/quill/commands.h"

namespace quilltool {

int& ExitStatus() {
  static int status = 0;
  return status;
}

std::string SampleDataDir() {
  if (const char* dir = std::getenv("QUILL_DATA_DIR"); dir && *dir) return dir;
  return QUILL_TOOL_DATA_DIR;
}

}  // namespace quilltool

int main(int argc, char** argv) {
  CLI::App app{"quill: string, tokenizer, compression, calendar and locale utilities"};
  app.set_version_flag("--version", std::string("quill ") + quill::QuillVersionString());
  app.require_subcommand(1);

  auto* demo = app.add_subcommand("demo", "Show each unit at work on bundled sample data");
  demo->callback([] {
    std::ostream& out = std::cout;
    quilltool::DemoRuntime(out);
    quilltool::DemoStrings(out);
    quilltool::DemoQuoting(out);
    quilltool::DemoDates(out);
    quilltool::DemoScanner(out);
    quilltool::DemoCompress(out);
    quilltool::DemoUtils(out);
  });

  quilltool::RegisterStringsCommands(app);
  quilltool::RegisterDateCommands(app);
  quilltool::RegisterScannerCommands(app);
  quilltool::RegisterCompressCommands(app);
  quilltool::RegisterUtilsCommands(app);

  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& e) {
    return app.exit(e);
  } catch (const quill::Exception& e) {
    std::cerr << "quill: " << e.what() << '\n';
    return 1;
  }
  return quilltool::ExitStatus();
}
