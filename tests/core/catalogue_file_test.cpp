#include "core/schema/catalogue_file.h"

#include "engine/database.h"
#include "harness/files.h"

#include <QTemporaryDir>

namespace jxc {

TEST(CatalogueFile, IsMadeWithTheBuiltInSetAndThenLeftAlone) {
  QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("data/codeinfo.dll"));
  ensureCatalogueFile(path);
  {
    const auto catalogue = openSqlite(path);
    const RowSet sets = catalogue->select("select * from jxc_xtzt order by id");
    ASSERT_EQ(sets.rowCount(), 1);
    EXPECT_EQ(sets.front().text("zt_sn"), u"100001");
    EXPECT_EQ(sets.front().text("zt_dbname"), u"jxc.mdb");
    EXPECT_TRUE(sets.front().flag("zt_default"));
    EXPECT_FALSE(sets.front().flag("zt_forbid"));
    catalogue->execute("insert into jxc_xtzt (zt_sn,zt_name,zt_default) values ('100002','二店',0)");
  }
  ensureCatalogueFile(path);
  EXPECT_EQ(openSqlite(path)->lookup("select count(*) from jxc_xtzt").integer(), 2);
}

// A first start that was cut off leaves a file without the list in it; a file of something else is nobody's to fill.
TEST(CatalogueFile, HalfMadeIsCompletedAndForeignRefused) {
  QTemporaryDir folder;
  const QString halfMade = folder.filePath(QStringLiteral("half.dll"));
  openSqlite(halfMade, {.create = true});
  ensureCatalogueFile(halfMade);
  EXPECT_EQ(openSqlite(halfMade)->lookup("select zt_sn from jxc_xtzt").text(), u"100001");

  const QString foreign = folder.filePath(QStringLiteral("foreign.dll"));
  test::writeBytes(foreign, QByteArray(4096, 'x'));
  EXPECT_THROW(ensureCatalogueFile(foreign), DbError);
  EXPECT_EQ(test::bytesOf(foreign), QByteArray(4096, 'x'));
}

}  // namespace jxc
