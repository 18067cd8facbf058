// The built-in user-interface service: questions on the terminal, the
// information window's text on standard error.
#pragma once

#include <cstdint>
#include <memory>

#include "quill/utils/uiservice.h"

namespace quill::Gutils::internal {

class TTerminalUIService final : public TUIService {
 public:
  int32_t MessageBox(const UnicodeString& Text, const UnicodeString& Caption,
                     int32_t Flags) override;
  std::unique_ptr<TInfoForm> CreateInfoForm() override;
};

}  // namespace quill::Gutils::internal
