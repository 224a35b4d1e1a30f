#include "core/account_place.h"

#include "engine/server.h"
#include "platform/network_share.h"

#include <QFile>
#include <QRegularExpression>

namespace jxc {
namespace account_place_detail {

// An address is one line, with a word or two of comment; a database is never that small.
constexpr qint64 longestAddress = 2000;

DbError onShare() {
  // Without the name of the file: its name alone would end the program.
  return DbError(DbError::Kind::File,
                 QStringLiteral("帐套文件在网络共享目录上，多台工作站这样使用会损坏数据，系统不打开它。\r\n\r\n"
                                "多台工作站请使用 PostgreSQL 服务器：用 jxcctl copy 把帐套复制到服务器，"
                                "再把帐套文件换成一行连接地址，例如：\r\npostgresql://shop@server/jxc"));
}

}  // namespace account_place_detail

bool isServerAddress(const QString& text) {
  static const QRegularExpression address(
      QStringLiteral("^\\s*(postgres(ql)?://\\S+|(\\w+\\s*=.*)?\\b(dbname|service|host|hostaddr)\\s*=.*)\\s*$"));
  return !text.contains(QChar(u'\0')) && address.match(text).hasMatch();
}

QString addressIn(const QString& file) {
  QFile content(file);
  if (content.size() > account_place_detail::longestAddress || !content.open(QIODevice::ReadOnly)) return {};
  QByteArray bytes = content.readAll();
  if (bytes.startsWith("\xEF\xBB\xBF")) bytes.remove(0, 3);  // editors of another system put a mark in front
  QString address;
  for (const QString& each : QString::fromUtf8(bytes).split(u'\n')) {
    const QString line = each.trimmed();
    if (line.isEmpty() || line.startsWith(u'#')) continue;
    if (!address.isEmpty()) return {};  // some other text
    address = line;
  }
  return isServerAddress(address) ? address : QString();
}

void refuseNetworkShare(const QString& file) {
  if (isOnNetworkShare(file)) throw account_place_detail::onShare();
}

std::unique_ptr<Database> openAccountFile(const QString& file) {
  if (const QString address = addressIn(file); !address.isEmpty()) return openPostgres(address);
  refuseNetworkShare(file);
  return openSqlite(file);
}

std::unique_ptr<Database> openAccountPlace(const QString& place) {
  return isServerAddress(place) ? openPostgres(place) : openAccountFile(place);
}

}  // namespace jxc
