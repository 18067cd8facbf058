// Adapters that let the registry routines (quill/utils/registry.h) save and
// load Qt widgets' geometry and Qt objects' properties.
//
//   QMainWindow window;
//   TQWidgetControl control(window);
//   LoadControlPosReg(control, u"Software\\MyApp", u"Main");    // "Left,Top,Width,Height"
//   SaveControlPosReg(control, u"Software\\MyApp", u"Main");
//
//   TQObjectComponent settings(*someObject);          // objectName() is the name
//   SavePropertyValueReg(settings, u"mode", u"Software\\MyApp");   // "<name>.mode"
//
// An adapter refers to the widget or object; it does not own it and must
// not outlive it.
#pragma once

#include <QObject>
#include <QWidget>
#include <cstdint>
#include <optional>

#include "quill/rtl/export.h"
#include "quill/rtl/types.h"
#include "quill/utils/components.h"

namespace quill::Gutils {

// A QWidget's geometry as a control. Left and Top are the position that
// QWidget::pos()/move() use (for a window: its frame's top-left corner);
// Width and Height the size that size()/resize() use (without a window's
// frame), so a saved geometry loads back to the same window. Each setter
// changes one value and keeps the other three.
class QUILL_API TQWidgetControl final : public TGControl {
 public:
  explicit TQWidgetControl(QWidget& Widget) : widget_(Widget) {}
  ~TQWidgetControl() override;
  [[nodiscard]] int32_t Left() const override;
  [[nodiscard]] int32_t Top() const override;
  [[nodiscard]] int32_t Width() const override;
  [[nodiscard]] int32_t Height() const override;
  void SetLeft(int32_t Value) override;
  void SetTop(int32_t Value) override;
  void SetWidth(int32_t Value) override;
  void SetHeight(int32_t Value) override;

 private:
  QWidget& widget_;
};

// A QObject's properties as a component; its objectName() is the name.
// Properties are the meta-object's (Q_PROPERTY) and the object's dynamic
// ones, found by name without regard to ASCII case (the meta-object's
// spelling wins when both match). Kinds:
// - QByteArray: pkAnsiString (the bytes as they are);
// - QString: pkUnicodeString, which the registry routines leave alone;
// - an enumeration known to the meta-object system (Q_ENUM): pkEnumeration,
//   read and written by key name through QMetaEnum; bool likewise, with the
//   members False and True;
// - int and the other integer types of 32 bits or fewer: pkInteger;
// - anything else (flags, doubles, 64-bit integers, ...): pkOther.
// Accessors used on a missing property raise EPropertyError ("Property %s
// does not exist"); on a property of another kind they convert the value as
// QVariant does.
class QUILL_API TQObjectComponent final : public TGComponent {
 public:
  explicit TQObjectComponent(QObject& Object) : object_(Object) {}
  ~TQObjectComponent() override;
  [[nodiscard]] UnicodeString Name() const override;
  [[nodiscard]] std::optional<TGPropertyKind> PropertyKind(const UnicodeString& Prop) const override;
  [[nodiscard]] AnsiString GetStrProp(const UnicodeString& Prop) const override;
  void SetStrProp(const UnicodeString& Prop, const AnsiString& Value) override;
  [[nodiscard]] UnicodeString GetEnumProp(const UnicodeString& Prop) const override;
  bool SetEnumProp(const UnicodeString& Prop, const UnicodeString& Member) override;
  [[nodiscard]] int32_t GetIntProp(const UnicodeString& Prop) const override;
  void SetIntProp(const UnicodeString& Prop, int32_t Value) override;

 private:
  QObject& object_;
};

}  // namespace quill::Gutils
