// Every statement form of the program, run against a fresh account set: none may fail, and none may be passed through
// without being understood.
#include "core/schema/schema.h"
#include "engine/error.h"

#include <QFile>
#include <QString>

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace jxc::corpus_test {

struct CorpusLine {
  int number = 0;
  std::string text;
};

std::vector<CorpusLine> linesOf(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return {};
  std::vector<CorpusLine> lines;
  int number = 0;
  while (!file.atEnd()) {
    const QByteArray line = file.readLine();
    const QByteArray text = line.trimmed();
    ++number;
    if (text.isEmpty() || text.startsWith("--")) continue;
    lines.push_back({number, line.chopped(line.endsWith('\n') ? 1 : 0).toStdString()});
  }
  return lines;
}

/// A select walks every row; anything else runs. "check:" in front: translated only, since it would write a file.
void runLine(Database& database, const std::string& text) {
  constexpr std::string_view onlyCheck = "check: ";
  if (text.starts_with(onlyCheck))
    database.check(text.substr(onlyCheck.size()));
  else if (text.starts_with("select"))
    database.select(text);
  else
    database.execute(text);
}

class Corpus : public testing::TestWithParam<const char*> {
 protected:
  static std::unique_ptr<Database> freshSet() {
    auto database = openSqlite(QStringLiteral(":memory:"));
    createAllTables(*database);
    return database;
  }
};

TEST_P(Corpus, EveryStatementRuns) {
  const QString path =
      QStringLiteral(JXC_SOURCE_DIR "/tests/jet/corpus/") + QLatin1String(GetParam()) + QStringLiteral(".sql");
  const auto lines = linesOf(path);
  ASSERT_FALSE(lines.empty()) << path.toStdString();
  const auto database = freshSet();
  {
    const Transaction all(*database);
    for (const CorpusLine& line : lines) {
      try {
        runLine(*database, line.text);
      } catch (const std::exception& failure) {
        ADD_FAILURE() << GetParam() << ".sql:" << line.number << ": " << failure.what() << "\n  " << line.text;
      }
    }
  }
  EXPECT_EQ(database->lookup("select count(*) from jxc_goods").integer(), 1) << "what a file did is taken back";
}

INSTANTIATE_TEST_SUITE_P(Subsystems, Corpus,
                         testing::Values("core", "stock", "masterdata", "purchasing", "sales", "pos", "members",
                                         "accounts", "statistics", "output", "messaging", "maintenance"),
                         [](const auto& subsystem) { return std::string(subsystem.param); });

}  // namespace jxc::corpus_test
