// quill lzg: compressing and expanding files in the LZG00 format (Gcompress).
//
//   quill lzg compress IN OUT     IN to OUT in LZG00 form ("-": stdin/stdout)
//   quill lzg decompress IN OUT   the reverse
//   quill lzg test FILE           exit 0 when FILE is an LZG00 stream, else 1
//   quill lzg info FILE           sizes, ratio and token counts
//
// Exit status: 0 done, 1 a file could not be read or written, 2 the input is
// not an LZG00 stream. A file OUT is written under a temporary name and moved
// into place only when the run succeeded, so a failed run leaves no partial
// OUT behind (the library's own file routines deliberately do; the tool uses
// the stream routines). On a terminal, inputs above 4 MB show a progress bar.
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <iostream>
#include <memory>
#include <random>
#include <string>

#include "quill/compress/gcompress.h"
#include "quill/rtl/exception.h"
#include "quill/rtl/streams.h"
#include "quill/rtl/unicode.h"
#include "tools/quill/commands.h"
#include "tools/quill/io.h"

namespace quilltool {
namespace {

namespace fs = std::filesystem;
using quill::TStream;
namespace Gc = quill::Gcompress;

constexpr int kExitFileError = 1;
constexpr int kExitWrongFormat = 2;
constexpr int64_t kProgressThreshold = int64_t{4} << 20;

// Standard output as a write-only stream (the coders only append to it).
class StdoutStream : public TStream {
 public:
  int64_t Read(void*, int64_t) override { return 0; }
  int64_t Write(const void* buffer, int64_t count) override {
    Stdout().write(static_cast<const char*>(buffer), static_cast<std::streamsize>(count));
    CheckStdout();
    written_ += count;
    return count;
  }
  int64_t Seek(int64_t offset, quill::TSeekOrigin origin) override {
    if (offset == 0 && origin != quill::soBeginning) return written_;
    throw quill::EStreamError(u"Standard output cannot seek");
  }
  int64_t Size() override { return written_; }

 private:
  int64_t written_ = 0;
};

// Reads everything `f` delivers into a memory stream, position 0.
std::unique_ptr<TStream> ReadAll(std::FILE* f) {
  auto m = std::make_unique<quill::TMemoryStream>();
  char buf[1 << 16];
  size_t n;
  while ((n = std::fread(buf, 1, sizeof buf, f)) > 0) m->WriteBuffer(buf, static_cast<int64_t>(n));
  m->SetPosition(0);
  return m;
}

// The input: a file stream for a regular file; standard input, pipes and
// other special files are read into memory first (they cannot tell their
// size in advance, nor seek).
std::unique_ptr<TStream> OpenInput(const std::string& name) {
  if (name == "-") return ReadAll(stdin);
  std::error_code ec;
  const auto type = std::filesystem::status(name, ec).type();
  if (!ec && type != std::filesystem::file_type::regular && type != std::filesystem::file_type::directory) {
    if (std::FILE* f = std::fopen(name.c_str(), "rb")) {
      auto m = ReadAll(f);
      std::fclose(f);
      return m;
    }
  }
  // Regular files, and anything that cannot be opened: the file stream
  // raises the error message.
  return std::make_unique<quill::TFileStream>(name, quill::fmOpenRead | quill::fmShareDenyWrite);
}

// A progress bar on standard error, redrawn when the percentage changes.
class ProgressBar {
 public:
  ProgressBar(TStream& source, int64_t total, const char* verb)
      : source_(source), total_(total), verb_(verb),
        enabled_(total > kProgressThreshold && isatty(STDERR_FILENO)) {}
  ~ProgressBar() {
    if (enabled_ && last_ >= 0) std::fputs("\r\033[K", stderr);
  }
  Gc::TProgressEvent Event() {
    if (!enabled_) return {};
    return [this](quill::TObject*, int32_t position, int32_t max_value) {
      // The callback's 32-bit numbers do for inputs under 2 GiB; beyond, the
      // stream's own position is used.
      const double done = total_ < (int64_t{1} << 31) && max_value > 0
                              ? static_cast<double>(position) / max_value
                              : static_cast<double>(source_.Position()) / static_cast<double>(source_.Size());
      const int percent = static_cast<int>(done * 100);
      if (percent == last_) return;
      last_ = percent;
      const int filled = percent * 30 / 100;
      std::fprintf(stderr, "\r%s [%.*s%.*s] %3d%%", verb_, filled, "##############################",
                   30 - filled, "..............................", percent);
      std::fflush(stderr);
    };
  }

 private:
  TStream& source_;
  int64_t total_;
  const char* verb_;
  bool enabled_;
  int last_ = -1;
};

void Fail(int status, const std::string& message) {
  std::cerr << "quill lzg: " << message << "\n";
  ExitStatus() = status;
}

// Runs compression or expansion from IN to OUT; returns the exit status.
int Code(bool compress, const std::string& in_name, const std::string& out_name) {
  std::unique_ptr<TStream> in;
  try {
    in = OpenInput(in_name);
  } catch (const quill::Exception& e) {
    Fail(kExitFileError, e.what());
    return kExitFileError;
  }
  if (!compress && !Gc::IsLZGCompressedStream(*in)) {
    Fail(kExitWrongFormat, (in_name == "-" ? std::string("standard input") : in_name) +
                               " is not an LZG00 stream (it does not start with \"LZG00\")");
    return kExitWrongFormat;
  }
  const int64_t total = in->Size() - in->Position();

  if (out_name == "-") {
    StdoutStream out;
    try {
      ProgressBar bar(*in, total, compress ? "compressing" : "expanding");
      compress ? Gc::LZGCompressStream(in.get(), &out, bar.Event())
               : Gc::LZGDecompressStream(in.get(), &out, bar.Event());
      FlushStdout();
    } catch (const quill::Exception& e) {
      Fail(kExitFileError, e.what());
      return kExitFileError;
    }
    return 0;
  }

  // Write under a temporary name beside OUT; move into place on success.
  const fs::path target(out_name);
  fs::path temp = target;
  temp += ".part-" + std::to_string(std::random_device{}() % 1000000);
  try {
    {
      std::unique_ptr<quill::TFileStream> created;
      try {
        created = std::make_unique<quill::TFileStream>(temp.string(), quill::fmCreate);
      } catch (const quill::EFCreateError&) {
        Fail(kExitFileError, "cannot create " + out_name + " (" + std::strerror(errno) + ")");
        return kExitFileError;
      }
      quill::TFileStream& out = *created;
      ProgressBar bar(*in, total, compress ? "compressing" : "expanding");
      compress ? Gc::LZGCompressStream(in.get(), &out, bar.Event())
               : Gc::LZGDecompressStream(in.get(), &out, bar.Event());
    }
    std::error_code ec;
    fs::rename(temp, target, ec);
    if (ec) {
      fs::remove(temp, ec);
      Fail(kExitFileError, "cannot write " + out_name + ": " + ec.message());
      return kExitFileError;
    }
  } catch (const quill::Exception& e) {
    std::error_code ec;
    fs::remove(temp, ec);
    Fail(kExitFileError, e.what());
    return kExitFileError;
  }
  return 0;
}

// Token statistics of an LZG00 stream, gathered without expanding it.
struct TokenStats {
  int32_t version = 0;
  int64_t packed = 0, plain = 0, literal_runs = 0, literal_bytes = 0, copies = 0, copy_bytes = 0;
};

TokenStats Scan(TStream& s) {
  TokenStats st;
  st.packed = s.Size() - s.Position();
  uint8_t header[9];
  s.ReadBuffer(header, 9);
  st.version = static_cast<int32_t>(header[5] | (header[6] << 8) | (header[7] << 16) |
                                    (static_cast<uint32_t>(header[8]) << 24));
  uint8_t buf[1 << 16];
  int64_t skip = 0;    // literal bytes still to pass over
  int copy_half = 0;   // 1: the second byte of a copy comes next
  uint8_t first = 0;
  for (int64_t n; (n = s.Read(buf, sizeof buf)) > 0;) {
    for (int64_t i = 0; i < n; ++i) {
      if (skip > 0) {
        const int64_t k = std::min(skip, n - i);
        skip -= k;
        i += k - 1;
      } else if (copy_half) {
        const uint32_t w = first | (uint32_t{buf[i]} << 8);
        const int64_t len = (w >> 12) + 3;
        ++st.copies;
        st.copy_bytes += len;
        st.plain += len;
        copy_half = 0;
      } else if (buf[i] & 1) {
        first = buf[i];
        copy_half = 1;
      } else {
        skip = buf[i] >> 1;
        ++st.literal_runs;
        st.literal_bytes += skip;
        st.plain += skip;
      }
    }
  }
  return st;
}

int Info(const std::string& name) {
  try {
    auto in = OpenInput(name);
    if (!Gc::IsLZGCompressedStream(*in)) {
      Fail(kExitWrongFormat, name + " is not an LZG00 stream");
      return kExitWrongFormat;
    }
    const TokenStats st = Scan(*in);
    const double ratio = st.plain ? 100.0 * static_cast<double>(st.packed) / static_cast<double>(st.plain) : 0.0;
    std::cout << "file:            " << name << "\n"
              << "format:          LZG00, version " << st.version << "\n"
              << "compressed:      " << st.packed << " bytes\n"
              << "expanded:        " << st.plain << " bytes\n";
    char ratio_text[64];
    std::snprintf(ratio_text, sizeof ratio_text, "ratio:           %.1f%% of the expanded size\n", ratio);
    std::cout << ratio_text;
    std::cout << "literal runs:    " << st.literal_runs << " (" << st.literal_bytes << " bytes)\n"
              << "copies:          " << st.copies << " (" << st.copy_bytes << " bytes)\n";
  } catch (const quill::Exception& e) {
    Fail(kExitFileError, e.what());
    return kExitFileError;
  }
  return 0;
}

int Test(const std::string& name) {
  try {
    auto in = OpenInput(name);
    if (Gc::IsLZGCompressedStream(*in)) {
      std::cout << name << ": LZG00 stream\n";
      return 0;
    }
    std::cout << name << ": not an LZG00 stream\n";
    ExitStatus() = 1;
    return 1;
  } catch (const quill::Exception& e) {
    Fail(kExitFileError, e.what());
    return kExitFileError;
  }
}

}  // namespace

void RegisterCompressCommands(CLI::App& app) {
  auto* lzg = app.add_subcommand("lzg", "Compress and expand files in the LZG00 format");
  lzg->require_subcommand(1);
  lzg->footer("Exit status: 0 done, 1 file error, 2 not an LZG00 stream. \"-\" is standard input/output.");

  static std::string c_in, c_out, d_in, d_out, t_file, i_file;
  auto* c = lzg->add_subcommand("compress", "Compress IN into OUT");
  c->add_option("IN", c_in, "Plain input file, or - for standard input")->required();
  c->add_option("OUT", c_out, "Compressed output file, or - for standard output")->required();
  c->callback([] { Code(true, c_in, c_out); });

  auto* d = lzg->add_subcommand("decompress", "Expand the LZG00 stream IN into OUT");
  d->add_option("IN", d_in, "Compressed input file, or - for standard input")->required();
  d->add_option("OUT", d_out, "Plain output file, or - for standard output")->required();
  d->callback([] { Code(false, d_in, d_out); });

  auto* t = lzg->add_subcommand("test", "Tell whether FILE starts with an LZG00 header (exit 0) or not (exit 1)");
  t->add_option("FILE", t_file, "File to test, or -")->required();
  t->callback([] { Test(t_file); });

  auto* i = lzg->add_subcommand("info", "Show sizes, ratio and token counts of an LZG00 file");
  i->add_option("FILE", i_file, "LZG00 file, or -")->required();
  i->callback([] { Info(i_file); });
}

void DemoCompress(std::ostream& out) {
  out << "== Gcompress: LZG00 compression ==\n";
  const std::string name = SampleDataDir() + "/lzg-sample.txt";
  try {
    quill::TMemoryStream plain, packed, back;
    plain.LoadFromFile(name);
    Gc::LZGCompressFullStream(&plain, &packed);
    Gc::LZGDecompressFullStream(&packed, &back);
    const bool same = back.Size() == plain.Size() &&
                      std::equal(plain.Memory(), plain.Memory() + plain.Size(), back.Memory());
    packed.SetPosition(0);
    const TokenStats st = Scan(packed);
    char ratio[32];
    std::snprintf(ratio, sizeof ratio, "%.1f%%", 100.0 * static_cast<double>(packed.Size()) /
                                                     static_cast<double>(std::max<int64_t>(plain.Size(), 1)));
    out << "lzg-sample.txt: " << plain.Size() << " bytes -> " << packed.Size() << " bytes (" << ratio
        << "), " << st.literal_runs << " literal runs, " << st.copies << " copies\n"
        << "expanded again: " << back.Size() << " bytes, " << (same ? "identical" : "DIFFERENT") << "\n";
    if (!same) ExitStatus() = 1;
  } catch (const quill::Exception& e) {
    out << "cannot run the demo on " << name << ": " << e.what() << "\n";
    ExitStatus() = 1;
  }
}

}  // namespace quilltool
