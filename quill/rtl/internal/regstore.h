// The SQLite side of the registry: one connection to the per-user database,
// its schema, the statements the registry objects run, and a per-process pool
// of connections.
//
// Schema (user_version 1, application_id 0x5175696C "Quil"):
//   keys(id INTEGER PRIMARY KEY AUTOINCREMENT, parent, name, fold)
//        UNIQUE(parent, fold); the root HKEY_CURRENT_USER is id 1, parent 0.
//   vals(id INTEGER PRIMARY KEY, key, name, fold, type, data)
//        UNIQUE(key, fold); type is TRegDataType; data is UTF-16LE bytes for
//        strings, an INTEGER for integers, the bytes for binary values.
// name is the name as first written (UTF-8), fold its simple case folding.
// Key ids are never reused (AUTOINCREMENT), so an id kept by an open registry
// object never comes to name another key after a delete.
#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "quill/rtl/registry.h"
#include "quill/rtl/types.h"

namespace quill::regstore {

inline constexpr int64_t kRootId = 1;

// UTF-8 of `s`; nullopt when it holds a lone surrogate.
std::optional<std::string> StrictUtf8(std::u16string_view s);
// UTF-8 of the simple case folding of `s`; nullopt for a lone surrogate.
std::optional<std::string> FoldName(std::u16string_view s);

struct ValueData {
  TRegDataType type = rdUnknown;
  std::string bytes;  // strings: UTF-16LE; binary: the bytes
  int64_t integer = 0;
};

class Connection {
 public:
  // Opens (creating when needed) the database at `path`; raises
  // ERegistryException naming the file when it cannot be used.
  explicit Connection(std::string path);
  ~Connection();
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  [[nodiscard]] const std::string& Path() const { return path_; }
  [[nodiscard]] bool InTransaction() const { return depth_ > 0 || userTx_; }

  // Runs Body as one write transaction; inside a user transaction as a
  // savepoint, so a failure undoes only Body's own changes.
  void Write(const std::function<void()>& Body);
  // The user transaction of TRegistryTransaction.
  void BeginUser();
  void CommitUser();
  void RollbackUser();
  [[nodiscard]] bool InUserTransaction() const { return userTx_; }

  // Keys.
  [[nodiscard]] bool KeyAlive(int64_t id);
  // Id of the child of `parent` with that folded name, or 0.
  int64_t FindChild(int64_t parent, const std::string& fold);
  // Inserts a child (caller runs inside Write and checked it is absent).
  int64_t InsertChild(int64_t parent, const std::string& name, const std::string& fold);
  // Deletes a key with its tree.
  void DeleteTree(int64_t id);
  std::vector<std::string> ChildNames(int64_t parent);
  bool HasChildren(int64_t parent);

  // Values.
  std::optional<ValueData> GetValue(int64_t key, const std::string& fold);
  // Upsert; false when the key no longer exists.
  bool PutValue(int64_t key, const std::string& name, const std::string& fold, const ValueData& v);
  bool DeleteValue(int64_t key, const std::string& fold);
  std::vector<std::string> ValueNames(int64_t key);

  // The first column of the first row of a PRAGMA or query, as text.
  std::string QueryText(const char* sql);

  // PRAGMA integrity_check's first line ("ok" when sound).
  std::string IntegrityCheck();

  // Raises ERegistryException for a failed SQLite call (rc not OK/ROW/DONE).
  [[noreturn]] void Fail(int rc, const char* what = nullptr) const;

 private:
  enum Stmt : int {
    kBeginImmediate, kCommit, kRollback, kSavepoint, kRelease, kRollbackTo,
    kKeyAlive, kFindChild, kInsertChild, kDeleteTreeVals, kDeleteTreeKeys, kChildNames,
    kHasChildren, kGetValue, kPutValue, kDeleteValue, kValueNames, kStmtCount
  };
  friend class Query;
  sqlite3_stmt* Prepare(Stmt which);
  void Exec(Stmt which);
  // The first column of every row of `which` run with ?1 = id.
  std::vector<std::string> NameList(Stmt which, int64_t id);
  // Whether `which` run with ?1 = id gives a row.
  bool HasRow(Stmt which, int64_t id);
  void Setup();
  void CreateSchema();

  std::string path_;
  sqlite3* db_ = nullptr;
  sqlite3_stmt* stmts_[kStmtCount] = {};
  int depth_ = 0;       // nesting of Write
  bool userTx_ = false;  // a TRegistryTransaction is active
};

// A connection to the configured database, from the pool when one is idle.
// Returned to the pool when the last holder lets go. Raises like Connection.
std::shared_ptr<Connection> Acquire();

// The configured database path (see registry.h), as bytes.
std::string ConfiguredPath();

// Closes the idle pooled connections of this process (tests use it between
// databases; connections in use are not affected).
void CloseIdle();

}  // namespace quill::regstore
