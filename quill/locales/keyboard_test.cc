// Tests of the installed keyboard layouts and GetKLByLocale.
#include "quill/locales/keyboard.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <unistd.h>
#include <string>

#include "quill/locales/internal/keyboard_steps.h"
#include "quill/rtl/internal/scoped_env_for_test.h"

namespace quill::Glocales {
namespace {

using internal::KLByLocaleIn;
using internal::ParseKeyboardLayouts;

TEST(KeyboardLayoutByXkbName, CommonLayouts) {
  EXPECT_EQ(KeyboardLayoutByXkbName("us"), 0x04090409u);
  EXPECT_EQ(KeyboardLayoutByXkbName("de"), 0x04070407u);
  EXPECT_EQ(KeyboardLayoutByXkbName("gb"), 0x08090809u);
  EXPECT_EQ(KeyboardLayoutByXkbName("fr"), 0x040C040Cu);
  EXPECT_EQ(KeyboardLayoutByXkbName("es"), 0x040A0C0Au);
  EXPECT_EQ(KeyboardLayoutByXkbName("ru"), 0x04190419u);
  EXPECT_EQ(KeyboardLayoutByXkbName("US"), 0x04090409u);
  EXPECT_EQ(KeyboardLayoutByXkbName("usa"), 0u);
  EXPECT_EQ(KeyboardLayoutByXkbName(""), 0u);
}

// Names and handles mix; variants are ignored; unknown names are skipped.
TEST(ParseKeyboardLayouts, NamesAndHandles) {
  EXPECT_EQ(ParseKeyboardLayouts("us,de"), (std::vector<HKL>{0x04090409, 0x04070407}));
  EXPECT_EQ(ParseKeyboardLayouts(" de(nodeadkeys) , 0x08090809,klingon,,0419041A"),
            (std::vector<HKL>{0x04070407, 0x08090809, 0x0419041A}));
  // "de" and "be" are hex digits but names: only 8 digits or a 0x prefix make a handle.
  EXPECT_EQ(ParseKeyboardLayouts("be"), (std::vector<HKL>{0x080C080C}));
  EXPECT_EQ(ParseKeyboardLayouts("0409"), (std::vector<HKL>{}));
  EXPECT_EQ(ParseKeyboardLayouts("0x409"), (std::vector<HKL>{0x409}));
  EXPECT_EQ(ParseKeyboardLayouts("0x"), (std::vector<HKL>{}));
  EXPECT_EQ(ParseKeyboardLayouts("0xZZ,0409040G"), (std::vector<HKL>{}));
  EXPECT_EQ(ParseKeyboardLayouts(""), (std::vector<HKL>{}));
  EXPECT_EQ(ParseKeyboardLayouts("0x11112222333344445"), (std::vector<HKL>{}));  // wider than a handle
}

// At most 64 layouts, as the layout list call is asked for.
TEST(ParseKeyboardLayouts, AtMost64) {
  std::string many;
  for (int i = 0; i < 70; ++i) many += "us,";
  EXPECT_EQ(ParseKeyboardLayouts(many).size(), 64u);
}

// The file's last XKBLAYOUT assignment, quotes removed.
TEST(XkbLayoutFromFile, LastAssignment) {
  const std::string path = std::string(std::getenv("TMPDIR") ? std::getenv("TMPDIR") : "/tmp") +
                           "/quill_keyboard_test_" + std::to_string(::getpid());
  {
    std::ofstream out(path);
    out << "# KEYBOARD CONFIGURATION FILE\nXKBMODEL=\"pc105\"\nXKBLAYOUT=\"us\"\n"
           "  XKBLAYOUT=\"de,fr\"\nXKBVARIANT=\",nodeadkeys\"\nBACKSPACE=\"guess\"\n";
  }
  EXPECT_EQ(internal::XkbLayoutFromFile(path.c_str()), "de,fr");
  std::remove(path.c_str());
  EXPECT_EQ(internal::XkbLayoutFromFile(path.c_str()), "");
}

// The containment test, in the configured order.
TEST(KLByLocaleIn, ContainmentNotEquality) {
  const std::vector<HKL> layouts = {0x04190419, 0x04090409, 0x04070407};
  // 0x0409's bits are all set in the Russian handle, which comes first.
  EXPECT_EQ(KLByLocaleIn(layouts, 0x0409), 0x04190419u);
  EXPECT_EQ(KLByLocaleIn(layouts, 0x0407), 0x04070407u);
  EXPECT_EQ(KLByLocaleIn(std::vector<HKL>{0x04090409, 0x04190419}, 0x0419), 0x04190419u);
  // Contained in the high word counts too.
  EXPECT_EQ(KLByLocaleIn(std::vector<HKL>{0x040A0C0A}, 0x040A), 0x040A0C0Au);
}

// Edge case: LangID 0 gives the first installed layout.
TEST(KLByLocaleIn, ZeroGivesFirstLayout) {
  EXPECT_EQ(KLByLocaleIn(std::vector<HKL>{0x04070407, 0x04090409}, 0), 0x04070407u);
  EXPECT_EQ(KLByLocaleIn(std::vector<HKL>{}, 0), 0u);
}

// No layout passes: the language identifier itself.
TEST(KLByLocaleIn, FallbackIsLangID) {
  EXPECT_EQ(KLByLocaleIn(std::vector<HKL>{0x04090409}, 0x040C), 0x040Cu);
  EXPECT_EQ(KLByLocaleIn(std::vector<HKL>{}, 0x0409), 0x0409u);
  EXPECT_EQ(KLByLocaleIn(std::vector<HKL>{}, 0xFFFF), 0xFFFFu);
}

// The environment variable overrides the system's layouts, even when empty.
TEST(GetKLByLocale, EnvironmentOverride) {
  {
    testing::ScopedEnv env({{"QUILL_KEYBOARD_LAYOUTS", "us,de"}});
    EXPECT_EQ(GetKeyboardLayoutList(), (std::vector<HKL>{0x04090409, 0x04070407}));
    EXPECT_EQ(GetKLByLocale(0x0407), 0x04070407u);
    EXPECT_EQ(GetKLByLocale(0x0409), 0x04090409u);
    EXPECT_EQ(GetKLByLocale(0x040C), 0x040Cu);
    EXPECT_EQ(GetKLByLocale(0), 0x04090409u);
  }
  testing::ScopedEnv env({{"QUILL_KEYBOARD_LAYOUTS", ""}});
  EXPECT_TRUE(GetKeyboardLayoutList().empty());
  EXPECT_EQ(GetKLByLocale(0), 0u);
  EXPECT_EQ(GetKLByLocale(0x0409), 0x0409u);
}

}  // namespace
}  // namespace quill::Glocales
