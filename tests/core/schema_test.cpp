// The tables of an account set: made, emptied, and brought up to date from older layouts.
#include "core/schema/schema.h"

#include "core/schema/indexes.h"
#include "core/schema/upgrade.h"
#include "core/text.h"
#include "engine/error.h"
#include "harness/qt_printers.h"
#include "harness/row_texts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace jxc::schema_test {

std::unique_ptr<Database> emptySet() {
  return openSqlite(QStringLiteral(":memory:"));
}

std::unique_ptr<Database> freshSet() {
  auto database = emptySet();
  createAllTables(*database);
  return database;
}

double count(Database& database, const std::string& table) {
  return database.lookup("select count(*) from " + table).number();
}
QString text(Database& database, const std::string& select) {
  return database.lookup(select).text();
}
QStringList rows(Database& database, const std::string& select) {
  return test::textsOf(database.select(select));
}
QString stamp(Database& database) {
  return text(database, "select cs_employdate from jxc_xtcs");
}
/// What stands there once all steps are done.
QString newestStamp() {
  return words(schema::upgradeSteps().back().stamp);
}

bool has(Database& database, std::string_view table, std::string_view column) {
  try {
    database.check("select " + std::string(column).append(" from ").append(table));
    return true;
  } catch (const DbError&) {
    return false;
  }
}

/// Passes everything on and keeps what was run.
class Recorder : public Database {
 public:
  explicit Recorder(Database& inner) : inner_(inner) {}
  std::vector<std::string> statements;
  std::vector<QString> stamps;
  std::string refused;  // statements that name it fail

  RowSet select(const SqlText& sql, std::span<const Value> values) override {
    return inner_.select(noted(sql), values);
  }
  Value lookup(const SqlText& sql, std::span<const Value> values) override { return inner_.lookup(noted(sql), values); }
  std::int64_t execute(const SqlText& sql, std::span<const Value> values) override {
    if (!refused.empty() && sql.view().find(refused) != std::string_view::npos)
      throw DbError(DbError::Kind::Full, u"磁盘已满。"_qs);
    if (sql.view().starts_with("update jxc_xtcs set cs_employdate")) stamps.push_back(values.front().text());
    return inner_.execute(noted(sql), values);
  }
  void check(const SqlText& sql) override { inner_.check(noted(sql)); }
  std::int64_t lastCounter() const override { return inner_.lastCounter(); }
  OpenReader readerOpener() const override { return inner_.readerOpener(); }
  void backupTo(const QString& file, const std::function<bool(int)>& progress) override {
    inner_.backupTo(file, progress);
  }
  StorageCheck checkStorage(const std::function<bool(int)>& progress) override { return inner_.checkStorage(progress); }
  void interrupt() override { inner_.interrupt(); }
  void begin() override { inner_.begin(); }
  void commit() override { inner_.commit(); }
  void rollback() override { inner_.rollback(); }
  bool inTransaction() const override { return inner_.inTransaction(); }

 private:
  const SqlText& noted(const SqlText& sql) {
    statements.emplace_back(sql.view());
    return sql;
  }
  Database& inner_;
};

/// Columns that the ladder adds, by table.
std::map<std::string, std::set<std::string>> columnsOfTheLadder() {
  std::map<std::string, std::set<std::string>> added;
  for (const schema::UpgradeStep& step : schema::upgradeSteps())
    for (const schema::UpgradeBlock& block : step.blocks)
      for (const schema::UpgradeAction& action : block.actions)
        for (const schema::NewColumn& column : action.columns)
          added[std::string(action.text)].insert(std::string(column.name));
  return added;
}

/// Makes a table as it was before the ladder: without the columns that its steps add.
void makeOld(Database& database, const std::string& table, const std::set<std::string>& without) {
  dropTableIfExists(database, table);
  std::string sql = "create table [" + table + "] ([id] Counter";
  for (const schema::ColumnLine& column : schema::columnsOf(*schema::findDefinition(table))) {
    if (without.contains(std::string(column.name))) continue;
    sql.append(",[").append(column.name).append("] ").append(column.type).append(" null");
  }
  database.execute(sql + ",Constraint StatePrimary Primary key ([id]))");
}

TEST(Schema, DefinitionsIndexesAndLadderFitTogether) {
  std::set<std::string> listed;
  for (const std::string_view name : schema::companionTables())
    listed.insert(std::string(name));
  for (const schema::TableEntry& entry : schema::tables()) {
    EXPECT_TRUE(schema::findDefinition(entry.name)) << entry.name;
    EXPECT_TRUE(listed.emplace(entry.name).second) << entry.name;
  }
  for (const auto list :
       {schema::coreTables(), schema::stockTables(), schema::masterdataTables(), schema::purchasingTables(),
        schema::salesTables(), schema::posTables(), schema::membersTables(), schema::accountsTables(),
        schema::statisticsTables(), schema::outputTables(), schema::messagingTables(), schema::maintenanceTables()})
    for (const schema::TableDefinition& definition : list)
      EXPECT_TRUE(listed.contains(std::string(definition.name))) << definition.name << " is created by nobody";

  for (const schema::UpgradeStep& step : schema::upgradeSteps())
    EXPECT_FALSE(step.blocks.empty()) << step.guard;
}

TEST(Schema, AFreshSetHasItsTablesAndWhatTheyBeginWith) {
  const auto database = freshSet();
  for (const schema::TableEntry& entry : schema::tables()) {
    std::vector<std::string> expected{"id"};
    for (const schema::ColumnLine& column : schema::columnsOf(*schema::findDefinition(entry.name)))
      expected.emplace_back(column.name);
    EXPECT_EQ(database->select("select * from " + std::string(entry.name)).columns(), expected) << entry.name;
  }
  for (const schema::IndexDefinition& index : schema::indexes())
    EXPECT_NO_THROW(database->check("select " + std::string(index.columns) + " from " + std::string(index.table)));

  EXPECT_EQ(stamp(*database), u"");
  EXPECT_EQ(text(*database, "select c_name from jxc_company where c_sn='100001'"), u"晴川信息技术有限公司");
  EXPECT_EQ(text(*database, "select qtcz from jxc_role where r_sn='100001'"), QString(60, u'1'));
  EXPECT_EQ(text(*database, "select gc_name from jxc_goodsclass where gc_sn='1000'"), u"镜片");
  const RowSet balancing = database->select("select * from jxc_goods");
  ASSERT_EQ(balancing.rowCount(), 1);
  EXPECT_EQ(balancing.front().text("g_sn"), u"00000000");
  EXPECT_TRUE(balancing.front().flag("g_jy"));
  EXPECT_EQ(balancing.front().number("g_zhxs"), 1) << "the second unit divides by it";
  const RowSet parameters = database->select("select * from jxc_xtcs");
  ASSERT_EQ(parameters.rowCount(), 1);
  EXPECT_EQ(parameters.front().text("cs_hbfh"), u"￥");
  EXPECT_EQ(parameters.front().integer("cs_xsjgts"), 1);
  for (const std::string& column : parameters.columns())
    EXPECT_FALSE(parameters.front().isNull(column)) << column;
  EXPECT_EQ(count(*database, "jxc_xsd"), 0) << "orders stand empty beside the 146";
}

TEST(Schema, ATableRoutineBeginsAfresh) {
  const auto database = emptySet();
  createTable(*database, "jxc_dw");
  EXPECT_EQ(count(*database, "jxc_dw"), 2);
  database->execute("insert into jxc_dw (dw_sn,dw_name) values ('100004','盒')");
  createTable(*database, "jxc_dw");
  EXPECT_EQ(count(*database, "jxc_dw"), 2) << "what it held is gone, its seeds are back";

  database->execute("insert into jxc_dw (dw_sn,dw_name) values ('100004','盒')");
  {
    const Transaction abandoned(*database);
    createTable(*database, "jxc_dw");
  }
  EXPECT_EQ(count(*database, "jxc_dw"), 3) << "making a table is taken back with the rest of a command";

  createTable(*database, "jxc_kcsp");
  createTable(*database, "jxc_kcsp");
  EXPECT_THROW(schema::createIndexes(*database, "jxc_kcsp"), DbError) << "its indexes came with it";
  createTable(*database, "jxc_kcsp", "_2020");
  EXPECT_TRUE(has(*database, "jxc_kcsp_2020", "kc_zsl"));

  dropTableIfExists(*database, "jxc_kcsp");
  EXPECT_FALSE(has(*database, "jxc_kcsp", "id"));
  EXPECT_NO_THROW(dropTableIfExists(*database, "jxc_kcsp"));
  EXPECT_THROW(createTable(*database, "jxc_nothing"), std::invalid_argument);
}

TEST(Schema, AResetKeepsWhatABusinessBuiltUp) {
  const auto database = freshSet();
  database->execute("update jxc_goods set g_kc=7,ghs_sn='100009'");
  database->execute("insert into jxc_khxx (kh_sn,kh_name) values ('100002','小店')");
  database->execute("insert into jxc_kcsp (g_sn,ck_sn,kc_sl) values ('00000000','100001',0)");
  database->execute("insert into jxc_lsxsd (gl_djh) values ('XS21050310001')");
  database->execute("insert into jxc_fylx (fy_lx) values ('房租')");
  const double types = count(*database, "jxc_fylx");

  resetBusinessTables(*database);
  EXPECT_EQ(count(*database, "jxc_lsxsd"), 0);
  EXPECT_EQ(count(*database, "jxc_fylx"), types - 1) << "back to its seeds";
  EXPECT_EQ(count(*database, "jxc_khxx"), 2);
  EXPECT_EQ(count(*database, "jxc_kcsp"), 1);
  EXPECT_EQ(text(*database, "select ghs_sn from jxc_goods where g_kc=0"), u"100001");

  resetBusinessAndStock(*database);
  EXPECT_EQ(count(*database, "jxc_kcsp"), 0);
  EXPECT_EQ(count(*database, "jxc_khxx"), 2);
}

TEST(Upgrade, ACurrentDatabaseCostsOneReadAndGainsTheIndexesThatCameSince) {
  const auto database = freshSet();
  database->execute("update jxc_xtcs set cs_employdate='" + newestStamp().toStdString() + "'");
  Recorder recorder(*database);
  upgradeSchema(recorder);
  EXPECT_THAT(recorder.statements,
              testing::ElementsAre("select cs_employdate from jxc_xtcs",
                                   "create index [ix_lsxssp_gl_djh_id] on [jxc_lsxssp] (gl_djh,id)"));

  for (const char* older :
       {"drop index ix_lsxssp_gl_djh_id", "drop index ix_goodslist_gl_kdrq_id",
        "drop index ix_kcdbd_db_status_db_chkrq", "create index ix_goodslist_gl_kdrq on jxc_goodslist (gl_kdrq)"})
    database->execute(older);
  upgradeSchema(*database);
  EXPECT_THROW(database->execute("create index ix_kcdbd_db_status_db_chkrq on jxc_kcdbd (db_status)"), DbError);
  EXPECT_THROW(database->execute("drop index ix_goodslist_gl_kdrq"), DbError) << "what covers more took its place";
}

TEST(Upgrade, AnOlderSetIsCopiedBeforeItsFirstStepAndAFailingStepTellsSo) {
  int copies = 0;
  const auto copy = [&] {
    ++copies;
    return QStringLiteral("/shop/before.DAT");
  };
  upgradeSchema(*freshSet(), copy);
  EXPECT_EQ(copies, 0) << "nothing in it yet";

  const auto database = freshSet();
  database->execute("update jxc_xtcs set cs_employdate='2014-02-16'");
  dropTableIfExists(*database, "jxc_yyfy");  // which the next step writes to
  try {
    upgradeSchema(*database, copy);
    FAIL();
  } catch (const UpgradeFailed& failure) {
    for (const QString& told : {u"停在 2014-02-18 这一步"_qs, u"/shop/before.DAT"_qs, u"这一步不会重做"_qs})
      EXPECT_TRUE(failure.message().contains(told)) << failure.message().toStdString();
  }
  EXPECT_EQ(copies, 1);
  EXPECT_EQ(stamp(*database), u"2014-02-18") << "its date was written before it ran";
  createTable(*database, "jxc_yyfy");
  upgradeSchema(*database, copy);
  EXPECT_EQ(stamp(*database), newestStamp());
}

TEST(Upgrade, WithoutAChainOfTheLogTheStepThatMakesItIsTriedAgain) {
  const auto database = freshSet();
  database->execute("update jxc_xtcs set cs_employdate='2021-07-15'");
  database->execute("insert into jxc_log (log_time,a_name,log_note) values ('2021-07-16 09:00:00','admin','登录系统')");
  dropTableIfExists(*database, "jxc_logchain");
  Recorder recorder(*database);
  for (const char* const refused : {"update jxc_logchain", "jxc_logchain"}) {
    recorder.refused = refused;
    EXPECT_THROW(upgradeSchema(recorder), UpgradeFailed);
    EXPECT_FALSE(isSchemaCurrent(*database));
    EXPECT_FALSE(has(*database, "jxc_logchain", "lc_hash")) << "made with its hash or not at all";
  }
  upgradeSchema(*database);
  EXPECT_TRUE(isSchemaCurrent(*database));
  EXPECT_EQ(text(*database, "select lc_hash from jxc_logchain"), text(*database, "select log_hash from jxc_log"));
}

TEST(Upgrade, ANewDatabaseWalksTheWholeLadder) {
  const auto database = freshSet();
  database->execute("insert into jxc_kdgs (kg_sn,kg_name) values ('9001','自己送')");
  Recorder recorder(*database);
  upgradeSchema(recorder);
  EXPECT_EQ(recorder.stamps.size(), schema::upgradeSteps().size());
  EXPECT_EQ(recorder.stamps.front(), u"2013-10-31");
  EXPECT_EQ(stamp(*database), newestStamp());
  for (const std::string& statement : recorder.statements)
    EXPECT_FALSE(statement.starts_with("alter table") && statement.find(" add ") != std::string::npos) << statement;
  EXPECT_EQ(count(*database, "jxc_kdgs where kg_sn='9001'"), 0) << "a step makes the courier list anew";
  EXPECT_EQ(text(*database, "select cs_cs013 from jxc_xtcs"), u"0") << "price levels stay off on a new set";
}

TEST(Upgrade, TheStepThatCameOutADayEarlyStandsBeforeTheOther) {
  const auto database = freshSet();
  database->execute("update jxc_xtcs set cs_employdate='2020-02-12'");
  Recorder recorder(*database);
  upgradeSchema(recorder);
  ASSERT_GE(recorder.stamps.size(), 2u);
  EXPECT_EQ(recorder.stamps[0], u"2020-02-13");
  EXPECT_EQ(recorder.stamps[1], u"2020-02-22");
  EXPECT_EQ(stamp(*database), newestStamp());
}

TEST(Upgrade, RestoringTheDefaultsSendsARunningDatabaseThroughAgain) {
  const auto database = freshSet();
  upgradeSchema(*database);
  database->execute("insert into jxc_role (r_sn,r_name,cggl,xsgl,kcgl) values ('100002','店员','10','0','11')");
  database->execute("insert into jxc_htgl (ht_sn,ht_name) values ('100001','供货合同')");
  database->execute("insert into jxc_xjyh (gl_djh,xj_je) values ('FK21050310001',30)");
  database->execute("insert into jxc_xjyh (gl_djh,xj_je) values ('SK21050310001',40)");
  database->execute("insert into jxc_jhd (j_sn,j_status,j_yfje,j_sfje,j_yhje) values ('CJ21050310001',1,90,90,10)");
  database->execute("insert into jxc_yyfy (gl_djh,fy_sc,fy_flag) values ('SR21050310001','收入','0')");
  createTable(*database, "jxc_xtcs");
  database->execute("update jxc_xtcs set cs_employdate='1900-01-01'");

  upgradeSchema(*database);
  EXPECT_EQ(rows(*database, "select cggl,xsgl,kcgl from jxc_role where r_sn='100002'"), QStringList("101 01 11"));
  EXPECT_EQ(text(*database, "select cggl from jxc_role where r_sn='100001'"), QString(60, u'1'));
  EXPECT_EQ(count(*database, "jxc_htgl"), 0) << "contracts are gone";
  EXPECT_EQ(text(*database, "select xj_je from jxc_xjyh where gl_djh='FK21050310001'"), u"-30");
  EXPECT_EQ(text(*database, "select xj_je from jxc_xjyh where gl_djh='SK21050310001'"), u"40");
  EXPECT_EQ(text(*database, "select j_yfje from jxc_jhd"), u"100");
  EXPECT_EQ(text(*database, "select fy_flag from jxc_yyfy where gl_djh='SR21050310001'"), u"2");

  database->execute("update jxc_xtcs set cs_employdate='1900-01-01'");
  upgradeSchema(*database);
  EXPECT_EQ(text(*database, "select xj_je from jxc_xjyh where gl_djh='FK21050310001'"), u"-30") << "turned once only";
  EXPECT_EQ(text(*database, "select cggl from jxc_role where r_sn='100002'"), u"1011");
  EXPECT_EQ(stamp(*database), newestStamp());
}

TEST(Upgrade, TheOldestLayoutGainsEveryColumnAndItsDocumentsCountAsAudited) {
  const auto database = freshSet();
  const auto ladder = columnsOfTheLadder();
  for (const auto& [table, columns] : ladder)
    makeOld(*database, table, columns);
  for (const std::string_view late : {"jxc_khjh", "jxc_khjhsp", "jxc_smscs", "jxc_dept", "jxc_cgd", "jxc_xssp"})
    dropTableIfExists(*database, late);
  database->execute("insert into jxc_xtcs (cs_employdate) values ('')");
  database->execute("insert into jxc_ckxx (ck_sn,ck_name) values ('100001','主仓库')");
  database->execute("insert into jxc_goods (g_sn,g_name,g_pjjj,g_sj) values ('20000001','镜片',5,12)");
  database->execute("insert into jxc_kcsp (g_sn,ck_sn,kc_sl,kc_cbj) values ('20000001','100001',8,5)");
  database->execute(
      "insert into jxc_jhd (j_sn,j_jhrq,a_name,j_yfje,j_sfje) values ('CJ12050310001','2012-05-03','小王',50,50)");
  database->execute("insert into jxc_jhsp (j_sn,g_sn,jh_dj,jh_sl,jh_zje) values ('CJ12050310001','20000001',5,10,50)");
  database->execute("insert into jxc_lsxsd (gl_djh,ls_xsrq,a_name) values ('XS12050410001','2012-05-04','小王')");
  database->execute(
      "insert into jxc_lsxssp (gl_djh,g_sn,ls_dj,ls_sl,ls_zje,ls_dzl) values ('XS12050410001','20000001',12,2,24,1)");
  database->execute(
      "insert into jxc_goodslist (gl_flag,gl_djh,gl_kdrq,g_sn,ck_sn,gl_sl,gl_zje,gl_dj,a_name) "
      "values ('xs','XS12050410001','2012-05-04','20000001','100001',2,24,12,'小王')");
  database->execute(
      "insert into jxc_ysyfk (gl_djh,k_rq,k_yfje,k_sfje,k_ljje,k_type,k_djlx,k_ghskh,a_name) "
      "values ('YS12050410001','2012-05-04',9,0,9,'kh','YS','100001','小王')");

  upgradeSchema(*database);

  EXPECT_EQ(stamp(*database), newestStamp());
  for (const auto& [table, columns] : ladder)
    for (const std::string& column : columns)
      EXPECT_TRUE(has(*database, table, column)) << table << "." << column;
  EXPECT_TRUE(has(*database, "jxc_khjhsp", "jh_sl2"));
  EXPECT_TRUE(has(*database, "jxc_cgd", "j_sn2"));
  EXPECT_THROW(schema::createIndexes(*database, "jxc_goodslist"), DbError) << "indexes were made up for";

  // The receipt is audited and paid in cash, its line put away.
  EXPECT_EQ(rows(*database, "select j_status,j_checker,j_chkrq,j_kmmc,iif(j_crk,'put away','') from jxc_jhd"),
            QStringList("1 小王 2012-05-03 现金 put away"));
  EXPECT_EQ(rows(*database, "select jh_je,jh_rksl,jh_dzl,id2-id from jxc_jhsp"), QStringList("50 10 1 0"));
  EXPECT_EQ(rows(*database, "select ls_cbj,ls_zcb from jxc_lsxssp"), QStringList("5 10"));
  EXPECT_EQ(
      rows(*database, "select a.gl_note,a.gl_zcb,a.id2-b.id2 from jxc_goodslist a,jxc_lsxssp b where gl_flag='xs'"),
      QStringList("[-前期数据-] 10 0"));
  EXPECT_EQ(rows(*database, "select gl_flag,gl_kc,gl_kczje,ghs_name from jxc_goodslist where gl_flag<>'xs'"),
            QStringList("qc 8 40 期初结转"));
  EXPECT_EQ(text(*database, "select kc_zsl from jxc_kcsp where g_sn='20000001'"), u"8");
  EXPECT_EQ(rows(*database, "select ck_aname,ck_asn from jxc_ckxx where ck_sn='100001'"),
            QStringList("admin, 100001,"));
  EXPECT_EQ(rows(*database, "select iif(k_check,'audited','') from jxc_ysyfk_dj"), QStringList("audited"));
  EXPECT_EQ(text(*database, "select g_sj1 from jxc_goods where g_sn='20000001'"), u"12");
}

TEST(Upgrade, UnfinishedDocumentsStayOpenWhenTheMarkOfPutawayComes) {
  const auto database = freshSet();
  makeOld(*database, "jxc_jhd", {"j_crk"});
  makeOld(*database, "jxc_lsxsd", {"ls_crk"});
  database->execute("update jxc_xtcs set cs_employdate='2020-12-23'");
  for (const char* number : {"CJ20120110001", "CJ20120110002"}) {
    const std::array<Value, 1> values{Value(QString::fromLatin1(number))};
    database->execute("insert into jxc_jhd (j_sn) values (?)", values);
  }
  database->execute("insert into jxc_jhsp (j_sn,jh_sl,jh_rksl,jh_qxsl) values ('CJ20120110001',10,4,0)");
  database->execute("insert into jxc_jhsp (j_sn,jh_sl,jh_rksl,jh_qxsl) values ('CJ20120110002',10,4,6)");
  database->execute("insert into jxc_lsxsd (gl_djh) values ('XS20120110001')");
  database->execute("insert into jxc_lsxssp (gl_djh,ls_sl,ls_cksl,ls_qxsl) values ('XS20120110001',3,0,0)");
  upgradeSchema(*database);
  EXPECT_EQ(text(*database, "select j_crk from jxc_jhd where j_sn='CJ20120110001'"), u"0");
  EXPECT_EQ(text(*database, "select j_crk from jxc_jhd where j_sn='CJ20120110002'"), u"1");
  EXPECT_EQ(text(*database, "select ls_crk from jxc_lsxsd"), u"0");
}

TEST(Upgrade, PutawayAndIssueTakeThePartnerOfTheirDocument) {
  const auto database = freshSet();
  database->execute("update jxc_xtcs set cs_employdate='2014-01-02'");
  database->execute("insert into jxc_jhd (j_sn,ghs_sn) values ('CJ13120110001','100007')");
  database->execute("insert into jxc_rkd (gl_djh) values ('RK13120210001')");
  database->execute("insert into jxc_rksp (gl_djh,j_sn) values ('RK13120210001','CJ13120110001')");
  database->execute("insert into jxc_lsxsd (gl_djh,kh_sn) values ('XS13120110001','100008')");
  database->execute("insert into jxc_ckd (gl_djh) values ('CK13120210001')");
  database->execute("insert into jxc_cksp (gl_djh,gl_djh2) values ('CK13120210001','XS13120110001')");
  upgradeSchema(*database);
  EXPECT_EQ(text(*database, "select ghs_sn from jxc_rkd"), u"100007");
  EXPECT_EQ(text(*database, "select kh_sn from jxc_ckd"), u"100008");
}

TEST(Upgrade, WhatIsNotThereAtAllIsMadeOrRefused) {
  const auto database = freshSet();
  database->execute("drop table jxc_cgd");
  database->execute("update jxc_xtcs set cs_employdate='2021-05-13'");
  EXPECT_NO_THROW(upgradeSchema(*database)) << "without the order module there is nothing to widen";
  EXPECT_TRUE(has(*database, "jxc_cgd", "id"));

  makeOld(*database, "jxc_xtcs", {"cs_employdate"});
  EXPECT_THROW(upgradeSchema(*database), DbError);
}

}  // namespace jxc::schema_test
