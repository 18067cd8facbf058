// File names of loaded modules, as the version routines ask for them.
#pragma once

#include <cstdint>
#include <string>

namespace quill::Gutils::internal {

// The full path of the running program (from /proc/self/exe), or "" when the
// system does not tell.
[[nodiscard]] std::string ProgramPath();

// The file name of module `Module`: 0 stands for the running program; any
// other handle names no module here and gives "".
[[nodiscard]] std::string ModuleFileName(int32_t Module);

// The full path of the loaded object that holds `address`: a shared library
// when the code was loaded as one, else the running program (ProgramPath).
[[nodiscard]] std::string ModulePathOf(const void* address);

}  // namespace quill::Gutils::internal
