// 地区: the list of regions that customers and suppliers live in.
#pragma once

#include "core/named_list.h"

namespace jxc {

extern const NamedList zoneList;

struct ZoneDraft {
  std::int64_t id = 0;  // 0 for a new one
  QString name;
  bool isDefault = false;  // at most one
};

ZoneDraft readZone(std::int64_t id);
/// Saves a region; its new name follows to its customers and suppliers. False when refused.
bool saveZone(const ZoneDraft& draft, Prompt& prompt);

}  // namespace jxc
