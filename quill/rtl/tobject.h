// TObject: the root of the library's class hierarchy.
//
// Owning containers (TGObjectList, TStringList with OwnsObjects) hold TObject*
// and delete them through the virtual destructor.
#pragma once

#include "quill/rtl/export.h"

namespace quill {

class QUILL_API TObject {
 public:
  TObject() = default;
  TObject(const TObject&) = default;
  TObject& operator=(const TObject&) = default;
  virtual ~TObject();
};

}  // namespace quill
