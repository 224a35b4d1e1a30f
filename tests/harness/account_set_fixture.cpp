#include "harness/account_set_fixture.h"

#include "core/clock.h"
#include "core/data_module.h"
#include "core/password_hash.h"
#include "core/program_directory.h"
#include "server/test_engine.h"

#include <QDateTime>
#include <QDir>
#include <QTemporaryDir>

namespace jxc::test {

namespace account_set_detail {

QDateTime moment(const QString& text) {
  const QString whole = text.size() > 10 ? text : text + QStringLiteral(" 14:30:00");
  const QDateTime parsed = QDateTime::fromString(whole, QStringLiteral("yyyy-MM-dd HH:mm:ss"));
  if (!parsed.isValid()) throw std::invalid_argument("no moment: " + text.toStdString());
  return parsed;
}

/// Suites that write so much that taking it back would take a server longer than a copy of an account set.
Story storyOfTest() {
  const char* const suite = ::testing::UnitTest::GetInstance()->current_test_suite()->name();
  for (const char* many : {"RandomHistories", "MoneyWalk", "InvoiceWalk", "PostingTest", "BothEngines",
                           "SimulationTest", "AttachmentAtACut"})
    if (std::string_view(suite) == many) return Story::Long;
  return Story::Short;
}

}  // namespace account_set_detail

AccountSetFixture::AccountSetFixture() {
  // What a station keeps for itself is not kept in the folder that the tests were started from.
  static const QTemporaryDir home;
  if (programDirectory() == QDir::currentPath()) setProgramDirectory(home.path());
  setClock(QStringLiteral("2021-05-03 14:30:00"));
  setHashCost(HashCost::Least);
  dataModule().installAccountDb(openFresh(account_set_detail::storyOfTest()));
  session() = Session{};
  session().dbName = QStringLiteral("jxc.mdb");
  session().a_name = QStringLiteral("admin");
  session().a_sn = session().r_sn = QString::fromUtf16(builtInSn);
  loadSession();
}

AccountSetFixture::~AccountSetFixture() {
  dataModule().closeAccountDb();
  session() = Session{};
  clock::setFixed(std::nullopt);
}

void AccountSetFixture::setParameter(std::string_view field, const Value& value) {
  execSql(compose("update jxc_xtcs set {}=?", {field}), value);
  loadSession();
}

void AccountSetFixture::setClock(const QString& moment) {
  clock::setFixed(account_set_detail::moment(moment));
}

void AccountSetFixture::setRights(const QString& role, std::string_view group, const QString& rights) {
  if (lookupValue("select r_sn from jxc_role where r_sn=?", role).isEmpty()) {
    insertRow("jxc_role", {{"r_sn", role}, {"r_name", QStringLiteral("角色") + role}});
  }
  execSql(compose("update jxc_role set {}=? where r_sn=?", {group}), rights, role);
}

void AccountSetFixture::becomeOperator(const QString& name, const QString& sn, const QString& role) {
  if (lookupValue("select a_sn from jxc_admin where a_sn=?", sn).isEmpty()) {
    insertRow("jxc_admin", {{"a_sn", sn},
                            {"a_name", name},
                            {"r_sn", role},
                            {"a_zreoje", 0},
                            {"a_pwd", u""},
                            {"a_pos", 0},
                            {"a_jy", 0},
                            {"a_jyt", 0}});
  }
  session().a_name = name;
  session().a_sn = sn;
  session().r_sn = role;
  loadSession();
}

}  // namespace jxc::test
