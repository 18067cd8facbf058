// Registry reads and writes against a bare SQLite baseline.
//
// Targets: reads of existing values >= 200,000 per second; writes (each its
// own transaction, default durability) >= 5,000 per second. The database is
// created in a fresh temporary folder (QUILL_REGISTRY is set for the run).
// The baseline does the same work with one prepared statement on a plain
// key/value table in WAL mode: the ratio shows what the registry's model
// (case folding, types, key ids, retries) costs on top of SQLite itself.
#include <benchmark/benchmark.h>
#include <sqlite3.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "bench/ratio_reporter.h"
#include "quill/rtl/intconv.h"
#include "quill/rtl/registry.h"

namespace {

constexpr int kValues = 1000;

struct Setup {
  std::string dir;
  std::vector<std::u16string> names;
  std::vector<std::string> rawNames;
  int64_t sum = 0;
  sqlite3* raw = nullptr;
  Setup() {
    std::string templ = std::filesystem::temp_directory_path().string() + "/quill-reg-bench-XXXXXX";
    if (mkdtemp(templ.data()) == nullptr) std::abort();
    dir = templ;
    setenv("QUILL_REGISTRY", (dir + "/registry.db").c_str(), 1);
    quill::RegistryBatch([&](quill::TRegistry& reg) {
      reg.OpenKey(u"\\Software\\Bench\\Values", true);
      for (int i = 0; i < kValues; ++i) {
        names.push_back(u"Value" + quill::IntToStr(i));
        rawNames.push_back("value" + std::to_string(i));
        reg.WriteInteger(names.back(), i);
        reg.WriteString(u"S" + names.back(), u"text of value " + quill::IntToStr(i));
        sum += i;
      }
    });
    sqlite3_open((dir + "/raw.db").c_str(), &raw);
    sqlite3_exec(raw,
                 "PRAGMA journal_mode=WAL; PRAGMA synchronous=NORMAL;"
                 "CREATE TABLE kv(k TEXT PRIMARY KEY, v) WITHOUT ROWID; BEGIN",
                 nullptr, nullptr, nullptr);
    sqlite3_stmt* st = nullptr;
    sqlite3_prepare_v2(raw, "INSERT INTO kv VALUES(?1, ?2)", -1, &st, nullptr);
    for (int i = 0; i < kValues; ++i) {
      sqlite3_bind_text(st, 1, rawNames[i].c_str(), -1, SQLITE_STATIC);
      sqlite3_bind_int(st, 2, i);
      sqlite3_step(st);
      sqlite3_reset(st);
    }
    sqlite3_finalize(st);
    sqlite3_exec(raw, "COMMIT", nullptr, nullptr, nullptr);
  }
  ~Setup() {
    sqlite3_close(raw);
    std::error_code ec;
    std::filesystem::remove_all(dir, ec);
  }
};

Setup& Data() {
  static Setup setup;
  return setup;
}

void BM_SqliteRead(benchmark::State& state) {
  Setup& d = Data();
  sqlite3_stmt* st = nullptr;
  sqlite3_prepare_v2(d.raw, "SELECT v FROM kv WHERE k=?1", -1, &st, nullptr);
  for (auto _ : state) {
    int64_t sum = 0;
    for (const std::string& k : d.rawNames) {
      sqlite3_bind_text(st, 1, k.c_str(), static_cast<int>(k.size()), SQLITE_STATIC);
      if (sqlite3_step(st) == SQLITE_ROW) sum += sqlite3_column_int(st, 0);
      sqlite3_reset(st);
    }
    if (sum != d.sum) state.SkipWithError("wrong sum");
  }
  sqlite3_finalize(st);
  state.SetItemsProcessed(state.iterations() * kValues);
}
BENCHMARK(BM_SqliteRead);

void BM_RegistryReadInteger(benchmark::State& state) {
  Setup& d = Data();
  quill::TRegistry reg;
  reg.OpenKey(u"\\Software\\Bench\\Values", false);
  for (auto _ : state) {
    int64_t sum = 0;
    for (const std::u16string& name : d.names) sum += reg.ReadInteger(name);
    if (sum != d.sum) state.SkipWithError("wrong sum");
  }
  state.SetItemsProcessed(state.iterations() * kValues);
}
BENCHMARK(BM_RegistryReadInteger);

void BM_RegistryReadString(benchmark::State& state) {
  Setup& d = Data();
  quill::TRegistry reg;
  reg.OpenKey(u"\\Software\\Bench\\Values", false);
  std::vector<std::u16string> snames;
  for (const auto& n : d.names) snames.push_back(u"S" + n);
  for (auto _ : state) {
    size_t total = 0;
    for (const std::u16string& name : snames) total += reg.ReadString(name).size();
    benchmark::DoNotOptimize(total);
    if (total == 0) state.SkipWithError("no text");
  }
  state.SetItemsProcessed(state.iterations() * kValues);
}
BENCHMARK(BM_RegistryReadString);

void BM_SqliteWrite(benchmark::State& state) {
  Setup& d = Data();
  sqlite3_stmt* st = nullptr;
  sqlite3_prepare_v2(d.raw, "INSERT OR REPLACE INTO kv VALUES(?1, ?2)", -1, &st, nullptr);
  int i = 0;
  for (auto _ : state) {
    const std::string& k = d.rawNames[static_cast<size_t>(i % kValues)];
    sqlite3_bind_text(st, 1, k.c_str(), static_cast<int>(k.size()), SQLITE_STATIC);
    sqlite3_bind_int(st, 2, i % kValues);
    if (sqlite3_step(st) != SQLITE_DONE) state.SkipWithError("write failed");
    sqlite3_reset(st);
    ++i;
  }
  sqlite3_finalize(st);
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_SqliteWrite)->UseRealTime();

// One value per iteration, each in its own transaction, as an application
// saving a setting does.
void BM_RegistryWriteInteger(benchmark::State& state) {
  Setup& d = Data();
  quill::TRegistry reg;
  reg.OpenKey(u"\\Software\\Bench\\Values", false);
  int i = 0;
  for (auto _ : state) {
    reg.WriteInteger(d.names[static_cast<size_t>(i % kValues)], i % kValues);
    ++i;
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_RegistryWriteInteger)->UseRealTime();

// 1000 values in one transaction (an import).
void BM_RegistryWriteBatch(benchmark::State& state) {
  Setup& d = Data();
  quill::TRegistry reg;
  reg.OpenKey(u"\\Software\\Bench\\Values", false);
  for (auto _ : state) {
    quill::TRegistryTransaction tx(reg);
    for (int i = 0; i < kValues; ++i) reg.WriteInteger(d.names[static_cast<size_t>(i)], i);
    tx.Commit();
  }
  state.SetItemsProcessed(state.iterations() * kValues);
}
BENCHMARK(BM_RegistryWriteBatch)->UseRealTime();

}  // namespace

// Ratio to the bare SQLite statement on the same data (lower is faster).
int main(int argc, char** argv) {
  return quillbench::RunWithRatios(argc, argv,
                                   {{"BM_RegistryReadInteger", "BM_SqliteRead"},
                                    {"BM_RegistryReadString", "BM_SqliteRead"},
                                    {"BM_RegistryWriteInteger/real_time", "BM_SqliteWrite/real_time"}});
}
