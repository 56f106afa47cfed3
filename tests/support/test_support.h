#pragma once

// Shared fixtures of the core and GUI tests. No widget here: a GUI fixture derives from these and
// adds its window.
//
//   DovrexTest        shared() saved, reset and restored, a ScriptedScreen installed, Clock reset,
//                     a temporary program folder and temp folder (paths())
//   FreshStoreTest    + an empty store with schema and factory rows as the shared store
//   ShippedStoreTest  + the shipped store (the whole published history) as the shared store
//   ProgramFolderTest + a program folder holding a pack made from a fresh store, ready for AppFlow
//
// The Scoped* helpers do the same work outside a fixture, so that a later fixture can combine them.

#include <gtest/gtest.h>

#include <QString>
#include <QTemporaryDir>
#include <QVariantList>
#include <memory>

#include "domain/game.h"
#include "screen/app_paths.h"
#include "screen/scripted_screen.h"
#include "screen/shared_state.h"
#include "store/store.h"

// A failed comparison of texts shows the texts, not their bytes.
inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}

namespace dovrex::test {

// The shipped pack of the build tree.
QString shippedPackPath();

// Saves the whole shared() state, starts the test on the state of a new process, and puts the
// saved state back on destruction; resets the clock too.
class SharedStateGuard {
  public:
    SharedStateGuard();
    ~SharedStateGuard();

  private:
    SharedState saved_;
};

// A program folder and a temp folder side by side in one temporary directory.
class TempFolders {
  public:
    TempFolders();
    const AppPaths& paths() const { return paths_; }
    QString path(const QString& name) const { return dir_.filePath(name); }

  private:
    QTemporaryDir dir_;
    AppPaths paths_;
};

// A store file opened and installed as the shared store until destruction.
class ScopedStore {
  public:
    enum class Kind { Fresh, Shipped };
    // Fresh: the schema and the factory rows, no history. Shipped: unpacked from the shipped pack.
    ScopedStore(Kind kind, const QString& file);
    ~ScopedStore();
    Store& store() { return *store_; }
    QString file() const { return file_; }

  private:
    QString file_;
    std::unique_ptr<Store> store_;
};

// Makes a new store file with the schema and the factory rows (no history); the connection is closed.
void makeFreshStoreFile(const QString& file);
// Runs statements (any number, ';'-separated) on a store file straight through the engine, below
// the program's store layer: the way a hand or another program changes a file.
void alterStoreFile(const QString& file, const QString& sql);
// Writes a pack of `storeFile` and a small aux file to `packPath`.
void makePack(const QString& storeFile, const QString& packPath);

// Adds one draw to 历史记录 of the shared store, derived columns empty.
void addDraw(IssueNumber issue, const QString& date, const Reds& reds, int blue = 1);
// First column of the first row of a query on the shared store.
QVariant scalar(const QString& sql, const QVariantList& params = {});
int intScalar(const QString& sql, const QVariantList& params = {});
QByteArray fileBytes(const QString& path);
// A sample file of tests/data.
QByteArray testData(const char* name);
// Writes `bytes` over the file at `path`; false when it cannot.
bool writeFile(const QString& path, const QByteArray& bytes);
// Adds a ticket of `issue` to 日志表 of the shared store, its ID and 序号 one above the table's
// highest; returns the 序号.
int addTicket(IssueNumber issue, const Reds& reds, int blue = 1);
// Turns every condition switch and the history match off in the shared store.
void switchAllOff();
// Adds `count` tickets of `issue` to 日志表 of the shared store, 序号 1..count, each six reds in a run.
void addTickets(IssueNumber issue, int count);

class DovrexTest : public ::testing::Test {
  protected:
    ScriptedScreen& ui() { return screen_; }
    const AppPaths& paths() const { return folders_.paths(); }
    QString tempPath(const QString& name) const { return folders_.path(name); }
    // Writes `bytes` to a file of the temporary directory and returns its path.
    QString tempFile(const QString& name, const QByteArray& bytes) const {
        EXPECT_TRUE(writeFile(tempPath(name), bytes)) << name.toStdString();
        return tempPath(name);
    }

  private:
    SharedStateGuard guard_;
    ScriptedScreen screen_;
    TempFolders folders_;

  protected:
    DovrexTest() { shared().screen = &screen_; }
};

class FreshStoreTest : public DovrexTest {
  protected:
    Store& db() { return store_.store(); }

  private:
    ScopedStore store_{ScopedStore::Kind::Fresh, tempPath(QStringLiteral("fresh.dat"))};
};

class ShippedStoreTest : public DovrexTest {
  protected:
    Store& db() { return store_.store(); }

  private:
    ScopedStore store_{ScopedStore::Kind::Shipped, tempPath(QStringLiteral("shipped.dat"))};
};

class ProgramFolderTest : public DovrexTest {
  protected:
    ProgramFolderTest();
    // A fresh store file, to be changed by the test and packed with makePack.
    QString seedStore() const { return tempPath(QStringLiteral("seed.dat")); }
};

}  // namespace dovrex::test
