// The registry store's own pieces: name folding, connection settings and the
// connection pool.
#include "quill/rtl/internal/regstore.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "quill/rtl/internal/temp_registry_for_test.h"

namespace quill::regstore {
namespace {

using testing::TempRegistry;

TEST(FoldName, SimpleCaseFoldingToUtf8) {
  EXPECT_EQ(FoldName(u"Software"), "software");
  EXPECT_EQ(FoldName(u"\u00C4RGER"), "\xC3\xA4rger");  // Ä -> ä
  EXPECT_EQ(FoldName(u"\u03A3"), "\xCF\x83");          // Σ -> σ
  EXPECT_EQ(FoldName(u"\u00DF"), "\xC3\x9F");          // ß stays (no full folding)
  EXPECT_EQ(FoldName(u"\u0130"), "\xC4\xB0");          // İ has no simple folding
  EXPECT_EQ(FoldName(u"\U00010400"), "\xF0\x90\x90\xA8");  // Deseret capital -> small
  EXPECT_EQ(FoldName(u""), "");
}

TEST(FoldName, LoneSurrogatesAreRefused) {
  EXPECT_FALSE(FoldName(u"a\xD800").has_value());
  EXPECT_FALSE(FoldName(u"\xDC00z").has_value());
  EXPECT_FALSE(StrictUtf8(u"\xD800\xD800").has_value());
  EXPECT_EQ(StrictUtf8(u"A\U0001F600"), "A\xF0\x9F\x98\x80");
}

TEST(Connection, RunsInWalModeWithTheSchema) {
  TempRegistry tmp;
  auto c = Acquire();
  EXPECT_EQ(c->Path(), tmp.Path());
  EXPECT_EQ(c->QueryText("PRAGMA journal_mode"), "wal");
  EXPECT_EQ(c->QueryText("PRAGMA synchronous"), "1");  // NORMAL
  EXPECT_EQ(c->QueryText("PRAGMA user_version"), "1");
  EXPECT_EQ(c->QueryText("PRAGMA application_id"), "1366649196");
  EXPECT_EQ(c->QueryText("SELECT name FROM keys WHERE id=1 AND parent=0"), "");
  EXPECT_EQ(c->QueryText("SELECT count(*) FROM keys"), "1");
  EXPECT_EQ(c->IntegrityCheck(), "ok");
}

TEST(Connection, FullDurabilityOnRequest) {
  TempRegistry tmp;
  setenv("QUILL_REGISTRY_SYNC", "full", 1);
  auto c = Acquire();
  unsetenv("QUILL_REGISTRY_SYNC");
  EXPECT_EQ(c->QueryText("PRAGMA synchronous"), "2");  // FULL
}

TEST(Pool, IdleConnectionsAreReused) {
  TempRegistry tmp;
  Connection* first = nullptr;
  {
    auto c = Acquire();
    first = c.get();
    auto second = Acquire();  // the first is busy: a new one
    EXPECT_NE(second.get(), first);
  }
  // Both went back to the pool; the last one returned comes out first.
  auto again = Acquire();
  EXPECT_EQ(again.get(), first);
  // A connection in the middle of a user transaction is closed, not pooled,
  // so its transaction cannot leak to the next holder.
  {
    auto c = Acquire();
    c->BeginUser();
    c->Write([&] { c->InsertChild(kRootId, "Uncommitted", "uncommitted"); });
  }
  auto fresh = Acquire();
  EXPECT_FALSE(fresh->InTransaction());
  // Closing rolled it back and released the write lock.
  EXPECT_EQ(fresh->FindChild(kRootId, "uncommitted"), 0);
  EXPECT_NO_THROW(fresh->Write([&] { fresh->InsertChild(kRootId, "Next", "next"); }));
}

TEST(Pool, OtherPathsGetOtherConnections) {
  TempRegistry a;
  auto ca = Acquire();
  {
    TempRegistry b;
    auto cb = Acquire();
    EXPECT_EQ(cb->Path(), b.Path());
  }
  EXPECT_EQ(ca->Path(), a.Path());
}

TEST(Pool, ForkedChildNeverUsesTheParentsConnections) {
  TempRegistry tmp;
  { auto warm = Acquire(); }  // leaves an idle connection in the pool
  const pid_t pid = fork();
  ASSERT_GE(pid, 0);
  if (pid == 0) {
    int rc = 0;
    try {
      auto c = Acquire();
      c->Write([&] { c->InsertChild(kRootId, "FromChild", "fromchild"); });
    } catch (...) {
      rc = 1;
    }
    _exit(rc);
  }
  int status = 0;
  ASSERT_EQ(waitpid(pid, &status, 0), pid);
  ASSERT_TRUE(WIFEXITED(status));
  EXPECT_EQ(WEXITSTATUS(status), 0);
  auto c = Acquire();
  EXPECT_NE(c->FindChild(kRootId, "fromchild"), 0);
  EXPECT_EQ(c->IntegrityCheck(), "ok");
}

}  // namespace
}  // namespace quill::regstore
