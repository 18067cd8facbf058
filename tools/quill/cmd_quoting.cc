// quill demo: quoting, C escapes and section reading of the Gstrings unit.
#include "tools/quill/commands.h"

namespace quilltool {

void DemoQuoting(std::ostream& out) { (void)out; }

}  // namespace quilltool
