// The power fails at random moments of random commands: whatever the disk had not been told to keep is lost, torn or
// out of order. The books are proven after each, and every document that was told as saved is there.
// JXC_CUTS=10000 cuts so often instead of the few times that the suite takes.
#include "harness/power_cut.h"

#include "core/data_module.h"
#include "engine/snapshot.h"
#include "engine/sqlite/checkpointer.h"
#include "engine/sqlite/sqlite_database.h"
#include "maintenance/prove.h"
#include "maintenance/shop_walk.h"
#include "server/test_engine.h"

#include <QTemporaryDir>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <map>
#include <thread>

namespace jxc::power_cut_test {

class PowerCutTest : public test::ShopWalk {
 protected:
  /// Documents by number, and whether each is audited: what an operator has been told.
  using Told = std::map<QString, int>;
  struct Cut {
    std::size_t commands;  // that had been told as done
    test::PowerCut::Disk disk;
  };

  static Told told() {
    Told all;
    for (const DocumentFamily& family : documentFamilies())
      for (const Row row :
           openSelect(compose("select {} as num,{} as st from {}", {family.number, family.status, family.head})))
        all[row.text("num")] = static_cast<int>(row.integer("st"));
    return all;
  }

  /// A shop that lives so many steps on a disk whose power is cut `often` times in a thousand operations.
  void liveOnDisk(unsigned seed, int steps, int often, bool waitsForDisk) {
    const QTemporaryDir folder;
    const QString file = folder.filePath(u"jxc.mdb"_qs);
    accountDb().backupTo(file);
    test::PowerCut power(folder.path());
    const auto open = [&] {
      dataModule().closeAccountDb();
      dataModule().installAccountDb(openSqlite(file));
      if (!waitsForDisk) sqlite::doNotWaitForDisk(accountDb());
    };
    std::mt19937 random(seed);
    states_ = {told()};
    commands_ = 0;
    cuts_.clear();
    open();
    power.onOperation([&] {
      if (static_cast<int>(random() % 1000) < often) cuts_.push_back({commands_, power.cut(random)});
    });
    std::mt19937 closing(seed);
    live(seed, steps, [&] {
      if (states_.size() % 2 == 0) std::this_thread::sleep_for(std::chrono::milliseconds(2));
      states_.push_back(told());
      ++commands_;
      if (closing() % 12 == 0) open();
    });
    dataModule().closeAccountDb();
    states_.push_back(states_.back());
  }

  /// What is wrong after one of the cuts; empty when all is well.
  QString wrongAfter(const Cut& cut) {
    const QTemporaryDir folder;
    const struct Closing {
      ~Closing() { dataModule().closeAccountDb(); }
    } closing;
    test::lay(cut.disk, folder.path());
    try {
      dataModule().installAccountDb(openSqlite(folder.filePath(u"jxc.mdb"_qs)));
      const proof::Proof proof = proof::prove(accountDb());
      if (!proof.isClean()) return proof.summary() + u' ' + proof.findings.front().check + proof.findings.front().place;
      const Told &before = states_[cut.commands], &after = states_[cut.commands + 1];
      Told found = told();
      const auto in = [](const Told& all, const QString& number) { return all.contains(number) ? all.at(number) : -1; };
      // What the command under way is doing may be there or not, saved or audited.
      for (const auto& [number, status] : before)
        if (in(after, number) == status && in(found, number) != status)
          return number + u" is "_qs + QString::number(in(found, number));
      for (const auto& [number, status] : found)
        if (in(before, number) < 0 && in(after, number) < 0) return number + u" comes from nowhere"_qs;
    } catch (const DbError& error) {
      return error.message();
    }
    return {};
  }

  std::vector<Told> states_;               // after each command
  std::atomic<std::size_t> commands_ = 0;  // that have been told; the log is carried in another thread
  std::vector<Cut> cuts_;
};

TEST_F(PowerCutTest, LeavesTheBooksCleanAndEveryDocumentThatWasToldAsSaved) {
  if (test::onServer()) GTEST_SKIP() << "a file's own";
  const char* const asked = std::getenv("JXC_CUTS");
  const std::size_t wanted = asked ? static_cast<std::size_t>(std::atoi(asked)) : 120;
  const auto usual = std::exchange(sqlite::Checkpointer::quiet, std::chrono::milliseconds(1));
  const auto shop = snapshot(accountDb());
  std::size_t done = 0;
  for (unsigned seed = 1; done < wanted && !HasFailure(); ++seed) {
    SCOPED_TRACE(seed);
    dataModule().installAccountDb(openSqliteSnapshot(shop));
    liveOnDisk(seed, 40, 15, true);
    ASSERT_FALSE(cuts_.empty());
    for (const Cut& cut : cuts_) {
      ASSERT_EQ(wrongAfter(cut), QString()) << "cut " << done << " after " << cut.commands << " commands";
      ++done;
    }
  }
  sqlite::Checkpointer::quiet = usual;
}

// Without this the test above would prove nothing.
TEST_F(PowerCutTest, IsNoticedWhereNobodyWaitsForTheDisk) {
  if (test::onServer()) GTEST_SKIP() << "a file's own";
  liveOnDisk(7, 20, 30, false);
  EXPECT_TRUE(std::ranges::any_of(cuts_, [this](const Cut& cut) { return !wrongAfter(cut).isEmpty(); }));
}

}  // namespace jxc::power_cut_test
