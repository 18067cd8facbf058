// Tests of Ask, AskNo and the information window through a recording
// user-interface service: every call the routines make reaches the service
// in the order the routines make it.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "quill/rtl/unicode.h"
#include "quill/utils/questions.h"
#include "quill/utils/uiservice.h"

namespace quill::Gutils {
namespace {

using Log = std::vector<std::string>;

// Records every call as a short line; the forms it makes write to the same
// log, each tagged with its number ("f1 show").
class RecordingService : public TUIService {
 public:
  int32_t answer = IDYES;
  Log log;

  int32_t MessageBox(const UnicodeString& Text, const UnicodeString& Caption,
                     int32_t Flags) override {
    log.push_back("box '" + UnicodeToUtf8(Text) + "' '" + UnicodeToUtf8(Caption) + "' " +
                  std::to_string(Flags));
    return answer;
  }

  std::unique_ptr<TInfoForm> CreateInfoForm() override;
};

// Text width: 7 pixels per character, as a fixed-pitch font would give.
class RecordingForm : public TInfoForm {
 public:
  RecordingForm(Log& log, int number) : log_(log), tag_("f" + std::to_string(number) + " ") {}
  ~RecordingForm() override { log_.push_back(tag_ + "destroy"); }
  int32_t TextWidth(const UnicodeString& Text) override {
    log_.push_back(tag_ + "measure '" + UnicodeToUtf8(Text) + "'");
    return static_cast<int32_t>(Text.size()) * 7;
  }
  void SetWidth(int32_t Width) override {
    width_ = Width;
    log_.push_back(tag_ + "width " + std::to_string(Width));
  }
  void SetHeight(int32_t Height) override {
    height_ = Height;
    log_.push_back(tag_ + "height " + std::to_string(Height));
  }
  int32_t Width() const override { return width_; }
  int32_t Height() const override { return height_; }
  void CreatePanel(const UnicodeString& Caption) override {
    caption_ = Caption;
    log_.push_back(tag_ + "panel '" + UnicodeToUtf8(Caption) + "'");
  }
  void SetPanelCaption(const UnicodeString& Caption) override {
    caption_ = Caption;
    log_.push_back(tag_ + "caption '" + UnicodeToUtf8(Caption) + "'");
  }
  UnicodeString PanelCaption() const override { return caption_; }
  void Show() override { log_.push_back(tag_ + "show"); }
  void Hide() override { log_.push_back(tag_ + "hide"); }
  void Repaint() override { log_.push_back(tag_ + "repaint"); }

 private:
  Log& log_;
  std::string tag_;
  int32_t width_ = 0;
  int32_t height_ = 0;
  UnicodeString caption_;
};

std::unique_ptr<TInfoForm> RecordingService::CreateInfoForm() {
  static int forms = 0;
  log.push_back("create");
  return std::make_unique<RecordingForm>(log, ++forms);
}

// Installs a fresh recording service for each test and removes it after;
// form numbers restart from the number the first form of the test gets.
class Questions : public ::testing::Test {
 protected:
  void SetUp() override { previous_ = InstallUIService(&service); }
  void TearDown() override {
    HideInfo();
    UninstallUIService(&service);
    InstallUIService(previous_);
  }
  // The log with the form numbers replaced by their order of appearance in
  // this test (first form "A", second "B").
  Log Steps() const {
    Log out;
    std::vector<std::string> seen;
    for (const std::string& line : service.log) {
      if (line.size() > 1 && line[0] == 'f' && isdigit(static_cast<unsigned char>(line[1]))) {
        const std::string tag = line.substr(0, line.find(' '));
        size_t i = 0;
        while (i < seen.size() && seen[i] != tag) ++i;
        if (i == seen.size()) seen.push_back(tag);
        out.push_back(std::string(1, static_cast<char>('A' + i)) + line.substr(tag.size()));
      } else {
        out.push_back(line);
      }
    }
    return out;
  }
  RecordingService service;
  TUIService* previous_ = nullptr;
};

// Ask: empty title, MB_YESNO + MB_ICONQUESTION = 36, the box's answer as is.
TEST_F(Questions, AskUsesFlags36AndAnEmptyTitle) {
  service.answer = IDYES;
  EXPECT_EQ(Ask(u"Go on?"), 6);
  service.answer = IDNO;
  EXPECT_EQ(Ask(u"Go on?"), 7);
  EXPECT_EQ(Steps(), (Log{"box 'Go on?' '' 36", "box 'Go on?' '' 36"}));
}

// AskNo: the same plus MB_DEFBUTTON2 = 292.
TEST_F(Questions, AskNoUsesFlags292) {
  service.answer = IDNO;
  EXPECT_EQ(AskNo(u"Delete everything?"), 7);
  service.answer = IDYES;
  EXPECT_EQ(AskNo(u"Delete everything?"), 6);
  EXPECT_EQ(Steps(), (Log{"box 'Delete everything?' '' 292", "box 'Delete everything?' '' 292"}));
}

// Whatever the box answers is passed on unchanged (no mapping to 6/7).
TEST_F(Questions, AskPassesTheAnswerThrough) {
  service.answer = IDCANCEL;
  EXPECT_EQ(Ask(u"?"), IDCANCEL);
}

// ShowInfo: measure, width = text + 10, height 50, panel, show, repaint.
TEST_F(Questions, ShowInfoSteps) {
  ShowInfo(u"Working");
  EXPECT_TRUE(InfoIsShowing());
  EXPECT_EQ(Steps(), (Log{"create", "A measure 'Working'", "A width 59", "A height 50",
                          "A panel 'Working'", "A show", "A repaint"}));
}

// A second ShowInfo destroys the first window without hiding it, then makes
// a new one.
TEST_F(Questions, SecondShowInfoReplacesWithoutHiding) {
  ShowInfo(u"one");
  service.log.clear();
  ShowInfo(u"second");
  EXPECT_EQ(Steps(), (Log{"A destroy", "create", "B measure 'second'", "B width 52",
                          "B height 50", "B panel 'second'", "B show", "B repaint"}));
  EXPECT_TRUE(InfoIsShowing());
}

// UpdateInfo on a window: caption, width again, repaint; the height is not set.
TEST_F(Questions, UpdateInfoSetsCaptionWidthAndRepaints) {
  ShowInfo(u"a");
  service.log.clear();
  UpdateInfo(u"longer text");
  EXPECT_EQ(Steps(), (Log{"A caption 'longer text'", "A measure 'longer text'", "A width 87",
                          "A repaint"}));
}

// Edge case: UpdateInfo with no window showing creates it with the text,
// then runs its own steps on it.
TEST_F(Questions, UpdateInfoWithoutWindowCreatesIt) {
  ASSERT_FALSE(InfoIsShowing());
  UpdateInfo(u"hello");
  EXPECT_TRUE(InfoIsShowing());
  EXPECT_EQ(Steps(), (Log{"create", "A measure 'hello'", "A width 45", "A height 50",
                          "A panel 'hello'", "A show", "A repaint", "A caption 'hello'",
                          "A measure 'hello'", "A width 45", "A repaint"}));
}

// HideInfo hides, then destroys; a second HideInfo does nothing.
TEST_F(Questions, HideInfoTwiceIsHarmless) {
  ShowInfo(u"x");
  service.log.clear();
  HideInfo();
  EXPECT_FALSE(InfoIsShowing());
  HideInfo();
  EXPECT_FALSE(InfoIsShowing());
  EXPECT_EQ(Steps(), (Log{"A hide", "A destroy"}));
}

// HideInfo with no window at all calls nothing.
TEST_F(Questions, HideInfoWithoutWindowDoesNothing) {
  HideInfo();
  EXPECT_TRUE(service.log.empty());
}

// Edge case: nothing limits the width: a 1000-character text gives 7010.
TEST_F(Questions, WidthIsNotLimited) {
  ShowInfo(UnicodeString(1000, u'W'));
  EXPECT_EQ(Steps()[2], "A width 7010");
}

// Uninstalling the service that made a showing window destroys the window
// (its code may be unloaded next) and clears the reference.
TEST_F(Questions, UninstallDestroysItsWindow) {
  ShowInfo(u"x");
  service.log.clear();
  UninstallUIService(&service);
  EXPECT_FALSE(InfoIsShowing());
  EXPECT_EQ(Steps(), (Log{"A destroy"}));
  InstallUIService(&service);
}

// Uninstalling a service that is not in use changes nothing.
TEST_F(Questions, UninstallOfAnotherServiceDoesNothing) {
  RecordingService other;
  ShowInfo(u"x");
  service.log.clear();
  UninstallUIService(&other);
  EXPECT_TRUE(InfoIsShowing());
  EXPECT_EQ(&UIService(), &service);
  EXPECT_TRUE(service.log.empty());
}

// Install returns the one before; nullptr goes back to the terminal service.
TEST_F(Questions, InstallReturnsPrevious) {
  RecordingService other;
  EXPECT_EQ(InstallUIService(&other), &service);
  EXPECT_EQ(&UIService(), &other);
  EXPECT_EQ(InstallUIService(nullptr), &other);
  EXPECT_EQ(&UIService(), &TerminalUIService());
  InstallUIService(&service);
}

// The button helpers every service uses.
TEST(MessageBoxButtons, ByType) {
  using V = std::vector<int32_t>;
  EXPECT_EQ(MessageBoxButtons(MB_OK), V{IDOK});
  EXPECT_EQ(MessageBoxButtons(MB_OKCANCEL), (V{IDOK, IDCANCEL}));
  EXPECT_EQ(MessageBoxButtons(MB_ABORTRETRYIGNORE), (V{IDABORT, IDRETRY, IDIGNORE}));
  EXPECT_EQ(MessageBoxButtons(MB_YESNOCANCEL), (V{IDYES, IDNO, IDCANCEL}));
  EXPECT_EQ(MessageBoxButtons(36), (V{IDYES, IDNO}));
  EXPECT_EQ(MessageBoxButtons(MB_RETRYCANCEL), (V{IDRETRY, IDCANCEL}));
  EXPECT_EQ(MessageBoxButtons(0xE), V{IDOK});  // unknown type
}

TEST(MessageBoxButtons, DefaultAndEscape) {
  EXPECT_EQ(MessageBoxDefaultAnswer(36), IDYES);
  EXPECT_EQ(MessageBoxDefaultAnswer(292), IDNO);
  EXPECT_EQ(MessageBoxDefaultAnswer(MB_YESNOCANCEL | MB_DEFBUTTON3), IDCANCEL);
  EXPECT_EQ(MessageBoxDefaultAnswer(MB_YESNO | MB_DEFBUTTON3), IDYES);  // too few buttons
  EXPECT_EQ(MessageBoxEscapeAnswer(36), IDNO);
  EXPECT_EQ(MessageBoxEscapeAnswer(292), IDNO);
  EXPECT_EQ(MessageBoxEscapeAnswer(MB_YESNOCANCEL), IDCANCEL);
  EXPECT_EQ(MessageBoxEscapeAnswer(MB_OK), IDOK);
  EXPECT_EQ(MessageBoxEscapeAnswer(MB_ABORTRETRYIGNORE), IDABORT);
}

}  // namespace
}  // namespace quill::Gutils
