// The program is killed at random moments of the commands that replace or empty an account set: what stands in its
// folder then opens as the set from before or as the one from after, never as anything between. The folder is looked at
// from within the writes of one run, so hundreds of kills cost no more than their proof; `tests/torture` kills the
// process itself. JXC_CUTS=200 looks so often instead of the few times that the suite takes.
#include "core/data_module.h"
#include "core/program_directory.h"
#include "harness/files.h"
#include "harness/findings.h"
#include "harness/power_cut.h"
#include "harness/whole_books.h"
#include "maintenance/account_sets.h"
#include "maintenance/closing_command.h"
#include "maintenance/reset.h"
#include "maintenance/restoring.h"
#include "maintenance/shop_walk.h"
#include "server/test_engine.h"

#include <QDir>
#include <QDirIterator>
#include <QTemporaryDir>

#include <cstdlib>
#include <iostream>
#include <map>
#include <set>

namespace jxc::killed_commands_test {

using test::Books;
using Folder = std::map<QString, QByteArray>;  // files by their path in it

const QString kSet = u"data/jxc.mdb"_qs, kCopy = u"kept/copy.DAT"_qs;

class KilledCommands : public test::ShopWalk {
 protected:
  KilledCommands() : before_(programDirectory()) {}
  ~KilledCommands() override { setProgramDirectory(before_); }

  struct Command {
    const char* name;
    std::function<bool(Prompt&)> run;
  };

  /// What is equal to the file of the last moment shares its bytes.
  static Folder read(const QString& place, const Folder& last) {
    Folder all;
    for (QDirIterator each(place, QDir::Files, QDirIterator::Subdirectories); each.hasNext();) {
      const QString path = each.next(), name = QDir(place).relativeFilePath(path);
      if (name.endsWith(u"-shm")) continue;  // it is memory, and made anew by whoever comes first
      QByteArray bytes = test::bytesOf(path);
      const auto found = last.find(name);
      all[name] = found != last.end() && found->second == bytes ? found->second : bytes;
    }
    return all;
  }
  static void lay(const Folder& folder, const QString& place) {
    for (const auto& [name, bytes] : folder) {
      QDir(place).mkpath(QFileInfo(name).path());
      test::writeBytes(place + u'/' + name, bytes);
    }
    setProgramDirectory(place);
  }
  static void use(const QString& name) {
    dataModule().installAccountDb(openSqlite(programPath(name)));
    loadSession();
  }
  static Books booksOf(const QString& name) {
    use(name);
    Books books = test::readBooks();
    dataModule().closeAccountDb();
    return books;
  }
  /// All but what tells of the command itself.
  static bool isSame(const Books& found, const Books& due) {
    if (found == due) return true;
    const std::set<QString> differ = test::differences(due, found);
    return std::ranges::all_of(
        differ, [](const QString& each) { return each.startsWith(u"jxc_log") || each.startsWith(u"jxc_backup"); });
  }

  /// The folder at so many moments of one run, and the books behind it.
  std::vector<Folder> moments(const Folder& shop, const Command& command, std::size_t wanted, Books& after) {
    std::vector<Folder> seen;
    std::size_t all = 0;
    for (const bool rehearses : {true, false}) {
      const QTemporaryDir place;
      lay(shop, place.path());
      std::mt19937 random(7);
      std::set<std::size_t> chosen;
      while (!rehearses && chosen.size() < std::min(wanted, all / 2))
        chosen.insert(random() % all);
      std::size_t at = 0;
      const Session kept = session();
      {
        test::PowerCut disk(place.path());
        use(kSet);
        disk.onOperation([&] {
          if (chosen.contains(at++)) seen.push_back(read(place.path(), seen.empty() ? shop : seen.back()));
        });
        YesPrompt yes;
        EXPECT_TRUE(command.run(yes)) << yes.notices.join(u'|').toStdString();
        disk.onOperation({});
        after = test::readBooks();
        dataModule().closeAccountDb();
      }
      session() = kept;
      all = at;
    }
    return seen;
  }

 private:
  QString before_;
};

TEST_F(KilledCommands, LeaveTheSetFromBeforeOrTheOneFromAfter) {
  if (test::onServer()) GTEST_SKIP() << "a file's own";
  const char* const asked = std::getenv("JXC_CUTS");
  const std::size_t wanted = asked ? static_cast<std::size_t>(std::atoi(asked)) : 16;
  const QTemporaryDir first;
  Folder shop;
  setProgramDirectory(first.path());
  for (const char* folder : {"data", "kept"})
    QDir(first.path()).mkdir(QString::fromLatin1(folder));
  live(1, 60);
  ASSERT_TRUE(makeVerifiedCopy(accountDb(), programPath(kCopy)));
  live(2, 60);
  accountDb().backupTo(programPath(kSet));
  shop = read(first.path(), {});
  const Books before = booksOf(kSet), copied = booksOf(kCopy);
  shop[kCopy] = test::bytesOf(programPath(kCopy));  // whoever opens it to write leaves another mark in it

  const auto clears = [](Clearing what) {
    return [what](Prompt& yes) { return clearData(what, u"？"_qs, BackupFirst::Always, {}, yes) == Cleared::Done; };
  };
  const Command commands[] = {
      {"closing", [](Prompt& yes) { return closing::closePeriod({{u"2021-04-28"_qs}}, yes).has_value(); }},
      {"clearing of the business", clears(Clearing::Business)},
      {"clearing of all", clears(Clearing::All)},
      {"restore",
       [](Prompt& yes) {
         auto backup = OpenedBackup::open(programPath(kCopy));
         return backup && restoreBackup(*backup, yes);
       }},
      {"backup", [](Prompt&) { return makeVerifiedCopy(accountDb(), programPath(kCopy)); }},
      {"new set",  // and the catalogue, which is not there yet
       [](Prompt& yes) {
         AccountSets sets;
         return sets.add({.name = u"二店"_qs}, yes);
       }},
  };
  for (const Command& command : commands) {
    SCOPED_TRACE(command.name);
    Books after;
    const std::vector<Folder> seen = moments(shop, command, wanted, after);
    const bool changesSet = !isSame(before, after);
    std::size_t done = 0;
    for (const Folder& left : seen) {
      const QTemporaryDir place;
      lay(left, place.path());
      bool isCopied = false, isListed = false, isDone = false;
      if (left.at(kCopy) != shop.at(kCopy)) {
        const Books copy = booksOf(kCopy);
        isCopied = isSame(copy, before);
        EXPECT_TRUE(isCopied || copy == copied) << "a copy between two states";
      }
      if (left.contains(kSet + u"-wal"_qs) || left.at(kSet) != shop.at(kSet)) {
        use(kSet);
        const Books found = test::readBooks();
        isDone = isSame(found, after);
        ASSERT_TRUE(isDone || isSame(found, before)) << "at " << &left - seen.data();
        if (found != before) {
          EXPECT_EQ(test::foundWrong(), QStringList());
        }
        dataModule().closeAccountDb();
      }
      if (command.name == std::string_view("new set")) {
        const AccountSets sets;
        for (const Row row : sets.rows()) {
          EXPECT_EQ(row.text("place"), u"本机文件"_qs);
          isListed |= row.text("zt_name") == u"二店";
        }
        const QStringList files = QDir(programPath(u"data"_qs)).entryList({u"jxc_*"_qs}, QDir::Files);
        EXPECT_EQ(files, isListed ? QStringList{u"jxc_100002.mdb"_qs} : QStringList());
      }
      done += isCopied || isListed || (isDone && changesSet);
    }
    EXPECT_GE(seen.size(), std::min<std::size_t>(wanted, 10));
    std::cout << command.name << ": " << seen.size() << " kills, " << done << " behind its commit" << std::endl;
  }
}

}  // namespace jxc::killed_commands_test
