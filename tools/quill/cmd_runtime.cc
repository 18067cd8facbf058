// quill demo: the runtime layer (locale, code page, number text).
#include "tools/quill/commands.h"

namespace quilltool {

void DemoRuntime(std::ostream& out) { (void)out; }

}  // namespace quilltool
