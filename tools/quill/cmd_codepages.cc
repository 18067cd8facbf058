// quill codepage: converting text between code pages (Glocales).
//
//   quill codepage convert --from CP --to CP [IN [OUT]]
//                                  IN's bytes read in code page --from and
//                                  written in code page --to ("-" or nothing:
//                                  standard input / output)
//   quill codepage list            the code pages the conversions know
#include <string>

#include "quill/locales/codepages.h"
#include "tools/quill/commands.h"
#include "tools/quill/io.h"

namespace quilltool {
namespace {

namespace Gl = quill::Glocales;

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
  static bool force = false;
  convert->add_flag("--force", force, "Replace OUT even when it is write-protected");
  convert->footer(
      "Bytes the --from page does not define become U+FFFD (written as '?' unless --to is 65001); "
      "characters the --to page lacks become '?'. 0 is the default ANSI page, 1 the OEM page.");
  convert->callback([] {
    CheckPage("--from", from);
    CheckPage("--to", to);
    const std::string input = InputFile(in_name).ReadAll();
    const std::string output = Gl::WideToStrByCodePage(Gl::StrToWideByCodePage(input, from), to);
    OutputFile out(out_name, force);
    out.Write(output.data(), output.size());
    out.Commit();
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
