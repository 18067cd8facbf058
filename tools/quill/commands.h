// The quill tool's subcommands. Each unit's file adds its commands to the
// application and its part of `quill demo`.
#pragma once

#include <ostream>

#include <CLI/CLI.hpp>

namespace quilltool {

// Exit status of a subcommand; set by the command's callback.
int& ExitStatus();

// Each Register* adds the unit's subcommands to `app`.
void RegisterStringsCommands(CLI::App& app);
void RegisterDateCommands(CLI::App& app);
void RegisterScannerCommands(CLI::App& app);
void RegisterCompressCommands(CLI::App& app);
void RegisterUtilsCommands(CLI::App& app);
void RegisterHelpCommands(CLI::App& app);
void RegisterLocaleCommands(CLI::App& app);
void RegisterCodePageCommands(CLI::App& app);
void RegisterRegistryCommands(CLI::App& app);

// Each Demo* prints a short demonstration of the unit on bundled sample data.
void DemoRuntime(std::ostream& out);
void DemoStrings(std::ostream& out);
void DemoQuoting(std::ostream& out);
void DemoDates(std::ostream& out);
void DemoScanner(std::ostream& out);
void DemoCompress(std::ostream& out);
void DemoUtils(std::ostream& out);

// The folder of bundled sample data (QUILL_DATA_DIR, else the build's own).
std::string SampleDataDir();

}  // namespace quilltool
