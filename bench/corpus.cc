// Benchmark inputs: real files of each kind where the machine has them, and a
// deterministic generator for the rest (see corpus.h).
#include "bench/corpus.h"

#include <zlib.h>

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <random>
#include <stdexcept>
#include <string_view>

namespace quillbench {
namespace {

namespace fs = std::filesystem;

// ---------------------------------------------------------------------------
// Real files

// Files whose names are those of a third-party library with this one's unit
// names are left out of every corpus.
bool Excluded(const fs::path& p) {
  std::string name = p.filename().string();
  std::transform(name.begin(), name.end(), name.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  for (const char* unit : {"gstrings", "gutils", "glocales", "gcompress", "ghtmlhlp"}) {
    if (name.rfind(unit, 0) == 0) return true;
  }
  return false;
}

// Regular files under `dir` (symbolic links left out), sorted.
std::vector<fs::path> FilesUnder(const fs::path& dir, bool recursive) {
  std::vector<fs::path> files;
  std::error_code ec;
  if (!fs::is_directory(dir, ec)) return files;
  auto add = [&](const fs::directory_entry& e) {
    std::error_code ec2;
    if (e.is_symlink(ec2) || !e.is_regular_file(ec2) || Excluded(e.path())) return;
    files.push_back(e.path());
  };
  const auto opts = fs::directory_options::skip_permission_denied;
  if (recursive) {
    for (auto it = fs::recursive_directory_iterator(dir, opts, ec);
         !ec && it != fs::recursive_directory_iterator(); it.increment(ec)) {
      add(*it);
    }
  } else {
    for (auto it = fs::directory_iterator(dir, opts, ec); !ec && it != fs::directory_iterator();
         it.increment(ec)) {
      add(*it);
    }
  }
  std::sort(files.begin(), files.end());
  return files;
}

// `parent`/<entries whose name starts with `prefix`>/`rest`, sorted.
std::vector<std::string> Glob(const std::string& parent, const std::string& prefix,
                              const std::string& rest) {
  std::vector<std::string> dirs;
  std::error_code ec;
  if (!fs::is_directory(parent, ec)) return dirs;
  for (auto it = fs::directory_iterator(parent, ec); !ec && it != fs::directory_iterator();
       it.increment(ec)) {
    const std::string name = it->path().filename().string();
    if (name.rfind(prefix, 0) == 0) dirs.push_back((it->path() / rest).string());
  }
  std::sort(dirs.begin(), dirs.end());
  return dirs;
}

std::string ReadUpTo(const fs::path& p, std::size_t limit) {
  std::ifstream f(p, std::ios::binary);
  std::string s;
  s.resize(limit);
  f.read(s.data(), static_cast<std::streamsize>(limit));
  s.resize(static_cast<std::size_t>(std::max<std::streamsize>(0, f.gcount())));
  return s;
}

bool HasExtension(const fs::path& p, std::initializer_list<const char*> exts) {
  const std::string e = p.extension().string();
  return std::any_of(exts.begin(), exts.end(), [&](const char* x) { return e == x; });
}

// The translated messages of a GNU message catalogue (.mo), one per line:
// real prose in the catalogue's language. Bad or foreign files give "".
std::string MoMessages(const std::string& mo) {
  auto u32 = [&](std::size_t at, bool swap) -> uint32_t {
    if (at + 4 > mo.size()) return 0;
    uint32_t v;
    std::memcpy(&v, mo.data() + at, 4);
    return swap ? __builtin_bswap32(v) : v;
  };
  bool swap = false;
  if (u32(0, false) != 0x950412DEu) {
    if (u32(0, true) != 0x950412DEu) return "";
    swap = true;
  }
  const uint32_t count = u32(8, swap);
  const uint32_t table = u32(16, swap);
  std::string out;
  for (uint32_t i = 1; i < count; ++i) {  // entry 0 is the catalogue's header
    const std::size_t entry = static_cast<std::size_t>(table) + 8u * i;
    if (entry + 8 > mo.size()) break;
    const uint32_t len = u32(entry, swap);
    const uint32_t off = u32(entry + 4, swap);
    if (static_cast<std::size_t>(off) + len > mo.size()) break;
    out.append(mo, off, len);
    out += '\n';
  }
  return out;
}

struct Source {
  std::vector<std::string> dirs;
  bool recursive = true;
  std::function<bool(const fs::path&, std::string_view head)> accept;
  bool mo = false;  // take the messages of .mo catalogues
};

// Appends accepted files until `out` holds `size` bytes; no file gives more
// than an eighth of the corpus, so several always contribute.
std::size_t AppendReal(std::string& out, std::size_t size, const Source& src) {
  std::size_t files = 0;
  const std::size_t per_file = std::max<std::size_t>(size / 8, 64 << 10);
  for (const std::string& dir : src.dirs) {
    for (const fs::path& p : FilesUnder(dir, src.recursive)) {
      if (out.size() >= size) return files;
      const std::string head = ReadUpTo(p, 64);
      if (!src.accept(p, head)) continue;
      std::string data = ReadUpTo(p, src.mo ? (16u << 20) : per_file);
      if (src.mo) data = MoMessages(data).substr(0, per_file);
      if (data.empty()) continue;
      out.append(data, 0, std::min(data.size(), size - out.size()));
      ++files;
    }
  }
  return files;
}

bool IsElf(std::string_view head) { return head.substr(0, 4) == "\x7F" "ELF"; }

std::vector<std::string> LocaleDirs(std::initializer_list<const char*> langs) {
  std::vector<std::string> dirs;
  for (const char* l : langs) dirs.push_back(std::string("/usr/share/locale/") + l + "/LC_MESSAGES");
  return dirs;
}

Source RealSource(const std::string& kind) {
  Source s;
  auto ext = [](std::initializer_list<const char*> exts) {
    std::vector<std::string> v(exts.begin(), exts.end());
    return [v](const fs::path& p, std::string_view) {
      const std::string e = p.extension().string();
      return std::find(v.begin(), v.end(), e) != v.end();
    };
  };
  if (kind == "c") {
    s.dirs = {"/usr/include"};
    s.accept = ext({".h", ".c"});
  } else if (kind == "pascal") {
    s.dirs = Glob("/usr/share/fpcsrc", "", "compiler");
    for (const auto& d : Glob("/usr/share/doc", "fp-", "")) s.dirs.push_back(d);
    s.accept = ext({".pas", ".pp", ".dpr", ".lpr"});
  } else if (kind == "sql") {
    s.dirs = Glob("/usr/share/postgresql", "", "");
    s.dirs.push_back("/usr/share/postgresql-common");
    s.dirs.push_back("/usr/share/sqlite3");
    s.accept = ext({".sql"});
  } else if (kind == "perl") {
    s.dirs = {"/usr/share/perl", "/usr/share/perl5"};
    for (const auto& d : Glob("/usr/lib/x86_64-linux-gnu", "perl", "")) s.dirs.push_back(d);
    s.accept = ext({".pm", ".pl"});
  } else if (kind == "python") {
    s.dirs = Glob("/usr/lib", "python3", "");
    s.accept = ext({".py"});
  } else if (kind == "shell") {
    s.dirs = {"/usr/bin", "/usr/sbin", "/etc/init.d", "/usr/share/debconf", "/usr/lib/dpkg"};
    s.accept = [](const fs::path& p, std::string_view head) {
      return HasExtension(p, {".sh", ".bash"}) || head.rfind("#!/bin/sh", 0) == 0 ||
             head.rfind("#! /bin/sh", 0) == 0 || head.rfind("#!/bin/bash", 0) == 0 ||
             head.rfind("#!/usr/bin/env bash", 0) == 0;
    };
  } else if (kind == "prose-latin") {
    s.dirs = LocaleDirs({"de", "fr", "es", "it", "pl", "pt_BR"});
    s.recursive = false;
    s.mo = true;
    s.accept = ext({".mo"});
  } else if (kind == "prose-cyrillic") {
    s.dirs = LocaleDirs({"ru", "uk", "bg", "sr"});
    s.recursive = false;
    s.mo = true;
    s.accept = ext({".mo"});
  } else if (kind == "prose-cjk") {
    s.dirs = LocaleDirs({"zh_CN", "ja", "ko", "zh_TW"});
    s.recursive = false;
    s.mo = true;
    s.accept = ext({".mo"});
  } else if (kind == "executables") {
    s.dirs = {"/usr/bin", "/usr/sbin"};
    s.recursive = false;
    s.accept = [](const fs::path&, std::string_view head) { return IsElf(head); };
  } else if (kind == "libraries") {
    s.dirs = {"/usr/lib/x86_64-linux-gnu", "/usr/lib64", "/usr/lib"};
    s.recursive = false;
    s.accept = [](const fs::path& p, std::string_view head) {
      return IsElf(head) && p.filename().string().find(".so") != std::string::npos;
    };
  } else if (kind == "logs") {
    s.dirs = {"/var/log"};
    s.accept = [](const fs::path& p, std::string_view head) {
      // Text logs only (not wtmp, the journal, ...).
      return (HasExtension(p, {".log"}) || p.filename().string().find(".log.") != std::string::npos) &&
             std::all_of(head.begin(), head.end(), [](char c) {
               return c == '\n' || c == '\t' || c == '\r' || static_cast<unsigned char>(c) >= 32;
             });
    };
  } else if (kind == "csv") {
    s.dirs = {"/usr/share"};
    s.accept = ext({".csv"});
  } else if (kind == "compressed") {
    s.dirs = {"/usr/share/doc"};
    s.accept = [](const fs::path& p, std::string_view head) {
      return HasExtension(p, {".gz"}) && head.substr(0, 2) == "\x1F\x8B";
    };
  }
  return s;
}

// ---------------------------------------------------------------------------
// Generators

using Rng = std::mt19937;

// An index into n items, skewed towards the front like word frequencies.
std::size_t Skewed(Rng& rng, std::size_t n) {
  const double u = std::uniform_real_distribution<double>(0, 1)(rng);
  return std::min(n - 1, static_cast<std::size_t>(static_cast<double>(n) * u * u * u));
}

const std::vector<std::string_view> kSyllables = {
    "buf", "len", "count", "item", "node", "next", "prev", "size", "data", "name", "value",
    "index", "offset", "table", "list", "key", "str", "text", "pos", "char", "line", "file",
    "read", "write", "open", "close", "init", "free", "get", "set", "find", "parse", "tmp",
    "result", "flags", "mode", "state", "ctx", "handle", "path", "error", "total", "width"};

const std::vector<std::string_view> kEnglish = {
    "the", "of", "and", "to", "a", "in", "is", "that", "for", "it", "as", "with", "be", "on",
    "not", "this", "by", "are", "or", "from", "at", "which", "an", "file", "data", "value",
    "when", "if", "each", "all", "returns", "number", "string", "list", "new", "used", "can",
    "should", "first", "last", "error", "name", "into", "only", "must", "given", "other"};

std::string Ident(Rng& rng, bool camel) {
  std::string s;
  const int parts = 1 + static_cast<int>(rng() % 3);
  for (int i = 0; i < parts; ++i) {
    std::string p(kSyllables[Skewed(rng, kSyllables.size())]);
    if (i > 0) {
      if (camel) {
        p[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(p[0])));
      } else {
        s += '_';
      }
    }
    s += p;
  }
  return s;
}

std::string Words(Rng& rng, int min, int max) {
  std::string s;
  const int n = min + static_cast<int>(rng() % static_cast<unsigned>(max - min + 1));
  for (int i = 0; i < n; ++i) {
    if (i > 0) s += ' ';
    s += kEnglish[Skewed(rng, kEnglish.size())];
  }
  return s;
}

// Expands a line template: %i identifier, %c camelCase identifier, %I upper
// identifier, %n number, %w a few words.
std::string Expand(std::string_view tpl, Rng& rng) {
  std::string out;
  for (std::size_t i = 0; i < tpl.size(); ++i) {
    if (tpl[i] != '%' || i + 1 == tpl.size()) {
      out += tpl[i];
      continue;
    }
    switch (tpl[++i]) {
      case 'i': out += Ident(rng, false); break;
      case 'c': out += Ident(rng, true); break;
      case 'I': {
        std::string id = Ident(rng, false);
        for (char& c : id) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
        out += id;
        break;
      }
      case 'n': out += std::to_string(rng() % (rng() % 2 ? 10 : 100000)); break;
      case 'w': out += Words(rng, 2, 9); break;
      default: out += tpl[i]; break;
    }
  }
  return out;
}

std::string FromTemplates(const std::vector<std::string_view>& lines, std::size_t size, Rng& rng) {
  std::string out;
  while (out.size() < size) out += Expand(lines[Skewed(rng, lines.size())], rng);
  return out;
}

const std::vector<std::string_view>& Templates(const std::string& kind) {
  static const std::vector<std::string_view> c = {
      "    %i = %i(%i, %n);\n", "    if (%i == NULL || %i < %n)\n        return -%n;\n",
      "    /* %w */\n", "}\n\n", "static int %i(const char *%i, size_t %i)\n{\n",
      "    for (i = 0; i < %i; i++) {\n        %i[i] = %i(%i, i);\n    }\n",
      "#define %I %n\n", "struct %i {\n    int %i;\n    char *%i;\n};\n", "#include <%i.h>\n"};
  static const std::vector<std::string_view> pascal = {
      "  %c := %c(%c, %n);\n", "  if %c > %n then\n    Exit(%c);\n", "  { %w }\n", "end;\n\n",
      "function %c(const %c: string; %c: Integer): Boolean;\nvar\n  %c: Integer;\nbegin\n",
      "  for I := 0 to %c - 1 do\n  begin\n    %c[I] := %c(%c);\n  end;\n",
      "  %c: array[0..%n] of Byte;\n", "  // %w\n", "procedure T%c.%c(Sender: TObject);\nbegin\n"};
  static const std::vector<std::string_view> sql = {
      "SELECT %i, %i, COUNT(*) FROM %i WHERE %i = %n GROUP BY %i;\n",
      "INSERT INTO %i (%i, %i, %i) VALUES (%n, '%w', %n);\n",
      "CREATE TABLE %i (\n  %i INTEGER PRIMARY KEY,\n  %i TEXT NOT NULL,\n  %i REAL\n);\n",
      "-- %w\n", "UPDATE %i SET %i = %i + %n WHERE %i IN (SELECT %i FROM %i);\n",
      "CREATE INDEX %i_idx ON %i (%i);\n"};
  static const std::vector<std::string_view> perl = {
      "    my $%i = $%i->{%i} // %n;\n", "    return unless defined $%i;\n", "    # %w\n",
      "}\n\n", "sub %i {\n    my ($self, %%%i) = @_;\n",
      "    foreach my $%i (@{$%i}) {\n        push @%i, $%i if $%i =~ /^%i/;\n    }\n",
      "use %c::%c;\n", "    print STDERR \"%w\\n\" if $%i;\n"};
  static const std::vector<std::string_view> python = {
      "        %i = self.%i(%i, %n)\n", "        if %i is None or %i < %n:\n            return %i\n",
      "    # %w\n", "\n\nclass %c(%c):\n    \"\"\"%w.\"\"\"\n",
      "    def %i(self, %i, %i=None):\n", "        for %i in %i:\n            %i.append(%i)\n",
      "from %i import %c\n", "        raise ValueError(\"%w\")\n"};
  static const std::vector<std::string_view> shell = {
      "%I=\"${%I:-%n}\"\n", "if [ -n \"$%I\" ]; then\n    %i \"$%I\" || exit %n\nfi\n", "# %w\n",
      "for %i in \"$@\"; do\n    echo \"%w: $%i\"\ndone\n", "%i() {\n    local %i=\"$1\"\n",
      "}\n\n", "case \"$%i\" in\n    %i) %i ;;\n    *) echo \"%w\" >&2 ;;\nesac\n"};
  if (kind == "c") return c;
  if (kind == "pascal") return pascal;
  if (kind == "sql") return sql;
  if (kind == "perl") return perl;
  if (kind == "python") return python;
  return shell;
}

// Prose from a vocabulary; words separated by spaces unless `spaced` is false.
std::string Prose(const std::vector<std::string_view>& vocab, bool spaced, std::size_t size,
                  Rng& rng) {
  std::string out;
  int inSentence = 0;
  while (out.size() < size) {
    if (inSentence > 0 && spaced) out += ' ';
    out += vocab[Skewed(rng, vocab.size())];
    if (++inSentence > 6 + static_cast<int>(rng() % 12)) {
      out += spaced ? ". " : "\xE3\x80\x82";  // U+3002 IDEOGRAPHIC FULL STOP
      if (rng() % 5 == 0) out += '\n';
      inSentence = 0;
    }
  }
  return out;
}

const std::vector<std::string_view> kLatinWords = {
    "the", "of", "and", "der", "die", "und", "le", "la", "de", "et", "el", "que", "file",
    "Datei", "fichier", "archivo", "über", "größe", "können", "müssen", "été", "créer",
    "supprimer", "données", "être", "número", "configuración", "año", "niño", "Straße",
    "öffnen", "schließen", "enregistrer", "élément", "opción", "también", "für", "nicht",
    "pour", "avec", "para", "con", "zu", "dans", "cannot", "could", "not", "open", "error",
    "Fehler", "erreur", "directory", "Verzeichnis", "répertoire"};

const std::vector<std::string_view> kCyrillicWords = {
    "и", "в", "не", "на", "что", "с", "по", "как", "это", "для", "файл", "файла", "не",
    "удалось", "открыть", "ошибка", "данные", "строка", "поиск", "замена", "сжатие", "размер",
    "папка", "каталог", "система", "программа", "пользователь", "версия", "установить",
    "значение", "параметр", "время", "дата", "текст", "сохранить", "создать", "удалить",
    "найти", "может", "быть", "должен", "если", "или", "все", "при", "из", "от", "до",
    "Невозможно", "Файл", "Ошибка", "Використання", "файлу", "помилка", "Грешка"};

const std::vector<std::string_view> kCjkWords = {
    "的", "一", "是", "在", "不", "了", "有", "和", "人", "这", "中", "大", "为", "上", "个",
    "文件", "数据", "系统", "程序", "错误", "搜索", "替换", "压缩", "大小", "目录", "用户",
    "版本", "安装", "无法", "打开", "保存", "创建", "删除", "设置", "选项", "の", "に", "は",
    "を", "た", "が", "で", "て", "と", "ファイル", "データ", "エラー", "できません", "開く",
    "保存", "파일", "오류", "열", "수", "없습니다", "、", "「", "」"};

std::string Logs(std::size_t size, Rng& rng) {
  static const std::vector<std::string_view> procs = {"sshd", "cron", "kernel", "systemd",
                                                      "dbus-daemon", "NetworkManager", "apt"};
  static const std::vector<std::string_view> msgs = {
      "Accepted publickey for %i from 10.0.%n.%n port %n ssh2",
      "(root) CMD (run-parts /etc/cron.hourly)", "Started %c.service - %w.",
      "usb %n-%n: new high-speed USB device number %n using xhci_hcd",
      "status half-configured %i:amd64 %n.%n-%n", "Connection closed by %n.%n.%n.%n port %n",
      "[%n.%n] %i: %w"};
  std::string out;
  unsigned sec = 0;
  while (out.size() < size) {
    sec += rng() % 4;
    char stamp[64];
    std::snprintf(stamp, sizeof stamp, "2026-11-%02u %02u:%02u:%02u host ", 1 + (sec / 86400) % 28,
                  (sec / 3600) % 24, (sec / 60) % 60, sec % 60);
    out += stamp;
    out += procs[Skewed(rng, procs.size())];
    out += '[' + std::to_string(100 + rng() % 30000) + "]: ";
    out += Expand(msgs[Skewed(rng, msgs.size())], rng);
    out += '\n';
  }
  return out;
}

std::string Csv(std::size_t size, Rng& rng) {
  static const std::vector<std::string_view> names = {"Smith", "Müller", "García", "Rossi",
                                                      "Novak", "Dubois", "Jensen", "Kowalski"};
  static const std::vector<std::string_view> cities = {"London", "Berlin", "Madrid", "Rome",
                                                       "Prague", "Paris", "Oslo", "Warsaw"};
  static const std::vector<std::string_view> states = {"paid", "open", "cancelled", "refunded"};
  std::string out = "id,date,name,city,amount,quantity,status\n";
  for (unsigned id = 1; out.size() < size; ++id) {
    char row[160];
    std::snprintf(row, sizeof row, "%u,2026-%02u-%02u,%s,%s,%u.%02u,%u,%s\n", id,
                  1 + static_cast<unsigned>(rng() % 12), 1 + static_cast<unsigned>(rng() % 28),
                  std::string(names[Skewed(rng, names.size())]).c_str(),
                  std::string(cities[Skewed(rng, cities.size())]).c_str(),
                  static_cast<unsigned>(rng() % 5000), static_cast<unsigned>(rng() % 100),
                  1 + static_cast<unsigned>(rng() % 20),
                  std::string(states[Skewed(rng, states.size())]).c_str());
    out += row;
  }
  return out;
}

// Machine-code-like bytes: short instructions, small immediates, zero runs
// and relocation-like tables.
std::string Binary(std::size_t size, Rng& rng) {
  std::string out;
  static const uint8_t ops[] = {0x48, 0x89, 0x8B, 0xE8, 0xC3, 0x0F, 0x85, 0x84, 0x83, 0xFF,
                                0x31, 0xC0, 0x74, 0x75, 0xEB, 0x41, 0x5D, 0x55, 0x90, 0x4C};
  while (out.size() < size) {
    if (rng() % 16 == 0) {
      out.append(rng() % 64, '\0');
    } else if (rng() % 8 == 0) {
      const uint64_t base = rng();
      for (int i = 0; i < 8; ++i) {
        const uint64_t v = base + rng() % 4096;
        out.append(reinterpret_cast<const char*>(&v), 8);
      }
    } else {
      out += static_cast<char>(ops[Skewed(rng, sizeof ops)]);
      if (rng() % 2) out += static_cast<char>(rng() % 256);
      if (rng() % 3 == 0) out.append(3, static_cast<char>(rng() % 2 ? 0 : 0xFF));
    }
  }
  return out;
}

// Generated prose, deflated in pieces of 64 KB (like a folder of .gz files).
std::string Deflated(std::size_t size, Rng& rng) {
  std::string out;
  while (out.size() < size) {
    const std::string plain = Prose(kLatinWords, true, 64 << 10, rng);
    uLongf n = compressBound(plain.size());
    std::string z(n, '\0');
    compress2(reinterpret_cast<Bytef*>(z.data()), &n, reinterpret_cast<const Bytef*>(plain.data()),
              plain.size(), 6);
    out.append(z, 0, n);
  }
  return out;
}

std::string ShortPeriods(std::size_t size, Rng& rng) {
  std::string out;
  while (out.size() < size) {
    const std::size_t period = 2 + rng() % 7;
    std::string unit;
    for (std::size_t i = 0; i < period; ++i) unit += static_cast<char>(rng() % 256);
    const std::size_t run = 256 + rng() % 4096;
    for (std::size_t i = 0; i < run; ++i) out += unit[i % period];
  }
  return out;
}

std::string RandomBytes(std::size_t size) {
  std::mt19937_64 rng(3);
  std::string out(size, '\0');
  for (std::size_t i = 0; i < size; i += 8) {
    const uint64_t v = rng();
    std::memcpy(out.data() + i, &v, std::min<std::size_t>(8, size - i));
  }
  return out;
}

std::string Generate(const std::string& kind, std::size_t size, Rng& rng) {
  if (kind == "prose-latin") return Prose(kLatinWords, true, size, rng);
  if (kind == "prose-cyrillic") return Prose(kCyrillicWords, true, size, rng);
  if (kind == "prose-cjk") return Prose(kCjkWords, false, size, rng);
  if (kind == "executables" || kind == "libraries") return Binary(size, rng);
  if (kind == "logs") return Logs(size, rng);
  if (kind == "csv") return Csv(size, rng);
  if (kind == "compressed") return Deflated(size, rng);
  return FromTemplates(Templates(kind), size, rng);
}

}  // namespace

const std::vector<std::string>& CorpusKinds() {
  static const std::vector<std::string> kinds = {
      "c",           "pascal",    "sql",  "perl", "python",     "shell",
      "prose-latin", "prose-cyrillic",    "prose-cjk",  "executables", "libraries",
      "logs",        "csv",       "compressed", "one-byte", "short-periods", "random"};
  return kinds;
}

bool IsTextKind(const std::string& kind) {
  return kind != "executables" && kind != "libraries" && kind != "compressed" &&
         kind != "one-byte" && kind != "short-periods" && kind != "random";
}

Corpus MakeCorpus(const std::string& kind, std::size_t size) {
  const auto& kinds = CorpusKinds();
  const auto at = std::find(kinds.begin(), kinds.end(), kind);
  if (at == kinds.end()) throw std::invalid_argument("unknown corpus kind: " + kind);
  Corpus c{kind, "", ""};
  if (kind == "one-byte") {
    c.bytes.assign(size, 'a');
    c.origin = "generated";
    return c;
  }
  if (kind == "short-periods") {
    Rng rng(17);
    c.bytes = ShortPeriods(size, rng).substr(0, size);
    c.origin = "generated";
    return c;
  }
  if (kind == "random") {
    c.bytes = RandomBytes(size);
    c.origin = "generated";
    return c;
  }
  const Source src = RealSource(kind);
  const std::size_t files = AppendReal(c.bytes, size, src);
  const std::size_t real = c.bytes.size();
  if (real >= size || real >= (1u << 20)) {
    // Enough real data: repeat it.
    const std::string once = c.bytes;
    while (c.bytes.size() < size) c.bytes.append(once, 0, std::min(once.size(), size - c.bytes.size()));
    c.origin = std::to_string(files) + " files" + (real < size ? " (repeated)" : "");
  } else {
    uint32_t seed = 2166136261u;  // FNV-1a of the kind's name
    for (char ch : kind) seed = (seed ^ static_cast<unsigned char>(ch)) * 16777619u;
    Rng rng(seed);
    c.bytes += Generate(kind, size - real, rng);
    c.bytes.resize(size);
    c.origin = files > 0 ? std::to_string(files) + " files (" + std::to_string(real >> 10) +
                               " KB) + generated"
                         : "generated";
  }
  return c;
}

std::size_t CorpusSize(std::size_t default_mb) {
  std::size_t mb = default_mb;
  if (const char* v = std::getenv("QUILL_BENCH_CORPUS_MB")) {
    const long n = std::strtol(v, nullptr, 10);
    if (n > 0) mb = static_cast<std::size_t>(n);
  }
  return mb << 20;
}

std::vector<std::string> SelectedKinds() {
  const char* v = std::getenv("QUILL_BENCH_KINDS");
  if (v == nullptr || *v == '\0') return CorpusKinds();
  std::vector<std::string> kinds;
  std::string_view s(v);
  while (!s.empty()) {
    const std::size_t comma = s.find(',');
    kinds.emplace_back(s.substr(0, comma));
    if (comma == std::string_view::npos) break;
    s.remove_prefix(comma + 1);
  }
  return kinds;
}

}  // namespace quillbench
