// The registry's SQLite store: file location, schema, statements, write
// transactions with busy retries, and the per-process connection pool.
#include "quill/rtl/internal/regstore.h"

#include <fcntl.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unicode/uchar.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <map>
#include <mutex>
#include <thread>

#include "quill/rtl/format.h"
#include "quill/rtl/unicode.h"

namespace quill::regstore {
namespace {

constexpr int kSchemaVersion = 1;
constexpr int kApplicationId = 0x5175696C;  // "Quil"
constexpr int kBusyTimeoutMs = 5000;
// After the busy timeout has run out, a statement is tried this many more
// times, with a short sleep between tries, before the store reports "busy".
constexpr int kBusyRetries = 40;

const char* const kSql[] = {
    "BEGIN IMMEDIATE",
    "COMMIT",
    "ROLLBACK",
    "SAVEPOINT quill_op",
    "RELEASE quill_op",
    "ROLLBACK TO quill_op",
    "SELECT 1 FROM keys WHERE id=?1",
    "SELECT id FROM keys WHERE parent=?1 AND fold=?2",
    "INSERT INTO keys(parent,name,fold) VALUES(?1,?2,?3)",
    "WITH RECURSIVE t(id) AS (SELECT ?1 UNION ALL SELECT k.id FROM keys k JOIN t ON k.parent=t.id)"
    " DELETE FROM vals WHERE key IN t",
    "WITH RECURSIVE t(id) AS (SELECT ?1 UNION ALL SELECT k.id FROM keys k JOIN t ON k.parent=t.id)"
    " DELETE FROM keys WHERE id IN t",
    "SELECT name FROM keys WHERE parent=?1 ORDER BY fold",
    "SELECT 1 FROM keys WHERE parent=?1 LIMIT 1",
    "SELECT type, data FROM vals WHERE key=?1 AND fold=?2",
    // The WHERE clause keeps a value from being written into a key another
    // connection has deleted meanwhile (the caller sees 0 changes).
    "INSERT INTO vals(key,name,fold,type,data) SELECT ?1,?2,?3,?4,?5"
    " WHERE EXISTS(SELECT 1 FROM keys WHERE id=?1)"
    " ON CONFLICT(key,fold) DO UPDATE SET type=excluded.type, data=excluded.data",
    "DELETE FROM vals WHERE key=?1 AND fold=?2",
    "SELECT name FROM vals WHERE key=?1 ORDER BY id",
};

const char kSchema[] =
    "CREATE TABLE keys(id INTEGER PRIMARY KEY AUTOINCREMENT, parent INTEGER NOT NULL,"
    " name TEXT NOT NULL, fold TEXT NOT NULL, UNIQUE(parent, fold));"
    "CREATE TABLE vals(id INTEGER PRIMARY KEY, key INTEGER NOT NULL, name TEXT NOT NULL,"
    " fold TEXT NOT NULL, type INTEGER NOT NULL, data BLOB NOT NULL, UNIQUE(key, fold));"
    "INSERT INTO keys(id,parent,name,fold) VALUES(1,0,'','');";

bool IsBusy(int rc) { return (rc & 0xFF) == SQLITE_BUSY || (rc & 0xFF) == SQLITE_LOCKED; }

void SleepBriefly(int attempt) {
  std::this_thread::sleep_for(std::chrono::milliseconds(1 + (attempt % 10) * 5));
}

void AppendUtf8(std::string& out, uint32_t c) {
  if (c < 0x80) {
    out += static_cast<char>(c);
  } else if (c < 0x800) {
    out += static_cast<char>(0xC0 | (c >> 6));
    out += static_cast<char>(0x80 | (c & 0x3F));
  } else if (c < 0x10000) {
    out += static_cast<char>(0xE0 | (c >> 12));
    out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (c & 0x3F));
  } else {
    out += static_cast<char>(0xF0 | (c >> 18));
    out += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
    out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (c & 0x3F));
  }
}

template <typename Map>
std::optional<std::string> ConvertNames(std::u16string_view s, Map map) {
  std::string out;
  out.reserve(s.size());
  for (size_t i = 0; i < s.size();) {
    uint32_t c = s[i++];
    if (c >= 0xD800 && c <= 0xDFFF) {
      if (c >= 0xDC00 || i == s.size() || s[i] < 0xDC00 || s[i] > 0xDFFF) return std::nullopt;
      c = 0x10000 + ((c - 0xD800) << 10) + (s[i++] - 0xDC00);
    }
    AppendUtf8(out, map(c));
  }
  return out;
}

// Creates the missing folders of `dir` with mode 0700, outermost first.
void MakeFolders(const std::string& dir, const std::string& dbPath) {
  if (dir.empty()) return;
  struct stat st {};
  if (stat(dir.c_str(), &st) == 0) return;
  const size_t slash = dir.find_last_of('/');
  if (slash != std::string::npos && slash > 0) MakeFolders(dir.substr(0, slash), dbPath);
  if (mkdir(dir.c_str(), 0700) != 0 && errno != EEXIST) {
    const int err = errno;
    throw ERegistryException(u"Registry database \"%s\" cannot be used: cannot create folder \"%s\": %s",
                             {Utf8ToUnicode(dbPath), Utf8ToUnicode(dir), Utf8ToUnicode(std::strerror(err))});
  }
}

}  // namespace

std::optional<std::string> StrictUtf8(std::u16string_view s) {
  return ConvertNames(s, [](uint32_t c) { return c; });
}

std::optional<std::string> FoldName(std::u16string_view s) {
  return ConvertNames(s, [](uint32_t c) -> uint32_t {
    if (c < 0x80) return (c >= 'A' && c <= 'Z') ? c + 32 : c;
    return static_cast<uint32_t>(u_foldCase(static_cast<UChar32>(c), U_FOLD_CASE_DEFAULT));
  });
}

std::string ConfiguredPath() {
  if (const char* p = std::getenv("QUILL_REGISTRY"); p != nullptr && *p != 0) return p;
  if (const char* x = std::getenv("XDG_CONFIG_HOME"); x != nullptr && x[0] == '/') {
    return std::string(x) + "/quill/registry.db";
  }
  std::string home;
  if (const char* h = std::getenv("HOME"); h != nullptr && *h != 0) {
    home = h;
  } else {
    struct passwd pw {};
    struct passwd* found = nullptr;
    char buf[4096];
    if (getpwuid_r(getuid(), &pw, buf, sizeof buf, &found) == 0 && found != nullptr) home = found->pw_dir;
  }
  return home + "/.config/quill/registry.db";
}

// ---------------------------------------------------------------------------
// Query: one run of a cached statement; resets it when done.

class Query {
 public:
  Query(Connection& c, Connection::Stmt s) : c_(c), st_(c.Prepare(s)) {}
  ~Query() {
    sqlite3_reset(st_);
    sqlite3_clear_bindings(st_);
  }
  Query(const Query&) = delete;
  Query& operator=(const Query&) = delete;

  Query& Bind(int i, int64_t v) {
    Check(sqlite3_bind_int64(st_, i, v));
    return *this;
  }
  Query& Bind(int i, const std::string& text) {
    Check(sqlite3_bind_text(st_, i, text.data(), static_cast<int>(text.size()), SQLITE_STATIC));
    return *this;
  }
  Query& BindBlob(int i, const std::string& bytes) {
    Check(sqlite3_bind_blob(st_, i, bytes.data(), static_cast<int>(bytes.size()), SQLITE_STATIC));
    return *this;
  }
  // True for a row, false when done. A busy store is waited for (busy
  // timeout) and then retried; only the first step can be busy.
  bool Step() {
    for (int attempt = 0;; ++attempt) {
      const int rc = sqlite3_step(st_);
      if (rc == SQLITE_ROW) {
        stepped_ = true;
        return true;
      }
      if (rc == SQLITE_DONE) return false;
      if (IsBusy(rc) && !stepped_ && attempt < kBusyRetries) {
        sqlite3_reset(st_);
        SleepBriefly(attempt);
        continue;
      }
      sqlite3_reset(st_);
      c_.Fail(rc);
    }
  }
  int64_t Int(int col) { return sqlite3_column_int64(st_, col); }
  std::string Text(int col) {
    const auto* p = reinterpret_cast<const char*>(sqlite3_column_text(st_, col));
    return p ? std::string(p, static_cast<size_t>(sqlite3_column_bytes(st_, col))) : std::string();
  }
  std::string Blob(int col) {
    const auto* p = static_cast<const char*>(sqlite3_column_blob(st_, col));
    return p ? std::string(p, static_cast<size_t>(sqlite3_column_bytes(st_, col))) : std::string();
  }
  int ColumnType(int col) { return sqlite3_column_type(st_, col); }

 private:
  void Check(int rc) {
    if (rc != SQLITE_OK) c_.Fail(rc);
  }
  Connection& c_;
  sqlite3_stmt* st_;
  bool stepped_ = false;
};

// ---------------------------------------------------------------------------
// Connection

Connection::Connection(std::string path) : path_(std::move(path)) {
  // Create the folder (0700) and the file (0600) ourselves: SQLite would use
  // 0644, and gives its -wal and -shm files the mode of the database file.
  const size_t slash = path_.find_last_of('/');
  if (slash != std::string::npos && slash > 0) MakeFolders(path_.substr(0, slash), path_);
  struct stat st {};
  if (stat(path_.c_str(), &st) != 0) {
    const int fd = open(path_.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    if (fd < 0) {
      const int err = errno;
      throw ERegistryException(u"Registry database \"%s\" cannot be used: %s",
                               {Utf8ToUnicode(path_), Utf8ToUnicode(std::strerror(err))});
    }
    close(fd);
  }
  const int rc = sqlite3_open_v2(path_.c_str(), &db_,
                                 SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX, nullptr);
  if (rc != SQLITE_OK) {
    try {
      Fail(rc);
    } catch (...) {
      sqlite3_close_v2(db_);
      db_ = nullptr;
      throw;
    }
  }
  try {
    Setup();
  } catch (...) {
    for (auto*& s : stmts_) sqlite3_finalize(s);
    sqlite3_close_v2(db_);
    db_ = nullptr;
    throw;
  }
}

Connection::~Connection() {
  for (auto*& s : stmts_) sqlite3_finalize(s);
  if (db_ != nullptr) sqlite3_close_v2(db_);
}

void Connection::Fail(int rc, const char* what) const {
  const char* reason = what;
  if (reason == nullptr) reason = db_ != nullptr ? sqlite3_errmsg(db_) : sqlite3_errstr(rc);
  if (reason == nullptr || *reason == 0) reason = sqlite3_errstr(rc);
  throw ERegistryException(u"Registry database \"%s\" cannot be used: %s",
                           {Utf8ToUnicode(path_), Utf8ToUnicode(reason)});
}

namespace {
// Runs one SQL text (no rows wanted), retrying while the store is busy.
void ExecText(Connection& c, sqlite3* db, const char* sql) {
  for (int attempt = 0;; ++attempt) {
    const int rc = sqlite3_exec(db, sql, nullptr, nullptr, nullptr);
    if (rc == SQLITE_OK) return;
    if (IsBusy(rc) && attempt < kBusyRetries) {
      SleepBriefly(attempt);
      continue;
    }
    c.Fail(rc);
  }
}

// First column of the first row of `sql` as an integer (retrying while busy).
int64_t ScalarInt(Connection& c, sqlite3* db, const char* sql) {
  for (int attempt = 0;; ++attempt) {
    sqlite3_stmt* st = nullptr;
    int rc = sqlite3_prepare_v2(db, sql, -1, &st, nullptr);
    if (rc == SQLITE_OK) {
      rc = sqlite3_step(st);
      if (rc == SQLITE_ROW) {
        const int64_t v = sqlite3_column_int64(st, 0);
        sqlite3_finalize(st);
        return v;
      }
      sqlite3_finalize(st);
      if (rc == SQLITE_DONE) return 0;
    }
    if (IsBusy(rc) && attempt < kBusyRetries) {
      SleepBriefly(attempt);
      continue;
    }
    c.Fail(rc);
  }
}
}  // namespace

void Connection::Setup() {
  sqlite3_extended_result_codes(db_, 1);
  sqlite3_busy_timeout(db_, kBusyTimeoutMs);
  // Touch the file first: a damaged or foreign file fails here.
  ScalarInt(*this, db_, "SELECT count(*) FROM sqlite_master");
  ExecText(*this, db_, "PRAGMA journal_mode=WAL");
  const char* sync = std::getenv("QUILL_REGISTRY_SYNC");
  ExecText(*this, db_,
           sync != nullptr && std::strcmp(sync, "full") == 0 ? "PRAGMA synchronous=FULL" : "PRAGMA synchronous=NORMAL");

  int64_t version = ScalarInt(*this, db_, "PRAGMA user_version");
  if (version == 0) CreateSchema();
  version = ScalarInt(*this, db_, "PRAGMA user_version");
  const int64_t app = ScalarInt(*this, db_, "PRAGMA application_id");
  if (app != kApplicationId) Fail(SQLITE_ERROR, "not a Quill registry database");
  if (version != kSchemaVersion) {
    Fail(SQLITE_ERROR, version > kSchemaVersion ? "written by a newer version of Quill" : "unknown layout");
  }
}

void Connection::CreateSchema() {
  ExecText(*this, db_, "BEGIN IMMEDIATE");
  try {
    // Another process may have created it while we waited for the lock.
    if (ScalarInt(*this, db_, "PRAGMA user_version") == 0) {
      if (ScalarInt(*this, db_, "SELECT count(*) FROM sqlite_master") != 0) {
        Fail(SQLITE_ERROR, "not a Quill registry database");
      }
      ExecText(*this, db_, kSchema);
      ExecText(*this, db_, "PRAGMA application_id=1366649196");
      ExecText(*this, db_, "PRAGMA user_version=1");
    }
    ExecText(*this, db_, "COMMIT");
  } catch (...) {
    sqlite3_exec(db_, "ROLLBACK", nullptr, nullptr, nullptr);
    throw;
  }
}
static_assert(kApplicationId == 1366649196);

sqlite3_stmt* Connection::Prepare(Stmt which) {
  sqlite3_stmt*& st = stmts_[which];
  if (st == nullptr) {
    const int rc = sqlite3_prepare_v3(db_, kSql[which], -1, SQLITE_PREPARE_PERSISTENT, &st, nullptr);
    if (rc != SQLITE_OK) {
      st = nullptr;
      Fail(rc);
    }
  }
  return st;
}

void Connection::Exec(Stmt which) {
  Query q(*this, which);
  while (q.Step()) {
  }
}

void Connection::Write(const std::function<void()>& Body) {
  if (InTransaction()) {
    Exec(kSavepoint);
    ++depth_;
    try {
      Body();
    } catch (...) {
      --depth_;
      sqlite3_exec(db_, "ROLLBACK TO quill_op; RELEASE quill_op", nullptr, nullptr, nullptr);
      throw;
    }
    --depth_;
    Exec(kRelease);
    return;
  }
  Exec(kBeginImmediate);
  ++depth_;
  try {
    Body();
    Exec(kCommit);
  } catch (...) {
    --depth_;
    if (!sqlite3_get_autocommit(db_)) sqlite3_exec(db_, "ROLLBACK", nullptr, nullptr, nullptr);
    throw;
  }
  --depth_;
}

void Connection::BeginUser() {
  Exec(kBeginImmediate);
  userTx_ = true;
}

void Connection::CommitUser() {
  userTx_ = false;
  try {
    Exec(kCommit);
  } catch (...) {
    if (!sqlite3_get_autocommit(db_)) sqlite3_exec(db_, "ROLLBACK", nullptr, nullptr, nullptr);
    throw;
  }
}

void Connection::RollbackUser() {
  userTx_ = false;
  if (!sqlite3_get_autocommit(db_)) sqlite3_exec(db_, "ROLLBACK", nullptr, nullptr, nullptr);
}

bool Connection::KeyAlive(int64_t id) { return HasRow(kKeyAlive, id); }

int64_t Connection::FindChild(int64_t parent, const std::string& fold) {
  Query q(*this, kFindChild);
  q.Bind(1, parent).Bind(2, fold);
  return q.Step() ? q.Int(0) : 0;
}

int64_t Connection::InsertChild(int64_t parent, const std::string& name, const std::string& fold) {
  Query q(*this, kInsertChild);
  q.Bind(1, parent).Bind(2, name).Bind(3, fold);
  q.Step();
  return sqlite3_last_insert_rowid(db_);
}

void Connection::DeleteTree(int64_t id) {
  {
    Query q(*this, kDeleteTreeVals);
    q.Bind(1, id);
    q.Step();
  }
  Query q(*this, kDeleteTreeKeys);
  q.Bind(1, id);
  q.Step();
}

std::vector<std::string> Connection::NameList(Stmt which, int64_t id) {
  std::vector<std::string> out;
  Query q(*this, which);
  q.Bind(1, id);
  while (q.Step()) out.push_back(q.Text(0));
  return out;
}

bool Connection::HasRow(Stmt which, int64_t id) {
  Query q(*this, which);
  q.Bind(1, id);
  return q.Step();
}

std::vector<std::string> Connection::ChildNames(int64_t parent) { return NameList(kChildNames, parent); }

bool Connection::HasChildren(int64_t parent) { return HasRow(kHasChildren, parent); }

std::optional<ValueData> Connection::GetValue(int64_t key, const std::string& fold) {
  Query q(*this, kGetValue);
  q.Bind(1, key).Bind(2, fold);
  if (!q.Step()) return std::nullopt;
  ValueData v;
  const int64_t type = q.Int(0);
  v.type = type >= rdString && type <= rdBinary ? static_cast<TRegDataType>(type) : rdUnknown;
  if (q.ColumnType(1) == SQLITE_INTEGER) {
    v.integer = q.Int(1);
  } else {
    v.bytes = q.Blob(1);
  }
  return v;
}

bool Connection::PutValue(int64_t key, const std::string& name, const std::string& fold, const ValueData& v) {
  Query q(*this, kPutValue);
  q.Bind(1, key).Bind(2, name).Bind(3, fold).Bind(4, static_cast<int64_t>(v.type));
  if (v.type == rdInteger) {
    q.Bind(5, v.integer);
  } else {
    q.BindBlob(5, v.bytes);
  }
  q.Step();
  return sqlite3_changes(db_) > 0;
}

bool Connection::DeleteValue(int64_t key, const std::string& fold) {
  Query q(*this, kDeleteValue);
  q.Bind(1, key).Bind(2, fold);
  q.Step();
  return sqlite3_changes(db_) > 0;
}

std::vector<std::string> Connection::ValueNames(int64_t key) { return NameList(kValueNames, key); }

std::string Connection::IntegrityCheck() { return QueryText("PRAGMA integrity_check"); }

std::string Connection::QueryText(const char* sql) {
  sqlite3_stmt* st = nullptr;
  int rc = sqlite3_prepare_v2(db_, sql, -1, &st, nullptr);
  if (rc != SQLITE_OK) Fail(rc);
  std::string result;
  rc = sqlite3_step(st);
  if (rc == SQLITE_ROW) {
    const auto* p = reinterpret_cast<const char*>(sqlite3_column_text(st, 0));
    result = p ? p : "";
  }
  sqlite3_finalize(st);
  if (rc != SQLITE_ROW) Fail(rc);
  return result;
}

// ---------------------------------------------------------------------------
// Pool: idle connections by path, owned by the process that opened them.

namespace {

struct Pool {
  std::mutex mutex;
  pid_t pid = 0;
  std::map<std::string, std::vector<Connection*>> idle;
  ~Pool();
};

std::atomic<bool> g_poolAlive{false};
constexpr size_t kMaxIdlePerPath = 4;

Pool& ThePool() {
  static Pool pool;
  g_poolAlive.store(true, std::memory_order_release);
  return pool;
}

Pool::~Pool() {
  g_poolAlive.store(false, std::memory_order_release);
  // Connections opened by a parent process are never closed in a child:
  // SQLite's files must not be touched through a forked copy.
  if (pid != getpid()) return;
  for (auto& [path, list] : idle) {
    for (Connection* c : list) delete c;
  }
}

void Release(Connection* c, pid_t owner) {
  if (owner != getpid()) return;  // a copy made by fork(): leave it alone
  if (c->InTransaction() || !g_poolAlive.load(std::memory_order_acquire)) {
    delete c;
    return;
  }
  Pool& pool = ThePool();
  {
    std::lock_guard<std::mutex> lock(pool.mutex);
    if (pool.pid == owner) {
      auto& list = pool.idle[c->Path()];
      if (list.size() < kMaxIdlePerPath) {
        list.push_back(c);
        return;
      }
    }
  }
  delete c;
}

}  // namespace

std::shared_ptr<Connection> Acquire() {
  const std::string path = ConfiguredPath();
  const pid_t self = getpid();
  Connection* c = nullptr;
  {
    Pool& pool = ThePool();
    std::lock_guard<std::mutex> lock(pool.mutex);
    if (pool.pid != self) {
      pool.idle.clear();  // inherited through fork(): forget, never close
      pool.pid = self;
    }
    auto it = pool.idle.find(path);
    if (it != pool.idle.end() && !it->second.empty()) {
      c = it->second.back();
      it->second.pop_back();
    }
  }
  if (c == nullptr) c = new Connection(path);
  return std::shared_ptr<Connection>(c, [self](Connection* p) { Release(p, self); });
}

void CloseIdle() {
  std::vector<Connection*> doomed;
  {
    Pool& pool = ThePool();
    std::lock_guard<std::mutex> lock(pool.mutex);
    if (pool.pid != getpid()) return;
    for (auto& [path, list] : pool.idle) doomed.insert(doomed.end(), list.begin(), list.end());
    pool.idle.clear();
  }
  for (Connection* c : doomed) delete c;
}

}  // namespace quill::regstore
