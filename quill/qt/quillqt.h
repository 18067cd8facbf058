// The Qt module of Quill: libquill23-qt.so (CMake target Quill::qt,
// pkg-config quill23-qt).
//
// Linking (or dlopen-ing) the module installs Qt widgets as the core
// library's user-interface service (quill/utils/uiservice.h), so that Ask,
// AskNo and ShowInfo (quill/utils/questions.h) show a QMessageBox and a
// frameless window; unloading it puts the terminal service back. It also
// keeps the Qt event loop running while RunProgram waits for a child, and
// provides GetLocaleTree for a QTreeWidget and the adapters that let the
// registry routines save and load QWidget geometry and QObject properties.
//
// This header includes the whole module (adapters.h, localetree.h).
//
// The widgets need a QApplication: calls made before one exists, after it is
// gone, or from a thread other than the application's go to the terminal
// service instead.
//
//   QApplication app(argc, argv);
//   if (quill::Gutils::Ask(u"Save the changes?") == quill::Gutils::IDYES) ...
#pragma once

#include "quill/qt/adapters.h"
#include "quill/qt/localetree.h"
#include "quill/rtl/export.h"
#include "quill/utils/uiservice.h"

namespace quill::Gutils {

// The module's service (installed while the module is loaded). A caller that
// installed a service of its own can put this one back with
// InstallUIService(&QtUIService()).
[[nodiscard]] QUILL_API TUIService& QtUIService();

}  // namespace quill::Gutils

// Keeps the module linked into every program that includes this header: a
// linker that drops unreferenced libraries (--as-needed, the default on many
// systems) would otherwise leave out a module that the program only wants
// for its load-time installation.
namespace quill::qtinternal {
[[maybe_unused]] __attribute__((used)) static quill::Gutils::TUIService& (*const kModuleAnchor)() =
    &quill::Gutils::QtUIService;
}  // namespace quill::qtinternal
