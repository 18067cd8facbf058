// The HTML Help records keep the 64-bit Windows layouts: a caller handing
// them to an engine built for those layouts must find every field in place.
#include "quill/htmlhlp/htmlhelp_api.h"

#include <gtest/gtest.h>

#include <cstddef>

namespace quill::Ghtmlhlp {
namespace {

TEST(HtmlHelpRecords, NotificationHeaders) {
  EXPECT_EQ(sizeof(tagNMHDR), 24u);
  EXPECT_EQ(offsetof(tagNMHDR, code), 16u);
  EXPECT_EQ(sizeof(tagHHN_NOTIFY), 32u);
  EXPECT_EQ(sizeof(tagHHNTRACK), 48u);
  EXPECT_EQ(offsetof(tagHHNTRACK, idAction), 32u);
  EXPECT_EQ(offsetof(tagHHNTRACK, phhWinType), 40u);
}

TEST(HtmlHelpRecords, PopupAndLinks) {
  EXPECT_EQ(sizeof(tagHH_POPUP), 72u);
  EXPECT_EQ(offsetof(tagHH_POPUP, pt), 32u);
  EXPECT_EQ(offsetof(tagHH_POPUP, rcMargins), 48u);
  EXPECT_EQ(offsetof(tagHH_POPUP, pszFont), 64u);
  EXPECT_EQ(sizeof(tagHH_AKLINK), 56u);
  EXPECT_EQ(offsetof(tagHH_AKLINK, fIndexOnFail), 48u);
  EXPECT_EQ(sizeof(tagHH_FTS_QUERY), 40u);
  EXPECT_EQ(offsetof(tagHH_FTS_QUERY, iProximity), 16u);
}

TEST(HtmlHelpRecords, InformationTypes) {
  EXPECT_EQ(sizeof(tagHH_ENUM_IT), 32u);
  EXPECT_EQ(sizeof(tagHH_ENUM_CAT), 24u);
  EXPECT_EQ(sizeof(tagHH_SET_INFOTYPE), 24u);
  EXPECT_EQ(sizeof(HH_INFOTYPE), 4u);
}

TEST(HtmlHelpRecords, WindowType) {
  EXPECT_EQ(offsetof(tagHH_WINTYPE, rcWindowPos), 40u);
  EXPECT_EQ(offsetof(tagHH_WINTYPE, hwndHelp), 64u);
  EXPECT_EQ(offsetof(tagHH_WINTYPE, rcHTML), 116u);
  EXPECT_EQ(offsetof(tagHH_WINTYPE, pszToc), 136u);
  EXPECT_EQ(offsetof(tagHH_WINTYPE, tabOrder), 188u);
  EXPECT_EQ(offsetof(tagHH_WINTYPE, cHistory), 208u);
  EXPECT_EQ(offsetof(tagHH_WINTYPE, rcMinSize), 248u);
  EXPECT_EQ(sizeof(tagHH_WINTYPE), 280u);
}

TEST(HtmlHelpRecords, GlobalProperty) {
  EXPECT_EQ(sizeof(VARIANT), 24u);
  EXPECT_EQ(sizeof(tagHH_GLOBAL_PROPERTY), 32u);
  EXPECT_EQ(offsetof(tagHH_GLOBAL_PROPERTY, var), 8u);
  EXPECT_EQ(HH_GPROPID_CONTENT_LANGUAGE, 5);
}

}  // namespace
}  // namespace quill::Ghtmlhlp
