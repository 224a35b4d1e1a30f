// 库存盘点: what makes a count too late, and what becomes of one whose stock moved between counting and audit.
#pragma once

#include "stock/document.h"

#include <QString>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace jxc::stock_count {

/// What a difference of so many pieces is worth at this unit cost, in yuan: less as much as more, also in its rounding.
double valueOf(double difference, double cost);
/// The same in a statement, over two expressions.
std::string valueExpression(std::string_view difference, std::string_view cost);

/// Refusal at save: a later count of the warehouse, or later movement of counted goods.
std::optional<QString> tooLateToSave(const QString& number, const QString& warehouse, const QString& date);
/// Refusal of an audit: the count is void once counted goods moved behind its date.
std::optional<QString> overtaken(const QString& number);
/// Refusal of a cancel: counted goods moved after the count was audited.
std::optional<QString> movedSinceAudit(const QString& number);

/// Goods of a waiting count whose stock is no longer what the count found in the books. Pieces.
struct MovedLine {
  std::int64_t id = 0;
  QString goods, name;
  double counted = 0, recorded = 0;
  double shelf = 0, book = 0;  // as they are now
  bool operator==(const MovedLine&) const = default;
};

/// What the operator was asked about such goods before an audit, and what he said.
class Recount {
 public:
  /// Refuses an overtaken count; asks whether the movement came before the counting or after it. Nothing: no audit.
  static std::optional<Recount> ask(const QString& number, Prompt& prompt);
  /// Inside the transaction of the audit. Goods that moved before they were counted are measured against the books of
  /// now; the difference of the others stays, and their stock moves by it. False: something moved since it was asked.
  bool takeUp(const QString& number) const;

 private:
  std::vector<MovedLine> lines_;
  std::vector<bool> late_;  // moved before the counting, and was only entered late
};
/// Why an audit without anybody to ask passes this count over: it is void, or its stock moved meanwhile.
std::optional<QString> passedOver(const QString& number);

/// `auditEach` of counts; those that were overtaken, or about which is something to ask, are passed over and told.
std::optional<int> auditAll(const std::vector<ListedDocument>& documents, Prompt& prompt,
                            const AuditProgress& progress = {});

}  // namespace jxc::stock_count
