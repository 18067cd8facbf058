// The built-in user-interface service: asks on the terminal and writes the
// information window's text to standard error.
#include "quill/utils/internal/terminalui.h"

#include <unistd.h>

#include <cerrno>
#include <string>

#include "quill/rtl/unicode.h"

namespace quill::Gutils::internal {

namespace {

// Writes all of `s` to standard error (unbuffered, so that it appears before
// the process blocks or ends).
void WriteError(std::string_view s) {
  while (!s.empty()) {
    const ssize_t n = ::write(STDERR_FILENO, s.data(), s.size());
    if (n < 0 && errno == EINTR) continue;
    if (n <= 0) return;
    s.remove_prefix(static_cast<size_t>(n));
  }
}

// Reads one line from standard input byte by byte, so that nothing after
// the line is taken from the caller's input. False at end of input (or on an
// error) before any byte of a line.
bool ReadLine(std::string& line) {
  line.clear();
  for (;;) {
    char c;
    const ssize_t n = ::read(STDIN_FILENO, &c, 1);
    if (n < 0 && errno == EINTR) continue;
    if (n <= 0) return !line.empty();
    if (c == '\n') return true;
    line.push_back(c);
  }
}

struct TButtonWord {
  int32_t Answer;
  char Letter;
  const char* Name;
};

constexpr TButtonWord kButtonWords[] = {
    {IDOK, 'o', "ok"},         {IDCANCEL, 'c', "cancel"}, {IDABORT, 'a', "abort"},
    {IDRETRY, 'r', "retry"},   {IDIGNORE, 'i', "ignore"}, {IDYES, 'y', "yes"},
    {IDNO, 'n', "no"},
};

const TButtonWord& WordOf(int32_t Answer) {
  for (const TButtonWord& w : kButtonWords) {
    if (w.Answer == Answer) return w;
  }
  return kButtonWords[0];
}

// "[Y/n]": one letter per button, the default one in capitals.
std::string Choices(const std::vector<int32_t>& Buttons, int32_t Default) {
  std::string s = "[";
  for (size_t i = 0; i < Buttons.size(); ++i) {
    if (i > 0) s += '/';
    const char letter = WordOf(Buttons[i]).Letter;
    s += Buttons[i] == Default ? static_cast<char>(letter - 'a' + 'A') : letter;
  }
  return s + "]";
}

std::string Trimmed(const std::string& s) {
  const size_t b = s.find_first_not_of(" \t\r");
  if (b == std::string::npos) return {};
  const size_t e = s.find_last_not_of(" \t\r");
  return s.substr(b, e - b + 1);
}

std::string Lower(std::string s) {
  for (char& c : s) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return s;
}

// The button a typed answer names (its letter or its whole name, in any
// case), or 0 when it names none of `Buttons`.
int32_t ParseAnswer(const std::string& Typed, const std::vector<int32_t>& Buttons) {
  const std::string t = Lower(Typed);
  for (int32_t b : Buttons) {
    const TButtonWord& w = WordOf(b);
    if ((t.size() == 1 && t[0] == w.Letter) || t == w.Name) return b;
  }
  return 0;
}

// An information form that has no window: what it would show goes to
// standard error, once per text.
class TTerminalInfoForm final : public TInfoForm {
 public:
  int32_t TextWidth(const UnicodeString& Text) override {
    // One column per character (a surrogate pair is one character).
    int32_t n = 0;
    for (char16_t c : Text) {
      if (c < 0xDC00 || c > 0xDFFF) ++n;
    }
    return n;
  }
  void SetWidth(int32_t Width) override { width_ = Width; }
  void SetHeight(int32_t Height) override { height_ = Height; }
  int32_t Width() const override { return width_; }
  int32_t Height() const override { return height_; }
  void CreatePanel(const UnicodeString& Caption) override { caption_ = Caption; }
  void SetPanelCaption(const UnicodeString& Caption) override { caption_ = Caption; }
  UnicodeString PanelCaption() const override { return caption_; }
  void Show() override { visible_ = true; }
  void Hide() override { visible_ = false; }
  void Repaint() override {
    // Repainting the same text again writes nothing: a caller that updates
    // the window in a loop does not fill the terminal with copies.
    if (!visible_ || (written_ && caption_ == last_)) return;
    WriteError(UnicodeToUtf8(caption_) + "\n");
    last_ = caption_;
    written_ = true;
  }

 private:
  int32_t width_ = 0;
  int32_t height_ = 0;
  bool visible_ = false;
  bool written_ = false;
  UnicodeString caption_;
  UnicodeString last_;
};

}  // namespace

int32_t TTerminalUIService::MessageBox(const UnicodeString& Text, const UnicodeString& Caption,
                                       int32_t Flags) {
  // Without a terminal to ask on (a pipe, a file, a service), nobody can
  // answer: the box is answered as if closed, which is No for Yes/No.
  if (::isatty(STDIN_FILENO) == 0) return MessageBoxEscapeAnswer(Flags);

  const std::vector<int32_t> buttons = MessageBoxButtons(Flags);
  const int32_t fallback = MessageBoxDefaultAnswer(Flags);
  std::string prompt;
  if (!Caption.empty()) prompt += UnicodeToUtf8(Caption) + ": ";
  prompt += UnicodeToUtf8(Text) + " " + Choices(buttons, fallback) + " ";

  std::string line;
  for (;;) {
    WriteError(prompt);
    if (!ReadLine(line)) {
      WriteError("\n");
      return MessageBoxEscapeAnswer(Flags);  // end of input: as if closed
    }
    const std::string typed = Trimmed(line);
    if (typed.empty()) return fallback;  // Enter takes the default button
    if (const int32_t answer = ParseAnswer(typed, buttons); answer != 0) return answer;
  }
}

std::unique_ptr<TInfoForm> TTerminalUIService::CreateInfoForm() {
  return std::make_unique<TTerminalInfoForm>();
}

}  // namespace quill::Gutils::internal
