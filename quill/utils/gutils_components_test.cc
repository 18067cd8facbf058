// The in-memory control and component.
#include "quill/utils/components.h"

#include <gtest/gtest.h>

namespace quill::Gutils {
namespace {

TEST(TGMemoryControl, HoldsFourIntegers) {
  TGMemoryControl c;
  EXPECT_EQ(c.Left() + c.Top() + c.Width() + c.Height(), 0);
  c.SetLeft(1);
  c.SetTop(-2);
  c.SetWidth(3);
  c.SetHeight(4);
  TGControl& base = c;
  EXPECT_EQ(base.Left(), 1);
  EXPECT_EQ(base.Top(), -2);
  EXPECT_EQ(base.Width(), 3);
  EXPECT_EQ(base.Height(), 4);
}

TEST(TGMemoryComponent, KindsByName) {
  TGMemoryComponent c(u"Button1");
  c.AddStrProperty(u"Caption", "OK");
  c.AddUnicodeProperty(u"Hint", u"h");
  c.AddEnumProperty(u"Align", {u"alNone", u"alTop"}, u"alNone");
  c.AddIntProperty(u"Tag", 3);
  c.AddOtherProperty(u"Font");
  EXPECT_EQ(c.Name(), u"Button1");
  EXPECT_EQ(c.PropertyKind(u"Caption"), pkAnsiString);
  EXPECT_EQ(c.PropertyKind(u"hint"), pkUnicodeString);  // names ignore ASCII case
  EXPECT_EQ(c.PropertyKind(u"ALIGN"), pkEnumeration);
  EXPECT_EQ(c.PropertyKind(u"Tag"), pkInteger);
  EXPECT_EQ(c.PropertyKind(u"Font"), pkOther);
  EXPECT_FALSE(c.PropertyKind(u"Missing").has_value());
  c.SetName(u"Button2");
  EXPECT_EQ(c.Name(), u"Button2");
}

TEST(TGMemoryComponent, GetAndSet) {
  TGMemoryComponent c(u"C");
  c.AddStrProperty(u"S", "a");
  c.AddEnumProperty(u"E", {u"eOne", u"eTwo"}, u"eOne");
  c.AddIntProperty(u"I", 1);
  c.SetStrProp(u"S", "b");
  EXPECT_EQ(c.GetStrProp(u"S"), "b");
  c.SetIntProp(u"I", -9);
  EXPECT_EQ(c.GetIntProp(u"I"), -9);
  // Members match without case and keep their own spelling.
  EXPECT_TRUE(c.SetEnumProp(u"E", u"ETWO"));
  EXPECT_EQ(c.GetEnumProp(u"E"), u"eTwo");
  // An unknown member changes nothing.
  EXPECT_FALSE(c.SetEnumProp(u"E", u"eThree"));
  EXPECT_EQ(c.GetEnumProp(u"E"), u"eTwo");
}

TEST(TGMemoryComponent, WrongKindOrMissingRaises) {
  TGMemoryComponent c(u"C");
  c.AddIntProperty(u"I", 1);
  try {
    (void)c.GetStrProp(u"I");
    FAIL() << "no exception";
  } catch (const EPropertyError& e) {
    EXPECT_EQ(e.Message(), u"Property I does not exist");
  }
  EXPECT_THROW(c.SetIntProp(u"Nope", 1), EPropertyError);
}

TEST(TGMemoryComponent, AddReplacesAPropertyOfTheSameName) {
  TGMemoryComponent c(u"C");
  c.AddIntProperty(u"P", 1);
  c.AddStrProperty(u"p", "x");
  EXPECT_EQ(c.PropertyKind(u"P"), pkAnsiString);
  EXPECT_EQ(c.GetStrProp(u"P"), "x");
}

}  // namespace
}  // namespace quill::Gutils
