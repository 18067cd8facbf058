// Reading the names a help engine is given: "file.chm::/topic.htm#anchor>window"
// and its URL forms, and checking the paths of a compiled help file's objects.
#pragma once

#include <string>
#include <string_view>

namespace quill::Ghtmlhlp::engine {

struct THelpName {
  std::string File;    // the file part, as given (no prefix)
  std::string Topic;   // "/topic.htm", or "" when no topic was named
  std::string Anchor;  // the text after '#' in the topic, without the '#'
};

// Splits a help name. Accepted forms: "file", "file::/topic", "file::topic"
// (the topic gets a leading '/'), each optionally prefixed by "mk:@MSITStore:",
// "ms-its:" or "its:" (any case). The file ends at the first "::" (file names
// on the engine's home system cannot hold ':'); a "#anchor" ends the topic
// and a ">window" suffix after the topic is dropped. Never fails: names
// without "::" are all file.
[[nodiscard]] THelpName ParseHelpName(std::string_view name);

// Whether `path`, an object path of a compiled help file, may be written
// below a folder: it starts with '/', has at most 512 bytes, and none of its
// segments (split at '/' and '\') is empty, "." or ".."; a single trailing
// '/' is allowed (a folder). Everything else (absolute escapes, "../",
// "//", NUL bytes, control characters) is refused.
[[nodiscard]] bool IsSafeObjectPath(std::string_view path);

// Percent-encodes `path` for a file:// URL (unreserved characters and '/'
// stay as they are) and appends "#" and the encoded `anchor` when not empty.
[[nodiscard]] std::string FileUrl(std::string_view path, std::string_view anchor);

}  // namespace quill::Ghtmlhlp::engine
