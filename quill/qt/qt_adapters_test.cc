// Tests of the QWidget and QObject adapters with real widgets and objects,
// alone and in registry round trips (the store in a temporary folder).
#include <gtest/gtest.h>
#include <stdlib.h>

#include <QByteArray>
#include <QLineEdit>
#include <QObject>
#include <QString>
#include <QWidget>
#include <filesystem>
#include <string>

#include "quill/qt/adapters.h"
#include "quill/qt/quillqt.h"
#include "quill/rtl/registry.h"
#include "quill/utils/components.h"
#include "quill/utils/registry.h"

// A settings object with one property of each kind the adapter knows.
class TestSettings : public QObject {
  Q_OBJECT
  Q_PROPERTY(QByteArray code MEMBER code)
  Q_PROPERTY(QString title MEMBER title)
  Q_PROPERTY(Mode mode MEMBER mode)
  Q_PROPERTY(int count MEMBER count)
  Q_PROPERTY(bool enabled MEMBER enabled)
  Q_PROPERTY(double ratio MEMBER ratio)
  Q_PROPERTY(Options options READ Opts WRITE SetOpts)
  Q_PROPERTY(qint64 big MEMBER big)

 public:
  enum Mode { mdNone, mdFast, mdSafe };
  Q_ENUM(Mode)
  enum Option { opNone = 0, opA = 1, opB = 2 };
  Q_DECLARE_FLAGS(Options, Option)
  Q_FLAG(Options)

  QByteArray code = "abc";
  QString title = QStringLiteral("Title");
  Mode mode = mdFast;
  int count = 42;
  bool enabled = true;
  double ratio = 0.5;
  Options options = opA;
  Options Opts() const { return options; }
  void SetOpts(Options o) { options = o; }
  qint64 big = 1;
};

namespace quill::Gutils {
namespace {

namespace fs = std::filesystem;

// The registry store lives in a fresh temporary folder for this program,
// set before any test opens it and removed after the last.
class RegistryFolder : public ::testing::Environment {
 public:
  void SetUp() override {
    char dir[] = "/tmp/quill-qt-registry-XXXXXX";
    ASSERT_NE(::mkdtemp(dir), nullptr);
    dir_ = dir;
    ::setenv("QUILL_REGISTRY", (dir_ + "/registry.db").c_str(), 1);
  }
  void TearDown() override {
    std::error_code ignored;
    fs::remove_all(dir_, ignored);
  }

 private:
  std::string dir_;
};

[[maybe_unused]] ::testing::Environment* const kRegistryFolder =
    ::testing::AddGlobalTestEnvironment(new RegistryFolder);

constexpr char16_t kKey[] = u"Software\\QuillQtTest";

UnicodeString StoredValue(const UnicodeString& Name) {
  TRegistry reg;
  if (!reg.OpenKeyReadOnly(kKey) || !reg.ValueExists(Name)) return u"<none>";
  return reg.ReadString(Name);
}

class Adapters : public ::testing::Test {
 protected:
  void SetUp() override { DelRegKey(kKey); }
  void TearDown() override { DelRegKey(kKey); }
};

// ---- QWidget geometry ----

// Reading and setting one value at a time, the others kept.
TEST_F(Adapters, WidgetGeometry) {
  QWidget w;
  w.setGeometry(40, 60, 300, 200);
  TQWidgetControl c(w);
  EXPECT_EQ(c.Left(), w.x());
  EXPECT_EQ(c.Top(), w.y());
  EXPECT_EQ(c.Width(), 300);
  EXPECT_EQ(c.Height(), 200);
  c.SetLeft(11);
  c.SetTop(22);
  c.SetWidth(333);
  c.SetHeight(144);
  EXPECT_EQ(w.pos(), QPoint(11, 22));
  EXPECT_EQ(w.size(), QSize(333, 144));
}

// A shown window's geometry saved and loaded back through the registry.
TEST_F(Adapters, WindowGeometryRoundTrip) {
  ASSERT_NE(RegistryFileName().find(u"/quill-qt-registry-"), UnicodeString::npos);
  QWidget window;
  window.resize(320, 240);
  window.move(50, 70);
  window.show();
  TQWidgetControl control(window);
  SaveControlPosReg(control, kKey, u"Main");
  EXPECT_EQ(StoredValue(u"Main"), u"50,70,320,240");
  window.move(5, 5);
  window.resize(100, 100);
  LoadControlPosReg(control, kKey, u"Main");
  EXPECT_EQ(window.pos(), QPoint(50, 70));
  EXPECT_EQ(window.size(), QSize(320, 240));
}


// ---- QObject properties ----

// The kinds: QByteArray 8-bit, QString UTF-16, Q_ENUM and bool enumerations,
// int integers; flags, doubles and 64-bit integers other; missing nullopt.
TEST_F(Adapters, PropertyKinds) {
  TestSettings o;
  TQObjectComponent c(o);
  EXPECT_EQ(c.PropertyKind(u"code"), pkAnsiString);
  EXPECT_EQ(c.PropertyKind(u"title"), pkUnicodeString);
  EXPECT_EQ(c.PropertyKind(u"mode"), pkEnumeration);
  EXPECT_EQ(c.PropertyKind(u"enabled"), pkEnumeration);
  EXPECT_EQ(c.PropertyKind(u"count"), pkInteger);
  EXPECT_EQ(c.PropertyKind(u"ratio"), pkOther);
  EXPECT_EQ(c.PropertyKind(u"options"), pkOther);
  EXPECT_EQ(c.PropertyKind(u"big"), pkOther);
  EXPECT_EQ(c.PropertyKind(u"objectName"), pkUnicodeString);
  EXPECT_EQ(c.PropertyKind(u"nothing"), std::nullopt);
}

// Names are found without regard to ASCII case.
TEST_F(Adapters, PropertyNamesIgnoreCase) {
  TestSettings o;
  TQObjectComponent c(o);
  EXPECT_EQ(c.PropertyKind(u"COUNT"), pkInteger);
  EXPECT_EQ(c.GetIntProp(u"Count"), 42);
  c.SetStrProp(u"CODE", "xyz");
  EXPECT_EQ(o.code, QByteArray("xyz"));
}

// Getting and setting each kind on the object itself.
TEST_F(Adapters, PropertyAccess) {
  TestSettings o;
  o.setObjectName(QStringLiteral("settings"));
  TQObjectComponent c(o);
  EXPECT_EQ(c.Name(), u"settings");
  EXPECT_EQ(c.GetStrProp(u"code"), "abc");
  c.SetStrProp(u"code", std::string("\xe9\x00z", 3));  // bytes as they are, NUL included
  EXPECT_EQ(o.code, QByteArray("\xe9\x00z", 3));
  EXPECT_EQ(c.GetEnumProp(u"mode"), u"mdFast");
  EXPECT_TRUE(c.SetEnumProp(u"mode", u"mdSafe"));
  EXPECT_EQ(o.mode, TestSettings::mdSafe);
  EXPECT_TRUE(c.SetEnumProp(u"mode", u"MDNONE"));  // member names ignore case
  EXPECT_EQ(o.mode, TestSettings::mdNone);
  EXPECT_FALSE(c.SetEnumProp(u"mode", u"mdSlow"));  // unknown: false, unchanged
  EXPECT_EQ(o.mode, TestSettings::mdNone);
  EXPECT_EQ(c.GetEnumProp(u"enabled"), u"True");
  EXPECT_TRUE(c.SetEnumProp(u"enabled", u"False"));
  EXPECT_FALSE(o.enabled);
  EXPECT_EQ(c.GetEnumProp(u"enabled"), u"False");
  EXPECT_FALSE(c.SetEnumProp(u"enabled", u"Maybe"));
  EXPECT_EQ(c.GetIntProp(u"count"), 42);
  c.SetIntProp(u"count", -7);
  EXPECT_EQ(o.count, -7);
}

// Accessors on a missing property raise EPropertyError with its name.
TEST_F(Adapters, MissingPropertyRaises) {
  TestSettings o;
  TQObjectComponent c(o);
  try {
    (void)c.GetIntProp(u"nothing");
    FAIL() << "no error";
  } catch (const EPropertyError& e) {
    EXPECT_EQ(e.Message(), u"Property nothing does not exist");
  }
  EXPECT_THROW(c.SetStrProp(u"nothing", "x"), EPropertyError);
  EXPECT_THROW((void)c.SetEnumProp(u"nothing", u"x"), EPropertyError);
}

// Dynamic properties count as well, by the kind of their value.
TEST_F(Adapters, DynamicProperties) {
  QObject o;
  o.setProperty("level", 5);
  o.setProperty("tag", QByteArray("t1"));
  TQObjectComponent c(o);
  EXPECT_EQ(c.PropertyKind(u"level"), pkInteger);
  EXPECT_EQ(c.PropertyKind(u"Tag"), pkAnsiString);
  c.SetIntProp(u"level", 9);
  EXPECT_EQ(o.property("level").toInt(), 9);
}

// Round trip through the registry: 8-bit strings, enumerations by member
// name and integers are saved as "<name>.<property>" and loaded back; the
// QString property is deliberately not saved (the routines skip UTF-16
// strings), and neither are the other kinds.
TEST_F(Adapters, PropertiesRoundTrip) {
  TestSettings o;
  o.setObjectName(QStringLiteral("Opts"));
  TQObjectComponent c(o);
  for (const char16_t* p : {u"code", u"title", u"mode", u"count", u"enabled", u"ratio", u"options"}) {
    SavePropertyValueReg(c, p, kKey);
  }
  EXPECT_EQ(StoredValue(u"Opts.code"), u"abc");
  EXPECT_EQ(StoredValue(u"Opts.mode"), u"mdFast");
  EXPECT_EQ(StoredValue(u"Opts.count"), u"42");
  EXPECT_EQ(StoredValue(u"Opts.enabled"), u"True");
  EXPECT_EQ(StoredValue(u"Opts.title"), u"<none>");
  EXPECT_EQ(StoredValue(u"Opts.ratio"), u"<none>");
  EXPECT_EQ(StoredValue(u"Opts.options"), u"<none>");

  TestSettings fresh;
  fresh.setObjectName(QStringLiteral("Opts"));
  fresh.code = "other";
  fresh.mode = TestSettings::mdSafe;
  fresh.count = 0;
  fresh.enabled = false;
  fresh.title = QStringLiteral("kept");
  TQObjectComponent f(fresh);
  for (const char16_t* p : {u"code", u"title", u"mode", u"count", u"enabled"}) {
    LoadPropertyValueReg(f, p, kKey);
  }
  EXPECT_EQ(fresh.code, QByteArray("abc"));
  EXPECT_EQ(fresh.mode, TestSettings::mdFast);
  EXPECT_EQ(fresh.count, 42);
  EXPECT_TRUE(fresh.enabled);
  EXPECT_EQ(fresh.title, QStringLiteral("kept"));
}

// A member name the enumeration does not have, found in the registry,
// raises the conversion error when loaded.
TEST_F(Adapters, UnknownMemberInRegistryRaises) {
  {
    TRegistry reg;
    ASSERT_TRUE(reg.OpenKey(kKey, true));
    reg.WriteString(u"Opts.mode", u"mdWarp");
  }
  TestSettings o;
  o.setObjectName(QStringLiteral("Opts"));
  TQObjectComponent c(o);
  EXPECT_THROW(LoadPropertyValueReg(c, u"mode", kKey), EPropertyConvertError);
  EXPECT_EQ(o.mode, TestSettings::mdFast);
}

// A real widget's own properties: an enumeration of the Qt namespace
// (focusPolicy), an integer (maxLength), the QString text skipped.
TEST_F(Adapters, RealWidgetProperties) {
  QLineEdit edit;
  edit.setObjectName(QStringLiteral("Edit1"));
  edit.setFocusPolicy(Qt::ClickFocus);
  edit.setMaxLength(12);
  edit.setText(QStringLiteral("hello"));
  TQObjectComponent c(edit);
  EXPECT_EQ(c.PropertyKind(u"focusPolicy"), pkEnumeration);
  EXPECT_EQ(c.GetEnumProp(u"focusPolicy"), u"ClickFocus");
  for (const char16_t* p : {u"focusPolicy", u"maxLength", u"text"}) SavePropertyValueReg(c, p, kKey);
  EXPECT_EQ(StoredValue(u"Edit1.focusPolicy"), u"ClickFocus");
  EXPECT_EQ(StoredValue(u"Edit1.maxLength"), u"12");
  EXPECT_EQ(StoredValue(u"Edit1.text"), u"<none>");
  edit.setFocusPolicy(Qt::NoFocus);
  edit.setMaxLength(99);
  for (const char16_t* p : {u"focusPolicy", u"maxLength"}) LoadPropertyValueReg(c, p, kKey);
  EXPECT_EQ(edit.focusPolicy(), Qt::ClickFocus);
  EXPECT_EQ(edit.maxLength(), 12);
}

}  // namespace
}  // namespace quill::Gutils

#include "qt_adapters_test.moc"
