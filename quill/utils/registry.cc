// Gutils registry helpers over TRegistry and TRegistryIniFile.
#include "quill/utils/registry.h"

#include "quill/rtl/intconv.h"
#include "quill/rtl/tstrings.h"
#include "quill/rtl/unicode.h"

namespace quill::Gutils {

TGRegistry::~TGRegistry() = default;

UnicodeString ReadRegStr(TRegistry& Reg, const UnicodeString& Name, const UnicodeString& Default) {
  return Reg.ValueExists(Name) ? Reg.ReadString(Name) : Default;
}

bool ReadRegBool(TRegistry& Reg, const UnicodeString& Name, bool Default) {
  return Reg.ValueExists(Name) ? Reg.ReadBool(Name) : Default;
}

int32_t ReadRegInt(TRegistry& Reg, const UnicodeString& Name, int32_t Default) {
  return Reg.ValueExists(Name) ? Reg.ReadInteger(Name) : Default;
}

namespace {

// One level of DelRegKey: every path is relative to the root, because the
// key is always closed before the next open.
void DeleteTreeAt(TRegistry& Reg, const UnicodeString& Path) {
  if (!Reg.OpenKey(Path, false)) return;
  if (!Reg.HasSubKeys()) {
    Reg.CloseKey();
  } else {
    TStringList names;
    Reg.GetKeyNames(names);
    Reg.CloseKey();
    for (int32_t i = 0; i < names.Count(); ++i) DeleteTreeAt(Reg, Path + u"\\" + names.Strings(i));
  }
  Reg.DeleteKey(Path);
}

UnicodeString PositionText(const TGControl& Control) {
  return IntToStr(Control.Left()) + u"," + IntToStr(Control.Top()) + u"," + IntToStr(Control.Width()) + u"," +
         IntToStr(Control.Height());
}

// Takes the next field from the front of Text: up to the first "," (which is
// removed with it), or the whole rest when no comma is left.
UnicodeString TakeField(UnicodeString& Text) {
  const size_t comma = Text.find(u',');
  UnicodeString field;
  if (comma == UnicodeString::npos) {
    field = std::move(Text);
    Text.clear();
  } else {
    field = Text.substr(0, comma);
    Text.erase(0, comma + 1);
  }
  return field;
}

UnicodeString PropertyValueName(const TGComponent& Component, const UnicodeString& PropName) {
  return Component.Name() + u"." + PropName;
}

}  // namespace

void DelRegKey(const UnicodeString& Path) {
  if (Path.empty()) return;
  UnicodeString path = Path;
  if (path.back() == u'\\') path.pop_back();
  TRegistry reg;
  DeleteTreeAt(reg, path);
}

void SaveControlPosReg(TGControl& Control, const UnicodeString& Key, const UnicodeString& Name) {
  TRegistryIniFile ini(Key);
  ini.WriteString(UnicodeString(), Name, PositionText(Control));
}

void LoadControlPosReg(TGControl& Control, const UnicodeString& Key, const UnicodeString& Name) {
  TRegistryIniFile ini(Key);
  UnicodeString text = ini.ReadString(UnicodeString(), Name, PositionText(Control));
  Control.SetLeft(StrToInt(TakeField(text)));
  Control.SetTop(StrToInt(TakeField(text)));
  Control.SetWidth(StrToInt(TakeField(text)));
  Control.SetHeight(StrToInt(TakeField(text)));
}

void SavePropertyValueReg(TGComponent& Component, const UnicodeString& PropName, const UnicodeString& Key) {
  TRegistryIniFile ini(Key);
  const auto kind = Component.PropertyKind(PropName);
  if (!kind) return;
  UnicodeString text;
  switch (*kind) {
    case pkAnsiString: text = AnsiToUnicode(Component.GetStrProp(PropName)); break;
    case pkEnumeration: text = Component.GetEnumProp(PropName); break;
    case pkInteger: text = IntToStr(Component.GetIntProp(PropName)); break;
    default: break;  // UTF-16 strings and every other kind: deliberately not saved
  }
  if (!text.empty()) ini.WriteString(UnicodeString(), PropertyValueName(Component, PropName), text);
}

void LoadPropertyValueReg(TGComponent& Component, const UnicodeString& PropName, const UnicodeString& Key) {
  TRegistryIniFile ini(Key);
  const UnicodeString text = ini.ReadString(UnicodeString(), PropertyValueName(Component, PropName), UnicodeString());
  if (text.empty()) return;
  const auto kind = Component.PropertyKind(PropName);
  if (!kind) return;
  switch (*kind) {
    case pkAnsiString: Component.SetStrProp(PropName, UnicodeToAnsi(text)); break;
    case pkEnumeration:
      if (!Component.SetEnumProp(PropName, text)) throw EPropertyConvertError(rtlmsg::SInvalidPropertyElement, {text});
      break;
    case pkInteger: Component.SetIntProp(PropName, StrToInt(text)); break;
    default: break;
  }
}

}  // namespace quill::Gutils
