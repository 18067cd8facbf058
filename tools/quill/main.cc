// quill: the command-line face of the Quill library.
//
//   quill demo                     shows each unit at work on bundled samples
//   quill --version                prints the library version
//
// Exit status of every command: 0 done, 1 a file or its data could not be
// read or written, 2 a usage error (CLI11's own codes included) or an input in
// the wrong format.
#include <cstdlib>
#include <iostream>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "quill/frame/quill23.h"
#include "quill/rtl/exception.h"
#include "tools/quill/commands.h"
#include "tools/quill/io.h"

namespace quilltool {

int& ExitStatus() {
  static int status = 0;
  return status;
}

namespace {

// The deepest subcommand the command line selected.
CLI::App* Selected(CLI::App* app) {
  for (CLI::App* sub : app->get_subcommands()) return Selected(sub);
  return app;
}

// A word the selected command (or the tool) took for a subcommand name but
// does not know: CLI11 only says that a subcommand is required, or that an
// argument was not expected.
std::string UnknownSubcommand(CLI::App& app) {
  CLI::App* at = Selected(&app);
  if (at->get_subcommands({}).empty()) return {};
  const std::vector<std::string> rest = at->remaining();
  if (rest.empty() || rest.front().empty() || rest.front()[0] == '-') return {};
  std::string path = "quill";
  for (CLI::App* a = at; a != &app; a = a->get_parent()) path.insert(5, " " + a->get_name());
  return "unknown command \"" + rest.front() + "\" for " + path + " (see " + path + " --help)";
}

int Report(int status, const std::string& message) {
  std::cout.flush();
  std::cerr << "quill: " << message << '\n';
  return status;
}

}  // namespace
}  // namespace quilltool

int main(int argc, char** argv) {
  using namespace quilltool;
  InstallCheckedStdout();
  CLI::App app{"quill: string, tokenizer, compression, calendar and locale utilities"};
  app.set_version_flag("--version", std::string("quill ") + quill::QuillVersionString());
  app.require_subcommand(1);
  app.footer("Exit status: 0 done, 1 file or data error, 2 usage or format error.");

  auto* demo = app.add_subcommand("demo", "Show each unit at work on bundled sample data");
  demo->callback([] {
    std::ostream& out = Stdout();
    DemoRuntime(out);
    DemoStrings(out);
    DemoQuoting(out);
    DemoDates(out);
    DemoScanner(out);
    DemoCompress(out);
    DemoUtils(out);
  });

  RegisterStringsCommands(app);
  RegisterDateCommands(app);
  RegisterScannerCommands(app);
  RegisterCompressCommands(app);
  RegisterUtilsCommands(app);
  RegisterHelpCommands(app);
  RegisterLocaleCommands(app);
  RegisterCodePageCommands(app);
  RegisterRegistryCommands(app);

  try {
    try {
      app.parse(argc, argv);
    } catch (const CLI::ParseError& e) {
      // --help and --version: printed on the checked standard output.
      if (e.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success)) {
        app.exit(e, Stdout(), std::cerr);
        FlushStdout();
        return kExitDone;
      }
      if (const std::string unknown = UnknownSubcommand(app); !unknown.empty()) {
        return Report(kExitUsage, unknown);
      }
      std::ostringstream ignored;
      app.exit(e, ignored, std::cerr);
      return kExitUsage;
    }
    FlushStdout();
  } catch (const ToolError& e) {
    return Report(e.Status(), e.what());
  } catch (const quill::Exception& e) {
    return Report(kExitDataError, e.what());
  } catch (const std::exception& e) {
    return Report(kExitDataError, e.what());
  }
  if (ExitStatus() != kExitDone) return ExitStatus();
  return kExitDone;
}
