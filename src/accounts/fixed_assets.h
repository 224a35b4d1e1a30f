// 固定资产台帐: a plain register of what the shop owns. Nothing is posted and nothing depreciated; two columns tell by
// computing alone how old an asset is and what a straight line would leave of it.
#pragma once

#include "core/enquiry.h"
#include "core/fillers.h"
#include "core/prompt.h"

#include <QString>

#include <cstdint>
#include <optional>
#include <vector>

namespace jxc::assets {

struct Draft {
  std::int64_t id = 0;  // 0 for a new entry
  QString number;       // 资产编号; the same may be entered again: a part that is added, or below zero what is sold
  QString name, date;   // "yyyy-MM-dd"
  QString kind, unit;
  double amount = 0;  // yuan, any but 0
  QString department, supplier, insideClass, model;
  int months = 0;    // of depreciation; 0: none is told
  QString employee;  // by name
  QString note;
};

/// An entry for changing; nothing when it is gone.
std::optional<Draft> openAsset(std::int64_t id);
/// What a new entry of this number starts from: the first one of the same asset, with its id 0. Nothing: it is new.
std::optional<Draft> assetOfNumber(const QString& number);
/// Saves a new or changed entry. False when refused, or when it is gone.
bool saveAsset(const Draft& draft, Prompt& prompt);
/// Asks.
bool deleteAsset(std::int64_t id, Prompt& prompt);

/// Entries of a period, of a kind (`Criteria::kind`) and with a key in number, name, kind, model or note, the newest
/// first. Beside their columns `gone`, whole months since the day, and `rest`, the amount less as much of it as months
/// of its depreciation have gone by, never below nothing; without months of depreciation the amount itself.
Sql assetList(const Criteria& criteria);
inline constexpr NoWarehouse kAssetsHaveNoWarehouse{"an asset belongs to the shop and stands in no warehouse"};

/// Texts that stand in a column already (`zc_lx`, `zc_dw`, `zc_nbfl` …), to be proposed; the keys are the texts.
std::vector<ListItem> usedTexts(std::string_view column);

}  // namespace jxc::assets
