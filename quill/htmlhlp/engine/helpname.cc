// Help names and object paths.
#include "quill/htmlhlp/engine/helpname.h"

#include <array>
#include <cctype>

namespace quill::Ghtmlhlp::engine {
namespace {

bool StartsWithNoCase(std::string_view text, std::string_view prefix) {
  if (text.size() < prefix.size()) return false;
  for (size_t i = 0; i < prefix.size(); ++i) {
    if (std::tolower(static_cast<unsigned char>(text[i])) != std::tolower(static_cast<unsigned char>(prefix[i])))
      return false;
  }
  return true;
}

void AppendEncoded(std::string& out, std::string_view text, bool keep_slash) {
  static constexpr char kHex[] = "0123456789ABCDEF";
  for (const char ch : text) {
    const auto c = static_cast<unsigned char>(ch);
    const bool unreserved = std::isalnum(c) != 0 || c == '-' || c == '.' || c == '_' || c == '~';
    if (unreserved || (keep_slash && c == '/')) {
      out.push_back(ch);
    } else {
      out.push_back('%');
      out.push_back(kHex[c >> 4]);
      out.push_back(kHex[c & 15]);
    }
  }
}

}  // namespace

THelpName ParseHelpName(std::string_view name) {
  static constexpr std::array<std::string_view, 3> kPrefixes = {"mk:@MSITStore:", "ms-its:", "its:"};
  for (const std::string_view prefix : kPrefixes) {
    if (StartsWithNoCase(name, prefix)) {
      name.remove_prefix(prefix.size());
      break;
    }
  }
  THelpName result;
  const size_t sep = name.find("::");
  if (sep == std::string_view::npos) {
    result.File = name;
    return result;
  }
  result.File = name.substr(0, sep);
  std::string_view topic = name.substr(sep + 2);
  // "topic.htm>main": the window name is the help viewer's business.
  if (const size_t window = topic.rfind('>'); window != std::string_view::npos) topic = topic.substr(0, window);
  if (const size_t hash = topic.find('#'); hash != std::string_view::npos) {
    result.Anchor = topic.substr(hash + 1);
    topic = topic.substr(0, hash);
  }
  if (!topic.empty()) {
    if (topic.front() != '/') result.Topic.push_back('/');
    result.Topic.append(topic);
  }
  return result;
}

bool IsSafeObjectPath(std::string_view path) {
  constexpr size_t kMaxPath = 512;  // the archive format's own limit
  if (path.empty() || path.front() != '/' || path.size() > kMaxPath) return false;
  std::string_view rest = path.substr(1);
  if (!rest.empty() && rest.back() == '/') rest.remove_suffix(1);  // a folder
  if (rest.empty()) return false;  // the root itself names nothing to write
  size_t start = 0;
  for (;;) {
    const size_t end = rest.find_first_of("/\\", start);
    const std::string_view segment = rest.substr(start, end == std::string_view::npos ? std::string_view::npos : end - start);
    if (segment.empty() || segment == "." || segment == "..") return false;
    for (const char ch : segment) {
      if (static_cast<unsigned char>(ch) < 0x20 || ch == 0x7F) return false;
    }
    if (end == std::string_view::npos) return true;
    start = end + 1;
  }
}

std::string FileUrl(std::string_view path, std::string_view anchor) {
  std::string url = "file://";
  AppendEncoded(url, path, true);
  if (!anchor.empty()) {
    url.push_back('#');
    AppendEncoded(url, anchor, false);
  }
  return url;
}

}  // namespace quill::Ghtmlhlp::engine
