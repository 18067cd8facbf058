// Helpers shared by the Qt module's tests.
#pragma once

#include <QApplication>
#include <QMessageBox>
#include <QTimer>
#include <QWidget>
#include <functional>

namespace quill::qttest {

// The information windows that exist now (top-level widgets of that name).
inline QList<QWidget*> InfoWindows() {
  QList<QWidget*> found;
  for (QWidget* w : QApplication::topLevelWidgets()) {
    if (w->objectName() == QLatin1String("QuillInfoWindow")) found.append(w);
  }
  return found;
}

// The one information window, or nullptr when there is none (or several).
inline QWidget* InfoWindow() {
  const QList<QWidget*> all = InfoWindows();
  return all.size() == 1 ? all.front() : nullptr;
}

// Runs `Act` on the next message box once it is the active modal widget
// (polled by a timer while the box runs its own event loop). Gives up after
// about five seconds, closing whatever modal widget there is, so that a
// failing test ends instead of hanging.
inline void OnNextBox(std::function<void(QMessageBox*)> Act) {
  auto* timer = new QTimer;
  auto tries = std::make_shared<int>(0);
  QObject::connect(timer, &QTimer::timeout, [timer, tries, Act = std::move(Act)] {
    if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
      if (box->isVisible()) {
        timer->stop();
        timer->deleteLater();
        Act(box);
        return;
      }
    }
    if (++*tries > 500) {
      timer->stop();
      timer->deleteLater();
      if (QWidget* w = QApplication::activeModalWidget()) w->close();
    }
  });
  timer->start(10);
}

}  // namespace quill::qttest
