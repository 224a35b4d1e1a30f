#include "core/numbers.h"

#include "core/data_module.h"
#include "harness/account_set_fixture.h"

namespace jxc::test {

class NumbersStory : public AccountSetFixture {};

TEST_F(NumbersStory, KeysOfMasterDataCountOn) {
  execSql("delete from jxc_zone");
  EXPECT_EQ(nextSerial("jxc_zone", "z_sn"), QStringLiteral("100001"));
  insertRow("jxc_zone", {{"z_sn", "100009"}, {"z_name", "北区"}});
  EXPECT_EQ(nextSerial("jxc_zone", "z_sn"), QStringLiteral("100010"));
  EXPECT_EQ(nextSerial("jxc_zone", "z_sn"), QStringLiteral("100010")) << "asking reserves nothing";
  insertRow("jxc_zone", {{"z_sn", "南区"}, {"z_name", "南区"}});
  EXPECT_THROW(nextSerial("jxc_zone", "z_sn"), NumberError);
}

TEST_F(NumbersStory, DocumentsOfADayCountFrom10001) {
  EXPECT_EQ(nextDocNo("jxc_jhd", "j_sn", "CJ"), QStringLiteral("CJ21050310001"));
  insertRow("jxc_jhd", {{"j_sn", "CJ21050310007"}});
  insertRow("jxc_jhd", {{"j_sn", "CJ21050210099"}});
  EXPECT_EQ(nextDocNo("jxc_jhd", "j_sn", "CJ"), QStringLiteral("CJ21050310008"));
  EXPECT_EQ(nextDocNoOn("jxc_jhd", "j_sn", "CJ", "2021-05-02"), QStringLiteral("CJ21050210100"));
  EXPECT_EQ(nextDocNoOn("jxc_jhd", "j_sn", "CJ", "2021-05-02 09:30:00"), QStringLiteral("CJ21050210100"));
  EXPECT_THROW(nextDocNoOn("jxc_jhd", "j_sn", "CJ", "2021-02-30"), NumberError);

  insertRow("jxc_jhd", {{"j_sn", "CJ21050400012"}});
  EXPECT_EQ(nextDocNoOn("jxc_jhd", "j_sn", "CJ", "2021-05-04"), QStringLiteral("CJ21050410001"))
      << "serials below 10000 come from old set-ups and are not counted on";
  insertRow("jxc_jhd", {{"j_sn", "CJ210505X"}});
  EXPECT_EQ(nextDocNoOn("jxc_jhd", "j_sn", "CJ", "2021-05-05"), QStringLiteral("CJ21050510001"));
}

TEST_F(NumbersStory, SalesShareTheirNumbersWithTheTill) {
  insertRow("jxc_lsxssp", {{"gl_djh", "XS21050310002"}});
  insertRow("jxc_posxssp", {{"gl_djh", "XS21050310005"}});
  EXPECT_EQ(nextDocNo("jxc_lsxssp", "gl_djh", "XS"), QStringLiteral("XS21050310006"));
  insertRow("jxc_lsxssptemp", {{"gl_djh", "XS21050310008"}});
  EXPECT_EQ(nextDocNo("jxc_lsxssp", "gl_djh", "XS"), QStringLiteral("XS21050310009"));
  insertRow("jxc_posthsp", {{"gl_djh", "XT21050310003"}});
  EXPECT_EQ(nextDocNo("jxc_xsthsp", "gl_djh", "XT"), QStringLiteral("XT21050310004"));
  insertRow("jxc_ysyfk_dj", {{"gl_djh", "SK21050310001"}});
  EXPECT_EQ(nextDocNo("jxc_ysyfk", "gl_djh", "SK"), QStringLiteral("SK21050310002"));
  EXPECT_EQ(nextDocNo("jxc_ysyfk", "gl_djh", "YF"), QStringLiteral("YF21050310001"));
}

TEST_F(NumbersStory, ANumberIsTakenByOthersOnly) {
  EXPECT_FALSE(docNoTaken("j_sn", "jxc_jhsp", "CJ21050310001"));
  insertRow("jxc_jhsp", {{"j_sn", "CJ21050310001"}, {"a_name", "admin"}});
  EXPECT_FALSE(docNoTaken("j_sn", "jxc_jhsp", "CJ21050310001")) << "his own document";
  insertRow("jxc_jhsp", {{"j_sn", "CJ21050310001"}, {"a_name", "小王"}});
  EXPECT_TRUE(docNoTaken("j_sn", "jxc_jhsp", "CJ21050310001"));
  EXPECT_TRUE(isNumberTaken("jxc_jhsp", "j_sn", "CJ21050310001"));

  insertRow("jxc_posxssp", {{"gl_djh", "XS21050310001"}, {"a_name", "admin"}});
  EXPECT_TRUE(isNumberTaken("jxc_lsxssp", "gl_djh", "XS21050310001")) << "sold at the till";
  insertRow("jxc_posthsp", {{"gl_djh", "XT21050310001"}});
  EXPECT_TRUE(isNumberTaken("jxc_xsthsp", "gl_djh", "XT21050310001"));
  EXPECT_FALSE(isNumberTaken("jxc_xsthsp", "gl_djh", "XT21050310002"));
}

}  // namespace jxc::test
