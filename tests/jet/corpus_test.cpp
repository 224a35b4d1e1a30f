// Every statement form of the program, run against a fresh account set: none may fail, and none may be passed through
// without being understood.
#include "engine/error.h"
#include "engine/transaction.h"
#include "harness/row_texts.h"
#include "jet/first_rows.h"
#include "jet/lexer.h"
#include "server/test_engine.h"

#include <QFile>

#include <algorithm>
#include <gtest/gtest.h>
#include <utility>
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

/// The statement as the program sends it: a text that is compared with something is bound, not pasted.
std::pair<std::string, std::vector<Value>> withValuesBound(const std::string& pasted) {
  std::string text;
  std::vector<Value> values;
  std::size_t done = 0;
  const std::vector<jet::Token> tokens = jet::tokenize(pasted);
  for (std::size_t i = 1; i < tokens.size(); ++i) {
    const jet::Token& before = tokens[i - 1];
    const bool compared =
        before.word == jet::Word::Like ||
        (before.kind == jet::TokenKind::Sign && std::string_view("=<>lgn").find(before.sign) != std::string_view::npos);
    if (tokens[i].kind != jet::TokenKind::Text || !compared) continue;
    text += pasted.substr(done, static_cast<std::size_t>(tokens[i].position) - done) + '?';
    done = static_cast<std::size_t>(tokens[i].end);
    values.emplace_back(QString::fromUtf8(tokens[i].text.data(), static_cast<qsizetype>(tokens[i].text.size())));
  }
  return {text + pasted.substr(done), values};
}

QStringList linesOf(const RowSet& set) {
  return test::textsOf(set, u'|', u"null"_qs);
}

QString textOf(const RowSet& set) {
  return linesOf(set).join(u'\n');
}

void runSelect(Database& database, const std::string& text) {
  const auto [bound, values] = withValuesBound(text);
  const QStringList all = linesOf(database.select(bound, values));
  EXPECT_EQ(textOf(database.select(text)), all.join(u'\n')) << bound;
  constexpr int few = 2;
  const auto first = jet::firstRows(bound, few);
  if (!first) return;
  const QStringList some = linesOf(database.select(*first, values));
  EXPECT_EQ(some.size(), std::min<qsizetype>(few, all.size())) << *first;
  for (const QString& row : some)
    EXPECT_TRUE(all.contains(row)) << *first << "\n  " << row.toStdString();
}

/// A select walks every row, with its values pasted and bound; anything else runs. "check:" in front: translated only,
/// since it would write a file.
void runLine(Database& database, const std::string& text) {
  constexpr std::string_view onlyCheck = "check: ";
  if (text.starts_with(onlyCheck))
    database.check(text.substr(onlyCheck.size()));
  else if (text.starts_with("select"))
    runSelect(database, text);
  else
    database.execute(text);
}

class Corpus : public testing::TestWithParam<const char*> {};

TEST_P(Corpus, EveryStatementRuns) {
  const QString path = QStringLiteral(JXC_SOURCE_DIR "/tests/jet/corpus/") + QLatin1String(GetParam()) + u".sql"_qs;
  const auto lines = linesOf(path);
  ASSERT_FALSE(lines.empty()) << path.toStdString();
  const auto database = test::openFresh();
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

/// Rows of a select; of any other statement how many rows it changed.
QString answerOf(Database& database, const std::string& text) {
  constexpr std::string_view onlyCheck = "check: ";
  if (text.starts_with(onlyCheck)) {
    database.check(text.substr(onlyCheck.size()));
    return {};
  }
  if (text.starts_with("select")) {
    const auto [bound, values] = withValuesBound(text);
    // Rows that the statement does not tell apart may come in any order.
    QStringList lines = linesOf(database.select(bound, values));
    lines.sort();
    return lines.join(u'\n');
  }
  return QString::number(database.execute(text));
}

/// Equal text is not equal meaning: what the server answers is what the file answers.
TEST_P(Corpus, TheServerAnswersAsTheFileDoes) {
  if (!test::onServer()) GTEST_SKIP() << "runs on a server, among pg.*";
  const auto server = test::openFresh();
  const auto file = test::openFreshFile();
  const Transaction onServer(*server), inFile(*file);
  for (const CorpusLine& line :
       linesOf(QStringLiteral(JXC_SOURCE_DIR "/tests/jet/corpus/") + QLatin1String(GetParam()) + u".sql"_qs)) {
    QString answer;
    try {
      Transaction own(*server);  // what fails spoils its own level only
      answer = answerOf(*server, line.text);
      own.commit();
    } catch (const std::exception& failure) {
      answer = QString::fromUtf8(failure.what());
    }
    EXPECT_EQ(answer.toStdString(), answerOf(*file, line.text).toStdString())
        << GetParam() << ".sql:" << line.number << "\n  " << line.text;
  }
}

INSTANTIATE_TEST_SUITE_P(Subsystems, Corpus,
                         testing::Values("core", "stock", "masterdata", "purchasing", "sales", "pos", "members",
                                         "accounts", "statistics", "output", "messaging", "maintenance"),
                         [](const auto& subsystem) { return std::string(subsystem.param); });

}  // namespace jxc::corpus_test
