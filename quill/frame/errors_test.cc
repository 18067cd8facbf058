// The six unit error classes derive directly from the runtime's base class and
// carry their message as given.
#include "quill/frame/errors.h"
#include "quill/frame/gconsts.h"

#include <gtest/gtest.h>

#include <type_traits>

namespace quill {
namespace {

template <typename E>
void ExpectUnitError() {
  static_assert(std::is_base_of_v<Exception, E>);
  try {
    throw E(u"unit failure 42");
  } catch (const Exception& e) {
    EXPECT_EQ(e.Message(), u"unit failure 42");
    EXPECT_STREQ(e.what(), "unit failure 42");
    EXPECT_NE(dynamic_cast<const E*>(&e), nullptr);
  }
}

TEST(UnitErrors, DeriveFromExceptionAndKeepTheirMessage) {
  ExpectUnitError<Gstrings::EGStringsError>();
  ExpectUnitError<Gutils::EGUtilsError>();
  ExpectUnitError<Gscanner::EScannerError>();
  ExpectUnitError<Glocales::ELocalesError>();
  ExpectUnitError<Gcompress::EGCompressError>();
  ExpectUnitError<Ghtmlhlp::EHtmlHelpError>();
}

// Unit classes are siblings: one unit's handler does not catch another's error.
TEST(UnitErrors, AreNotEachOthersSubclasses) {
  bool caught_as_scanner = false;
  try {
    throw Gcompress::EGCompressError(u"x");
  } catch (const Gscanner::EScannerError&) {
    caught_as_scanner = true;
  } catch (const Exception&) {
  }
  EXPECT_FALSE(caught_as_scanner);
}

// Formatted construction, as the base class does it.
TEST(UnitErrors, FormattedMessage) {
  Gstrings::EGStringsError e(u"%s is not a hex digit", {u"G"});
  EXPECT_EQ(e.Message(), u"G is not a hex digit");
}

// The shared texts are read when raised.
TEST(UnitErrors, ResourceStringMessages) {
  EXPECT_EQ(Gutils::EGUtilsError(Gconsts::_ERRStackFull).Message(), u"Stack is full");
  EXPECT_EQ(Gutils::EGUtilsError(Gconsts::_ERRStackEmpty).Message(), u"Stack is empty");
  EXPECT_EQ(Gcompress::EGCompressError(Gcompress::_SSourceNotDefined).Message(),
            u"Source stream is not defined");
  EXPECT_EQ(Gcompress::EGCompressError(Gcompress::_SDestNotDefined).Message(),
            u"Destination stream is not defined");
  EXPECT_EQ(Gcompress::EGCompressError(Gcompress::_SWrongStreamFormat).Message(),
            u"Wrong stream format");
  EXPECT_EQ(Gconsts::kResourceStrings[0]->Identifier, 65520u);
  EXPECT_EQ(Gconsts::kResourceStrings[4]->Identifier, 65524u);
}

}  // namespace
}  // namespace quill
