// 分批收发单据规则: a putaway or an issue in the making: its lines are parts of the open lines of its sources.
#pragma once

#include "stock/partial_movement.h"
#include "stock/table_lines.h"

namespace jxc::partial {

/// Lines over the open lines of the sources. What is picked, staged or added is named by the `lid` of an open line in
/// place of a goods, and proposes all that is open of it.
class PartialLines final : public TableLines {
 public:
  explicit PartialLines(const PartialMovement& movement);

  LineDraft newLine(const QString& openLine, const LinePlace& place, bool staged) const override;
  bool mayWrite(const LineDraft& draft, const LinePlace& place, Prompt& prompt) const override;
  bool cellAllows(const QString& value, QStringView field, Lines where, std::int64_t id, const LinePlace& place,
                  Prompt& prompt) const override;
  /// The oldest open line of the goods that is not on the document yet, with all that is open of it.
  ScanResult enterBarcode(const LinePlace& place, const QString& code, bool oncePerGoods,
                          Prompt& prompt) const override;
  /// The open lines (`key`, `classNumber`: the source) of the document's warehouse and partner.
  Sql goodsToPick(const LinePlace& place, const PickFilter& filter) const override;
  bool mayStage(const QString& openLine, const LinePlace& place, Lines target, PickingMemory& memory,
                Prompt& prompt) const override;
  std::int64_t stageGoods(const QString& openLine, double quantity, const LinePlace& place, Lines target,
                          PickingMemory& memory, Prompt& prompt) const override;

 private:
  /// Whether a line may take so many pieces of this line of its source; `id` is its own, 0 for a new one.
  bool mayTake(std::int64_t sourceLine, double pieces, Lines where, std::int64_t id, const QString& number,
               Prompt& prompt) const;
  /// The first of these open lines that is neither on the document nor staged; null without.
  std::optional<Row> nextFree(const RowSet& open, const QString& number) const;

  const PartialMovement& movement_;
};

class PartialRules final : public RulesOver<DraftOfPartner> {
 public:
  explicit PartialRules(const PartialMovement& movement) : movement_(movement), lines_(movement) {}

  const DocumentFamily& family() const override { return *movement_.family; }
  const PartialLines& lines() const override { return lines_; }
  const PartialMovement& movement() const { return movement_; }
  SaveResult save(const DraftOfPartner& draft, Prompt& prompt) const override;

  /// The source as a whole: what the draft had goes, all that is open of the source takes its place, with its partner,
  /// warehouse, salesperson and note. Nothing: refused, or the operator said no.
  std::optional<DraftOfPartner> takeWhole(const QString& source, const DraftOfPartner& current, Prompt& prompt) const;
  /// A draft whose lines stand already takes partner and warehouse from their source: after a scan,
  /// and when it comes back after the program was cut off.
  void followLines(DraftOfPartner& draft) const;

 private:
  const PartialMovement& movement_;
  const PartialLines lines_;
};

const PartialRules& putawayRules();
const PartialRules& issueRules();

}  // namespace jxc::partial
