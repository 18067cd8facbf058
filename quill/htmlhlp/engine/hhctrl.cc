// libquill23-hhctrl.so: the help engine the Ghtmlhlp unit loads on first use.
// It exports the two entry points of the HTML Help API by their plain names.
#include <unicode/ustring.h>

#include <cstring>
#include <string>

#include "quill/htmlhlp/engine/showhelp.h"
#include "quill/utils/internal/spawn.h"

namespace {

// UTF-16 to UTF-8; unpaired surrogates become U+FFFD. "" when ICU refuses.
std::string ToUtf8(const char16_t* text) {
  const int32_t length = u_strlen(text);
  UErrorCode status = U_ZERO_ERROR;
  int32_t needed = 0;
  u_strToUTF8WithSub(nullptr, 0, &needed, text, length, 0xFFFD, nullptr, &status);
  if (status != U_BUFFER_OVERFLOW_ERROR && U_FAILURE(status)) return {};
  std::string out(static_cast<size_t>(needed), '\0');
  status = U_ZERO_ERROR;
  u_strToUTF8WithSub(out.data(), needed, nullptr, text, length, 0xFFFD, nullptr, &status);
  return U_FAILURE(status) ? std::string() : out;
}

// The viewers this copy of the engine started are reaped by its later calls;
// when the engine is unloaded, the ones that have ended by then are reaped
// here, so they do not stay behind as zombies of the host.
__attribute__((destructor)) void ReapViewersAtUnload() { quill::Gutils::internal::ReapEndedChildren(); }

}  // namespace

// The 8-bit form takes the name's bytes as the file system's (Linux file
// names are bytes). The owner window is not used; the command data only by
// HH_HELP_CONTEXT (the context number).
extern "C" __attribute__((visibility("default"))) uintptr_t HtmlHelpA(uintptr_t hwndCaller, const char* pszFile,
                                                                      uint32_t uCommand, uintptr_t dwData) {
  (void)hwndCaller;
  if (pszFile == nullptr) return 0;
  return quill::Ghtmlhlp::engine::ShowHelp(std::string_view(pszFile, std::strlen(pszFile)), uCommand, dwData);
}

// The UTF-16 form: the name is converted to UTF-8 first.
extern "C" __attribute__((visibility("default"))) uintptr_t HtmlHelpW(uintptr_t hwndCaller, const char16_t* pszFile,
                                                                      uint32_t uCommand, uintptr_t dwData) {
  (void)hwndCaller;
  if (pszFile == nullptr) return 0;
  return quill::Ghtmlhlp::engine::ShowHelp(ToUtf8(pszFile), uCommand, dwData);
}
