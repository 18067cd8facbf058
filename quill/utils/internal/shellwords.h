// Splitting a parameter text into words the way a POSIX shell does, without
// any expansion: blanks (space, tab, newline) separate words; single quotes
// keep everything up to the next single quote; double quotes keep everything
// up to the next unescaped double quote, where a backslash escapes only
// $ ` " \ and newline; outside quotes a backslash keeps the next character
// (a backslash-newline pair is removed). An unclosed quote runs to the end.
//
//   SplitShellWords("a 'b c' \"d\\\"e\"")  ->  {"a", "b c", "d\"e"}
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quill::Gutils::internal {

[[nodiscard]] std::vector<std::string> SplitShellWords(std::string_view text);

}  // namespace quill::Gutils::internal
