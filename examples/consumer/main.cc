// Uses the installed library: a string list, comma text and a conversion error.
#include <quill/quill.h>

#include <iostream>

int main() {
  using namespace quill;
  TStringList list;
  list.SetCommaText(u"alpha, \"beta gamma\",,delta");
  std::cout << list.Count() << " items: " << UnicodeToUtf8(list.CommaText()) << '\n';
  try {
    (void)StrToInt(u"12 ");
    return 1;
  } catch (const EConvertError& e) {
    std::cout << e.what() << '\n';
  }
  return list.Count() == 4 ? 0 : 1;
}
