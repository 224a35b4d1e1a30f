#include "core/schema/catalogue_file.h"

#include "engine/database.h"
#include "harness/files.h"

#include <QDir>
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

// A first start that was cut off leaves a file without the list in it, or half a page of one; a file of something else
// is nobody's to fill.
TEST(CatalogueFile, HalfMadeIsCompletedOrPutAsideAndForeignRefused) {
  QTemporaryDir folder;
  const QString halfMade = folder.filePath(QStringLiteral("half.dll"));
  openSqlite(halfMade, {.create = true});
  EXPECT_EQ(ensureCatalogueFile(halfMade), QStringList());
  EXPECT_EQ(openSqlite(halfMade)->lookup("select zt_sn from jxc_xtzt").text(), u"100001");

  for (const QByteArray& left : {QByteArray(), "SQLite format 3" + QByteArray(4081, '\0')}) {
    const QString name = QStringLiteral("left%1.dll").arg(left.size()), path = folder.filePath(name);
    test::writeBytes(path, left);
    test::writeBytes(path + QStringLiteral("-journal"), "takes the page back");
    EXPECT_EQ(ensureCatalogueFile(path).size(), 1);
    EXPECT_EQ(openSqlite(path)->lookup("select zt_sn from jxc_xtzt").text(), u"100001");
    const QStringList aside = QDir(folder.path()).entryList({name + QStringLiteral(".old-*")}, QDir::Files, QDir::Name);
    ASSERT_EQ(aside.size(), 2) << "with its journal";
    EXPECT_EQ(test::bytesOf(folder.filePath(aside.front())), left);
    EXPECT_EQ(ensureCatalogueFile(path), QStringList());
  }

  const QString foreign = folder.filePath(QStringLiteral("foreign.dll"));
  test::writeBytes(foreign, QByteArray(4096, 'x'));
  EXPECT_THROW(ensureCatalogueFile(foreign), DbError);
  EXPECT_EQ(test::bytesOf(foreign), QByteArray(4096, 'x'));
}

}  // namespace jxc
