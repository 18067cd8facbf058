// quill codepage: converting text between code pages (Glocales).
//
//   quill codepage convert --from CP --to CP [IN [OUT]]
//                                  IN's bytes read in code page --from and
//                                  written in code page --to ("-" or nothing:
//                                  standard input / output)
//   quill codepage list            the code pages the conversions know
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>

#include "quill/locales/codepages.h"
#include "tools/quill/commands.h"
#include "tools/quill/io.h"

namespace quilltool {
namespace {

namespace fs = std::filesystem;
namespace Gl = quill::Glocales;

std::string ReadInput(const std::string& name) {
  if (name == "-") {
    std::string data((std::istreambuf_iterator<char>(std::cin)), std::istreambuf_iterator<char>());
    if (std::cin.bad()) throw ToolError(kExitDataError, "cannot read standard input");
    return data;
  }
  std::error_code ec;
  if (fs::is_directory(name, ec)) throw ToolError(kExitDataError, "cannot read " + name + ": it is a directory");
  std::ifstream in(name, std::ios::binary);
  if (!in) throw ToolError(kExitDataError, "cannot open " + name + ": " + ErrorText(errno));
  std::string data((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  if (in.bad()) throw ToolError(kExitDataError, "cannot read " + name + ": " + ErrorText(errno));
  return data;
}

// Writes under a temporary name beside OUT and moves it into place, so that a
// failed run leaves no half-written file.
void WriteOutput(const std::string& name, const std::string& data) {
  if (name == "-") {
    Stdout().write(data.data(), static_cast<std::streamsize>(data.size()));
    FlushStdout();
    return;
  }
  fs::path temp(name);
  temp += ".part-" + std::to_string(std::random_device{}() % 1000000);
  {
    std::ofstream out(temp, std::ios::binary | std::ios::trunc);
    if (!out) throw ToolError(kExitDataError, "cannot create " + name + ": " + ErrorText(errno));
    out.write(data.data(), static_cast<std::streamsize>(data.size()));
    out.close();
    if (!out) {
      std::error_code ec;
      fs::remove(temp, ec);
      throw ToolError(kExitDataError, "cannot write " + name + ": " + ErrorText(errno));
    }
  }
  std::error_code ec;
  fs::rename(temp, name, ec);
  if (ec) {
    fs::remove(temp, ec);
    throw ToolError(kExitDataError, "cannot write " + name + ": " + ec.message());
  }
}

void CheckPage(const char* option, int32_t page) {
  if (!Gl::IsCodePageSupported(page)) {
    throw ToolError(kExitUsage, std::string("unknown code page ") + std::to_string(page) + " for " + option +
                                    " (see quill codepage list)");
  }
}

}  // namespace

void RegisterCodePageCommands(CLI::App& app) {
  auto* cp = app.add_subcommand("codepage", "Convert text between code pages; list the known code pages");
  cp->require_subcommand(1);

  auto* convert = cp->add_subcommand("convert", "Re-encode IN (bytes in code page --from) in code page --to");
  static int32_t from = 0, to = 0;
  static std::string in_name = "-", out_name = "-";
  convert->add_option("--from", from, "Code page of the input bytes (e.g. 1252, 866, 932, 65001)")->required();
  convert->add_option("--to", to, "Code page of the output bytes")->required();
  convert->add_option("IN", in_name, "Input file (\"-\" or none: standard input)");
  convert->add_option("OUT", out_name, "Output file (\"-\" or none: standard output)");
  convert->footer(
      "Bytes the --from page does not define become U+FFFD (written as '?' unless --to is 65001); "
      "characters the --to page lacks become '?'. 0 is the default ANSI page, 1 the OEM page.");
  convert->callback([] {
    CheckPage("--from", from);
    CheckPage("--to", to);
    const std::string input = ReadInput(in_name);
    WriteOutput(out_name, Gl::WideToStrByCodePage(Gl::StrToWideByCodePage(input, from), to));
  });

  auto* list = cp->add_subcommand("list", "List the known code pages: number, kind, name, ICU converter");
  list->callback([] {
    std::ostream& out = Stdout();
    for (const Gl::TCodePageInfo& page : Gl::KnownCodePages()) {
      out << page.CodePage << '\t' << (page.SingleByte ? "single-byte" : "multi-byte") << '\t' << page.Name
          << '\t' << page.IcuName << '\n';
    }
  });
}

}  // namespace quilltool
