#include "quill/rtl/resstrings.h"

namespace quill {

UnicodeString LoadResString(const TResStringRec& rec) {
  return rec.Text != nullptr ? UnicodeString(rec.Text) : UnicodeString();
}

void BindResourceCatalog(const std::string&) {}

}  // namespace quill
