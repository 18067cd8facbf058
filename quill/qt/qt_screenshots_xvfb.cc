// Screenshots of the information window and of a question box on a real X
// server (run under xvfb-run by CTest), saved as PNG files in the folder
// named by QUILL_SHOTS_DIR for people to look at. The pictures are taken
// from the screen itself, so they show what the display really holds.
#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QImage>
#include <QMessageBox>
#include <QPixmap>
#include <QPushButton>
#include <QScreen>
#include <QTimer>
#include <QWindow>
#include <cstdlib>

#include "quill/qt/internal/testing.h"
#include "quill/qt/quillqt.h"
#include "quill/utils/questions.h"

namespace quill::Gutils {
namespace {

QString ShotsDir() {
  const char* dir = std::getenv("QUILL_SHOTS_DIR");
  const QString path = dir != nullptr && *dir != '\0' ? QString::fromLocal8Bit(dir) : QDir::currentPath();
  QDir().mkpath(path);
  return path;
}

// Number of distinct colours in the picture: a blank or one-colour area has
// one or two, text on a panel has many (anti-aliasing).
int Colours(const QImage& image) {
  QSet<QRgb> seen;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) seen.insert(image.pixel(x, y));
  }
  return static_cast<int>(seen.size());
}

class Screenshots : public ::testing::Test {
 protected:
  void SetUp() override {
    if (QGuiApplication::platformName() != QLatin1String("xcb")) {
      GTEST_SKIP() << "needs an X server (xvfb-run), platform is "
                   << QGuiApplication::platformName().toStdString();
    }
  }
  void TearDown() override { HideInfo(); }
};

// Including quillqt.h alone kept the module linked and its service installed.
TEST(ScreenshotsSetup, ModuleLoaded) { EXPECT_EQ(&UIService(), &QtUIService()); }

// The information window as the screen shows it right after ShowInfo
// returns, with no event processed in between.
TEST_F(Screenshots, InformationWindow) {
  ShowInfo(u"Please wait: reading the archive \u2026");
  QWidget* w = qttest::InfoWindow();
  ASSERT_NE(w, nullptr);
  QScreen* screen = QGuiApplication::primaryScreen();
  const QImage shot = screen->grabWindow(0, w->x(), w->y(), w->width(), w->height()).toImage();
  const QImage whole = screen->grabWindow(0).toImage();
  const QString dir = ShotsDir();
  ASSERT_TRUE(shot.save(dir + QStringLiteral("/info-window.png")));
  ASSERT_TRUE(whole.save(dir + QStringLiteral("/info-window-screen.png")));
  EXPECT_EQ(shot.size(), QSize(w->width(), 50));
  EXPECT_GT(Colours(shot), 4) << "the window's area holds no text";
}

// A question box (AskNo: No is the default), taken once it is on screen.
TEST_F(Screenshots, QuestionBox) {
  QImage shot;
  QImage rendered;
  qttest::OnNextBox([&](QMessageBox* box) {
    // Let the display map and paint the box, then take it from the screen.
    QTimer::singleShot(400, box, [&, box] {
      const QRect g = box->frameGeometry();
      shot = QGuiApplication::primaryScreen()->grabWindow(0, g.x(), g.y(), g.width(), g.height()).toImage();
      rendered = box->grab().toImage();
      box->button(QMessageBox::No)->click();
    });
  });
  EXPECT_EQ(AskNo(u"Overwrite the file \"report.txt\"?"), IDNO);
  ASSERT_FALSE(shot.isNull());
  const QString dir = ShotsDir();
  ASSERT_TRUE(shot.save(dir + QStringLiteral("/question-box.png")));
  ASSERT_TRUE(rendered.save(dir + QStringLiteral("/question-box-rendered.png")));
  EXPECT_GT(Colours(shot), 4);
}

}  // namespace
}  // namespace quill::Gutils
