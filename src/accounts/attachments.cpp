#include "accounts/attachments.h"

#include "accounts/attachment_server.h"
#include "core/clock.h"
#include "core/data_module.h"
#include "core/file_names.h"
#include "core/program_directory.h"
#include "core/text.h"
#include "engine/new_file.h"
#include "engine/server.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>

#include <algorithm>
#include <cstring>

namespace jxc::attachments {
namespace attachments_detail {

constexpr qsizetype kMostShown = 64;
constexpr qsizetype kLongestEnding = 8;  // with its dot; what is longer is part of the name
constexpr qint64 kBlock = 1 << 20;
constexpr qint64 kLargest = 500;  // MB; a scan of hundreds of pages has a tenth of it

QString folderOf(const PartnerSide& side) {
  return side.isCustomer() ? QStringLiteral("khht/") : QStringLiteral("ghsht/");
}
bool isOurFolder(const QString& folder) {
  return folder == folderOf(customerSide) || folder == folderOf(supplierSide);
}
/// A folder of a server, as it stands in an address.
QString serverFolderOf(const PartnerSide& side) {
  return folderOf(side).chopped(1);
}
/// A name and no way to somewhere else.
bool isPlainName(const QString& name) {
  return !name.isEmpty() && name == QFileInfo(name).fileName() && !name.contains(u'/') && !name.contains(u'\\') &&
         name != u".." && name != u".";
}

QString endingOf(const QString& name) {
  const qsizetype dot = name.lastIndexOf(u'.');
  return dot > 0 && name.size() - dot <= kLongestEnding ? name.mid(dot) : QString();
}
/// A name that came from another system may have its folders in it.
QString shownNameOf(const QString& given) {
  const QString name = given.section(u'\\', -1);
  if (name.size() <= kMostShown) return name;
  const QString ending = endingOf(name);
  return name.left(kMostShown - ending.size()) + ending;
}
/// Moment and chance: two stations of a shared folder never take the same one.
QString newName(const QString& given) {
  QString ending = endingOf(given);
  for (const QChar c : ending.mid(1))
    if (!c.isLetterOrNumber() || c.unicode() > 'z') ending.clear();
  const QString moment = clock::now().toString(QStringLiteral("yyyyMMddHHmmss"));
  return moment + QString::number(QRandomGenerator::system()->bounded(100000, 999999)) + ending;
}

[[noreturn]] void fail(const QString& what, const QString& why) {
  throw AttachmentError(why.isEmpty() ? what : what + u"\r\n\r\n"_qs + why);
}

void copy(const QString& file, const QString& to, const Progress& progress) {
  QFile from(file);
  if (!from.open(QIODevice::ReadOnly)) fail(u"附件文件不能读取："_qs + file, from.errorString());
  NewFile made(to, [](int error) { fail(u"附件不能保存！"_qs, QString::fromLocal8Bit(std::strerror(error))); });
  QFile target(made.name());
  if (!target.open(QIODevice::WriteOnly)) fail(u"附件不能保存！"_qs, target.errorString());
  const qint64 size = from.size();
  qint64 copied = 0;
  while (!from.atEnd()) {
    const QByteArray block = from.read(kBlock);
    if (block.isEmpty()) break;
    if (target.write(block) != block.size()) fail(u"附件不能保存！"_qs, target.errorString());
    copied += block.size();
    if (progress && !progress(static_cast<int>(std::min(copied, size) * 99 / size))) throw AttachmentStopped();
  }
  if (from.error() != QFile::NoError) fail(u"附件文件读到一半就中断了！"_qs, from.errorString());
  // Another program is writing it: half of the old and half of the new one would be no contract.
  if (copied != size || from.size() != size) fail(u"附件文件在保存时被改动了，请重新保存："_qs + from.fileName(), {});
  if (!target.flush()) fail(u"附件不能保存！"_qs, target.errorString());
  target.close();
  made.keep();
  if (progress) progress(100);
}

}  // namespace attachments_detail

Place placeFor(const PartnerSide& side, const QString& file, Keeper keeper) {
  using namespace attachments_detail;
  const QFileInfo info(file);
  if (!info.exists()) fail(u"附件文件不存在："_qs + file, {});
  if (!info.isFile()) fail(u"附件必须是一个文件，不能是文件夹："_qs + file, {});
  QFile from(file);
  if (!from.open(QIODevice::ReadOnly)) fail(u"附件文件不能读取："_qs + file, from.errorString());
  if (from.size() == 0) fail(u"附件是空文件："_qs + file, {});
  if (from.size() > kLargest * kBlock) fail(u"附件不能超过 %1 MB，请压缩或拆分后再添加："_qs.arg(kLargest) + file, {});
  return {keeper == Keeper::Server ? words(kOnServer) : folderOf(side), newName(info.fileName()),
          shownNameOf(info.fileName()), &side};
}

void take(const QString& file, const Place& place, const Progress& progress) {
  using namespace attachments_detail;
  if (place.folder == kOnServer) return storeOnServer(file, serverFolderOf(*place.side), place.stored, progress);
  const QString folder = programPath(place.folder);
  if (!QDir().mkpath(folder)) fail(u"附件的文件夹不能建立："_qs + folder, {});
  copy(file, folder + place.stored, progress);
}

QString pathOf(const Place& place) {
  using namespace attachments_detail;
  if (place.folder == kOnServer) return {};
  const bool own = isOurFolder(place.folder);
  if (own && isPlainName(place.stored)) {
    const QString path = programPath(place.folder) + place.stored;
    if (QFileInfo(path).isFile()) return path;
  }
  if (place.shown.isEmpty()) return {};
  // Older rows: the folder as that machine wrote it, or the folder of this name beside this program.
  QString folder = place.folder;
  folder.replace(u'\\', u'/');
  if (!folder.endsWith(u'/')) folder += u'/';
  QStringList folders{own ? programPath(folder) : folder};
  for (const PartnerSide* side : {&customerSide, &supplierSide})
    if (folder.endsWith(folderOf(*side))) folders << programPath(folderOf(*side));
  for (const QString& each : folders)
    if (isPlainName(place.shown) && QFileInfo(each + place.shown).isFile()) return each + place.shown;
  return {};
}

QString fetch(const Place& place, const Progress& progress) {
  using namespace attachments_detail;
  if (place.folder == kOnServer) {
    QStringList names{place.stored, place.shown};  // of older rows the shown one
    names.removeIf([](const QString& each) { return !isPlainName(each); });
    return fetchFromServer(serverFolderOf(*place.side), names, place.shown, progress);
  }
  const QString path = pathOf(place);
  if (path.isEmpty()) fail(u"附件“%1”不在本机，可能在保存它的那台电脑上！"_qs.arg(place.shown), {});
  return path;
}

std::optional<QString> remove(const Place& place, const Progress& progress) {
  using namespace attachments_detail;
  if (!isPlainName(place.stored)) return {};
  if (place.folder == kOnServer) {
    const QString folder = serverFolderOf(*place.side);
    try {
      removeFromServer(folder, place.stored, progress);
      return {};
    } catch (const AttachmentError& failure) {
      return folder + u'/' + place.stored + u"\r\n\r\n"_qs + QString::fromUtf8(failure.what());
    }
  }
  if (!isOurFolder(place.folder)) return {};
  QFile file(programPath(place.folder) + place.stored);
  if (!file.exists()) {
    if (NewFile::removeUnfinished(file.fileName())) return {};  // killed in the middle of its copy
    if (!isOnServer(accountDb())) return {};                    // no other station has a folder of these books
    return u"“%1”不在本机，保存它的那台电脑在下次登录时删除它。"_qs.arg(place.shown);
  }
  if (file.remove()) return {};
  return file.fileName() + u"\r\n\r\n"_qs + file.errorString();
}

Leaving removeBeside(const Place& place) {
  using namespace attachments_detail;
  if (place.folder != kOnServer) return remove(place) ? Leaving::Going : Leaving::Gone;
  return isPlainName(place.stored) ? removeFromServerBeside(serverFolderOf(*place.side), place.stored) : Leaving::Gone;
}

}  // namespace jxc::attachments
