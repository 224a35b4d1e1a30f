// 过账失败: a command on a document that fails says which document it was, and that nothing was changed.
#pragma once

#include "engine/server.h"

#include <QString>

#include <stdexcept>
#include <utility>

namespace jxc {

/// Runs the transaction of a command. What it throws comes out with the words of the operator before it:
/// "单据…审核失败：". The kind of a database failure and the name of the account file stay: the application goes by
/// them.
template <class Work>
auto onDocument(const QString& number, QStringView doing, Work&& work) {
  const auto told = [&](const QString& reason, bool unchanged = true) {
    return QStringLiteral("单据") + number + doing.toString() + QStringLiteral("失败：\r\n\r\n") + reason +
           (unchanged ? QStringLiteral("\r\n\r\n没有改动任何数据。") : QString());
  };
  try {
    return std::forward<Work>(work)();
  } catch (const ConnectionLost& failure) {  // only the failure itself knows whether anything was kept
    throw ConnectionLost(told(failure.message(), false), failure.statement(), failure.how());
  } catch (const DbError& failure) {
    throw DbError(failure.kind(), told(failure.message()), failure.statement(), failure.position());
  } catch (const std::runtime_error& failure) {
    throw std::runtime_error(told(QString::fromStdString(failure.what())).toStdString());
  }
}

}  // namespace jxc
