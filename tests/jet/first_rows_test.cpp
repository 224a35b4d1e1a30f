#include "jet/first_rows.h"

#include <gtest/gtest.h>

namespace jxc::jet::first_rows_test {

TEST(FirstRows, OnlyWhatComesSoonerIsAskedForAlone) {
  constexpr int rows = 80;
  struct Case {
    const char* whole;
    const char* first;  // empty: ask for all at once
  };
  constexpr Case cases[] = {
      {"select * from a order by id", "select top 80 * from a order by id"},
      {" SELECT\n a.*,b.n from a,b where a.id=b.id;", " SELECT\n top 80 a.*,b.n from a,b where a.id=b.id;"},
      {"select distinct n from a", "select distinct top 80 n from a"},
      {"select distinct n from a order by n", ""},
      {"select top 100 n from a", "select top 80 n from a"},
      {"select top 80 n from a", ""},
      {"select top ? n from a", ""},
      {"(select n from a)", "(select top 80 n from a)"},
      {"select n from a union select n from b", ""},
      {"select n from a union all select n from b order by n ; ",
       "select top 80 * from (select n from a union all select n from b order by n) firstrows"},
      {"without m select * from a order by id", "without m select top 80 * from a order by id"},
      {"without m select * from a union all select * from b",
       "select top 80 * from (without m select * from a union all select * from b) firstrows"},
      {"select n from a union all select top 3 n from b", ""},
      {"select n from a union all select n from b group by n", ""},
      {"select x.n from (select n from a union all select n from b) x", ""},
      {"select n,count(*) from a group by n", ""},
      {"select sum(n)+1 as s from a", ""},
      // Sums and unions of others are in nobody's way, and neither is a word in a text or a name.
      {"select n,(select sum(m) from b where b.n=a.n) as s from a",
       "select top 80 n,(select sum(m) from b where b.n=a.n) as s from a"},
      {"select n from a where n in (select n from b group by n union select n from c)",
       "select top 80 n from a where n in (select n from b group by n union select n from c)"},
      {"select 'union all group by sum(' as t,[distinct] from a",
       "select top 80 'union all group by sum(' as t,[distinct] from a"},
      {"select x.n from (select n from a) x", "select top 80 x.n from (select n from a) x"},
      {"select a.n,x.s from a left join (select n,sum(m) as s from b group by n) x on a.n=x.n", ""},
      {"select * into 1 in 'a.xls' 'EXCEL 8.0;' from a", ""},
      {"update a set n=1", ""},
  };
  for (const Case& each : cases)
    EXPECT_EQ(firstRows(each.whole, rows).value_or(""), each.first) << each.whole;
}

}  // namespace jxc::jet::first_rows_test
