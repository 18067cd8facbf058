// Gutils registry helpers: reading a value with a default, deleting a key
// tree, and saving and restoring a control's position and size or one named
// property of a component below HKEY_CURRENT_USER.
//
//   TGMemoryControl wnd(10, 20, 300, 200);
//   SaveControlPosReg(wnd, u"Software\\MyApp", u"MainWindow");   // "10,20,300,200"
//   LoadControlPosReg(wnd, u"Software\\MyApp", u"MainWindow");
//
// Nothing here catches an error: registry errors, conversion errors and
// unknown enumeration members reach the caller. A missing key or value is not
// an error: reads give the default. The position and property routines open
// their key through TRegistryIniFile, which creates it (also when loading).
#pragma once

#include <cstdint>

#include "quill/rtl/export.h"
#include "quill/rtl/registry.h"
#include "quill/rtl/types.h"
#include "quill/utils/components.h"

namespace quill::Gutils {

// The library's own name for a registry object; it adds nothing.
class QUILL_API TGRegistry : public TRegistry {
 public:
  using TRegistry::TRegistry;
  ~TGRegistry() override;
};

// The value `Name` of Reg's open key as text; `Default` when it does not exist.
// A value of another type raises ERegistryException ("Invalid data type").
[[nodiscard]] QUILL_API UnicodeString ReadRegStr(TRegistry& Reg, const UnicodeString& Name,
                                                 const UnicodeString& Default);
// The same for a boolean (an integer value, non-zero is true).
[[nodiscard]] QUILL_API bool ReadRegBool(TRegistry& Reg, const UnicodeString& Name, bool Default);
// The same for an integer value.
[[nodiscard]] QUILL_API int32_t ReadRegInt(TRegistry& Reg, const UnicodeString& Name, int32_t Default);

// Deletes the key Path (below HKEY_CURRENT_USER) with all its subkeys,
// deepest first, each level's subkeys in the order GetKeyNames lists them.
// An empty path does nothing; one trailing backslash is removed first; a
// missing key does nothing. Beware: "\" becomes the empty path after the
// backslash is removed, which names the root itself: every key below
// HKEY_CURRENT_USER is deleted (the root stays).
QUILL_API void DelRegKey(const UnicodeString& Path);

// Writes the string value Name in the key Key: "Left,Top,Width,Height" of
// Control in decimal (for example "10,20,300,200").
QUILL_API void SaveControlPosReg(TGControl& Control, const UnicodeString& Key, const UnicodeString& Name);
// Reads the value Name of Key (default: the control's current position in
// the saved form) and sets Left, Top, Width and Height in that order from its
// four comma-separated fields, taken one at a time from the front: a field
// runs to the next "," (removed with it), or is the whole rest when no comma
// is left. So text after a fourth comma is ignored ("1,2,3,4,x" loads fine).
// A missing or malformed field raises EConvertError when it is reached; the
// fields set before it stay set.
QUILL_API void LoadControlPosReg(TGControl& Control, const UnicodeString& Key, const UnicodeString& Name);

// Writes the property PropName of Component as the string value
// "<component name>.<PropName>" in Key: 8-bit string properties their text,
// enumerations their member name, integers their decimal text. Nothing is
// written for a missing property, for other kinds (UTF-16 strings included,
// by design), or when the text is empty, so a saved value is never cleared.
QUILL_API void SavePropertyValueReg(TGComponent& Component, const UnicodeString& PropName, const UnicodeString& Key);
// Reads "<component name>.<PropName>" from Key and, when the text is not
// empty and the property exists, sets it by the same kinds: the text, the
// member of that name (unknown: EPropertyConvertError), or StrToInt of the
// text (malformed: EConvertError). Other kinds are left alone.
QUILL_API void LoadPropertyValueReg(TGComponent& Component, const UnicodeString& PropName, const UnicodeString& Key);

}  // namespace quill::Gutils
