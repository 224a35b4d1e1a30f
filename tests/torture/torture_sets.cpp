// Makes and deletes account sets without pause, clears one, closes its books, or writes the file for the head office,
// to be killed at any moment: see sets_test.py beside it.
//   torture_sets HOME sets SEED      makes sets and deletes them at random for ever; each is told on one line when done
//   torture_sets HOME list           opens the catalogue, which brings to its end what was cut off, and tells the files
//   torture_sets HOME clear WHAT     clears data/jxc.mdb, of "business" or of "all", after a backup
//   torture_sets HOME close DAY      closes the books of data/jxc.mdb up to a day, after a backup
//   torture_sets HOME export FOLDER  writes the file for the head office there, of all days
#include "core/data_module.h"
#include "core/program_directory.h"
#include "core/session.h"
#include "core/statements.h"
#include "maintenance/account_sets.h"
#include "maintenance/branch.h"
#include "maintenance/closing_command.h"
#include "maintenance/reset.h"
#include "platform/sheet/row_export.h"

#include <QCoreApplication>

#include <iostream>
#include <random>
#include <stdexcept>
#include <string_view>

namespace jxc::torture_sets {

/// Says yes to everything, and tells notices where a person would read them.
class YesPrompt : public Prompt {
 public:
  void notice(const QString& text) override { std::cerr << text.toStdString() << std::endl; }
  bool ask(const QString&) override { return true; }
  Answer askOrCancel(const QString&) override { return Answer::Yes; }
};

void begin() {
  dataModule().openAccountDb(QStringLiteral("jxc.mdb"));
  session() = Session{};
  session().a_name = QStringLiteral("admin");
  session().a_sn = session().r_sn = QStringLiteral("100001");
  session().dbName = QStringLiteral("jxc.mdb");
}

int makeAndDelete(unsigned seed) {
  YesPrompt prompt;
  std::mt19937 random(seed);
  AccountSets sets;
  std::cout << "begin" << std::endl;
  for (int step = 1;; ++step) {
    const RowSet rows = sets.rows();
    const bool deletes = rows.rowCount() > 1 && random() % 2 == 0;
    const bool done = deletes ? sets.remove(rows.integer(rows.rowCount() - 1, 0), prompt)
                              : sets.add({.name = QString::number(step)}, prompt);
    if (!done) return 1;
    std::cout << (deletes ? "deleted" : "made") << std::endl;
  }
}

int list() {
  const AccountSets sets;
  for (const Row row : sets.rows())
    std::cout << row.text("zt_dbname").toStdString() << ' ' << row.text("place").toStdString() << std::endl;
  return 0;
}

int clearSet(std::string_view what) {
  YesPrompt prompt;
  std::cout << "begin" << std::endl;
  const Cleared cleared = clearData(
      what == "all" ? Clearing::All : Clearing::Business, QStringLiteral("？"), BackupFirst::Always,
      [](int percent, const QString& doing) {
        if (percent >= 100 && !doing.isEmpty()) std::cout << "copied" << std::endl;
        return true;
      },
      prompt);
  std::cout << (cleared == Cleared::Done ? "cleared" : "refused") << std::endl;
  return cleared == Cleared::Done ? 0 : 1;
}

int closeBooks(const QString& day) {
  YesPrompt prompt;
  std::cout << "begin" << std::endl;
  const auto sheet = closing::closePeriod({{day}}, prompt, [](int, const QString& doing) {
    if (doing == u"记下结算前的余额") std::cout << "copied" << std::endl;
    return true;
  });
  std::cout << (sheet ? "closed" : "refused") << std::endl;
  return sheet ? 0 : 1;
}

int exportForHeadOffice(const QString& folder) {
  setSheetExporter(sheetFiles());
  YesPrompt prompt;
  std::cout << "begin" << std::endl;
  const Period allDays{QStringLiteral("2000-01-01"), QStringLiteral("2099-12-31")};
  return exportBranch({.days = allDays, .folder = folder}, {}, prompt) ? 0 : 1;
}

}  // namespace jxc::torture_sets

int main(int argc, char** argv) {
  using namespace jxc;
  const QCoreApplication application(argc, argv);
  const std::string_view what = argc > 2 ? argv[2] : "";
  try {
    setProgramDirectory(QString::fromLocal8Bit(argv[1]));
    torture_sets::begin();
    if (what == "sets") return torture_sets::makeAndDelete(static_cast<unsigned>(std::stoul(argv[3])));
    if (what == "list") return torture_sets::list();
    if (what == "clear") return torture_sets::clearSet(argv[3]);
    if (what == "close") return torture_sets::closeBooks(QString::fromLatin1(argv[3]));
    if (what == "export") return torture_sets::exportForHeadOffice(QString::fromLocal8Bit(argv[3]));
  } catch (const std::exception& failure) {
    std::cerr << failure.what() << std::endl;
  }
  return 2;
}
