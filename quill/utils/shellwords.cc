// Shell-style word splitting for program parameters.
#include "quill/utils/internal/shellwords.h"

namespace quill::Gutils::internal {

std::vector<std::string> SplitShellWords(std::string_view text) {
  std::vector<std::string> words;
  std::string word;
  bool in_word = false;  // true once the current word has begun (even "")
  size_t i = 0;
  const size_t n = text.size();
  while (i < n) {
    const char c = text[i];
    if (c == ' ' || c == '\t' || c == '\n') {
      if (in_word) {
        words.push_back(std::move(word));
        word.clear();
        in_word = false;
      }
      ++i;
    } else if (c == '\'') {
      in_word = true;
      const size_t close = text.find('\'', i + 1);
      const size_t end = close == std::string_view::npos ? n : close;
      word.append(text.substr(i + 1, end - i - 1));
      i = end == n ? n : end + 1;
    } else if (c == '"') {
      in_word = true;
      ++i;
      while (i < n && text[i] != '"') {
        if (text[i] == '\\' && i + 1 < n) {
          const char e = text[i + 1];
          if (e == '$' || e == '`' || e == '"' || e == '\\') {
            word.push_back(e);
            i += 2;
            continue;
          }
          if (e == '\n') {
            i += 2;
            continue;
          }
        }
        word.push_back(text[i++]);
      }
      if (i < n) ++i;  // the closing quote
    } else if (c == '\\') {
      if (i + 1 < n) {
        if (text[i + 1] != '\n') {
          word.push_back(text[i + 1]);
          in_word = true;
        }
        i += 2;
      } else {  // a trailing backslash stands for itself
        word.push_back(c);
        in_word = true;
        ++i;
      }
    } else {
      word.push_back(c);
      in_word = true;
      ++i;
    }
  }
  if (in_word) words.push_back(std::move(word));
  return words;
}

}  // namespace quill::Gutils::internal
