// The control and component interfaces and their in-memory implementations.
#include "quill/utils/components.h"

#include "quill/rtl/compare.h"

namespace quill {
EPropertyConvertError::~EPropertyConvertError() = default;
EPropertyError::~EPropertyError() = default;
}  // namespace quill

namespace quill::Gutils {

TGControl::~TGControl() = default;
TGComponent::~TGComponent() = default;
TGMemoryControl::~TGMemoryControl() = default;
TGMemoryComponent::~TGMemoryComponent() = default;

TGMemoryComponent::Property* TGMemoryComponent::Find(const UnicodeString& Prop) {
  for (auto& p : props_) {
    if (SameText(p.name, Prop)) return &p;
  }
  return nullptr;
}

const TGMemoryComponent::Property* TGMemoryComponent::Find(const UnicodeString& Prop) const {
  return const_cast<TGMemoryComponent*>(this)->Find(Prop);
}

TGMemoryComponent::Property& TGMemoryComponent::Get(const UnicodeString& Prop, TGPropertyKind Kind) {
  Property* p = Find(Prop);
  if (p == nullptr || p->kind != Kind) throw EPropertyError(rtlmsg::SUnknownProperty, {Prop});
  return *p;
}

const TGMemoryComponent::Property& TGMemoryComponent::Get(const UnicodeString& Prop, TGPropertyKind Kind) const {
  return const_cast<TGMemoryComponent*>(this)->Get(Prop, Kind);
}

TGMemoryComponent::Property& TGMemoryComponent::Put(const UnicodeString& Prop, TGPropertyKind Kind) {
  Property* p = Find(Prop);
  if (p == nullptr) {
    props_.emplace_back();
    p = &props_.back();
  }
  *p = Property{};
  p->name = Prop;
  p->kind = Kind;
  return *p;
}

void TGMemoryComponent::AddStrProperty(const UnicodeString& Prop, const AnsiString& Value) {
  Put(Prop, pkAnsiString).ansi = Value;
}

void TGMemoryComponent::AddUnicodeProperty(const UnicodeString& Prop, const UnicodeString& Value) {
  Put(Prop, pkUnicodeString).text = Value;
}

void TGMemoryComponent::AddEnumProperty(const UnicodeString& Prop, std::vector<UnicodeString> Members,
                                        const UnicodeString& Current) {
  Property& p = Put(Prop, pkEnumeration);
  p.members = std::move(Members);
  p.text = Current;
}

void TGMemoryComponent::AddIntProperty(const UnicodeString& Prop, int32_t Value) {
  Put(Prop, pkInteger).integer = Value;
}

void TGMemoryComponent::AddOtherProperty(const UnicodeString& Prop) { Put(Prop, pkOther); }

UnicodeString TGMemoryComponent::GetUnicodeProp(const UnicodeString& Prop) const {
  return Get(Prop, pkUnicodeString).text;
}

void TGMemoryComponent::SetUnicodeProp(const UnicodeString& Prop, const UnicodeString& Value) {
  Get(Prop, pkUnicodeString).text = Value;
}

std::optional<TGPropertyKind> TGMemoryComponent::PropertyKind(const UnicodeString& Prop) const {
  const Property* p = Find(Prop);
  if (p == nullptr) return std::nullopt;
  return p->kind;
}

AnsiString TGMemoryComponent::GetStrProp(const UnicodeString& Prop) const { return Get(Prop, pkAnsiString).ansi; }

void TGMemoryComponent::SetStrProp(const UnicodeString& Prop, const AnsiString& Value) {
  Get(Prop, pkAnsiString).ansi = Value;
}

UnicodeString TGMemoryComponent::GetEnumProp(const UnicodeString& Prop) const {
  return Get(Prop, pkEnumeration).text;
}

bool TGMemoryComponent::SetEnumProp(const UnicodeString& Prop, const UnicodeString& Member) {
  Property& p = Get(Prop, pkEnumeration);
  for (const auto& m : p.members) {
    if (SameText(m, Member)) {
      p.text = m;  // the member's own spelling
      return true;
    }
  }
  return false;
}

int32_t TGMemoryComponent::GetIntProp(const UnicodeString& Prop) const { return Get(Prop, pkInteger).integer; }

void TGMemoryComponent::SetIntProp(const UnicodeString& Prop, int32_t Value) { Get(Prop, pkInteger).integer = Value; }

}  // namespace quill::Gutils
