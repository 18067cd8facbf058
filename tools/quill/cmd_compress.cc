// quill lzg: compressing and expanding files in the LZG00 format (Gcompress).
//
//   quill lzg compress [--force] IN OUT     IN to OUT in LZG00 form ("-": stdin/stdout)
//   quill lzg decompress [--force] IN OUT   the reverse
//   quill lzg test FILE                     is FILE a complete LZG00 stream?
//   quill lzg info [--verify] FILE          sizes, ratio and token counts
//
// Inputs are streamed (standard input too) and read to their end, whatever
// size the system reports. Outputs go through OutputFile (io.h): a failed run
// leaves no OUT behind and never replaces a device, FIFO or link. The three
// reading commands judge a stream with the same LzgWalker, so they agree on
// what is truncated.
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <limits>
#include <string>

#include "quill/compress/gcompress.h"
#include "quill/rtl/exception.h"
#include "quill/rtl/streams.h"
#include "tools/quill/commands.h"
#include "tools/quill/io.h"
#include "tools/quill/lzgwalk.h"

namespace quilltool {
namespace {

using quill::TStream;
namespace Gc = quill::Gcompress;

constexpr int64_t kProgressThreshold = int64_t{4} << 20;

// Progress on standard error, redrawn at most four times a second, with the
// rate and, when the input's size is known, the time left. Shown on a
// terminal for inputs over 4 MB or of unknown size; QUILL_PROGRESS=always
// shows it anywhere, QUILL_PROGRESS=never nowhere.
class Progress {
 public:
  Progress(const char* verb, int64_t total) : verb_(verb), total_(total) {
    const char* mode = std::getenv("QUILL_PROGRESS");
    const std::string m = mode ? mode : "";
    if (m == "always") {
      enabled_ = true;
    } else if (m != "never") {
      enabled_ = isatty(STDERR_FILENO) && (total < 0 || total > kProgressThreshold);
    }
    start_ = Clock::now();
    next_ = start_ + std::chrono::milliseconds(250);  // a rate needs some time first
  }
  ~Progress() {
    if (shown_) std::fputs("\r\033[K", stderr);
  }
  // Called with the input bytes read so far (once per block the coder
  // reads); cheap when nothing is drawn.
  void Update(int64_t done) {
    if (!enabled_) return;
    const auto now = Clock::now();
    if (now < next_) return;
    next_ = now + std::chrono::milliseconds(250);
    const double seconds = std::chrono::duration<double>(now - start_).count();
    const double rate = seconds > 0 ? static_cast<double>(done) / seconds : 0;
    char line[160];
    if (total_ > 0) {
      const double part = std::min(1.0, static_cast<double>(done) / static_cast<double>(total_));
      const int64_t left = rate > 0 ? static_cast<int64_t>(static_cast<double>(total_ - done) / rate) : 0;
      std::snprintf(line, sizeof line, "\r%s %3d%%  %.1f of %.1f MB  %.1f MB/s  %lld:%02lld left\033[K", verb_,
                    static_cast<int>(part * 100), done / 1e6, static_cast<double>(total_) / 1e6, rate / 1e6,
                    static_cast<long long>(left / 60), static_cast<long long>(left % 60));
    } else {
      std::snprintf(line, sizeof line, "\r%s %.1f MB  %.1f MB/s\033[K", verb_, done / 1e6, rate / 1e6);
    }
    std::fputs(line, stderr);
    std::fflush(stderr);
    shown_ = true;
  }

 private:
  using Clock = std::chrono::steady_clock;
  const char* verb_;
  int64_t total_;
  bool enabled_ = false;
  bool shown_ = false;
  Clock::time_point start_, next_;
};

// The input as a forward-only stream for the coders. Its Size() is unknown,
// so it answers "far beyond": the coders read until the input ends. Reads
// fill the whole request unless the input ends, feed the walker, if any, and
// drive the progress display. The first bytes can be looked at beforehand.
class InputStream : public TStream {
 public:
  InputStream(InputFile& file, LzgWalker* walker, Progress* progress)
      : file_(file), walker_(walker), progress_(progress) {}

  // The first `n` bytes (fewer when the input is shorter), not consumed.
  std::string Peek(size_t n) {
    while (peeked_.size() < n) {
      char buf[16];
      const size_t got = file_.Read(buf, std::min(sizeof buf, n - peeked_.size()));
      if (got == 0) break;
      peeked_.append(buf, got);
    }
    return peeked_.substr(0, n);
  }

  int64_t Read(void* buffer, int64_t count) override {
    auto* p = static_cast<char*>(buffer);
    int64_t got = 0;
    if (!peeked_.empty() && count > 0) {
      const size_t k = std::min(peeked_.size(), static_cast<size_t>(count));
      std::memcpy(p, peeked_.data(), k);
      peeked_.erase(0, k);
      got = static_cast<int64_t>(k);
    }
    while (got < count) {
      const size_t n = file_.Read(p + got, static_cast<size_t>(count - got));
      if (n == 0) break;
      got += static_cast<int64_t>(n);
    }
    if (walker_) walker_->Feed(reinterpret_cast<const uint8_t*>(p), static_cast<size_t>(got));
    position_ += got;
    if (progress_) progress_->Update(position_);
    return got;
  }
  int64_t Write(const void*, int64_t) override { throw quill::EStreamError(u"The input cannot be written"); }
  int64_t Seek(int64_t offset, quill::TSeekOrigin origin) override {
    if (offset == 0 && origin == quill::soCurrent) return position_;
    if (origin == quill::soBeginning && offset == position_) return position_;
    throw quill::EStreamError(u"The input cannot seek");
  }
  int64_t Size() override { return std::numeric_limits<int64_t>::max() / 4; }

 private:
  InputFile& file_;
  LzgWalker* walker_;
  Progress* progress_;
  std::string peeked_;
  int64_t position_ = 0;
};

// The output as an append-only stream for the coders.
class OutputStream : public TStream {
 public:
  explicit OutputStream(OutputFile& file) : file_(file) {}
  int64_t Read(void*, int64_t) override { return 0; }
  int64_t Write(const void* buffer, int64_t count) override {
    file_.Write(buffer, static_cast<size_t>(count));
    written_ += count;
    return count;
  }
  int64_t Seek(int64_t offset, quill::TSeekOrigin origin) override {
    if (offset == 0 && origin != quill::soBeginning) return written_;
    if (origin == quill::soBeginning && offset == written_) return written_;
    throw quill::EStreamError(u"The output cannot seek");
  }
  int64_t Size() override { return written_; }

 private:
  OutputFile& file_;
  int64_t written_ = 0;
};

// Looks at the first 9 bytes only: throws the format error (2) for a stream
// that is not LZG00, and the data error (1) for one that ends inside the
// header, before any output exists.
void RequireLzgStart(InputStream& in, const std::string& name) {
  LzgWalker head;
  const std::string first = in.Peek(9);
  head.Feed(reinterpret_cast<const uint8_t*>(first.data()), first.size());
  if (head.Judge() == LzgWalker::Verdict::kNotLzg) throw ToolError(kExitUsage, head.Describe(name));
  if (head.Judge() == LzgWalker::Verdict::kHeaderCut) throw ToolError(kExitDataError, head.Describe(name));
}

void Compress(const std::string& in_name, const std::string& out_name, bool force) {
  InputFile file(in_name);
  Progress progress("compressing", file.SizeHint());
  InputStream in(file, nullptr, &progress);
  OutputFile out_file(out_name, force);
  OutputStream out(out_file);
  Gc::LZGCompressStream(&in, &out);
  out_file.Commit();
}

void Decompress(const std::string& in_name, const std::string& out_name, bool force) {
  InputFile file(in_name);
  Progress progress("expanding", file.SizeHint());
  LzgWalker walker;
  InputStream in(file, &walker, &progress);
  RequireLzgStart(in, file.Name());
  OutputFile out_file(out_name, force);
  OutputStream out(out_file);
  Gc::LZGDecompressStream(&in, &out);
  // The format has no length: a cut inside a token is the damage a reader
  // can see. No OUT is left behind then.
  if (walker.Judge() != LzgWalker::Verdict::kComplete) throw ToolError(kExitDataError, walker.Describe(file.Name()));
  out_file.Commit();
}

// Reads FILE through a walker; throws unless it is a complete LZG00 stream.
LzgWalker Walk(const std::string& name, std::string& display) {
  InputFile file(name);
  display = file.Name();
  LzgWalker walker;
  InputStream in(file, &walker, nullptr);
  RequireLzgStart(in, file.Name());
  char buf[1 << 16];
  while (in.Read(buf, sizeof buf) > 0) {
  }
  if (walker.Judge() != LzgWalker::Verdict::kComplete) throw ToolError(kExitDataError, walker.Describe(file.Name()));
  return walker;
}

void PrintStats(std::ostream& out, const LzgWalker& st) {
  const double ratio = st.plain ? 100.0 * static_cast<double>(st.packed) / static_cast<double>(st.plain) : 0.0;
  char ratio_text[64];
  std::snprintf(ratio_text, sizeof ratio_text, "%.1f%%", ratio);
  out << "format:          LZG00, version " << st.version << "\n"
      << "compressed:      " << st.packed << " bytes\n"
      << "expanded:        " << st.plain << " bytes\n"
      << "ratio:           " << ratio_text << " of the expanded size\n"
      << "literal runs:    " << st.literal_runs << " (" << st.literal_bytes << " bytes)\n"
      << "copies:          " << st.copies << " (" << st.copy_bytes << " bytes)\n";
}

void Info(const std::string& name, bool verify) {
  std::string display;
  const LzgWalker st = Walk(name, display);
  Stdout() << "file:            " << display << "\n";
  PrintStats(Stdout(), st);
  if (!verify) return;
  Stdout() << "odd tokens:      " << st.odd_tokens
           << " (empty literal runs, copies from distance 0 or from before the first byte)\n"
           << "verify:          " << (st.odd_tokens ? "DAMAGED" : "no damage found")
           << "; LZG00 has no length field and no checksum, so only a stream cut inside the header or a token,"
              " and tokens no writer produces, can be detected: other damage expands without any sign\n";
  if (st.odd_tokens) {
    FlushStdout();
    throw ToolError(kExitDataError, display + " holds " + std::to_string(st.odd_tokens) +
                                        " token(s) that no LZG00 writer produces: it is damaged");
  }
}

void Test(const std::string& name) {
  std::string display;
  const LzgWalker st = Walk(name, display);
  Stdout() << display << ": complete LZG00 stream (" << st.packed << " bytes, expands to " << st.plain
           << " bytes)\n";
}

}  // namespace

void RegisterCompressCommands(CLI::App& app) {
  auto* lzg = app.add_subcommand("lzg", "Compress and expand files in the LZG00 format");
  lzg->require_subcommand(1);
  lzg->footer(
      "Exit status: 0 done; 1 a file cannot be read or written, or the LZG00 data is truncated or damaged;\n"
      "2 usage error, or the input is not an LZG00 stream. \"-\" is standard input/output.");

  static std::string c_in, c_out, d_in, d_out, t_file, i_file;
  static bool c_force = false, d_force = false, i_verify = false;
  auto* c = lzg->add_subcommand("compress", "Compress IN into OUT");
  c->add_option("IN", c_in, "Plain input file, or - for standard input")->required();
  c->add_option("OUT", c_out, "Compressed output file, or - for standard output")->required();
  c->add_flag("-f,--force", c_force, "Replace OUT even when it is write-protected");
  c->callback([] { Compress(c_in, c_out, c_force); });

  auto* d = lzg->add_subcommand("decompress", "Expand the LZG00 stream IN into OUT");
  d->add_option("IN", d_in, "Compressed input file, or - for standard input")->required();
  d->add_option("OUT", d_out, "Plain output file, or - for standard output")->required();
  d->add_flag("-f,--force", d_force, "Replace OUT even when it is write-protected");
  d->callback([] { Decompress(d_in, d_out, d_force); });

  auto* t = lzg->add_subcommand("test",
                                "Check that FILE is a complete LZG00 stream: exit 0 when it is, 1 when it cannot be "
                                "read or is truncated, 2 when it is not LZG00 at all");
  t->add_option("FILE", t_file, "File to test, or -")->required();
  t->callback([] { Test(t_file); });

  auto* i = lzg->add_subcommand("info", "Show sizes, ratio and token counts of an LZG00 file");
  i->add_option("FILE", i_file, "LZG00 file, or -")->required();
  i->add_flag("--verify", i_verify, "Also look for damage, and say what the format cannot detect");
  i->callback([] { Info(i_file, i_verify); });
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
    LzgWalker st;
    st.Feed(packed.Memory(), static_cast<size_t>(packed.Size()));
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
