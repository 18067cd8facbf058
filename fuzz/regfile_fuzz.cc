// Reads arbitrary bytes as a registry file. A file that parses is written back
// and parsed again: the second parse must give the same operations, and the
// UTF-16LE bytes of the written text must parse the same way too. Bad files
// must end in ERegistryFileError, never in a crash or another exception.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "quill/rtl/regfile.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  quill::TRegFileOperations ops;
  try {
    ops = quill::ParseRegFile(bytes);
  } catch (const quill::ERegistryFileError&) {
    return 0;
  }
  // Every parsed operation can be written: parsing never yields names with
  // line breaks, empty key names or a deletion of the root.
  const quill::UnicodeString text = quill::WriteRegFile(ops);
  if (quill::ParseRegFileText(text) != ops) std::abort();
  if (quill::ParseRegFile(quill::EncodeRegFile(text)) != ops) std::abort();
  return 0;
}
