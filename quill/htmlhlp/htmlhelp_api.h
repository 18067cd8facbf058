// The HTML Help API's handle types and records, under their Windows names and
// with their 64-bit Windows layouts, for callers that talk to a help engine
// through HtmlHelpA/HtmlHelpW themselves.
//
// Declarations only: no routine of the library reads or fills them. Windows'
// LONG and BOOL are 32 bits wide, so they are int32_t here (not `long`); text
// pointers named LPCTSTR on Windows are UTF-16 (`const WideChar*`), the ones
// the API fixes as 8-bit (LPCSTR, PCSTR) are `const AnsiChar*`.
//
//   Ghtmlhlp::HH_AKLINK link{};
//   link.cbStruct = sizeof(link);
//   link.pszKeywords = u"Compression";
#pragma once

#include <cstdint>

#include "quill/rtl/types.h"

namespace quill::Ghtmlhlp {

// Window, module and pointer-sized handle types.
using HWND = uintptr_t;
using HINSTANCE = uintptr_t;
using UINT_PTR = uintptr_t;
using DWORD_PTR = uintptr_t;
using UINT = uint32_t;
using DWORD = uint32_t;
using BOOL = int32_t;
using LONG = int32_t;
using COLORREF = uint32_t;

// Commands of HtmlHelpA/HtmlHelpW that the Linux engine understands (the
// others it answers with 0), and WinHelp's "show the contents" command.
inline constexpr UINT HH_DISPLAY_TOPIC = 0x0000;
inline constexpr UINT HH_HELP_FINDER = 0x0000;
inline constexpr UINT HH_DISPLAY_TOC = 0x0001;
inline constexpr UINT HH_DISPLAY_INDEX = 0x0002;
inline constexpr UINT HH_DISPLAY_SEARCH = 0x0003;
inline constexpr UINT HH_HELP_CONTEXT = 0x000F;
inline constexpr UINT HH_CLOSE_ALL = 0x0012;
inline constexpr UINT HELP_CONTENTS = 0x0003;

struct POINT {
  LONG x;
  LONG y;
};

struct RECT {
  LONG left;
  LONG top;
  LONG right;
  LONG bottom;
};

// The header of every notification a help window sends to its owner.
struct tagNMHDR {
  HWND hwndFrom;
  UINT_PTR idFrom;
  UINT code;
};
using NMHDR = tagNMHDR;
using PNMHdr = tagNMHDR*;

// Notification carrying the URL of the topic being shown (8-bit text).
struct tagHHN_NOTIFY {
  NMHDR hdr;
  const AnsiChar* pszUrl;
};
using HHN_NOTIFY = tagHHN_NOTIFY;

// A text pop-up (HH_DISPLAY_TEXT_POPUP). Colours of -1 and margins of -1
// mean the defaults.
struct tagHH_POPUP {
  int32_t cbStruct;  // sizeof(tagHH_POPUP)
  HINSTANCE hinst;
  UINT idString;
  const WideChar* pszText;
  POINT pt;
  COLORREF clrForeground;
  COLORREF clrBackground;
  RECT rcMargins;
  const WideChar* pszFont;
};
using HH_POPUP = tagHH_POPUP;

// An A-link or keyword look-up (HH_ALINK_LOOKUP, HH_KEYWORD_LOOKUP).
struct tagHH_AKLINK {
  int32_t cbStruct;
  BOOL fReserved;  // must be 0
  const WideChar* pszKeywords;  // keywords separated by ';'
  const WideChar* pszUrl;
  const WideChar* pszMsgText;
  const WideChar* pszMsgTitle;
  const WideChar* pszWindow;
  BOOL fIndexOnFail;
};
using HH_AKLINK = tagHH_AKLINK;

// Information-type enumeration (HH_ENUM_INFO_TYPE).
struct tagHH_ENUM_IT {
  int32_t cbStruct;
  int32_t iType;
  const AnsiChar* pszCatName;
  const AnsiChar* pszITName;
  const AnsiChar* pszITDescription;
};
using HH_ENUM_IT = tagHH_ENUM_IT;
using PHH_ENUM_IT = tagHH_ENUM_IT*;
using PHHEnumIt = tagHH_ENUM_IT*;

// Category enumeration (HH_ENUM_CATEGORY).
struct tagHH_ENUM_CAT {
  int32_t cbStruct;
  const AnsiChar* pszCatName;
  const AnsiChar* pszCatDescription;
};
using HH_ENUM_CAT = tagHH_ENUM_CAT;
using PHH_ENUM_CAT = tagHH_ENUM_CAT*;
using PHHEnumCat = tagHH_ENUM_CAT*;

// One information type of a filter (HH_SET_INCLUSIVE_FILTER and friends).
struct tagHH_SET_INFOTYPE {
  int32_t cbStruct;
  const AnsiChar* pszCatName;
  const AnsiChar* pszInfoTypeName;
};
using HH_SET_INFOTYPE = tagHH_SET_INFOTYPE;
using PHH_SET_INFOTYPE = tagHH_SET_INFOTYPE*;
using PHHSetInfoType = tagHH_SET_INFOTYPE*;

using HH_INFOTYPE = DWORD;
using PHH_INFOTYPE = HH_INFOTYPE*;

// A full-text search (HH_DISPLAY_SEARCH).
struct tagHH_FTS_QUERY {
  int32_t cbStruct;
  BOOL fUniCodeStrings;
  const WideChar* pszSearchQuery;
  LONG iProximity;
  BOOL fStemmedSearch;
  BOOL fTitleOnly;
  BOOL fExecute;
  const WideChar* pszWindow;
};
using HH_FTS_QUERY = tagHH_FTS_QUERY;

// Number of tab slots in a window type, less the terminating one.
inline constexpr int32_t HH_MAX_TABS = 19;

// A window type (HH_SET_WIN_TYPE, HH_GET_WIN_TYPE).
struct tagHH_WINTYPE {
  int32_t cbStruct;
  BOOL fUniCodeStrings;
  const WideChar* pszType;
  DWORD fsValidMembers;
  DWORD fsWinProperties;
  const WideChar* pszCaption;
  DWORD dwStyles;
  DWORD dwExStyles;
  RECT rcWindowPos;
  int32_t nShowState;
  HWND hwndHelp;
  HWND hwndCaller;
  PHH_INFOTYPE paInfoTypes;
  HWND hwndToolBar;
  HWND hwndNavigation;
  HWND hwndHTML;
  int32_t iNavWidth;
  RECT rcHTML;
  const WideChar* pszToc;
  const WideChar* pszIndex;
  const WideChar* pszFile;
  const WideChar* pszHome;
  DWORD fsToolBarFlags;
  BOOL fNotExpanded;
  int32_t curNavType;
  int32_t tabpos;
  int32_t idNotify;
  uint8_t tabOrder[HH_MAX_TABS + 1];
  int32_t cHistory;
  const WideChar* pszJump1;
  const WideChar* pszJump2;
  const WideChar* pszUrlJump1;
  const WideChar* pszUrlJump2;
  RECT rcMinSize;
  int32_t cbInfoTypes;
  const WideChar* pszCustomTabs;  // several zero-terminated strings
};
using HH_WINTYPE = tagHH_WINTYPE;
using PHH_WINTYPE = tagHH_WINTYPE*;
using PHHWinType = tagHH_WINTYPE*;

// Tracking notification: the current URL, the action and the window type.
struct tagHHNTRACK {
  NMHDR hdr;
  const AnsiChar* pszCurUrl;
  int32_t idAction;
  PHH_WINTYPE phhWinType;
};
using HHNTRACK = tagHHNTRACK;

// Global properties (HH_SET_GLOBAL_PROPERTY).
enum tagHH_GPROPID : int32_t {
  HH_GPROPID_SINGLETHREAD = 1,
  HH_GPROPID_TOOLBAR_MARGIN = 2,
  HH_GPROPID_UI_LANGUAGE = 3,
  HH_GPROPID_CURRENT_SUBSET = 4,
  HH_GPROPID_CONTENT_LANGUAGE = 5,
};
using HH_GPROPID = tagHH_GPROPID;

// The storage of an OLE VARIANT: its type tag and 16 bytes of value.
struct VARIANT {
  uint16_t vt;
  uint16_t wReserved1;
  uint16_t wReserved2;
  uint16_t wReserved3;
  alignas(8) uint8_t data[16];
};

struct tagHH_GLOBAL_PROPERTY {
  HH_GPROPID id;
  VARIANT var;
};
using HH_GLOBAL_PROPERTY = tagHH_GLOBAL_PROPERTY;

}  // namespace quill::Ghtmlhlp
