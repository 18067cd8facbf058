// Gutils registry helpers: defaults, key-tree deletion, control positions and
// property values, against a real database in a temporary folder.
#include "quill/utils/registry.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "quill/rtl/intconv.h"
#include "quill/rtl/internal/temp_registry_for_test.h"
#include "quill/rtl/tstrings.h"
#include "quill/rtl/unicode.h"

namespace quill::Gutils {
namespace {

using testing::TempRegistry;

UnicodeString StoredString(const UnicodeString& key, const UnicodeString& name) {
  TRegistry reg;
  if (!reg.OpenKey(key, false)) return u"(no key)";
  if (!reg.ValueExists(name)) return u"(no value)";
  return reg.ReadString(name);
}

void Store(const UnicodeString& key, const UnicodeString& name, const UnicodeString& text) {
  TRegistry reg;
  ASSERT_TRUE(reg.OpenKey(key, true));
  reg.WriteString(name, text);
}

// The message of the E that `f` raises; "(no exception)" when none.
template <typename E, typename F>
UnicodeString ErrorOf(F f) {
  try {
    f();
  } catch (const E& e) {
    return e.Message();
  }
  return u"(no exception)";
}

std::string Pos(const TGControl& c) {
  return std::to_string(c.Left()) + "," + std::to_string(c.Top()) + "," + std::to_string(c.Width()) + "," +
         std::to_string(c.Height());
}

TEST(TGRegistry, IsARegistryObject) {
  TempRegistry tmp;
  TGRegistry reg;
  TRegistry& base = reg;
  ASSERT_TRUE(base.OpenKey(u"G", true));
  reg.WriteInteger(u"n", 3);
  EXPECT_EQ(base.ReadInteger(u"n"), 3);
  TGRegistry readOnly(KEY_READ);
  EXPECT_EQ(readOnly.Access(), KEY_READ);
}

TEST(ReadRegStr, DefaultWhenMissingValueWhenPresent) {
  TempRegistry tmp;
  TRegistry reg;
  ASSERT_TRUE(reg.OpenKey(u"R", true));
  EXPECT_EQ(ReadRegStr(reg, u"s", u"dflt"), u"dflt");
  reg.WriteString(u"s", u"");
  // An existing empty value is the result, not the default.
  EXPECT_EQ(ReadRegStr(reg, u"s", u"dflt"), u"");
  reg.WriteString(u"s", u"value");
  EXPECT_EQ(ReadRegStr(reg, u"S", u"dflt"), u"value");
}

TEST(ReadRegBool, DefaultWhenMissingIntegerWhenPresent) {
  TempRegistry tmp;
  TRegistry reg;
  ASSERT_TRUE(reg.OpenKey(u"R", true));
  EXPECT_TRUE(ReadRegBool(reg, u"b", true));
  EXPECT_FALSE(ReadRegBool(reg, u"b", false));
  reg.WriteBool(u"b", false);
  EXPECT_FALSE(ReadRegBool(reg, u"b", true));
  reg.WriteInteger(u"b", 2);
  EXPECT_TRUE(ReadRegBool(reg, u"b", false));
}

TEST(ReadRegInt, DefaultWhenMissingValueWhenPresent) {
  TempRegistry tmp;
  TRegistry reg;
  ASSERT_TRUE(reg.OpenKey(u"R", true));
  EXPECT_EQ(ReadRegInt(reg, u"i", -5), -5);
  reg.WriteInteger(u"i", 0);
  EXPECT_EQ(ReadRegInt(reg, u"i", -5), 0);
}

TEST(ReadRegInt, TypeErrorsAreNotCaught) {
  TempRegistry tmp;
  TRegistry reg;
  ASSERT_TRUE(reg.OpenKey(u"R", true));
  reg.WriteString(u"s", u"12");
  reg.WriteInteger(u"i", 12);
  // A value of another type raises the registry error; no default is used.
  EXPECT_EQ(ErrorOf<ERegistryException>([&] { (void)ReadRegInt(reg, u"s", 1); }), u"Invalid data type for 's'");
  EXPECT_THROW((void)ReadRegBool(reg, u"s", true), ERegistryException);
  EXPECT_THROW((void)ReadRegStr(reg, u"i", u"x"), ERegistryException);
}

TEST(ReadRegStr, NoOpenKeyGivesTheDefault) {
  TempRegistry tmp;
  TRegistry reg;
  EXPECT_EQ(ReadRegStr(reg, u"s", u"d"), u"d");
  EXPECT_EQ(ReadRegInt(reg, u"s", 9), 9);
}

TEST(DelRegKey, TrailingBackslashDeletesTheTree) {
  TempRegistry tmp;
  Store(u"\\Software\\Test\\A\\Deep", u"v", u"1");
  Store(u"\\Software\\Test\\B", u"v", u"1");
  Store(u"\\Software\\Test", u"v", u"1");
  Store(u"\\Software\\Keep", u"v", u"1");
  DelRegKey(u"Software\\Test\\");
  TRegistry reg;
  EXPECT_FALSE(reg.KeyExists(u"Software\\Test"));
  EXPECT_FALSE(reg.KeyExists(u"Software\\Test\\A\\Deep"));
  EXPECT_TRUE(reg.KeyExists(u"Software\\Keep"));
  EXPECT_TRUE(reg.KeyExists(u"Software"));
}

TEST(DelRegKey, MissingKeyDoesNothing) {
  TempRegistry tmp;
  Store(u"\\Software\\Keep", u"v", u"1");
  DelRegKey(u"Software\\NotThere");
  DelRegKey(u"NotThere\\Either\\");
  TRegistry reg;
  EXPECT_TRUE(reg.KeyExists(u"Software\\Keep"));
  EXPECT_FALSE(reg.KeyExists(u"NotThere"));  // nothing created
}

TEST(DelRegKey, EmptyPathDoesNothing) {
  TempRegistry tmp;
  Store(u"\\Software\\Keep", u"v", u"1");
  DelRegKey(u"");
  TRegistry reg;
  EXPECT_TRUE(reg.KeyExists(u"Software\\Keep"));
}

TEST(DelRegKey, LoneBackslashEmptiesTheWholeRoot) {
  // Deliberate: the trailing backslash is removed after the empty check, and
  // the empty path then names the root, whose subkeys all go. The root itself
  // stays.
  TempRegistry tmp;
  Store(u"\\Software\\A", u"v", u"1");
  Store(u"\\Other", u"v", u"1");
  DelRegKey(u"\\");
  TRegistry reg;
  EXPECT_FALSE(reg.KeyExists(u"Software"));
  EXPECT_FALSE(reg.KeyExists(u"Other"));
  ASSERT_TRUE(reg.OpenKey(u"", false));
}

TEST(DelRegKey, AbsolutePathsAndKeysWithOnlyValues) {
  TempRegistry tmp;
  Store(u"\\Flat", u"v", u"1");
  DelRegKey(u"\\Flat");  // no subkeys: closed and deleted directly
  TRegistry reg;
  EXPECT_FALSE(reg.KeyExists(u"Flat"));
}

TEST(DelRegKey, WideTreeIsDeletedCompletely) {
  TempRegistry tmp;
  {
    TRegistry reg;
    for (int i = 0; i < 20; ++i) {
      ASSERT_TRUE(reg.OpenKey(u"\\Wide\\K" + IntToStr(i) + u"\\Sub", true));
      reg.WriteInteger(u"v", i);
    }
  }
  DelRegKey(u"Wide");
  TRegistry reg;
  EXPECT_FALSE(reg.KeyExists(u"Wide"));
}

TEST(SaveControlPosReg, WritesLeftTopWidthHeight) {
  TempRegistry tmp;
  TGMemoryControl wnd(10, 20, 300, 200);
  SaveControlPosReg(wnd, u"Software\\App", u"Main");
  EXPECT_EQ(StoredString(u"\\Software\\App", u"Main"), u"10,20,300,200");
  TGMemoryControl neg(-5, 0, 1, -2147483647 - 1);
  SaveControlPosReg(neg, u"Software\\App", u"Neg");
  EXPECT_EQ(StoredString(u"\\Software\\App", u"Neg"), u"-5,0,1,-2147483648");
  // Written in the key itself, as a string value.
  TRegistry reg;
  ASSERT_TRUE(reg.OpenKey(u"Software\\App", false));
  EXPECT_EQ(reg.GetDataType(u"Main"), rdString);
  EXPECT_FALSE(reg.HasSubKeys());
}

TEST(LoadControlPosReg, RestoresASavedPosition) {
  TempRegistry tmp;
  TGMemoryControl saved(10, 20, 300, 200);
  SaveControlPosReg(saved, u"Software\\App", u"Main");
  TGMemoryControl wnd(1, 2, 3, 4);
  LoadControlPosReg(wnd, u"Software\\App", u"Main");
  EXPECT_EQ(Pos(wnd), "10,20,300,200");
}

TEST(LoadControlPosReg, NoSavedValueLeavesTheControlWhereItIs) {
  TempRegistry tmp;
  TGMemoryControl wnd(7, 8, 9, 10);
  LoadControlPosReg(wnd, u"Software\\Fresh", u"Main");
  EXPECT_EQ(Pos(wnd), "7,8,9,10");
  // Loading opens the key the way saving does: it is created.
  TRegistry reg;
  EXPECT_TRUE(reg.KeyExists(u"Software\\Fresh"));
  EXPECT_FALSE(reg.OpenKey(u"Software\\Fresh", false) && reg.ValueExists(u"Main"));
}

// Records every setter call, so a test can see which fields were set.
class RecordingControl : public TGMemoryControl {
 public:
  using TGMemoryControl::TGMemoryControl;
  void SetLeft(int32_t v) override { calls.push_back("L" + std::to_string(v)); TGMemoryControl::SetLeft(v); }
  void SetTop(int32_t v) override { calls.push_back("T" + std::to_string(v)); TGMemoryControl::SetTop(v); }
  void SetWidth(int32_t v) override { calls.push_back("W" + std::to_string(v)); TGMemoryControl::SetWidth(v); }
  void SetHeight(int32_t v) override { calls.push_back("H" + std::to_string(v)); TGMemoryControl::SetHeight(v); }
  std::vector<std::string> calls;
};

TEST(LoadControlPosReg, MissingHeightRaisesAfterSettingTheOthers) {
  TempRegistry tmp;
  Store(u"\\Software\\App", u"Main", u"10,20,300");
  RecordingControl wnd(1, 2, 3, 4);
  EXPECT_EQ(ErrorOf<EConvertError>([&] { LoadControlPosReg(wnd, u"Software\\App", u"Main"); }),
            u"'' is not a valid integer value");
  EXPECT_EQ(wnd.calls, (std::vector<std::string>{"L10", "T20", "W300"}));
  EXPECT_EQ(Pos(wnd), "10,20,300,4");
}

TEST(LoadControlPosReg, MalformedFieldStopsThere) {
  TempRegistry tmp;
  Store(u"\\App", u"Main", u"10,x,300,200");
  RecordingControl wnd(1, 2, 3, 4);
  EXPECT_EQ(ErrorOf<EConvertError>([&] { LoadControlPosReg(wnd, u"App", u"Main"); }),
            u"'x' is not a valid integer value");
  EXPECT_EQ(wnd.calls, (std::vector<std::string>{"L10"}));
}

TEST(LoadControlPosReg, FieldsAreSplitStepByStep) {
  TempRegistry tmp;
  // Every field, the fourth too, ends at a comma: text after a fifth comma
  // is never looked at, even when it is not a number.
  Store(u"\\App", u"Five", u"1,2,3,4,junk");
  RecordingControl five(0, 0, 0, 0);
  LoadControlPosReg(five, u"App", u"Five");
  EXPECT_EQ(five.calls, (std::vector<std::string>{"L1", "T2", "W3", "H4"}));
  // An empty field in the middle raises there.
  Store(u"\\App", u"Gap", u"1,,3,4");
  RecordingControl gap(0, 0, 0, 0);
  EXPECT_THROW(LoadControlPosReg(gap, u"App", u"Gap"), EConvertError);
  EXPECT_EQ(gap.calls, (std::vector<std::string>{"L1"}));
  // Blanks are not trimmed by the splitting; the conversion allows leading
  // blanks only.
  Store(u"\\App", u"Blank", u" 1, 2, 3, 4");
  TGMemoryControl blank(0, 0, 0, 0);
  LoadControlPosReg(blank, u"App", u"Blank");
  EXPECT_EQ(Pos(blank), "1,2,3,4");
  Store(u"\\App", u"Trail", u"1 ,2,3,4");
  TGMemoryControl trail(9, 9, 9, 9);
  EXPECT_THROW(LoadControlPosReg(trail, u"App", u"Trail"), EConvertError);
  EXPECT_EQ(Pos(trail), "9,9,9,9");
  // Empty text: the first field is empty and raises at once.
  Store(u"\\App", u"Empty", u"");
  RecordingControl empty(5, 5, 5, 5);
  EXPECT_THROW(LoadControlPosReg(empty, u"App", u"Empty"), EConvertError);
  EXPECT_TRUE(empty.calls.empty());
  // The runtime's conversion takes hexadecimal too.
  Store(u"\\App", u"Hex", u"$10,0x20,-$1,4");
  TGMemoryControl hex(0, 0, 0, 0);
  LoadControlPosReg(hex, u"App", u"Hex");
  EXPECT_EQ(Pos(hex), "16,32,-1,4");
}

TEST(LoadControlPosReg, WrongValueTypeRaisesTheRegistryError) {
  TempRegistry tmp;
  {
    TRegistry reg;
    ASSERT_TRUE(reg.OpenKey(u"App", true));
    reg.WriteInteger(u"Main", 10);
  }
  TGMemoryControl wnd(1, 2, 3, 4);
  EXPECT_THROW(LoadControlPosReg(wnd, u"App", u"Main"), ERegistryException);
  EXPECT_EQ(Pos(wnd), "1,2,3,4");
}

TGMemoryComponent MakeForm() {
  TGMemoryComponent form(u"Form1");
  form.AddStrProperty(u"Caption", "Hello");
  form.AddUnicodeProperty(u"Hint", u"wide");
  form.AddEnumProperty(u"Align", {u"alNone", u"alTop", u"alClient"}, u"alTop");
  form.AddIntProperty(u"Tag", 0);
  form.AddOtherProperty(u"Font");
  return form;
}

TEST(SavePropertyValueReg, ValueNameIsComponentDotProperty) {
  TempRegistry tmp;
  TGMemoryComponent form = MakeForm();
  SavePropertyValueReg(form, u"Caption", u"Software\\App");
  EXPECT_EQ(StoredString(u"\\Software\\App", u"Form1.Caption"), u"Hello");
  TRegistry reg;
  ASSERT_TRUE(reg.OpenKey(u"Software\\App", false));
  EXPECT_EQ(reg.GetDataType(u"Form1.Caption"), rdString);
}

TEST(SavePropertyValueReg, ThreeKindsAreSaved) {
  TempRegistry tmp;
  TGMemoryComponent form = MakeForm();
  SavePropertyValueReg(form, u"Align", u"App");
  EXPECT_EQ(StoredString(u"\\App", u"Form1.Align"), u"alTop");
  // An integer property with value 0 writes "0".
  SavePropertyValueReg(form, u"Tag", u"App");
  EXPECT_EQ(StoredString(u"\\App", u"Form1.Tag"), u"0");
  form.SetIntProp(u"Tag", -42);
  SavePropertyValueReg(form, u"Tag", u"App");
  EXPECT_EQ(StoredString(u"\\App", u"Form1.Tag"), u"-42");
}

TEST(SavePropertyValueReg, OtherKindsAndMissingPropertiesWriteNothing) {
  TempRegistry tmp;
  TGMemoryComponent form = MakeForm();
  // UTF-16 string properties are deliberately not saved.
  SavePropertyValueReg(form, u"Hint", u"App");
  SavePropertyValueReg(form, u"Font", u"App");
  // A property that does not exist writes nothing.
  SavePropertyValueReg(form, u"NoSuchProp", u"App");
  TRegistry reg;
  ASSERT_TRUE(reg.OpenKey(u"App", false));  // the key is opened (created) first
  TStringList names;
  reg.GetValueNames(names);
  EXPECT_EQ(names.Count(), 0);
}

TEST(SavePropertyValueReg, EmptyTextNeverClearsASavedValue) {
  TempRegistry tmp;
  TGMemoryComponent form = MakeForm();
  SavePropertyValueReg(form, u"Caption", u"App");
  form.SetStrProp(u"Caption", "");
  SavePropertyValueReg(form, u"Caption", u"App");
  EXPECT_EQ(StoredString(u"\\App", u"Form1.Caption"), u"Hello");
}

TEST(SavePropertyValueReg, PropertyNameAsGiven) {
  TempRegistry tmp;
  TGMemoryComponent form = MakeForm();
  // The value name takes the caller's spelling; names compare without case.
  SavePropertyValueReg(form, u"caption", u"App");
  TRegistry reg;
  ASSERT_TRUE(reg.OpenKey(u"App", false));
  TStringList names;
  reg.GetValueNames(names);
  ASSERT_EQ(names.Count(), 1);
  EXPECT_EQ(names.Strings(0), u"Form1.caption");
}

TEST(LoadPropertyValueReg, RestoresTheThreeKinds) {
  TempRegistry tmp;
  TGMemoryComponent saved = MakeForm();
  saved.SetStrProp(u"Caption", "Saved \xE9");  // 8-bit text in the ANSI code page
  saved.SetEnumProp(u"Align", u"alClient");
  saved.SetIntProp(u"Tag", 77);
  SavePropertyValueReg(saved, u"Caption", u"App");
  SavePropertyValueReg(saved, u"Align", u"App");
  SavePropertyValueReg(saved, u"Tag", u"App");
  TGMemoryComponent form = MakeForm();
  LoadPropertyValueReg(form, u"Caption", u"App");
  LoadPropertyValueReg(form, u"Align", u"App");
  LoadPropertyValueReg(form, u"Tag", u"App");
  EXPECT_EQ(form.GetStrProp(u"Caption"), "Saved \xE9");
  EXPECT_EQ(form.GetEnumProp(u"Align"), u"alClient");
  EXPECT_EQ(form.GetIntProp(u"Tag"), 77);
}

TEST(LoadPropertyValueReg, EmptyOrMissingTextLeavesThePropertyAlone) {
  TempRegistry tmp;
  TGMemoryComponent form = MakeForm();
  LoadPropertyValueReg(form, u"Caption", u"App");
  EXPECT_EQ(form.GetStrProp(u"Caption"), "Hello");
  Store(u"\\App", u"Form1.Caption", u"");
  LoadPropertyValueReg(form, u"Caption", u"App");
  EXPECT_EQ(form.GetStrProp(u"Caption"), "Hello");
}

TEST(LoadPropertyValueReg, OtherKindsAndMissingPropertiesAreLeftAlone) {
  TempRegistry tmp;
  TGMemoryComponent form = MakeForm();
  Store(u"\\App", u"Form1.Hint", u"from registry");
  Store(u"\\App", u"Form1.Font", u"Arial");
  Store(u"\\App", u"Form1.Gone", u"x");
  LoadPropertyValueReg(form, u"Hint", u"App");
  LoadPropertyValueReg(form, u"Font", u"App");
  LoadPropertyValueReg(form, u"Gone", u"App");
  EXPECT_EQ(form.GetUnicodeProp(u"Hint"), u"wide");
  EXPECT_FALSE(form.PropertyKind(u"Gone").has_value());
}

TEST(LoadPropertyValueReg, ConversionErrorsReachTheCaller) {
  TempRegistry tmp;
  TGMemoryComponent form = MakeForm();
  Store(u"\\App", u"Form1.Tag", u"12abc");
  EXPECT_EQ(ErrorOf<EConvertError>([&] { LoadPropertyValueReg(form, u"Tag", u"App"); }),
            u"'12abc' is not a valid integer value");
  EXPECT_EQ(form.GetIntProp(u"Tag"), 0);
  Store(u"\\App", u"Form1.Align", u"alBottom");
  EXPECT_EQ(ErrorOf<EPropertyConvertError>([&] { LoadPropertyValueReg(form, u"Align", u"App"); }),
            u"Invalid property element: alBottom");
  EXPECT_EQ(form.GetEnumProp(u"Align"), u"alTop");
}

TEST(LoadPropertyValueReg, ComponentNameAndPropertyIgnoreCase) {
  TempRegistry tmp;
  TGMemoryComponent form = MakeForm();
  Store(u"\\App", u"FORM1.TAG", u"5");
  LoadPropertyValueReg(form, u"Tag", u"App");
  EXPECT_EQ(form.GetIntProp(u"Tag"), 5);
  Store(u"\\App", u"Form1.Align", u"ALCLIENT");
  LoadPropertyValueReg(form, u"Align", u"App");
  EXPECT_EQ(form.GetEnumProp(u"Align"), u"alClient");
}

}  // namespace
}  // namespace quill::Gutils
