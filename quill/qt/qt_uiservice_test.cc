// Tests of the Qt user-interface service with real widgets on the offscreen
// platform: the question boxes answered by a timer, the information window's
// flags, geometry, panel and painting, and RunProgram's event processing.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

#include <QApplication>
#include <QElapsedTimer>
#include <QFontMetrics>
#include <QImage>
#include <QKeyEvent>
#include <QLabel>
#include <QMessageBox>
#include <QPixmap>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QTimer>

#include "quill/qt/internal/testing.h"
#include "quill/frame/quill23.h"
#include "quill/qt/quillqt.h"
#include "quill/utils/process.h"
#include "quill/utils/questions.h"

namespace quill::Gutils {
namespace {

using qttest::InfoWindow;
using qttest::InfoWindows;
using qttest::OnNextBox;

// What a box looked like when the timer found it.
struct BoxSeen {
  QMessageBox::Icon icon = QMessageBox::NoIcon;
  QString title = QStringLiteral("not seen");
  QString text;
  QList<QMessageBox::StandardButton> buttons;
  QMessageBox::StandardButton defaultButton = QMessageBox::NoButton;
  QMessageBox::StandardButton escapeButton = QMessageBox::NoButton;
};

BoxSeen Look(QMessageBox* box) {
  BoxSeen s;
  s.icon = box->icon();
  s.title = box->windowTitle();
  s.text = box->text();
  for (QAbstractButton* b : box->buttons()) s.buttons.append(box->standardButton(b));
  std::sort(s.buttons.begin(), s.buttons.end());
  if (QPushButton* d = box->defaultButton()) s.defaultButton = box->standardButton(d);
  if (QAbstractButton* e = box->escapeButton()) s.escapeButton = box->standardButton(e);
  return s;
}

void Press(QMessageBox* box, int key) {
  QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
  QApplication::sendEvent(box, &press);
}

class QtQuestions : public ::testing::Test {
 protected:
  void TearDown() override { HideInfo(); }
};

// Loading the module installed its service.
TEST_F(QtQuestions, ServiceInstalledAtLoad) { EXPECT_EQ(&UIService(), &QtUIService()); }

// Ask: a question box with an empty title, Yes and No, Yes the default and
// No for Escape; the Yes button answers 6.
TEST_F(QtQuestions, AskShowsAQuestionBoxAndYesAnswers6) {
  BoxSeen seen;
  OnNextBox([&](QMessageBox* box) {
    seen = Look(box);
    box->button(QMessageBox::Yes)->click();
  });
  EXPECT_EQ(Ask(u"Overwrite \"a.txt\"?"), 6);
  EXPECT_EQ(seen.icon, QMessageBox::Question);
  EXPECT_EQ(seen.title, QString());
  EXPECT_EQ(seen.text, QStringLiteral("Overwrite \"a.txt\"?"));
  EXPECT_EQ(seen.buttons, (QList<QMessageBox::StandardButton>{QMessageBox::Yes, QMessageBox::No}));
  EXPECT_EQ(seen.defaultButton, QMessageBox::Yes);
  EXPECT_EQ(seen.escapeButton, QMessageBox::No);
}

// The No button answers 7.
TEST_F(QtQuestions, AskNoButtonAnswers7) {
  OnNextBox([](QMessageBox* box) { box->button(QMessageBox::No)->click(); });
  EXPECT_EQ(Ask(u"q"), 7);
}

// AskNo: the same box with No as the default button.
TEST_F(QtQuestions, AskNoHasNoAsDefault) {
  BoxSeen seen;
  OnNextBox([&](QMessageBox* box) {
    seen = Look(box);
    box->button(QMessageBox::Yes)->click();
  });
  EXPECT_EQ(AskNo(u"Delete?"), 6);
  EXPECT_EQ(seen.icon, QMessageBox::Question);
  EXPECT_EQ(seen.title, QString());
  EXPECT_EQ(seen.defaultButton, QMessageBox::No);
  EXPECT_EQ(seen.escapeButton, QMessageBox::No);
  OnNextBox([](QMessageBox* box) { box->button(QMessageBox::No)->click(); });
  EXPECT_EQ(AskNo(u"Delete?"), 7);
}

// Return presses the default button: Yes for Ask, No for AskNo.
TEST_F(QtQuestions, ReturnPressesTheDefault) {
  OnNextBox([](QMessageBox* box) { Press(box, Qt::Key_Return); });
  EXPECT_EQ(Ask(u"q"), 6);
  OnNextBox([](QMessageBox* box) { Press(box, Qt::Key_Return); });
  EXPECT_EQ(AskNo(u"q"), 7);
}

// Escape answers No for both, even where Yes is the default.
TEST_F(QtQuestions, EscapeAnswersNo) {
  OnNextBox([](QMessageBox* box) { Press(box, Qt::Key_Escape); });
  EXPECT_EQ(Ask(u"q"), 7);
  OnNextBox([](QMessageBox* box) { Press(box, Qt::Key_Escape); });
  EXPECT_EQ(AskNo(u"q"), 7);
}

// Closing the box answers No.
TEST_F(QtQuestions, ClosingAnswersNo) {
  OnNextBox([](QMessageBox* box) { box->close(); });
  EXPECT_EQ(Ask(u"q"), 7);
}

// The question is shown as it is, never as markup.
TEST_F(QtQuestions, TextIsPlain) {
  QString shown;
  Qt::TextFormat format = Qt::RichText;
  OnNextBox([&](QMessageBox* box) {
    shown = box->text();
    format = box->textFormat();
    box->button(QMessageBox::No)->click();
  });
  Ask(u"<b>bold</b>?");
  EXPECT_EQ(shown, QStringLiteral("<b>bold</b>?"));
  EXPECT_EQ(format, Qt::PlainText);
}

// Other box types through the service: three buttons, Cancel for Escape.
TEST_F(QtQuestions, YesNoCancelBox) {
  BoxSeen seen;
  OnNextBox([&](QMessageBox* box) {
    seen = Look(box);
    Press(box, Qt::Key_Escape);
  });
  EXPECT_EQ(UIService().MessageBox(u"Save?", u"Editor", MB_YESNOCANCEL | MB_ICONEXCLAMATION |
                                                            MB_DEFBUTTON3),
            IDCANCEL);
  EXPECT_EQ(seen.title, QStringLiteral("Editor"));
  EXPECT_EQ(seen.icon, QMessageBox::Warning);
  EXPECT_EQ(seen.defaultButton, QMessageBox::Cancel);
  EXPECT_EQ(seen.buttons.size(), 3);
}

int32_t TextWidthIn(QWidget* w, const QString& text) {
  return QFontMetrics(w->font()).horizontalAdvance(text);
}

QLabel* PanelOf(QWidget* w) {
  const QList<QLabel*> labels = w->findChildren<QLabel*>(Qt::FindDirectChildrenOnly);
  return labels.size() == 1 ? labels.front() : nullptr;
}

// The window: frameless, above the others, no owner, empty caption, as wide
// as the text plus 10 and 50 high, centred on the screen, one panel filling
// it with the text.
TEST_F(QtQuestions, ShowInfoWindow) {
  ShowInfo(u"Please wait while the archive is read");
  ASSERT_TRUE(InfoIsShowing());
  QWidget* w = InfoWindow();
  ASSERT_NE(w, nullptr);
  EXPECT_TRUE(w->isVisible());
  EXPECT_TRUE(w->isWindow());
  EXPECT_EQ(w->parentWidget(), nullptr);
  EXPECT_TRUE(w->windowFlags().testFlag(Qt::FramelessWindowHint));
  EXPECT_TRUE(w->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
  EXPECT_EQ(w->windowTitle(), QString());
  const int32_t expected = TextWidthIn(w, QStringLiteral("Please wait while the archive is read")) + 10;
  EXPECT_GT(expected, 100);  // a real measurement, not a count of characters
  EXPECT_EQ(w->width(), expected);
  EXPECT_EQ(w->height(), 50);
  const QRect screen = QGuiApplication::primaryScreen()->geometry();
  EXPECT_EQ(w->x(), screen.x() + (screen.width() - expected) / 2);
  EXPECT_EQ(w->y(), screen.y() + (screen.height() - 50) / 2);
  QLabel* panel = PanelOf(w);
  ASSERT_NE(panel, nullptr);
  EXPECT_EQ(panel->text(), QStringLiteral("Please wait while the archive is read"));
  EXPECT_EQ(panel->geometry(), w->rect());
  EXPECT_TRUE(panel->isVisible());
}

// The text is painted before ShowInfo returns: the screen already holds
// text-coloured pixels in the window's area, with no event processed.
TEST_F(QtQuestions, ShowInfoPaintsAtOnce) {
  ShowInfo(u"MMMMMMMMMMMMMMMMMMMM");
  QWidget* w = InfoWindow();
  ASSERT_NE(w, nullptr);
  const QImage shot =
      QGuiApplication::primaryScreen()->grabWindow(0, w->x(), w->y(), w->width(), w->height()).toImage();
  ASSERT_FALSE(shot.isNull());
  const QColor text = w->palette().color(QPalette::WindowText);
  int dark = 0;
  for (int y = 0; y < shot.height(); ++y) {
    for (int x = 0; x < shot.width(); ++x) {
      const QColor c = shot.pixelColor(x, y);
      if (std::abs(c.red() - text.red()) < 60 && std::abs(c.green() - text.green()) < 60 &&
          std::abs(c.blue() - text.blue()) < 60) {
        ++dark;
      }
    }
  }
  EXPECT_GT(dark, 100) << "no text pixels on screen";
}

// A second ShowInfo replaces the window: the first is destroyed, one remains.
TEST_F(QtQuestions, SecondShowInfoReplaces) {
  ShowInfo(u"first");
  QPointer<QWidget> first = InfoWindow();
  ASSERT_FALSE(first.isNull());
  ShowInfo(u"second, longer");
  EXPECT_TRUE(first.isNull());
  ASSERT_EQ(InfoWindows().size(), 1);
  EXPECT_EQ(PanelOf(InfoWindow())->text(), QStringLiteral("second, longer"));
}

// UpdateInfo: new text, new width, same height and left edge.
TEST_F(QtQuestions, UpdateInfoChangesTextAndWidth) {
  ShowInfo(u"short");
  QWidget* w = InfoWindow();
  ASSERT_NE(w, nullptr);
  const QPoint at = w->pos();
  UpdateInfo(u"a much longer text than before");
  EXPECT_EQ(InfoWindow(), w);  // the same window
  EXPECT_EQ(PanelOf(w)->text(), QStringLiteral("a much longer text than before"));
  EXPECT_EQ(w->width(), TextWidthIn(w, QStringLiteral("a much longer text than before")) + 10);
  EXPECT_EQ(w->height(), 50);
  EXPECT_EQ(w->pos(), at);
  EXPECT_EQ(PanelOf(w)->geometry(), w->rect());
}

// Edge case: UpdateInfo with no window creates it with the text.
TEST_F(QtQuestions, UpdateInfoWithoutWindowCreatesIt) {
  ASSERT_TRUE(InfoWindows().isEmpty());
  UpdateInfo(u"created by update");
  QWidget* w = InfoWindow();
  ASSERT_NE(w, nullptr);
  EXPECT_TRUE(w->isVisible());
  EXPECT_EQ(PanelOf(w)->text(), QStringLiteral("created by update"));
  EXPECT_EQ(w->height(), 50);
}

// HideInfo destroys the window; twice is harmless.
TEST_F(QtQuestions, HideInfoDestroys) {
  ShowInfo(u"x");
  QPointer<QWidget> w = InfoWindow();
  ASSERT_FALSE(w.isNull());
  HideInfo();
  EXPECT_TRUE(w.isNull());
  EXPECT_FALSE(InfoIsShowing());
  EXPECT_TRUE(InfoWindows().isEmpty());
  HideInfo();
  EXPECT_FALSE(InfoIsShowing());
}

// Edge case: nothing limits the width; a text wider than the screen makes a
// window wider than the screen, starting left of it.
TEST_F(QtQuestions, WiderThanTheScreen) {
  const QString text(600, QLatin1Char('W'));
  ShowInfo(UnicodeString(600, u'W'));
  QWidget* w = InfoWindow();
  ASSERT_NE(w, nullptr);
  const QRect screen = QGuiApplication::primaryScreen()->geometry();
  EXPECT_EQ(w->width(), TextWidthIn(w, text) + 10);
  EXPECT_GT(w->width(), screen.width());
  EXPECT_LT(w->x(), screen.x());
}

// The library's shut-down (the units' last stop) leaves a window that is
// still showing alone: hiding it is the caller's job.
TEST_F(QtQuestions, ShutdownLeavesTheWindow) {
  ShowInfo(u"still here");
  QPointer<QWidget> w = InfoWindow();
  ASSERT_FALSE(w.isNull());
  Finalize();    // the load's start undone: every unit's last stop runs
  Initialize();  // started again for the tests that follow
  EXPECT_FALSE(w.isNull());
  EXPECT_TRUE(w->isVisible());
  EXPECT_TRUE(InfoIsShowing());
}

// While RunProgram waits for a child, the application's timers still fire.
TEST(QtRunProgram, EventsRunWhileWaiting) {
  bool fired = false;
  QTimer::singleShot(50, [&] { fired = true; });
  QElapsedTimer clock;
  clock.start();
  EXPECT_TRUE(RunProgram(u"/bin/sh", u"-c 'sleep 0.4'", u"", true));
  EXPECT_GE(clock.elapsed(), 300);
  EXPECT_TRUE(fired);
}

}  // namespace
}  // namespace quill::Gutils
