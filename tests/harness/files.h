// 文件: whole files as a test writes and reads them.
#pragma once

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QString>

#include <gtest/gtest.h>

namespace jxc::test {

inline QByteArray bytesOf(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// In place of what was there.
inline void writeBytes(const QString& path, const QByteArray& bytes) {
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << path.toStdString();
  ASSERT_EQ(file.write(bytes), bytes.size());
}

/// Whose the file is, and who may read it, is as any program's new file in that folder: nothing of the books' privacy.
inline void expectAsItsFolderHasIt(const QString& path) {
  const QFileInfo file(path), plain(file.dir().filePath(QStringLiteral("plain")));
  writeBytes(plain.filePath(), "x");
  EXPECT_EQ(file.permissions(), plain.permissions()) << path.toStdString();
  EXPECT_EQ(file.groupId(), plain.groupId()) << path.toStdString();
  QFile::remove(plain.filePath());
}

}  // namespace jxc::test
