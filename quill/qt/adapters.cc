// QWidget geometry and QObject properties as the registry routines' control
// and component.
#include "quill/qt/adapters.h"

#include <QByteArray>
#include <QMetaEnum>
#include <QMetaProperty>
#include <QMetaType>
#include <QVariant>

#include "quill/qt/internal/qtstrings.h"
#include "quill/rtl/format.h"

namespace quill::Gutils {

using qtinternal::FromQByteArray;
using qtinternal::FromQString;
using qtinternal::ToQByteArray;
using qtinternal::ToQString;

TQWidgetControl::~TQWidgetControl() = default;

int32_t TQWidgetControl::Left() const { return widget_.x(); }
int32_t TQWidgetControl::Top() const { return widget_.y(); }
int32_t TQWidgetControl::Width() const { return widget_.width(); }
int32_t TQWidgetControl::Height() const { return widget_.height(); }
void TQWidgetControl::SetLeft(int32_t Value) { widget_.move(Value, widget_.y()); }
void TQWidgetControl::SetTop(int32_t Value) { widget_.move(widget_.x(), Value); }
void TQWidgetControl::SetWidth(int32_t Value) { widget_.resize(Value, widget_.height()); }
void TQWidgetControl::SetHeight(int32_t Value) { widget_.resize(widget_.width(), Value); }

namespace {

// Where a property lives: a meta-object property (index >= 0) or a dynamic
// one (its exact name).
struct TFoundProperty {
  int index = -1;
  QByteArray name;
};

bool SameAsciiText(const QByteArray& a, const QByteArray& b) {
  return a.compare(b, Qt::CaseInsensitive) == 0;
}

std::optional<TFoundProperty> FindProperty(const QObject& object, const UnicodeString& Prop) {
  const QByteArray wanted = ToQString(Prop).toUtf8();
  const QMetaObject* meta = object.metaObject();
  if (const int exact = meta->indexOfProperty(wanted.constData()); exact >= 0) {
    return TFoundProperty{exact, wanted};
  }
  for (int i = 0; i < meta->propertyCount(); ++i) {
    const QByteArray name(meta->property(i).name());
    if (SameAsciiText(name, wanted)) return TFoundProperty{i, name};
  }
  for (const QByteArray& name : object.dynamicPropertyNames()) {
    if (name == wanted) return TFoundProperty{-1, name};
  }
  for (const QByteArray& name : object.dynamicPropertyNames()) {
    if (SameAsciiText(name, wanted)) return TFoundProperty{-1, name};
  }
  return std::nullopt;
}

TFoundProperty Require(const QObject& object, const UnicodeString& Prop) {
  std::optional<TFoundProperty> found = FindProperty(object, Prop);
  if (!found) throw EPropertyError(rtlmsg::SUnknownProperty, {Prop});
  return *found;
}

QVariant Read(const QObject& object, const TFoundProperty& p) {
  return p.index >= 0 ? object.metaObject()->property(p.index).read(&object)
                      : object.property(p.name.constData());
}

void Write(QObject& object, const TFoundProperty& p, const QVariant& value) {
  if (p.index >= 0) {
    object.metaObject()->property(p.index).write(&object, value);
  } else {
    object.setProperty(p.name.constData(), value);
  }
}

TGPropertyKind KindOfType(QMetaType type) {
  switch (type.id()) {
    case QMetaType::QByteArray: return pkAnsiString;
    case QMetaType::QString: return pkUnicodeString;
    case QMetaType::Bool: return pkEnumeration;
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Char:
    case QMetaType::SChar:
    case QMetaType::UChar:
      return pkInteger;
    default: return pkOther;
  }
}

constexpr char16_t kFalse[] = u"False";
constexpr char16_t kTrue[] = u"True";

}  // namespace

TQObjectComponent::~TQObjectComponent() = default;

UnicodeString TQObjectComponent::Name() const { return FromQString(object_.objectName()); }

std::optional<TGPropertyKind> TQObjectComponent::PropertyKind(const UnicodeString& Prop) const {
  const std::optional<TFoundProperty> p = FindProperty(object_, Prop);
  if (!p) return std::nullopt;
  if (p->index >= 0) {
    const QMetaProperty mp = object_.metaObject()->property(p->index);
    // Flags are sets of members, not one member: left alone.
    if (mp.isFlagType()) return pkOther;
    if (mp.isEnumType()) return pkEnumeration;
    return KindOfType(mp.metaType());
  }
  return KindOfType(object_.property(p->name.constData()).metaType());
}

AnsiString TQObjectComponent::GetStrProp(const UnicodeString& Prop) const {
  return FromQByteArray(Read(object_, Require(object_, Prop)).toByteArray());
}

void TQObjectComponent::SetStrProp(const UnicodeString& Prop, const AnsiString& Value) {
  Write(object_, Require(object_, Prop), QVariant(ToQByteArray(Value)));
}

UnicodeString TQObjectComponent::GetEnumProp(const UnicodeString& Prop) const {
  const TFoundProperty p = Require(object_, Prop);
  const QVariant value = Read(object_, p);
  if (p.index >= 0) {
    const QMetaProperty mp = object_.metaObject()->property(p.index);
    if (mp.isEnumType()) {
      const char* key = mp.enumerator().valueToKey(value.toInt());
      return key != nullptr ? FromQString(QString::fromLatin1(key)) : UnicodeString();
    }
  }
  return value.toBool() ? kTrue : kFalse;
}

bool TQObjectComponent::SetEnumProp(const UnicodeString& Prop, const UnicodeString& Member) {
  const TFoundProperty p = Require(object_, Prop);
  const QByteArray key = ToQString(Member).toLatin1();
  if (p.index >= 0) {
    const QMetaProperty mp = object_.metaObject()->property(p.index);
    if (mp.isEnumType()) {
      const QMetaEnum e = mp.enumerator();
      // Member names compare without regard to ASCII case, as the runtime
      // finds enumeration members.
      for (int i = 0; i < e.keyCount(); ++i) {
        if (SameAsciiText(QByteArray(e.key(i)), key)) {
          return mp.write(&object_, e.value(i));
        }
      }
      return false;
    }
  }
  if (SameAsciiText(key, "False")) {
    Write(object_, p, QVariant(false));
    return true;
  }
  if (SameAsciiText(key, "True")) {
    Write(object_, p, QVariant(true));
    return true;
  }
  return false;
}

int32_t TQObjectComponent::GetIntProp(const UnicodeString& Prop) const {
  return Read(object_, Require(object_, Prop)).toInt();
}

void TQObjectComponent::SetIntProp(const UnicodeString& Prop, int32_t Value) {
  Write(object_, Require(object_, Prop), QVariant(Value));
}

}  // namespace quill::Gutils
