// What statements of the dialect mean, run on the engine.
#include "engine/database.h"
#include "harness/row_texts.h"
#include "server/test_engine.h"

#include <gtest/gtest.h>

namespace jxc::dialect_test {

class DialectTest : public testing::Test {
 protected:
  void SetUp() override {
    db_ = test::openEmpty();
    run("create table [goods] ([id] Counter,[g_sn] varchar (8) null,[g_name] nvarchar (10) null,[g_kc] numeric(28,6) "
        "null,"
        "[g_jj] numeric(28,6) null,[g_jy] bit null,[g_pl] int null,[g_bz] text null,"
        "Constraint StatePrimary Primary key ([id]))");
    run("create table [stock] ([id] Counter,[g_sn] varchar (8) null,[ck_sn] varchar (8) null,[kc_sl] numeric(28,6) "
        "null,"
        "[rq] varchar (16) null,Constraint StatePrimary Primary key ([id]))");
  }

  std::int64_t run(const char* sql, std::initializer_list<Value> values = {}) {
    return db_->execute(sql, std::span<const Value>(values.begin(), values.size()));
  }
  QString value(const char* sql, std::initializer_list<Value> values = {}) {
    const Value v = db_->lookup(sql, std::span<const Value>(values.begin(), values.size()));
    return v.isNull() ? QStringLiteral("null") : v.text();
  }
  /// Rows as "a,b;c,d".
  QString rows(const char* sql, std::initializer_list<Value> values = {}) {
    const RowSet set = db_->select(sql, std::span<const Value>(values.begin(), values.size()));
    return test::textsOf(set, u',', QStringLiteral("null")).join(u';');
  }
  DbError::Kind refusal(const char* sql, std::initializer_list<Value> values = {}) {
    try {
      run(sql, values);
    } catch (const DbError& error) {
      return error.kind();
    }
    ADD_FAILURE() << "not refused: " << sql;
    return DbError::Kind::Other;
  }

  std::unique_ptr<Database> db_;
};

TEST_F(DialectTest, NumbersAreDecimalsOfSixPlaces) {
  run("insert into goods (g_sn,g_kc,g_jj) values ('1',?,0.8)", {0.1 + 0.7});
  EXPECT_EQ(value("select count(*) from goods where 0.8>0.1+0.7"), u"0");
  EXPECT_EQ(value("select count(*) from goods where g_jj>g_kc"), u"0");
  EXPECT_EQ(value("select count(*) from goods where g_jj>g_kc-0.1+0.1"), u"0");
  run("insert into stock (kc_sl) values (0.1)");
  run("insert into stock (kc_sl) values (0.2)");
  run("insert into stock (kc_sl) values (-0.3)");
  EXPECT_EQ(rows("select sum(kc_sl) from stock having sum(kc_sl)<>0"), u"");
  EXPECT_EQ(value("select count(*) from (select sum(kc_sl) as s from stock) a where a.s<>0"), u"0");
  EXPECT_EQ(db_->lookup("select sum(kc_sl) from stock").number(), 0.0);
  EXPECT_EQ(db_->lookup("select s-0.1-0.2 from (select sum(kc_sl)+0.3 as s from stock) a").number(), 0.0);
  run("update goods set g_kc=1/3");
  EXPECT_EQ(value("select g_kc from goods"), u"0.333333");
  run("update goods set g_kc=?", {2.0 / 3});
  EXPECT_EQ(value("select g_kc from goods"), u"0.666667");
  EXPECT_EQ(value("select round(2.675,2) from goods"), u"2.68");
  EXPECT_EQ(value("select round(-1.005+0.000000001,2) from goods"), u"-1");
  EXPECT_EQ(value("select round(0.285*100+0.000000001,0) from goods"), u"29");
  EXPECT_EQ(value("select int(10*(0.1+0.7)) from goods"), u"8");
}

TEST_F(DialectTest, DivisionIsNeverWhole) {
  run("insert into goods (g_sn,g_kc,g_pl) values ('1',3,2)");
  EXPECT_EQ(value("select g_kc/g_pl from goods"), u"1.5");
  EXPECT_EQ(value("select 7/2 from goods"), u"3.5");
  EXPECT_EQ(value("select g_kc/100 from goods"), u"0.03");
  EXPECT_EQ(value("select 7\\2 from goods"), u"3");
  EXPECT_EQ(value("select 7 mod 4 from goods"), u"3");
  EXPECT_EQ(refusal("update goods set g_kc=g_kc/(g_pl-2)"), DbError::Kind::Arithmetic);
  EXPECT_EQ(value("select iif(g_pl-2<>0,g_kc/(g_pl-2),0) from goods"), u"0");
  EXPECT_EQ(value("select null/g_pl from goods"), u"null");
}

TEST_F(DialectTest, PlusJoinsTextAndAddsNumbers) {
  run("insert into goods (g_sn,g_name,g_kc,g_pl) values ('100','镜架',1.5,7)");
  EXPECT_EQ(value("select '编号：'+g_sn+'，'+g_name from goods"), u"编号：100，镜架");
  EXPECT_EQ(value("select g_sn+1 from goods"), u"101");
  EXPECT_EQ(value("select max(g_sn)+1 from goods"), u"101");
  EXPECT_EQ(value("select '数量：'+g_kc from goods"), u"数量：1.5");
  EXPECT_EQ(value("select g_kc+g_pl from goods"), u"8.5");
  EXPECT_EQ(value("select g_name+g_bz from goods"), u"null");
  EXPECT_EQ(value("select g_name & g_bz & g_pl from goods"), u"镜架7");
  EXPECT_EQ(value("select g_name+? from goods", {u"9"}), u"镜架9");
  EXPECT_EQ(value("select g_pl+? from goods", {u"9"}), u"16");
  EXPECT_EQ(refusal("update goods set g_pl=g_name+1"), DbError::Kind::TypeMismatch);
}

TEST_F(DialectTest, NamesOfTheListMayBeUsedAgain) {
  run("insert into goods (g_sn,g_kc,g_jj) values ('1',4,2.5)");
  run("insert into goods (g_sn,g_kc,g_jj) values ('2',1,3)");
  EXPECT_EQ(rows("select zje*2 as dbl,g_kc*g_jj as zje from goods order by zje"), u"6,3;20,10");
  EXPECT_EQ(rows("select g_sn,g_kc*g_jj as zje from goods where zje>5"), u"1,10");
  EXPECT_EQ(
      rows("select g_sn,sum(g_kc) as s,iif(s>2,'多','少') as t from goods group by g_sn having s>0 order by s desc"),
      u"1,4,多;2,1,少");
  EXPECT_EQ(rows("select ? as p,p+1 as q from goods where g_sn='1' and p=?", {5, 5}), u"5,6");
  EXPECT_EQ(refusal("update goods set g_kc=(select a as b,b as a from goods)"), DbError::Kind::Syntax);
}

TEST_F(DialectTest, EveryJoinedRowCounts) {
  run("insert into goods (g_sn,g_kc) values ('1',10)");
  run("insert into goods (g_sn,g_kc) values ('2',20)");
  for (double q : {1.0, 2.5, 0.1})
    run("insert into stock (g_sn,ck_sn,kc_sl) values ('1','A',?)", {q});
  run("insert into stock (g_sn,ck_sn,kc_sl) values ('2','B',5)");
  EXPECT_EQ(
      run("update goods,stock set goods.g_kc=goods.g_kc+stock.kc_sl where (goods.g_sn=stock.g_sn) and stock.ck_sn=?",
          {u"A"}),
      3);
  EXPECT_EQ(rows("select g_kc from goods order by id"), u"13.6;20");
  run("update goods a inner join stock b on a.g_sn=b.g_sn set a.g_kc=b.kc_sl+?,a.g_name=b.ck_sn where b.ck_sn='B'",
      {1});
  EXPECT_EQ(rows("select g_kc,g_name from goods where g_sn='2'"), u"6,B");
  run("update goods a,(select g_sn,sum(kc_sl) as s from stock group by g_sn) b set a.g_kc=b.s where a.g_sn=b.g_sn");
  EXPECT_EQ(rows("select g_kc from goods order by id"), u"3.6;5");
  EXPECT_EQ(run("delete a.* from stock a,goods b where a.g_sn=b.g_sn and b.g_sn='1'"), 3);
  EXPECT_EQ(value("select count(*) from stock"), u"1");
}

TEST_F(DialectTest, ValuesAreMadeFitForTheirColumns) {
  run("insert into goods (g_sn,g_name,g_kc,g_jy) values (12,99.9,'3.5',true)");
  EXPECT_EQ(rows("select g_sn,g_name,g_kc,g_jy from goods"), u"12,99.9,3.5,1");
  EXPECT_EQ(
      value(
          "select count(*) from goods where g_sn=12 and g_kc='3.5' and g_jy=-1 and g_jy=1 and g_jy<>0 and g_jy='True'"),
      u"1");
  run("insert into stock (g_sn,kc_sl,rq) select g_kc,g_sn,g_name from goods");
  EXPECT_EQ(rows("select g_sn,kc_sl,rq from stock"), u"3.5,12,99.9");
  EXPECT_EQ(value("select count(*) from goods a,stock b where a.g_kc=b.g_sn and a.g_sn=b.kc_sl"), u"1");
  EXPECT_EQ(value("select count(*) from goods where g_sn in (select kc_sl from stock)"), u"1");
  EXPECT_EQ(refusal("insert into goods (g_sn) values ('123456789')"), DbError::Kind::TooWide);
  EXPECT_EQ(refusal("insert into goods (g_sn) values (?)", {u"123456789"}), DbError::Kind::TooWide);
  EXPECT_EQ(refusal("update goods set g_name='这个名称太长'+g_sn+'了吧！'"), DbError::Kind::TooWide);
  EXPECT_EQ(refusal("insert into goods (g_kc) values (?)", {u"三副"}), DbError::Kind::TypeMismatch);
  EXPECT_EQ(refusal("insert into goods (g_kc) values (?)", {u""}), DbError::Kind::TypeMismatch);
  EXPECT_EQ(refusal("insert into goods (g_kc) values (?)", {HUGE_VAL}), DbError::Kind::Arithmetic);
  EXPECT_EQ(refusal("insert into goods (g_kc) values (?)"), DbError::Kind::Syntax);
  run("insert into goods (g_name) values (?)", {u"一二三四五六七八九👓"});  // ten characters, eleven units of UTF-16
  run("insert into goods (g_pl,g_jy) values (2.5,?)", {Value()});
  EXPECT_EQ(rows("select g_pl,g_jy from goods where g_pl is not null"), u"3,0");
}

TEST_F(DialectTest, FunctionsOfTheDialect) {
  run("insert into goods (g_sn,g_name,g_kc) values ('AB12','近视镜片',-2.5)");
  EXPECT_EQ(rows("select left(g_name,2),right(g_name,2),mid(g_name,2,2),mid(g_name,3),len(g_name),instr(g_name,'镜'),"
                 "instr(4,g_name,'镜') from goods"),
            u"近视,镜片,视镜,镜片,4,3,0");
  EXPECT_EQ(rows("select ucase(lcase(g_sn)),abs(g_kc),int(g_kc),fix(g_kc),isnumeric(g_sn),isnumeric('1.5'),val('12个') "
                 "from goods"),
            u"AB12,2.5,-3,-2,0,1,12");
  EXPECT_EQ(rows("select datediff('m','2021-01-31','2021-02-01'),datediff('d','2020-02-28 23:00:00','2020-03-01'),"
                 "datediff('yyyy','2020-12-31','2021-01-01'),datediff('d','',g_sn) from goods"),
            u"1,2,1,null");
  EXPECT_EQ(
      rows("select dateadd('m',1,'2021-01-31'),dateadd('d',-1,'2021-03-01'),year('2021-05-03'),month('2021-05-03'),"
           "weekday('2021-05-02') from goods"),
      u"2021-02-28,2021-02-28,2021,5,1");
  EXPECT_EQ(value("select len(date()) from goods where datediff('d',date(),now())=0"), u"10");
  EXPECT_EQ(rows("select nz(g_bz),nz(g_bz,'无'),cstr(g_kc),clng(2.5),cdbl('2.5')*2,str(5),space(2)+'x',string(3,'ab') "
                 "from goods"),
            u",无,-2.5,3,5, 5,  x,aaa");
  EXPECT_EQ(rows("select format('2021-05-03','yyyy年mm月'),format(1234.5,'#,##0.00') from goods"),
            u"2021年05月,1,234.50");
}

TEST_F(DialectTest, SelectsOfAllShapes) {
  for (const char* sn : {"1", "2", "3"})
    run("insert into goods (g_sn,g_name,g_kc) values (?,?,1)", {sn, sn});
  run("insert into stock (g_sn,ck_sn,kc_sl) values ('1','A',5)");
  run("insert into stock (g_sn,ck_sn,kc_sl) values ('1','B',6)");
  run("insert into stock (g_sn,ck_sn,kc_sl) values ('3','A',7)");
  EXPECT_EQ(rows("select top 2 g_sn from goods order by id desc;"), u"3;2");
  EXPECT_EQ(rows("select top ? g_sn from goods order by 1 desc", {1}), u"3");
  EXPECT_EQ(rows("select distinct top 1 g_sn from stock order by g_sn"), u"1");
  EXPECT_EQ(rows("select top 1 g_sn from goods where g_sn='9' union select top 1 g_sn from stock where ck_sn='B'"),
            u"1");
  EXPECT_EQ(
      rows(
          "select g_sn,1 as xh from goods where g_sn='1' union all select g_sn,'2' from stock where ck_sn='A' order by "
          "xh desc,g_sn"),
      u"1,2;3,2;1,1");
  EXPECT_EQ(
      rows(
          "select * from ((select g_sn as k from goods) union (select ck_sn from stock)) DERIVEDTBL where k>='3' order "
          "by k"),
      u"3;A;B");
  EXPECT_EQ(
      rows("select a.g_sn,b.s,iif(c.n is null,0,c.n) as n from (((select g_sn from goods) a left outer join (select "
           "g_sn,sum(kc_sl) as s from stock group by g_sn) b on a.g_sn=b.g_sn) left outer join (select g_sn,count(*) "
           "as n "
           "from stock group by g_sn) c on a.g_sn=c.g_sn) order by a.g_sn"),
      u"1,11,2;2,null,0;3,7,1");
  EXPECT_EQ(
      rows("select a.g_sn,b.ck_sn from stock b right join goods a on a.g_sn=b.g_sn and b.ck_sn='A' order by a.g_sn"),
      u"1,A;2,null;3,A");
  EXPECT_EQ(
      rows(
          "select g_sn from goods a where exists (select id from stock b where b.g_sn=a.g_sn and kc_sl>5) order by id"),
      u"1;3");
  EXPECT_EQ(rows("select g_sn from goods where g_sn not in (select g_sn from stock) and g_name not like '%9%' and id "
                 "between 1 "
                 "and 9"),
            u"2");
  EXPECT_EQ(value("select (select max(kc_sl) from stock b where b.g_sn=a.g_sn) from goods a where g_sn='1'"), u"6");
  EXPECT_EQ(value("select sum(kc_sl) from stock where 1>2"), u"null");
  EXPECT_EQ(value("select sum(u.x) from (select 0 as x from goods union all select kc_sl/4 from stock) u"), u"4.5");
  const RowSet star = db_->select("select a.*,b.*,a.id+1,g_name as [名 称] from goods a,stock b where a.g_sn=b.g_sn");
  EXPECT_EQ(star.columns().back(), "名 称");
  EXPECT_EQ(star.columns()[8], "id");
  EXPECT_EQ(star.columns()[13], "Expr1013");
}

TEST_F(DialectTest, ColumnsAreLeftOutOfSelectsOfAllShapes) {
  run("insert into goods (g_sn,g_name,g_kc) values ('1','a',5)");
  run("insert into goods (g_sn,g_name,g_kc) values ('2','a',7)");
  const auto names = [&](const char* sql) {
    QStringList all;
    for (const std::string& name : db_->select(sql).columns())
      all << QString::fromStdString(name);
    return all.join(u',');
  };
  EXPECT_EQ(names("without G_KC,g_jj,[no such] select * from goods"), u"id,g_sn,g_name,g_jy,g_pl,g_bz");
  EXPECT_EQ(rows("without g_kc,twice select g_sn,g_kc,g_kc*? as twice from goods order by twice desc", {2}), u"2;1");
  EXPECT_EQ(rows("without s select top 1 g_name,sum(g_kc) as s,count(*) from goods group by g_name order by s"),
            u"a,2");
  EXPECT_EQ(rows("without s select 'all' as n,sum(g_kc) as s from goods"), u"all") << "one row, of whatever it is made";
  // Rows that differ by such a column only stay two, and may be sorted by it.
  EXPECT_EQ(rows("without g_kc select distinct g_name,g_kc from goods"), u"a;a");
  EXPECT_EQ(rows("without g_kc select g_kc,g_name from goods union select g_kc,g_sn from goods order by g_kc desc"),
            u"2;a;1;a");
  EXPECT_EQ(rows("without g_kc select g_kc,g_sn from goods union all select g_kc,g_sn from goods order by g_sn desc"),
            u"2;2;1;1");
  // What decides which rows there are, and in which order, still does; the values of what stays keep their places.
  EXPECT_EQ(
      rows("without g_kc,twice select top 1 g_sn,g_kc,g_kc*? as twice from goods where g_kc>? order by 3 desc,g_kc",
           {-2, 1}),
      u"1");
  EXPECT_EQ(rows("without g_kc select g_kc,g_name,count(*) from goods group by g_name,g_kc having sum(g_kc)>5"),
            u"a,1");
  run("insert into stock (g_sn,ck_sn,kc_sl) values ('1','A',3)");
  EXPECT_EQ(names("without kc_sl,g_sn,of select b.*,a.*,a.g_kc as of from goods a left join stock b on a.g_sn=b.g_sn"),
            u"id,ck_sn,rq,id,g_name,g_kc,g_jj,g_jy,g_pl,g_bz")
      << "of every table, and by the name that it has in the rows";
  run("insert into stock (g_sn,ck_sn,kc_sl) values ('2','A',1)");
  EXPECT_EQ(
      rows("without s select g_sn,(select sum(kc_sl) from stock b where b.g_sn=a.g_sn) as s from goods a where "
           "exists (without kc_sl select id,kc_sl from stock c where c.kc_sl<a.g_kc and c.g_sn=a.g_sn) order by s"),
      u"2;1");
  EXPECT_EQ(rows("without n select n+1 as m,n from (without g_kc select g_sn as n,* from goods) a order by n"), u"2;3");
}

TEST_F(DialectTest, JoinsOfAllShapes) {
  for (const char* sn : {"1", "2", "3"})
    run("insert into goods (g_sn,g_name) values (?,?)", {sn, sn});
  run("insert into stock (g_sn,ck_sn,kc_sl) values ('1','A',5)");
  run("insert into stock (g_sn,ck_sn,kc_sl) values ('9','A',7)");
  // A bracket on the right-hand side is one side of the outer join: goods without a whole pair stay, empty.
  EXPECT_EQ(rows("select a.g_sn,b.kc_sl,c.g_sn from goods a left join (stock b inner join goods c on b.g_sn=c.g_sn) on "
                 "a.g_sn=b.g_sn order by a.id"),
            u"1,5,1;2,null,null;3,null,null");
  EXPECT_EQ(
      rows("select a.g_sn,b.g_sn,c.kc_sl from goods a,goods b left join stock c on b.g_sn=c.g_sn where a.g_sn='2' "
           "order by b.id"),
      u"2,1,5;2,2,null;2,3,null");
  EXPECT_EQ(
      rows("select c.ck_sn,a.g_sn,b.g_sn from stock c,goods a right join goods b on a.g_sn=b.g_sn and a.g_sn='1' where "
           "c.g_sn='9' order by b.id"),
      u"A,1,1;A,null,2;A,null,3");
  EXPECT_EQ(rows("select b.g_sn from (goods a,stock b) where a.g_sn=b.g_sn"), u"1");
  EXPECT_EQ(
      rows("select g_sn from stock where g_sn in ((select g_sn from goods) union (select '9' from goods)) order by 1"),
      u"1;9");
  // An outer join that finds no partner changes nothing, and a bit that it leaves empty is written as no.
  EXPECT_EQ(run("update goods a left join stock b on a.g_sn=b.g_sn set b.kc_sl=b.kc_sl+1,a.g_kc=7"), 4);
  EXPECT_EQ(rows("select a.g_sn,a.g_kc,b.kc_sl from goods a left join stock b on a.g_sn=b.g_sn order by a.id"),
            u"1,7,6;2,7,null;3,7,null");
  run("insert into goods (g_sn,g_jy) select b.g_sn,a.g_jy from stock b left join goods a on a.g_sn=b.g_sn where "
      "b.g_sn='9'");
  EXPECT_EQ(value("select g_jy from goods where g_sn='9'"), u"0");
}

TEST_F(DialectTest, NamesAreFoundFromTheInsideOut) {
  run("insert into goods (g_sn,g_name,g_kc) values ('1','旧',2)");
  run("insert into stock (g_sn,ck_sn,kc_sl) values ('1','A',5)");
  // A column goes before a name of the list, but the order looks at the list first.
  EXPECT_EQ(rows("select g_kc*10 as g_pl,g_kc as g_jj from goods where g_jj is null"), u"20,2");
  run("insert into goods (g_sn,g_kc) values ('2',-3)");
  EXPECT_EQ(rows("select -1*g_kc as g_kc from goods order by g_kc"), u"-2;3");
  EXPECT_EQ(
      rows("select a.g_sn,(b.g_name+'!') as g_name from goods a,goods b where a.g_sn=b.g_sn and b.g_name<>'' order by "
           "g_name"),
      u"1,旧!");
  // Inside a subquery its own table first, then the tables around it.
  EXPECT_EQ(rows("select g_sn from goods where g_kc>0 and exists (select * from stock where g_sn='1' and kc_sl>g_kc)"),
            u"1");
  // Without a list of columns an insert goes by the names of the select.
  run("insert into stock select g_kc as kc_sl,g_sn from goods where g_sn='2'");
  EXPECT_EQ(rows("select g_sn,ck_sn,kc_sl from stock order by id"), u"1,A,5;2,null,-3");
  run("insert into stock values ('3','B',1,'2021-05-03')");
  EXPECT_EQ(rows("select id,g_sn,rq from stock where ck_sn='B'"), u"3,3,2021-05-03");
}

TEST_F(DialectTest, LikeKnowsPercentAndUnderline) {
  run("insert into goods (g_sn,g_name) values ('CJ1','a*b')");
  EXPECT_EQ(value("select count(*) from goods where g_sn like 'cj%'"), u"1");
  EXPECT_EQ(value("select count(*) from goods where g_sn='cj1'"), u"0");
  EXPECT_EQ(value("select count(*) from goods where g_name like 'a*' or g_name like 'a?b'"), u"0");
  EXPECT_EQ(value("select count(*) from goods where g_name like ? and g_name like '%'+?+'%' and g_name like \"a_b\"",
                  {u"%*%", u"*"}),
            u"1");
}

TEST_F(DialectTest, TablesChangeTheirShape) {
  run("insert into goods (g_sn,g_name,g_kc) values ('1','12.5',2)");
  run("insert into goods (g_sn,g_name,g_kc) values ('2','7',3)");
  run("delete from goods where g_sn='2'");
  run("create index ix_goods_sn on goods (g_sn,g_name desc)");
  run("alter table goods add g_new int null");
  run("alter table goods add column g_flag bit,g_txt nvarchar (20)");
  EXPECT_EQ(rows("select g_new,g_flag,g_txt from goods"), u"null,0,null");
  run("alter table goods alter column g_name numeric(28,6)");
  run("alter table goods alter column g_kc nvarchar (4)");
  EXPECT_EQ(rows("select g_name+1,g_kc+'个' from goods"), u"13.5,2个");
  EXPECT_EQ(refusal("update goods set g_kc='12345'"), DbError::Kind::TooWide);
  run("insert into goods (g_sn) values ('3')");
  EXPECT_EQ(value("select max(id) from goods"), u"3");                                        // 2 is not given again
  EXPECT_EQ(refusal("create index ix_goods_sn on goods (g_sn)"), DbError::Kind::Constraint);  // still there
  run("drop index ix_goods_sn on goods");
  run("alter table goods drop column g_new");
  EXPECT_EQ(refusal("update goods set g_new=1"), DbError::Kind::UnknownName);
  run("create unique index ux on goods (g_sn)");
  EXPECT_EQ(refusal("insert into goods (g_sn) values ('3')"), DbError::Kind::Constraint);
  run("drop table goods");
  EXPECT_EQ(refusal("delete from goods"), DbError::Kind::UnknownName);
}

}  // namespace jxc::dialect_test
