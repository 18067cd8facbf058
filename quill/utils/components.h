// Controls and components as the registry persistence routines see them.
//
// Gutils saves a control's position and size and a component's named
// properties without knowing any UI library: it talks to these two small
// interfaces. The Qt module adapts QWidget geometry and QObject properties to
// them; TGMemoryControl and TGMemoryComponent are plain in-memory versions for
// programs without a UI and for tests.
//
//   TGMemoryComponent form(u"Form1");
//   form.AddStrProperty(u"Caption", "Hello");
//   form.AddEnumProperty(u"Align", {u"alNone", u"alTop", u"alClient"}, u"alNone");
//   SavePropertyValueReg(form, u"Caption", u"Software\\MyApp");   // writes Form1.Caption
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "quill/rtl/exception.h"
#include "quill/rtl/export.h"
#include "quill/rtl/types.h"

namespace quill {
// The runtime's error for a property value it cannot convert, such as an
// enumeration member name the type does not have: "Invalid property element: %s".
QUILL_DECLARE_EXCEPTION(EPropertyConvertError, Exception);
// Reaching a property a component does not have: "Property %s does not exist".
QUILL_DECLARE_EXCEPTION(EPropertyError, Exception);
namespace rtlmsg {
inline constexpr char16_t SInvalidPropertyElement[] = u"Invalid property element: %s";
inline constexpr char16_t SUnknownProperty[] = u"Property %s does not exist";
}  // namespace rtlmsg
}  // namespace quill

namespace quill::Gutils {

// A visual control's position and size, each readable and settable.
class QUILL_API TGControl {
 public:
  virtual ~TGControl();
  [[nodiscard]] virtual int32_t Left() const = 0;
  [[nodiscard]] virtual int32_t Top() const = 0;
  [[nodiscard]] virtual int32_t Width() const = 0;
  [[nodiscard]] virtual int32_t Height() const = 0;
  virtual void SetLeft(int32_t Value) = 0;
  virtual void SetTop(int32_t Value) = 0;
  virtual void SetWidth(int32_t Value) = 0;
  virtual void SetHeight(int32_t Value) = 0;
};

// Kinds of published properties: short or 8-bit string, UTF-16 string,
// enumeration (read and written by member name), integer, anything else.
enum TGPropertyKind : uint8_t { pkAnsiString, pkUnicodeString, pkEnumeration, pkInteger, pkOther };

// A component: its name and its published properties by name. Callers use
// each accessor only for a property of the matching kind; what an
// implementation does otherwise is its own choice (the in-memory one raises
// EPropertyError).
class QUILL_API TGComponent {
 public:
  virtual ~TGComponent();
  [[nodiscard]] virtual UnicodeString Name() const = 0;
  // The kind of the property `Prop`; nullopt when there is no such property.
  [[nodiscard]] virtual std::optional<TGPropertyKind> PropertyKind(const UnicodeString& Prop) const = 0;
  // pkAnsiString properties.
  [[nodiscard]] virtual AnsiString GetStrProp(const UnicodeString& Prop) const = 0;
  virtual void SetStrProp(const UnicodeString& Prop, const AnsiString& Value) = 0;
  // pkEnumeration properties: the name of the current member.
  [[nodiscard]] virtual UnicodeString GetEnumProp(const UnicodeString& Prop) const = 0;
  // Sets the member named `Member`; false (nothing changed) when the
  // enumeration has no such member.
  virtual bool SetEnumProp(const UnicodeString& Prop, const UnicodeString& Member) = 0;
  // pkInteger properties.
  [[nodiscard]] virtual int32_t GetIntProp(const UnicodeString& Prop) const = 0;
  virtual void SetIntProp(const UnicodeString& Prop, int32_t Value) = 0;
};

// A control that is four integers in memory.
class QUILL_API TGMemoryControl : public TGControl {
 public:
  TGMemoryControl() = default;
  TGMemoryControl(int32_t ALeft, int32_t ATop, int32_t AWidth, int32_t AHeight)
      : left_(ALeft), top_(ATop), width_(AWidth), height_(AHeight) {}
  ~TGMemoryControl() override;
  [[nodiscard]] int32_t Left() const override { return left_; }
  [[nodiscard]] int32_t Top() const override { return top_; }
  [[nodiscard]] int32_t Width() const override { return width_; }
  [[nodiscard]] int32_t Height() const override { return height_; }
  void SetLeft(int32_t Value) override { left_ = Value; }
  void SetTop(int32_t Value) override { top_ = Value; }
  void SetWidth(int32_t Value) override { width_ = Value; }
  void SetHeight(int32_t Value) override { height_ = Value; }

 private:
  int32_t left_ = 0, top_ = 0, width_ = 0, height_ = 0;
};

// A component whose properties live in memory. Property and member names
// compare without regard to ASCII case, as the runtime finds them. Accessors
// raise EPropertyError for a missing property or one of another kind.
class QUILL_API TGMemoryComponent : public TGComponent {
 public:
  explicit TGMemoryComponent(UnicodeString AName) : name_(std::move(AName)) {}
  ~TGMemoryComponent() override;

  // Each Add replaces a property of the same name (whatever its kind).
  void AddStrProperty(const UnicodeString& Prop, const AnsiString& Value);
  void AddUnicodeProperty(const UnicodeString& Prop, const UnicodeString& Value);
  // REQUIRES: Current is one of Members.
  void AddEnumProperty(const UnicodeString& Prop, std::vector<UnicodeString> Members, const UnicodeString& Current);
  void AddIntProperty(const UnicodeString& Prop, int32_t Value);
  // A property of a kind the persistence routines leave alone (float, set...).
  void AddOtherProperty(const UnicodeString& Prop);
  // pkUnicodeString properties.
  [[nodiscard]] UnicodeString GetUnicodeProp(const UnicodeString& Prop) const;
  void SetUnicodeProp(const UnicodeString& Prop, const UnicodeString& Value);

  [[nodiscard]] UnicodeString Name() const override { return name_; }
  void SetName(const UnicodeString& Value) { name_ = Value; }
  [[nodiscard]] std::optional<TGPropertyKind> PropertyKind(const UnicodeString& Prop) const override;
  [[nodiscard]] AnsiString GetStrProp(const UnicodeString& Prop) const override;
  void SetStrProp(const UnicodeString& Prop, const AnsiString& Value) override;
  [[nodiscard]] UnicodeString GetEnumProp(const UnicodeString& Prop) const override;
  bool SetEnumProp(const UnicodeString& Prop, const UnicodeString& Member) override;
  [[nodiscard]] int32_t GetIntProp(const UnicodeString& Prop) const override;
  void SetIntProp(const UnicodeString& Prop, int32_t Value) override;

 private:
  struct Property {
    UnicodeString name;
    TGPropertyKind kind = pkOther;
    AnsiString ansi;
    UnicodeString text;  // pkUnicodeString value, or pkEnumeration member
    std::vector<UnicodeString> members;
    int32_t integer = 0;
  };
  Property* Find(const UnicodeString& Prop);
  const Property* Find(const UnicodeString& Prop) const;
  Property& Get(const UnicodeString& Prop, TGPropertyKind Kind);
  const Property& Get(const UnicodeString& Prop, TGPropertyKind Kind) const;
  Property& Put(const UnicodeString& Prop, TGPropertyKind Kind);

  UnicodeString name_;
  std::vector<Property> props_;
};

}  // namespace quill::Gutils
