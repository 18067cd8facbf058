// The Qt user-interface service: QMessageBox for the questions and a
// frameless top-level widget for the information window. Installed by a
// static initialiser when the module is loaded, removed when it is unloaded.
#include <QApplication>
#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QLabel>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QResizeEvent>
#include <QScreen>
#include <QThread>
#include <QWidget>
#include <QWindow>
#include <memory>
#include <thread>
#include <utility>
#include <vector>

#include "quill/qt/internal/qtstrings.h"
#include "quill/qt/quillqt.h"
#include "quill/utils/process.h"

namespace quill::Gutils {

namespace {

using qtinternal::FromQString;
using qtinternal::ToQString;

// Object name of every information window, so that they can be found again
// (the application's shut-down, tests).
constexpr char kInfoWindowName[] = "QuillInfoWindow";

// True when widgets may be made here: a QApplication exists and this is its
// thread.
bool WidgetsUsable() {
  auto* app = qobject_cast<QApplication*>(QCoreApplication::instance());
  return app != nullptr && QThread::currentThread() == app->thread();
}

// Destroys the information windows still alive when the QApplication goes
// away (widgets cannot outlive it); the core's form object then stands for
// nothing and ignores further calls.
void DestroyInfoWindows() {
  for (QWidget* w : QApplication::topLevelWidgets()) {
    if (w->objectName() == QLatin1String(kInfoWindowName)) delete w;
  }
}

// The window: no owner, no frame, above the others; its one panel fills it
// whatever its size.
class TInfoWidget final : public QWidget {
 public:
  TInfoWidget()
      : QWidget(nullptr, Qt::Window | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint) {
    setObjectName(QLatin1String(kInfoWindowName));
    setWindowTitle(QString());
  }
  QLabel* panel = nullptr;

 protected:
  void resizeEvent(QResizeEvent* e) override {
    QWidget::resizeEvent(e);
    if (panel != nullptr) panel->setGeometry(rect());
  }
};

class TQtInfoForm final : public TInfoForm {
 public:
  TQtInfoForm() : widget_(new TInfoWidget) {
    // Re-registered for every window: the application runs its post
    // routines once, at its destruction, and a later QApplication needs it
    // again.
    qRemovePostRoutine(DestroyInfoWindows);
    qAddPostRoutine(DestroyInfoWindows);
  }
  ~TQtInfoForm() override { delete widget_.data(); }

  int32_t TextWidth(const UnicodeString& Text) override {
    if (widget_ == nullptr) return 0;
    return QFontMetrics(widget_->font()).horizontalAdvance(ToQString(Text));
  }
  void SetWidth(int32_t Width) override {
    if (widget_ != nullptr) Resize(Width, widget_->height());
  }
  void SetHeight(int32_t Height) override {
    if (widget_ != nullptr) Resize(widget_->width(), Height);
  }
  int32_t Width() const override { return widget_ != nullptr ? widget_->width() : 0; }
  int32_t Height() const override { return widget_ != nullptr ? widget_->height() : 0; }

  void CreatePanel(const UnicodeString& Caption) override {
    if (widget_ == nullptr) return;
    auto* panel = new QLabel(widget_);
    panel->setObjectName(QStringLiteral("Panel"));
    panel->setFrameStyle(QFrame::Panel | QFrame::Raised);
    panel->setAlignment(Qt::AlignCenter);
    panel->setTextFormat(Qt::PlainText);  // the text is shown as it is, never as markup
    panel->setText(ToQString(Caption));
    panel->setGeometry(widget_->rect());
    widget_->panel = panel;
  }
  void SetPanelCaption(const UnicodeString& Caption) override {
    if (widget_ != nullptr && widget_->panel != nullptr) widget_->panel->setText(ToQString(Caption));
  }
  UnicodeString PanelCaption() const override {
    if (widget_ == nullptr || widget_->panel == nullptr) return {};
    return FromQString(widget_->panel->text());
  }

  void Show() override {
    if (widget_ == nullptr) return;
    if (!placed_) {
      // Centred on the screen once, when first shown, from the size it has
      // then; later width changes keep the left edge. A window wider than
      // the screen starts left of it.
      if (QScreen* screen = QGuiApplication::primaryScreen()) {
        const QRect s = screen->geometry();
        widget_->move(s.x() + (s.width() - widget_->width()) / 2,
                      s.y() + (s.height() - widget_->height()) / 2);
      }
      placed_ = true;
    }
    widget_->show();
  }
  void Hide() override {
    if (widget_ != nullptr) widget_->hide();
  }
  void Repaint() override {
    if (widget_ == nullptr || !widget_->isVisible()) return;
    // A window that the display has not mapped yet cannot be painted: let
    // the display's answer to the show arrive first (briefly, no user input).
    WaitUntilExposed();
    widget_->repaint();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::UpdateRequest);
    QGuiApplication::sync();
  }

 private:
  void Resize(int32_t Width, int32_t Height) {
    // No width limit of our own: the window may be wider than the screen.
    widget_->resize(Width, Height);
    if (widget_->panel != nullptr) widget_->panel->setGeometry(widget_->rect());
  }
  void WaitUntilExposed() {
    QWindow* window = widget_->windowHandle();
    if (window == nullptr || window->isExposed()) return;
    QDeadlineTimer deadline(500);
    while (widget_ != nullptr && !window->isExposed() && !deadline.hasExpired()) {
      QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents, 10);
      if (!window->isExposed()) QThread::msleep(1);
    }
  }

  QPointer<TInfoWidget> widget_;
  bool placed_ = false;
};

QMessageBox::StandardButton StandardButtonOf(int32_t Answer) {
  switch (Answer) {
    case IDOK: return QMessageBox::Ok;
    case IDCANCEL: return QMessageBox::Cancel;
    case IDABORT: return QMessageBox::Abort;
    case IDRETRY: return QMessageBox::Retry;
    case IDIGNORE: return QMessageBox::Ignore;
    case IDYES: return QMessageBox::Yes;
    case IDNO: return QMessageBox::No;
    default: return QMessageBox::NoButton;
  }
}

QMessageBox::Icon IconOf(int32_t Flags) {
  switch (Flags & MB_ICONMASK) {
    case MB_ICONHAND: return QMessageBox::Critical;
    case MB_ICONQUESTION: return QMessageBox::Question;
    case MB_ICONEXCLAMATION: return QMessageBox::Warning;
    case MB_ICONASTERISK: return QMessageBox::Information;
    default: return QMessageBox::NoIcon;
  }
}

class TQtUIService final : public TUIService {
 public:
  int32_t MessageBox(const UnicodeString& Text, const UnicodeString& Caption,
                     int32_t Flags) override {
    if (!WidgetsUsable()) return TerminalUIService().MessageBox(Text, Caption, Flags);
    // Owned by the active window, as the application's own boxes are.
    QMessageBox box(IconOf(Flags), ToQString(Caption), ToQString(Text), QMessageBox::NoButton,
                    QApplication::activeWindow());
    box.setTextFormat(Qt::PlainText);
    std::vector<std::pair<QAbstractButton*, int32_t>> answers;
    for (int32_t answer : MessageBoxButtons(Flags)) {
      answers.emplace_back(box.addButton(StandardButtonOf(answer)), answer);
    }
    box.setDefaultButton(StandardButtonOf(MessageBoxDefaultAnswer(Flags)));
    const int32_t escape = MessageBoxEscapeAnswer(Flags);
    box.setEscapeButton(box.button(StandardButtonOf(escape)));
    box.exec();
    for (const auto& [button, answer] : answers) {
      if (box.clickedButton() == button) return answer;
    }
    return escape;
  }

  std::unique_ptr<TInfoForm> CreateInfoForm() override {
    if (!WidgetsUsable()) return TerminalUIService().CreateInfoForm();
    return std::make_unique<TQtInfoForm>();
  }
};

// Lets a waiting RunProgram keep the application's events flowing.
void ProcessQtEvents() {
  if (QCoreApplication::instance() != nullptr &&
      QThread::currentThread() == QCoreApplication::instance()->thread()) {
    QCoreApplication::processEvents(QEventLoop::AllEvents);
  }
  std::this_thread::yield();
}

// Installs the service and the event hook while the module is loaded.
class TModuleInstaller {
 public:
  TModuleInstaller() {
    InstallUIService(&QtUIService());
    previous_hook_ = SetProcessMessagesHook(ProcessQtEvents);
  }
  ~TModuleInstaller() {
    // Our windows go before our code does; a service installed after ours
    // stays in place. The service that was in use before is not put back:
    // its code may be gone by now.
    UninstallUIService(&QtUIService());
    SetProcessMessagesHook(std::move(previous_hook_));
  }
  TModuleInstaller(const TModuleInstaller&) = delete;
  TModuleInstaller& operator=(const TModuleInstaller&) = delete;

 private:
  TProcessMessagesHook previous_hook_;
};

TModuleInstaller g_installer;

}  // namespace

TUIService& QtUIService() {
  static TQtUIService service;
  return service;
}

}  // namespace quill::Gutils
