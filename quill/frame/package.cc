// The unit table, the package entry points and the package information.
#include <array>

#include "quill/frame/quill23.h"

namespace quill {
namespace {

// The unit table. The runtime's own entries stand before the first unit that
// needs them: its innermost units before Gconsts, its string, system-utility
// and class units before Gstrings, its registry and visual units before
// Gutils. The runtime layer of this library needs no start-up of its own, so
// those entries carry no routines. The last entry is the package unit itself.
constexpr std::array<TPackageUnitEntry, 16> kUnitTable{{
    {"System", nullptr, nullptr},
    {"SysInit", nullptr, nullptr},
    {"Gconsts", &Gconsts::initialization, &Gconsts::Finalization},
    {"SysUtils", nullptr, nullptr},
    {"Classes", nullptr, nullptr},
    {"Gstrings", &Gstrings::initialization, &Gstrings::Finalization},
    {"Registry", nullptr, nullptr},
    {"Controls", nullptr, nullptr},
    {"Gutils", &Gutils::initialization, &Gutils::Finalization},
    {"Gdattime", &Gdattime::initialization, &Gdattime::Finalization},
    {"Gscanner", &Gscanner::initialization, &Gscanner::Finalization},
    {"Glocales", &Glocales::initialization, &Glocales::Finalization},
    {"Gcompress", &Gcompress::initialization, &Gcompress::Finalization},
    {"Ghtmlhlp", &Ghtmlhlp::initialization, &Ghtmlhlp::Finalization},
    {"Quill23", nullptr, nullptr},
    {nullptr, nullptr, nullptr},
}};

// The table handed out: every entry but the terminating sentinel.
constexpr TPackageInfoTable kPackageInfoTable{static_cast<int32_t>(kUnitTable.size() - 1),
                                              kUnitTable.data()};

constexpr std::array<const char*, 2> kRequires{"rtl", "vcl"};
constexpr std::array<const char*, 10> kContains{"Quill23",  "Ghtmlhlp", "SysInit", "Gcompress",
                                                "Gstrings", "Gutils",   "Gconsts", "Glocales",
                                                "Gscanner", "Gdattime"};

}  // namespace

void Initialize() {
  for (int32_t i = 0; i < kPackageInfoTable.UnitCount; ++i) {
    if (kUnitTable[i].Init != nullptr) kUnitTable[i].Init();
  }
}

void Finalize() {
  for (int32_t i = kPackageInfoTable.UnitCount - 1; i >= 0; --i) {
    if (kUnitTable[i].FInit != nullptr) kUnitTable[i].FInit();
  }
}

const TPackageInfoTable* GetPackageInfoTable() { return &kPackageInfoTable; }

const TPackageInfo& PackageInfo() {
  static const TPackageInfo info{"Quill23", kRequires, kContains,
                                 "Quill utility library: strings, tokenizer, compression, "
                                 "calendar, locales",
                                 "23.0.0"};
  return info;
}

const char* QuillVersionString() { return "23.0.0"; }

}  // namespace quill
